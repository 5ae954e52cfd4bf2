#include "desk/common/NodeSelection.h"

#include "desk/common/TreeSelection.h"
#include "host/Utilities/ModelViews/AdvancedAttributeModel.h"
#include "host/Utilities/ModelViews/AttributeTreeViewModel.h"

#include <QAbstractItemView>
#include <QApplication>

namespace Vantry {

using Utilities::ModelViews::AdvancedAttributeModel;
using Utilities::ModelViews::AttributeTreeViewModel;

namespace {

// The path in a row of any of the lists; whatever others have in its place is none.
QString pathIn(const QModelIndex& row)
{
    return qobject_cast<const AdvancedAttributeModel*>(row.model())
               ? row.siblingAtColumn(AdvancedAttributeModel::PathColumn).data().toString()
               : row.siblingAtColumn(0).data(AttributeTreeViewModel::PathRole).toString();
}

} // namespace

NodeSelection::NodeSelection(std::shared_ptr<Repository> attributes, const QWidget& watchedWindow)
    : repository(std::move(attributes)), window(watchedWindow)
{
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* focused) { follow(focused); });
}

void NodeSelection::follow(QWidget* focused)
{
    auto* const focusedView = qobject_cast<QAbstractItemView*>(focused);
    if (focusedView && focusedView->window() == &window && focusedView->model())
        view = focusedView;
}

QString NodeSelection::getPath() const
{
    if (view && view->isVisible() && view->currentIndex().isValid()) {
        const QString path = pathIn(view->currentIndex());
        if (repository->getTreeInterface()->getNodeInformation(path).exists)
            return path;
    }
    return currentInTree(window);
}

} // namespace Vantry
