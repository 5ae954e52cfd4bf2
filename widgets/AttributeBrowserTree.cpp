// The tree of the browser page: what is open in it, and the details of its items.
#include "host/Utilities/ModelViews/AttributeTreeViewModel.h"
#include "host/Utilities/ModelViews/AttributeTreeViewModelUtils.h"
#include "host/Utilities/ModelViews/Widgets/BreakableText.h"
#include "host/Utilities/ScopedSignalBlocker.h"
#include "ui_AttributeBrowserWidget.h"
#include "widgets/AttributeBrowserWidget.h"
#include "widgets/AttributeDetails.h"

namespace Widgets {

using Utilities::ModelViews::AttributeTreeViewModelUtils;
using Utilities::ModelViews::Widgets::breakableText;

void AttributeBrowserWidget::onIndexExpanded(QModelIndex index)
{
    expandedPaths.add(pathOf(index));
}

void AttributeBrowserWidget::onIndexCollapsed(QModelIndex index)
{
    expandedPaths.remove(pathOf(index));
}

// Says in the empty tree that the last reading has found nothing.
void AttributeBrowserWidget::showTreeHint()
{
    const bool isEmpty = isTreeRead && treeModel->rowCount() == 0;
    if (isEmpty)
        treeHint->setText(breakableText(tr("Nothing matches \"%1\".\n\nA search path names an attribute or a "
                                           "group; \"*\" in it stands for "
                                           "any text, as in \"*name*\".")
                                            .arg(shownSearchPath)));
    treeHint->setVisible(isEmpty);
}

void AttributeBrowserWidget::openItem(const QModelIndex& index)
{
    ui->treeView->expand(index);
    expandedPaths.add(pathOf(index));
}

void AttributeBrowserWidget::postponeTreeLayout()
{
    // The public way to it: the tree is laid out anew when control returns to the event loop.
    ui->treeView->setRootIndex(ui->treeView->rootIndex());
}

void AttributeBrowserWidget::expandIndexes(QModelIndex parent, QStringList lstExpandedModelPath)
{
    postponeTreeLayout();
    const auto saved = ExpansionMemory::findSavedItems(*treeModel, parent, lstExpandedModelPath);
    for (const ExpansionMemory::SavedItem& each : saved) {
        ui->treeView->expand(each.item);
        expandedPaths.add(each.path);
    }
}

void AttributeBrowserWidget::expandBelow(const QModelIndex& index)
{
    const Utilities::ScopedSignalBlocker blocker(ui->treeView); // what is opened is noted once
    expandChildren(index);
}

void AttributeBrowserWidget::expandChildren(QModelIndex index)
{
    postponeTreeLayout();
    // An open item without children looks like a closed one, and each costs the tree an index that it keeps.
    int mostLeaves = 20000;
    openBranch(index, mostLeaves);
}

void AttributeBrowserWidget::openBranch(const QModelIndex& index, int& leavesLeft)
{
    if (!index.isValid())
        return;
    const int rows = treeModel->rowCount(index);
    for (int row = 0; row < rows; ++row)
        openBranch(treeModel->index(row, 0, index), leavesLeft);
    const bool isLeafTooMany = rows == 0 && --leavesLeft < 0;
    if (!isLeafTooMany && !ui->treeView->isExpanded(index))
        openItem(index);
}

void AttributeBrowserWidget::collapseChildren(QModelIndex index)
{
    postponeTreeLayout();
    closeBranch(index);
}

void AttributeBrowserWidget::closeBranch(const QModelIndex& index)
{
    if (!index.isValid())
        return;
    const int rows = treeModel->rowCount(index);
    for (int row = 0; row < rows; ++row)
        closeBranch(treeModel->index(row, 0, index));
    if (!ui->treeView->isExpanded(index))
        return;
    ui->treeView->collapse(index);
    expandedPaths.remove(pathOf(index));
}

void AttributeBrowserWidget::expandIndexBasedOnComboText(QString& strText)
{
    strText = AttributeTreeViewModelUtils::TrimAttributeName(strText, QString::fromLatin1("."));
    strText = AttributeTreeViewModelUtils::TrimAttributeName(strText, QString::fromLatin1("*"));
    expandedPaths.clear();
    ui->treeView->collapseAll();
    for (const QString& part : strText.split(QLatin1Char('.'))) {
        const QModelIndexList items =
            treeModel->match(treeModel->index(0, 0), Qt::DisplayRole, part, 2, Qt::MatchRecursive);
        for (const QModelIndex& item : items)
            openItem(item);
    }
}

bool AttributeBrowserWidget::isSelectedIndexIsBackendRoot(QModelIndex index)
{
    return index.column() == 0 && backendRootNames.contains(index.data().toString()) &&
           backendPaths.contains(pathOf(index));
}

void AttributeBrowserWidget::onTreeItemClicked(QModelIndex /*clicked*/)
{
    const QModelIndexList selected = ui->treeView->selectionModel()->selectedIndexes();
    const QModelIndex index = selected.value(selected.size() - 2);
    if (index.isValid())
        showDetailsOf(index);
}

void AttributeBrowserWidget::showDetailsOf(QModelIndex index)
{
    detailsIndex = index;
    detailsPath = pathOf(index);
    if (isSelectedIndexIsBackendRoot(index))
        showBackendDetails(index);
    else
        showAttributeDetails(index);
}

void AttributeBrowserWidget::renewDetails(const QModelIndex& firstChanged, const QModelIndex& lastChanged)
{
    const bool isChanged = detailsIndex.isValid() && detailsIndex.parent() == firstChanged.parent() &&
                           detailsIndex.row() >= firstChanged.row() &&
                           detailsIndex.row() <= lastChanged.row();
    if (isChanged)
        showDetailsOf(detailsIndex);
}

// Finds the item again when the tree was read anew, or its row moved.
void AttributeBrowserWidget::followDetails()
{
    if (detailsIndex.isValid() || detailsPath.isEmpty())
        return;
    const QModelIndex item = treeModel->indexFromPath(detailsPath);
    if (item.isValid()) {
        showDetailsOf(item);
        return;
    }
    detailsPath.clear();
    details->clear();
}

// By the keyboard, or by the press that begins a drag, which is not a click.
void AttributeBrowserWidget::showSelection()
{
    const Qt::MouseButtons buttons = QGuiApplication::mouseButtons();
    if (isRemovingRows)
        return;
    if (buttons == Qt::LeftButton || (buttons == Qt::NoButton && ui->treeView->hasFocus()))
        onTreeItemClicked(ui->treeView->currentIndex());
}

void AttributeBrowserWidget::showAttributeDetails(QModelIndex index)
{
    const QString path = pathOf(index);
    const auto validations = repository ? repository->getValidationInterface() : nullptr;
    details->showAttribute(index.data().toString(), path, readValue(path),
                           validations ? validations->getValidationsOf(path) : QStringList());
}

void AttributeBrowserWidget::showBackendDetails(QModelIndex index)
{
    const QString name = backendNames.value(backendPaths.indexOf(pathOf(index)));
    const auto backends = repository ? repository->getBackendInterface() : nullptr;
    const auto information = backends ? backends->getBackendInformation(name) : nullptr;
    details->showBackend(name, information ? information->getBackendType() : QString(),
                         information ? information->getBackendDescription() : QString());
}

} // namespace Widgets
