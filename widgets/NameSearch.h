#pragma once

#include "host/FrameworkCore/AppConfig/TreeInterface.h"

#include <QModelIndex>

namespace Utilities::ModelViews {
class AttributeTreeViewModel;
}

namespace Widgets {

// Finds items of the attribute tree by their exact name, at any level, in the order in which the tree shows
// them. It gives what a recursive match of the model gives, without listing the whole tree for it.
class NameSearch
{
public:
    // The tree is that of the repository which the model shows; neither is owned.
    NameSearch(const FrameworkCore::AppConfig::Interfaces::TreeInterface& tree,
               const Utilities::ModelViews::AttributeTreeViewModel& model);

    // The first items of that name, at most so many.
    QModelIndexList find(const QString& name, int limit) const;

private:
    const FrameworkCore::AppConfig::Interfaces::TreeInterface& tree;
    const Utilities::ModelViews::AttributeTreeViewModel& model;
};

} // namespace Widgets
