#include "repository/store/NewNodes.h"

#include "repository/store/Node.h"

#include <algorithm>

namespace Repository {

// The node is linked already, so that it must not get lost.
Node& NewNodes::add(std::unique_ptr<Node> node, quint32 hash)
{
    std::vector<Entry>& entries = byShard[NodeIndex::shardNumber(hash)];
    if (entries.size() == entries.capacity()) {
        try {
            entries.reserve(std::max<std::size_t>(8, 2 * entries.size()));
        } catch (...) {
            node->parent->children->drop(*node);
            throw;
        }
    }
    return *entries.emplace_back(Entry{std::move(node), hash}).node;
}

} // namespace Repository
