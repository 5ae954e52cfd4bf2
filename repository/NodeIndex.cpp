#include "repository/NodeIndex.h"

#define XXH_INLINE_ALL
#include <cstring>
#include <xxhash.h>

namespace Repository {

namespace {

std::uint64_t hashOf(QStringView path)
{
    return XXH3_64bits(path.data(), std::size_t(path.size()) * sizeof(QChar));
}

bool isSame(QStringView a, QStringView b)
{
    return a.size() == b.size() &&
           std::memcmp(a.data(), b.data(), std::size_t(a.size()) * sizeof(QChar)) == 0;
}

} // namespace

NodeIndex::Key::Key(QStringView fullPath) : path(fullPath), hash(hashOf(fullPath))
{
}

std::size_t NodeIndex::Shard::Hash::operator()(const std::unique_ptr<Node>& node) const
{
    return hashOf(node->path);
}

bool NodeIndex::Shard::Equal::operator()(const std::unique_ptr<Node>& a, const std::unique_ptr<Node>& b) const
{
    return isSame(a->path, b->path);
}

bool NodeIndex::Shard::Equal::operator()(QStringView path, const std::unique_ptr<Node>& node) const
{
    return isSame(path, node->path);
}

bool NodeIndex::Shard::Equal::operator()(const std::unique_ptr<Node>& node, QStringView path) const
{
    return isSame(node->path, path);
}

Node* NodeIndex::Shard::find(const Key& key) const
{
    const auto found = nodes.find(key.path, key.hash);
    return found == nodes.end() ? nullptr : found->get();
}

Node& NodeIndex::Shard::insert(std::unique_ptr<Node> node)
{
    return **nodes.insert(std::move(node)).first;
}

std::unique_ptr<Node> NodeIndex::Shard::take(const Key& key)
{
    const auto found = nodes.find(key.path, key.hash);
    // The set shows its keys as constant, since their hash must not change; here the node leaves the set.
    auto node = std::move(const_cast<std::unique_ptr<Node>&>(*found));
    nodes.erase(found);
    return node;
}

} // namespace Repository
