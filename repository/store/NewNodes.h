#pragma once

#include "repository/notification/PatternIndex.h"
#include "repository/store/NodeIndex.h"

#include <memory>
#include <new>
#include <vector>

namespace Repository {

// New nodes that are linked in the tree already, to be filed in the index all at once, shard by shard: the
// index is larger than the processor's caches, and one shard of it is not. The structure lock is held for all
// of its life; no other lock is taken before the nodes are filed.
class NewNodes
{
public:
    NewNodes() = default;

    // Takes nodes that were not filed out of the tree.
    ~NewNodes()
    {
        forEach([](Node& node) { node.parent->children->drop(node); });
    }
    Q_DISABLE_COPY(NewNodes)

    // The hash is that of the node's path.
    Node& add(NodePointer node, quint32 hash);

    // Hands all nodes to the index, and what waits for them to the nodes. Those that somebody may listen to
    // are shown to the visitor as they are filed, with their shard locked. Room is made for all of them
    // first, so that all are filed or none; false when memory was refused for telling of them.
    template <typename Visitor>
    bool file(NodeIndex& index, const PatternIndex& patterns, const Visitor& visitor)
    {
        sortByShard();
        forEachShard([&index](std::size_t number, Entry*, std::size_t count) {
            NodeIndex::Shard& shard = index.shard(number);
            const std::lock_guard shardLock(shard.mutex);
            shard.nodes.reserveMore(count);
        });
        bool areAllTold = true;
        forEachShard([&](std::size_t number, Entry* first, std::size_t count) {
            NodeIndex::Shard& shard = index.shard(number);
            const std::lock_guard shardLock(shard.mutex);
            const bool anybodyListens = !shard.pending.empty() || patterns.getGeneration() != 0;
            for (Entry* entry = first; entry != first + count; ++entry) {
                Node& node = *entry->node; // not looked at without need, since there may be a million
                shard.nodes.insert(std::move(entry->node), entry->hash);
                if (anybodyListens)
                    areAllTold = show(shard, node, visitor) && areAllTold;
            }
        });
        entries.clear();
        return areAllTold;
    }

    // Each node, in no particular order.
    template <typename Visitor>
    void forEach(const Visitor& visitor) const
    {
        for (const Entry& entry : entries)
            visitor(*entry.node);
    }

private:
    template <typename Visitor>
    static bool show(NodeIndex::Shard& shard, Node& node, const Visitor& visitor)
    {
        try {
            shard.attachPending(node);
            visitor(node);
        } catch (const std::bad_alloc&) {
            return false;
        }
        return true;
    }

    struct Entry
    {
        NodePointer node;
        quint32 hash;
    };

    void sortByShard();

    // Calls back for each shard that gets some, with the first of them and how many there are.
    template <typename Callback>
    void forEachShard(const Callback& callback)
    {
        for (std::size_t first = 0, end = 0; first < entries.size(); first = end) {
            const std::size_t number = NodeIndex::shardNumber(entries[first].hash);
            while (end < entries.size() && NodeIndex::shardNumber(entries[end].hash) == number)
                ++end;
            callback(number, &entries[first], end - first);
        }
    }

    std::vector<Entry> entries;
};

} // namespace Repository
