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

bool NodeIndex::Shard::Equal::operator()(const Entry& a, const Entry& b) const
{
    return a.hash == b.hash && isSame(a.node->path, b.node->path);
}

bool NodeIndex::Shard::Equal::operator()(QStringView path, const Entry& entry) const
{
    return isSame(path, entry.node->path);
}

bool NodeIndex::Shard::Equal::operator()(const Entry& entry, QStringView path) const
{
    return isSame(entry.node->path, path);
}

Node* NodeIndex::Shard::find(const Key& key) const
{
    const auto found = entries.find(key.path, key.hash);
    return found == entries.end() ? nullptr : found->node.get();
}

Node& NodeIndex::Shard::insert(Entry entry)
{
    return *entries.insert(std::move(entry)).first->node;
}

void NodeIndex::Shard::reserveMore(std::size_t count)
{
    // The set is built anew by reserve, even when it has the room.
    const auto room = std::size_t(float(entries.bucket_count()) * entries.max_load_factor());
    if (entries.size() + count > room)
        entries.reserve(entries.size() + count);
}

void NodeIndex::Shard::handWaiting(Node& node)
{
    const auto found = waiting.empty() ? waiting.end() : waiting.find(node.path);
    if (found == waiting.end())
        return;
    node.exact = std::move(found->second.exact);
    if (!found->second.rules.empty())
        node.rules = std::make_unique<Rules>(std::move(found->second.rules));
    waiting.erase(found);
}

std::unique_ptr<Node> NodeIndex::Shard::take(const Key& key)
{
    const auto found = entries.find(key.path, key.hash);
    // The set shows its keys as constant, since their hash must not change; here the node leaves the set.
    auto node = std::move(const_cast<Entry&>(*found).node);
    entries.erase(found);
    return node;
}

} // namespace Repository
