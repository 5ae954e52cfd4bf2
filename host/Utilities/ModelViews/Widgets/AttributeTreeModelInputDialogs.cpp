#include "host/Utilities/ModelViews/Widgets/AttributeTreeModelInputDialogs.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QMessageBox>

namespace Utilities::ModelViews::Widgets {

AttributeTreeModelInputDialogs::AttributeTreeModelInputDialogs(QWidget* parentOfDialogs)
    : dialogParent(parentOfDialogs)
{
}

QWidget* AttributeTreeModelInputDialogs::getDialogParent() const
{
    return dialogParent;
}

int AttributeTreeModelInputDialogs::showConfirmationDialog(const QString& question, const QString& text) const
{
    QMessageBox box(QMessageBox::Question, QCoreApplication::applicationName(), question,
                    QMessageBox::Yes | QMessageBox::No, dialogParent);
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(text);
    box.setDefaultButton(QMessageBox::No); // what is asked about is often final
    return box.exec();
}

QString AttributeTreeModelInputDialogs::showFileOpenDialog(const QString& caption, const QString& directory,
                                                           const QString& filter) const
{
    return QFileDialog::getOpenFileName(dialogParent, caption, directory, filter);
}

QString AttributeTreeModelInputDialogs::showSaveAsDialog(const QString& caption, const QString& directory,
                                                         const QString& filter) const
{
    return QFileDialog::getSaveFileName(dialogParent, caption, directory, filter);
}

void AttributeTreeModelInputDialogs::ShowWarningMessage(QWidget* parent, const QString& title,
                                                        const QString& text)
{
    QMessageBox box(QMessageBox::Warning, title, text, QMessageBox::Ok, parent);
    box.setTextFormat(Qt::PlainText); // paths and file contents are no markup
    box.exec();
}

} // namespace Utilities::ModelViews::Widgets
