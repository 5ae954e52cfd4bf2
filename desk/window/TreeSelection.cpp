#include "desk/window/TreeSelection.h"

#include "host/Utilities/ModelViews/AttributeTreeViewModel.h"

#include <QTreeView>

namespace Vantry {

bool selectInTree(QWidget& page, const QString& path)
{
    const auto trees = page.findChildren<QTreeView*>();
    for (QTreeView* const tree : trees) {
        const auto* const model =
            qobject_cast<const Utilities::ModelViews::AttributeTreeViewModel*>(tree->model());
        const QModelIndex item = model ? model->indexFromPath(path) : QModelIndex();
        if (!item.isValid())
            continue;
        tree->setFocus();
        tree->setCurrentIndex(item);
        tree->scrollTo(item);
        return true;
    }
    return false;
}

} // namespace Vantry
