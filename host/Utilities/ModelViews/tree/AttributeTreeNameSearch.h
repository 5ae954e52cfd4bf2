#pragma once

#include "host/Utilities/ModelViews/tree/AttributeTreeContents.h"

#include <functional>
#include <optional>
#include <vector>

namespace Utilities::ModelViews {

// Searches for names as QAbstractItemModel::match does, without making an index of every row. The hits come
// in the order of match; a negative number of hits means all.

using AttributeTreeNames = std::function<bool(const QString&)>;

// Among the children of one item, from a row on and, when it wraps, before that row.
std::vector<AttributeTreeNode> findNamesOnLevel(AttributeTreeItem& item, int from, bool wrap, int hits,
                                                const AttributeTreeNames& isWanted);

// In the whole tree, parents before their children. Empty when there are so many nodes of that name that a
// walk finds the first ones sooner.
std::optional<std::vector<AttributeTreeNode>> findNameInTree(AttributeTreeContents& contents,
                                                             const AttributeTreeContents::TreeInterface& tree,
                                                             const QString& name, int hits);

} // namespace Utilities::ModelViews
