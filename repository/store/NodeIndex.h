#pragma once

#include "repository/store/NodeTable.h"

#include <QString>

#include <array>
#include <mutex>
#include <unordered_map>

namespace Repository {

// Finds nodes by their full path. It is cut into shards, each a table with a lock of its own, so that threads
// that work on different attributes rarely meet.
class NodeIndex
{
public:
    // A path together with its hash, computed once for all that an operation looks up with it.
    struct Key
    {
        explicit Key(QStringView path);
        Key(QStringView knownPath, quint32 knownHash) : path(knownPath), hash(knownHash) {}

        QStringView path;
        quint32 hash;
    };

    // What is known of a path that has no node, until there is one.
    struct Pending
    {
        RegistrationList exact;
        Validations validations;
    };

    struct alignas(64) Shard
    {
        Node* find(const Key& key) const { return nodes.find(key.path, key.hash); }

        // Null when there are none. The node is that of the path, or null.
        const Validations* validationsOf(const Node* node, QStringView path) const;

        // Gives a new node what is pending for its path.
        void attachPending(Node& node);

        mutable std::mutex mutex; // guards all of the shard and the attribute part of its nodes
        NodeTable nodes;          // right after it, so that a look-up finds both in one line of the cache
        std::unordered_map<QString, Pending> pending;
    };

    // So many that a thread is seldom put to sleep for another one; the locks of more of them would no longer
    // stay near the processor.
    static constexpr std::size_t shardCount = 256;

    // By the highest bits of the hash; its table goes by the lowest.
    static std::size_t shardNumber(quint32 hash) { return hash >> 24; }

    Shard& shard(std::size_t number) { return shards[number]; }
    Shard& shardOf(const Key& key) { return shards[shardNumber(key.hash)]; }
    Shard& shardOf(const Node& node) { return shards[shardNumber(node.pathHash)]; }
    Node* find(const Key& key) { return shardOf(key).find(key); }

private:
    std::array<Shard, shardCount> shards;
};

} // namespace Repository
