#include "host/Utilities/ModelViews/Widgets/AttributeTreeModelInputDialogs.h"

#include "host/Utilities/ModelViews/Widgets/PlainFileDialog.h"
#include "host/Utilities/ModelViews/Widgets/PlainMessageBox.h"
#include "host/Utilities/ModelViews/dialogs/AskedDialog.h"
#include "host/Utilities/ModelViews/dialogs/AttributeCreateDialog.h"
#include "host/Utilities/ModelViews/dialogs/AttributePasteDialog.h"
#include "host/Utilities/ModelViews/dialogs/ProposingTextDialog.h"

#include <QInputDialog>
#include <QVariant>

namespace Utilities::ModelViews::Widgets {

namespace {

// Where the last file was chosen, by whichever dialog; as long as the program runs.
QString& rememberedFolder()
{
    static QString folder;
    return folder;
}

void showPlace(QFileDialog& dialog, const QString& directory)
{
    const QFileInfo place(directory.isEmpty() ? rememberedFolder() : directory);
    if (place.filePath().isEmpty())
        return;
    if (place.isDir()) {
        dialog.setDirectory(place.filePath());
    } else {
        if (place.dir().exists())
            dialog.setDirectory(place.dir());
        if (!directory.isEmpty())
            dialog.selectFile(place.fileName());
    }
}

QString askForFile(AskedDialog<PlainFileDialog>& dialog, const QString& directory)
{
    showPlace(dialog.get(), directory);
    if (!dialog.isAccepted() || dialog->selectedFiles().isEmpty())
        return {};
    const QString file = dialog->selectedFiles().constFirst();
    rememberedFolder() = QFileInfo(file).absolutePath();
    return file;
}

} // namespace

AttributeTreeModelInputDialogs::AttributeTreeModelInputDialogs(QWidget* parent) : dialogParent(parent)
{
}

QWidget* AttributeTreeModelInputDialogs::getParentWidget() const
{
    return dialogParent;
}

bool AttributeTreeModelInputDialogs::showAttributeCreateDialog(QString& name, QVariant& value, int& type,
                                                               const QString& parentPath) const
{
    AskedDialog<AttributeCreateDialog> dialog(dialogParent, name, parentPath);
    if (!dialog.isAccepted())
        return false;
    name = dialog->getName();
    value = dialog->getValue();
    type = dialog->getType();
    return true;
}

bool AttributeTreeModelInputDialogs::showAttributePasteDialog(const QString& title, const QString& label,
                                                              QString& name, bool& asChild) const
{
    AskedDialog<AttributePasteDialog> dialog(dialogParent, title, label, name);
    if (!dialog.isAccepted())
        return false;
    name = dialog->getName();
    asChild = dialog->isAsChild();
    return true;
}

int AttributeTreeModelInputDialogs::showConfirmationDialog(const QString& question, const QString& path) const
{
    const AskedDialog<PlainMessageBox> box(QMessageBox::Question, QString(), question,
                                           QMessageBox::Yes | QMessageBox::No, dialogParent);
    box->setInformation(path);
    box->setDefaultButton(QMessageBox::No); // what is asked about is often final
    box->setEscapeButton(QMessageBox::No);
    return box->exec() == QMessageBox::Yes ? QMessageBox::Yes : QMessageBox::No;
}

QString AttributeTreeModelInputDialogs::showSingleTextDialog(const QString& title, const QString& label,
                                                             const QString& preset, bool& ok) const
{
    AskedDialog<QInputDialog> dialog(dialogParent);
    dialog->setWindowTitle(title);
    dialog->setLabelText(label);
    dialog->setTextValue(preset);
    const int width = dialog->fontMetrics().averageCharWidth() * 60; // for paths, which are long
    dialog->resize(width, dialog->sizeHint().height());
    ok = dialog.isAccepted();
    return ok ? dialog->textValue() : QString();
}

QString AttributeTreeModelInputDialogs::showProposingTextDialog(const QString& title, const QString& label,
                                                                const QString& preset,
                                                                const QVector<TextProposal>& proposals,
                                                                bool& ok) const
{
    AskedDialog<ProposingTextDialog> dialog(dialogParent, title, label, preset, proposals);
    ok = dialog.isAccepted();
    return ok ? dialog->getText() : QString();
}

QString AttributeTreeModelInputDialogs::showFileOpenDialog(const QString& caption, const QString& directory,
                                                           const QString& filter) const
{
    AskedDialog<PlainFileDialog> dialog(dialogParent, caption, QString(), filter);
    dialog->setFileMode(QFileDialog::ExistingFile);
    return askForFile(dialog, directory);
}

QString AttributeTreeModelInputDialogs::showSaveAsDialog(const QString& caption, const QString& directory,
                                                         const QString& filter) const
{
    AskedDialog<PlainFileDialog> dialog(dialogParent, caption, QString(), filter);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    return askForFile(dialog, directory);
}

void AttributeTreeModelInputDialogs::ShowWarningMessage(QWidget* parent, const QString& title,
                                                        const QString& text)
{
    const AskedDialog<PlainMessageBox> box(QMessageBox::Warning, title, text, QMessageBox::Ok, parent);
    box->exec();
}

} // namespace Utilities::ModelViews::Widgets
