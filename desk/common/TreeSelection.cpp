#include "desk/common/TreeSelection.h"

#include "host/Utilities/ModelViews/AttributeTreeViewModel.h"

#include <QTreeView>

namespace Vantry {

namespace {

using Utilities::ModelViews::AttributeTreeViewModel;

AttributeTreeViewModel* attributesOf(const QTreeView& tree)
{
    return qobject_cast<AttributeTreeViewModel*>(tree.model());
}

} // namespace

bool selectInTree(QWidget& page, const QString& path)
{
    const auto trees = page.findChildren<QTreeView*>();
    for (QTreeView* const tree : trees) {
        const AttributeTreeViewModel* const model = attributesOf(*tree);
        const QModelIndex item = model ? model->indexFromPath(path) : QModelIndex();
        if (!item.isValid())
            continue;
        tree->setFocus();
        tree->setCurrentIndex(item);
        tree->scrollTo(item);
        emit tree->clicked(item); // so that the page shows its details
        return true;
    }
    return false;
}

void expandInTrees(QWidget& page, const QString& path)
{
    const auto trees = page.findChildren<QTreeView*>();
    for (QTreeView* const tree : trees) {
        if (const AttributeTreeViewModel* const model = attributesOf(*tree))
            tree->expand(model->indexFromPath(path));
    }
}

void readTrees(QWidget& page)
{
    const auto trees = page.findChildren<QTreeView*>();
    for (const QTreeView* const tree : trees) {
        if (AttributeTreeViewModel* const model = attributesOf(*tree))
            emit model->refreshAttributeTree();
    }
}

void showAllInTrees(QWidget& page)
{
    const auto trees = page.findChildren<QTreeView*>();
    for (const QTreeView* const tree : trees) {
        if (AttributeTreeViewModel* const model = attributesOf(*tree))
            emit model->showAllRequested();
    }
}

QString currentInTree(const QWidget& window)
{
    const auto trees = window.findChildren<QTreeView*>();
    for (const QTreeView* const tree : trees) {
        const AttributeTreeViewModel* const model = attributesOf(*tree);
        if (model && tree->isVisible() && tree->currentIndex().isValid())
            return model->pathFromIndex(tree->currentIndex());
    }
    return {};
}

QList<QItemSelectionModel*> selectionModels(const QWidget& window)
{
    QList<QItemSelectionModel*> models;
    const auto trees = window.findChildren<QTreeView*>();
    for (const QTreeView* const tree : trees) {
        if (attributesOf(*tree))
            models.append(tree->selectionModel());
    }
    return models;
}

} // namespace Vantry
