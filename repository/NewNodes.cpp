#include "repository/NewNodes.h"

namespace Repository {

Node& NewNodes::add(std::unique_ptr<Node> node, quint32 hash)
{
    return *byShard[NodeIndex::shardNumber(hash)].emplace_back(Entry{std::move(node), hash}).node;
}

} // namespace Repository
