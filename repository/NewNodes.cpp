#include "repository/NewNodes.h"

namespace Repository {

Node& NewNodes::add(std::unique_ptr<Node> node, std::uint64_t hash)
{
    std::vector<NodeIndex::Entry>& entries = byShard[NodeIndex::shardNumber({node->path, hash})];
    return *entries.emplace_back(NodeIndex::Entry{std::move(node), hash}).node;
}

} // namespace Repository
