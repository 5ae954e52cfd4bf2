#include "repository/store/NodeIndex.h"

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace Repository {

namespace {

quint32 hashOf(QStringView path)
{
    return quint32(XXH3_64bits(path.data(), std::size_t(path.size()) * sizeof(QChar)));
}

} // namespace

NodeIndex::Key::Key(QStringView fullPath) : path(fullPath), hash(hashOf(fullPath))
{
}

void NodeIndex::Shard::handWaiting(Node& node)
{
    const auto found = waiting.empty() ? waiting.end() : waiting.find(node.path);
    if (found == waiting.end())
        return;
    node.exact = std::move(found->second.exact);
    if (!found->second.rules.empty())
        node.extrasToFill().rules = std::move(found->second.rules);
    waiting.erase(found);
}

} // namespace Repository
