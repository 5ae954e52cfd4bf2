#include "repository/store/NewNodes.h"

#include "repository/store/Node.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace Repository {

// The node is linked already, so that it must not get lost.
Node& NewNodes::add(NodePointer node, quint32 hash)
{
    if (entries.size() == entries.capacity()) {
        try {
            entries.reserve(std::max<std::size_t>(64, 2 * entries.size()));
        } catch (...) {
            node->parent->children->drop(*node);
            throw;
        }
    }
    return *entries.emplace_back(Entry{std::move(node), hash}).node;
}

// By counting, since there may be a million.
void NewNodes::sortByShard()
{
    std::array<std::size_t, NodeIndex::shardCount> ends{};
    for (const Entry& entry : entries)
        ++ends[NodeIndex::shardNumber(entry.hash)];
    std::partial_sum(ends.begin(), ends.end(), ends.begin());
    std::vector<Entry> sorted(entries.size());
    for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry)
        sorted[--ends[NodeIndex::shardNumber(entry->hash)]] = std::move(*entry);
    entries.swap(sorted);
}

} // namespace Repository
