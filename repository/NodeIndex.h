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

        QStringView path;
        std::uint64_t hash;
    };

    // What is known of a path that has no node: it is handed to the node when there is one.
    struct Waiting
    {
        Registrations exact;
        Rules rules;
    };

    class alignas(64) Shard
    {
    public:
        Node* find(const Key& key) const;
        Node& insert(std::unique_ptr<Node> node);
        std::unique_ptr<Node> take(const Key& key);

        mutable std::mutex mutex; // guards all of the shard and the attribute part of its nodes
        std::unordered_map<QString, Waiting> waiting;

    private:
        struct Hash
        {
            std::size_t operator()(const std::unique_ptr<Node>& node) const;
        };

        struct Equal
        {
            using is_transparent = void;
            bool operator()(const std::unique_ptr<Node>& a, const std::unique_ptr<Node>& b) const;
            bool operator()(QStringView path, const std::unique_ptr<Node>& node) const;
            bool operator()(const std::unique_ptr<Node>& node, QStringView path) const;
        };

        tsl::robin_set<std::unique_ptr<Node>, Hash, Equal, std::allocator<std::unique_ptr<Node>>, true> nodes;
    };

    Shard& shardOf(const Key& key) { return shards[key.hash >> 58]; }
    Node* find(const Key& key) { return shardOf(key).find(key); }

private:
    std::array<Shard, 64> shards;
};

} // namespace Repository
