#include "host/Utilities/ModelViews/Widgets/AttributeTreeModelInputDialogs.h"

#include "host/Utilities/ModelViews/Widgets/PlainFileDialog.h"
#include "host/Utilities/ModelViews/Widgets/PlainMessageBox.h"
#include "host/Utilities/ModelViews/dialogs/AttributeCreateDialog.h"
#include "host/Utilities/ModelViews/dialogs/AttributeTypeDialog.h"
#include "host/Utilities/ModelViews/dialogs/FaultLabel.h"
#include "host/Utilities/ModelViews/dialogs/NewAttributePlace.h"
#include "host/Utilities/ModelViews/dialogs/ProposingTextDialog.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QInputDialog>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QVariant>

#include <utility>

namespace Utilities::ModelViews::Widgets {

namespace {

// A dialog that asks one question and goes when it is answered. Its parent may go while it is open, and takes
// the dialog with it; the question then counts as cancelled.
template <typename Dialog>
class AskedDialog
{
public:
    template <typename... Arguments>
    explicit AskedDialog(Arguments&&... arguments) : dialog(new Dialog(std::forward<Arguments>(arguments)...))
    {
    }
    ~AskedDialog() { delete dialog; }
    Q_DISABLE_COPY(AskedDialog)

    // Not to be used when it has gone with its parent.
    Dialog* operator->() const { return dialog; }
    Dialog& get() const { return *dialog; }

    // Shows the dialog until it is answered.
    bool isAccepted() { return dialog->exec() == QDialog::Accepted && dialog; }

private:
    QPointer<Dialog> dialog;
};

// What is translated here; a free tr() would be listed under another name than it is looked up by.
struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(Utilities::ModelViews::Widgets::AttributeTreeModelInputDialogs)
};

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

bool AttributeTreeModelInputDialogs::showAttributeTypeDialog(const QString& path) const
{
    return AskedDialog<AttributeTypeDialog>(dialogParent, path).isAccepted();
}

bool AttributeTreeModelInputDialogs::showAttributePasteDialog(const QString& title, const QString& label,
                                                              QString& name, bool& asChild) const
{
    AskedDialog<QDialog> dialog(dialogParent);
    dialog->setWindowTitle(title);
    auto* const nameEdit = new QLineEdit(name, &dialog.get());
    auto* const nameFault = new FaultLabel(&dialog.get());
    auto* const below = new QRadioButton(Texts::tr("&Below the selected attribute, as its child"));
    auto* const beside = new QRadioButton(Texts::tr("Be&side the selected attribute, at the same level"));
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    nameEdit->setObjectName(QStringLiteral("edtName"));
    nameFault->setObjectName(QStringLiteral("lblNameFault"));
    below->setObjectName(QStringLiteral("radioAsChild"));
    beside->setObjectName(QStringLiteral("radioBeside"));
    auto* const form = new QFormLayout(&dialog.get());
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->addRow(label, nameEdit);
    form->addRow({}, nameFault);
    form->addRow(Texts::tr("Paste"), below);
    form->addRow({}, beside);
    form->addRow(buttons);
    nameEdit->setMinimumWidth(nameEdit->fontMetrics().averageCharWidth() * 50);
    nameEdit->selectAll();
    below->setChecked(true);
    const auto check = [=] {
        const QString fault = NewAttributePlace::nameFault(nameEdit->text());
        nameFault->showFault(fault);
        buttons->button(QDialogButtonBox::Ok)->setEnabled(fault.isEmpty());
    };
    check();
    QObject::connect(nameEdit, &QLineEdit::textChanged, nameFault, check);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog.get(), &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog.get(), &QDialog::reject);
    if (!dialog.isAccepted())
        return false;
    name = nameEdit->text();
    asChild = below->isChecked();
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
