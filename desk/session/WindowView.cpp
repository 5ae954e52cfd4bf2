#include "desk/session/WindowView.h"

#include "host/Utilities/ModelViews/AdvancedAttributeModel.h"
#include "host/Utilities/ModelViews/AttributeTreeViewModel.h"

#include <QMainWindow>
#include <QScrollBar>
#include <QTreeView>

#include <algorithm>

namespace Vantry {

using Utilities::ModelViews::AdvancedAttributeModel;
using Utilities::ModelViews::AttributeTreeViewModel;

namespace {

AttributeTreeViewModel* attributesOf(const QTreeView* tree)
{
    return tree ? qobject_cast<AttributeTreeViewModel*>(tree->model()) : nullptr;
}

} // namespace

WindowView::WindowView(QMainWindow& shownWindow)
    : window(shownWindow), monitor(window.findChild<AdvancedAttributeModel*>())
{
    const auto trees = window.findChildren<QTreeView*>();
    const auto found = std::find_if(trees.begin(), trees.end(),
                                    [](const QTreeView* each) { return attributesOf(each) != nullptr; });
    tree = found == trees.end() ? nullptr : *found;
    follow();
}

void WindowView::follow()
{
    if (const AttributeTreeViewModel* const model = attributesOf(tree)) {
        connect(tree, &QTreeView::expanded, this, [this, model](const QModelIndex& index) {
            expanded.insert(model->pathFromIndex(index));
            emit changed();
        });
        connect(tree, &QTreeView::collapsed, this, [this, model](const QModelIndex& index) {
            expanded.remove(model->pathFromIndex(index));
            emit changed();
        });
        connect(tree->verticalScrollBar(), &QScrollBar::valueChanged, this, &WindowView::changed);
        connect(tree->selectionModel(), &QItemSelectionModel::currentChanged, this, &WindowView::changed);
    }
    if (monitor) {
        connect(monitor, &QAbstractItemModel::rowsInserted, this, &WindowView::changed);
        connect(monitor, &QAbstractItemModel::rowsRemoved, this, &WindowView::changed);
        connect(monitor, &QAbstractItemModel::rowsMoved, this, &WindowView::changed);
        connect(monitor, &QAbstractItemModel::modelReset, this, &WindowView::changed);
    }
}

SessionState::View WindowView::get() const
{
    SessionState::View view;
    view.expanded = expanded.values();
    std::sort(view.expanded.begin(), view.expanded.end());
    if (const AttributeTreeViewModel* const model = attributesOf(tree)) {
        view.current = model->pathFromIndex(tree->currentIndex());
        view.scroll = tree->verticalScrollBar()->value();
    }
    if (monitor)
        view.monitored = monitor->getAttributeFullPathList();
    view.geometry = window.saveGeometry();
    view.docks = window.saveState(layoutVersion);
    return view;
}

void WindowView::showFrame(const SessionState::View& view)
{
    window.restoreGeometry(view.geometry);
    window.restoreState(view.docks, layoutVersion);
}

void WindowView::show(const SessionState::View& view)
{
    if (monitor && monitor->getAttributeFullPathList().isEmpty())
        monitor->loadCustomAttributeList(view.monitored);
    if (const AttributeTreeViewModel* const model = attributesOf(tree)) {
        for (const QString& path : view.expanded)
            tree->expand(model->indexFromPath(path));
        const QModelIndex current = model->indexFromPath(view.current);
        if (current.isValid()) {
            tree->setCurrentIndex(current);
            emit tree->clicked(current); // so that the page shows its details
        }
        tree->visualRect(model->index(0, 0)); // lays the rows out, which gives the scroll bar its range
        tree->verticalScrollBar()->setValue(view.scroll);
    }
}

} // namespace Vantry
