#include "host/Utilities/ModelViews/tree/AttributeTreeNameSearch.h"

#include <algorithm>
#include <utility>

namespace Utilities::ModelViews {

namespace {

constexpr int fewPaths = 64;

using Rows = std::vector<int>; // from the top down to a node

Rows rowsTo(const AttributeTreeNode& node)
{
    Rows rows{node.row};
    for (const AttributeTreeItem* item = node.holder; item->getParent(); item = item->getParent())
        rows.insert(rows.begin(), item->row());
    return rows;
}

} // namespace

std::vector<AttributeTreeNode> findNamesOnLevel(AttributeTreeItem& item, int from, bool wrap, int hits,
                                                const AttributeTreeNames& isWanted)
{
    std::vector<AttributeTreeNode> found;
    const auto search = [&](int first, int end) {
        for (int row = first; row < end && (hits < 0 || int(found.size()) < hits); ++row) {
            if (isWanted(item.child(row).name))
                found.push_back({&item, row});
        }
    };
    search(from, item.size());
    if (wrap)
        search(0, from);
    return found;
}

std::optional<std::vector<AttributeTreeNode>> findNameInTree(AttributeTreeContents& contents,
                                                             const AttributeTreeContents::TreeInterface& tree,
                                                             const QString& name, int hits)
{
    if (name.isEmpty() || name.contains(QLatin1Char('.')) || name.contains(QLatin1Char('*')))
        return std::vector<AttributeTreeNode>(); // no node has such a name
    QStringList paths = tree.findPaths({QStringLiteral("*.") + name, Qt::CaseSensitive, false, fewPaths});
    if (paths.size() == fewPaths)
        return {};
    paths.append(name);

    std::vector<std::pair<Rows, AttributeTreeNode>> found;
    for (const QString& path : qAsConst(paths)) {
        if (const auto node = contents.find(path, true))
            found.emplace_back(rowsTo(*node), *node);
    }
    std::sort(found.begin(), found.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<AttributeTreeNode> nodes;
    for (const auto& [rows, node] : found) {
        if (hits < 0 || int(nodes.size()) < hits)
            nodes.push_back(node);
    }
    return nodes;
}

} // namespace Utilities::ModelViews
