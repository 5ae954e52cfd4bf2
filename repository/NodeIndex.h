#pragma once

#include "repository/Node.h"

#include <QString>

#include <array>
#include <cstdint>
#include <memory>
#include <mutex>
#include <tsl/robin_set.h>
#include <unordered_map>

namespace Repository {

// Finds nodes by their full path, and owns them. It is cut into shards, each with a lock of its own, so that
// threads that work on different attributes rarely meet.
class NodeIndex
{
public:
    // A path together with its hash, computed once for all that an operation looks up with it.
    struct Key
    {
        explicit Key(QStringView path);
        Key(QStringView knownPath, std::uint64_t knownHash) : path(knownPath), hash(knownHash) {}

        QStringView path;
        std::uint64_t hash;
    };

    // A node and the hash of its path, which is not computed again when the index grows.
    struct Entry
    {
        std::unique_ptr<Node> node;
        std::uint64_t hash;
    };

    // What is known of a path that has no node: it is handed to the node when there is one.
    struct Waiting
    {
        RegistrationList exact;
        Rules rules;
    };

    class alignas(64) Shard
    {
    public:
        // Tables that are fuller than the set's own half are nearly as fast, and take half the memory. A
        // first thousand nodes find room without any growing.
        Shard() : entries(32) { entries.max_load_factor(0.8F); }

        Node* find(const Key& key) const;
        Node& insert(Entry entry);
        void reserveMore(std::size_t count);
        std::unique_ptr<Node> take(const Key& key);

        // Gives a node that is about to be inserted what waits for its path.
        void handWaiting(Node& node);

        mutable std::mutex mutex; // guards all of the shard and the attribute part of its nodes
        std::unordered_map<QString, Waiting> waiting;

    private:
        struct Hash
        {
            std::size_t operator()(const Entry& entry) const { return entry.hash; }
        };

        struct Equal
        {
            using is_transparent = void;
            bool operator()(const Entry& a, const Entry& b) const;
            bool operator()(QStringView path, const Entry& entry) const;
            bool operator()(const Entry& entry, QStringView path) const;
        };

        tsl::robin_set<Entry, Hash, Equal, std::allocator<Entry>, true> entries;
    };

    static constexpr std::size_t shardCount = 64;
    static std::size_t shardNumber(const Key& key) { return key.hash >> 58; }

    Shard& shard(std::size_t number) { return shards[number]; }
    Shard& shardOf(const Key& key) { return shards[shardNumber(key)]; }
    Node* find(const Key& key) { return shardOf(key).find(key); }

private:
    std::array<Shard, shardCount> shards;
};

} // namespace Repository
