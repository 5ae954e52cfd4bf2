// The context menu of the browser page's tree, and what its entries do. Menus, dialogs and long operations
// run event loops, in which the host may close the page; a dialog that goes with the page counts as
// cancelled. The item that they are about may leave the tree as well. Its path would be empty then, which
// stands for the whole repository, so that nothing is done.
#include "app/VantryLog.h"
#include "host/FrameworkCore/AppConfig/AttributePath.h"
#include "host/FrameworkCore/Values/ValueText.h"
#include "host/FrameworkCore/Values/VariantValue.h"
#include "host/Utilities/ModelViews/AttributeTreeViewModel.h"
#include "host/Utilities/ModelViews/AttributeTreeViewModelUtils.h"
#include "host/Utilities/ModelViews/Widgets/AttributeTreeModelInputDialogs.h"
#include "host/Utilities/RefusedEdits.h"
#include "host/Utilities/ScopedSignalBlocker.h"
#include "ui_AttributeBrowserWidget.h"
#include "widgets/AttributeBrowserWidget.h"
#include "widgets/BackendCreateWidget.h"
#include "widgets/PageWindow.h"

#include <QCursor>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>

namespace Widgets {

using FrameworkCore::AppConfig::nameOf;
using FrameworkCore::AppConfig::parentPath;
using FrameworkCore::AppConfig::pathSeparator;
using Shared::Logging::LogMessageType;
using Utilities::ScopedSignalBlocker;
using Utilities::ModelViews::AttributeTreeViewModelUtils;
using Utilities::ModelViews::Widgets::AttributeTreeModelInputDialogs;
using Utilities::ModelViews::Widgets::TextProposal;

namespace {

// The path of something of that name at the same level.
QString besidePath(const QString& path, const QString& name)
{
    const QString parent = parentPath(path).toString();
    return parent.isEmpty() ? name : parent + pathSeparator + name;
}

} // namespace

void AttributeBrowserWidget::onCustomContextMenu(QPoint /*point*/)
{
    bool isBackendRoot = false;
    {
        const ScopedSignalBlocker blocker(ui->treeView);
        const QModelIndexList selected = ui->treeView->selectionModel()->selectedIndexes();
        if (selected.size() < 2)
            return;
        contextIndex = selected.at(selected.size() - 2);
        if (!contextIndex.isValid())
            return;
        isBackendRoot = isSelectedIndexIsBackendRoot(contextIndex);
        contextExpanded = ui->treeView->isExpanded(contextIndex);
        contextPath = pathOf(contextIndex);
    }
    const QPointer<AttributeBrowserWidget> self(this); // the host may close the page under an open menu
    QMenu menu;
    fillMenu(menu, isBackendRoot);
    menu.exec(QCursor::pos());
    if (self)
        ui->treeView->clearSelection();
}

void AttributeBrowserWidget::fillMenu(QMenu& menu, bool isBackendRoot)
{
    using Page = AttributeBrowserWidget;
    const auto add = [&](const char* text, const char* icon, void (Page::*slot)()) {
        const QString file = QLatin1String(":/Vantry/Resources/") + QLatin1String(icon);
        return menu.addAction(QIcon(file), QString::fromLatin1(text), this, slot);
    };
    add("Expand All", "toggle_expand.png", &Page::onBtnExpandAllClicked);
    add("Collapse All", "toggle.png", &Page::onBtnCollapseAllClicked);
    add("New Attribute", "create.png", &Page::onBtnNewAttributeClicked);
    add("Copy Subtree", "copy.png", &Page::onBtnCopyAttributeClicked);
    add("Paste Subtree", "paste.png", &Page::onBtnPasteAttributeClicked)->setEnabled(copyPending);
    add("Delete Subtree", "delete.png", &Page::onBtnDeleteAttributeClicked);
    add("Add Validation", "data_validation.png", &Page::onBtnAddValidationClicked);
    add("Import", "import.png", &Page::onBtnImportClicked);
    add("Export", "export.png", &Page::onBtnExportClicked);
    add("New Backend", "new_backend.png", &Page::on_newBackendClicked);
    add("Save Backend", "save_backend.png", &Page::on_saveBackendClicked)->setEnabled(isBackendRoot);
}

bool AttributeBrowserWidget::isContextGone() const
{
    if (!contextIndex.isValid())
        Vantry::logLine(LogMessageType::Failure) << goneContextText();
    return !contextIndex.isValid();
}

QString AttributeBrowserWidget::goneContextText() const
{
    return tr("Nothing was done: '%1' has left the tree meanwhile").arg(contextPath);
}

void AttributeBrowserWidget::onBtnExpandAllClicked()
{
    expandBelow(contextIndex);
}

void AttributeBrowserWidget::onBtnCollapseAllClicked()
{
    const ScopedSignalBlocker blocker(ui->treeView);
    ui->treeView->collapse(contextIndex);
    onIndexCollapsed(contextIndex);
    contextExpanded = false;
}

void AttributeBrowserWidget::onBtnNewAttributeClicked()
{
    QString name;
    QVariant value;
    int type = QMetaType::UnknownType; // the value's own type decides
    if (!inputDialogs->showAttributeCreateDialog(name, value, type, pathOf(contextIndex)) || name.isEmpty() ||
        isContextGone())
        return;
    const QString path = pathOf(contextIndex) + pathSeparator + name;
    const auto writer = repository ? repository->getWriterInterface() : nullptr;
    const bool isCreated = writer && writer->createAttribute(path, value, 2, 3);
    Vantry::logLine(LogMessageType::Outcome)
        << "Attribute '" << path << "' Created With Result " << isCreated;
    if (!isCreated) {
        namespace Values = FrameworkCore::Values;
        const std::string entered = Values::toText(Values::toValue(value));
        Utilities::RefusedEdits::instance().add({path, QString::fromStdString(entered), {}});
    }
    onBtnReadAttributeClicked();
    // When the menu has closed, which ends with nothing selected.
    if (isCreated)
        QMetaObject::invokeMethod(
            this, [this, path] { reveal(path); }, Qt::QueuedConnection);
}

void AttributeBrowserWidget::reveal(const QString& path)
{
    const QModelIndex item = treeModel->indexFromPath(path); // none when the search path leaves it out
    if (!item.isValid())
        return;
    for (QModelIndex above = item.parent(); above.isValid(); above = above.parent())
        openItem(above);
    ui->treeView->setCurrentIndex(item);
    ui->treeView->scrollTo(item);
    showDetailsOf(item);
}

void AttributeBrowserWidget::onBtnCopyAttributeClicked()
{
    if (isContextGone())
        return;
    copiedIndex = contextIndex;
    copiedPath = pathOf(copiedIndex);
    copyPending = true;
}

void AttributeBrowserWidget::onBtnPasteAttributeClicked()
{
    copyPending = false;
    const QString source = copiedIndex.isValid() ? pathOf(copiedIndex) : copiedPath;
    QString name = nameOf(source);
    bool asChild = false;
    if (!inputDialogs->showAttributePasteDialog({}, tr("Attribute Name"), name, asChild) || name.isEmpty())
        return;
    if (source.isEmpty() || isContextGone())
        return;
    const QPointer<AttributeBrowserWidget> self(this);
    {
        const ScopedSignalBlocker blocker(ui->treeView);
        const QString target = pathOf(contextIndex);
        treeUtils->copyAttribute(source, asChild ? target + pathSeparator + name : besidePath(target, name));
    }
    if (self)
        onBtnReadAttributeClicked();
}

void AttributeBrowserWidget::onBtnDeleteAttributeClicked()
{
    if (isContextGone())
        return;
    const QString path = pathOf(contextIndex);
    if (inputDialogs->showConfirmationDialog(tr("Do You Want To Delete The Attribute ?"), path) !=
        QMessageBox::Yes)
        return;
    const QPointer<AttributeBrowserWidget> self(this);
    {
        const ScopedSignalBlocker blocker(ui->treeView);
        treeUtils->deleteAttributeTree(path);
    }
    if (self)
        onBtnReadAttributeClicked();
}

void AttributeBrowserWidget::onBtnAddValidationClicked()
{
    const QString path = pathOf(contextIndex);
    const auto validations = repository ? repository->getValidationInterface() : nullptr;
    QVector<TextProposal> proposals;
    if (validations) {
        for (const auto& known : validations->getValidationDescriptions())
            proposals.append({known.example, known.meaning});
    }
    const QPointer<AttributeBrowserWidget> self(this);
    bool isAccepted = false;
    const QString name =
        inputDialogs->showProposingTextDialog({}, tr("Validation Name"), {}, proposals, isAccepted);
    if (!isAccepted || !self || isContextGone())
        return;
    const bool isAdded = validations && validations->addValidation(path, name) != 0;
    Vantry::logLine(LogMessageType::Outcome)
        << "Validation Added for Attribute '" << path << "' with result = " << isAdded;
    if (detailsIndex.isValid() && pathOf(detailsIndex) == path)
        showDetailsOf(detailsIndex);
}

void AttributeBrowserWidget::onBtnExportClicked()
{
    const QString fileName =
        inputDialogs->showSaveAsDialog(tr("Save As"), {}, tr("Json File(*.json);;Test File(*.txt)"));
    if (fileName.isEmpty())
        return;
    if (!contextIndex.isValid())
        return AttributeTreeModelInputDialogs::ShowWarningMessage(this, {}, goneContextText());
    const QString path = pathOf(contextIndex);
    const QPointer<AttributeBrowserWidget> self(this);
    QString errorText;
    const bool isExported = fileName.endsWith(QLatin1String(".txt"))
                                ? treeUtils->exportAttributeToTxtFile(fileName, path, errorText)
                                : treeUtils->exportAttributeToJson(fileName, path, errorText);
    if (!isExported && self)
        AttributeTreeModelInputDialogs::ShowWarningMessage(this, {}, errorText);
}

void AttributeBrowserWidget::onBtnImportClicked()
{
    const QString fileName =
        inputDialogs->showFileOpenDialog(tr("Select File"), {}, tr("Json File (*.json)"));
    if (fileName.isEmpty())
        return;
    if (!contextIndex.isValid())
        return AttributeTreeModelInputDialogs::ShowWarningMessage(this, {}, goneContextText());
    bool isAccepted = false;
    const QString entered =
        inputDialogs->showSingleTextDialog({}, tr("Import Path"), pathOf(contextIndex), isAccepted);
    const QString importPath =
        AttributeTreeViewModelUtils::TrimAttributeName(entered, QString(pathSeparator));
    if (!isAccepted || importPath.isEmpty())
        return;
    const QPointer<AttributeBrowserWidget> self(this);
    QString errorText;
    bool isImported = false;
    {
        const ScopedSignalBlocker blocker(ui->treeView);
        isImported = treeUtils->importAttributeFromJson(fileName, importPath, errorText);
    }
    if (!self)
        return;
    if (isImported)
        onBtnReadAttributeClicked();
    else
        AttributeTreeModelInputDialogs::ShowWarningMessage(this, {}, errorText);
}

void AttributeBrowserWidget::on_newBackendClicked()
{
    const QPointer<BackendCreateWidget> dialog = new BackendCreateWidget(nullptr, pathOf(contextIndex));
    deleteWith(*this, *dialog);
    dialog->show();
    connect(dialog, SIGNAL(backendCreatedSuccess()), this, SLOT(onBtnReadAttributeClicked()));
}

void AttributeBrowserWidget::on_saveBackendClicked()
{
    if (isContextGone())
        return;
    const QString name = backendNames.value(backendPaths.indexOf(pathOf(contextIndex)));
    const auto backends = repository ? repository->getBackendInterface() : nullptr;
    const bool isSaved = backends && backends->saveBackend(name);
    Vantry::logLine(LogMessageType::Outcome)
        << "Backend :- '" << name << "' Updated With Result: " << isSaved;
}

} // namespace Widgets
