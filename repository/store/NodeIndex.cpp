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

const Validations* NodeIndex::Shard::validationsOf(const Node* node, QStringView path) const
{
    if (node)
        return node->getValidations();
    if (pending.empty())
        return nullptr;
    const auto found = pending.find(QString::fromRawData(path.data(), int(path.size())));
    return found == pending.end() ? nullptr : &found->second.validations;
}

void NodeIndex::Shard::attachPending(Node& node)
{
    const auto found = pending.empty() ? pending.end() : pending.find(node.getPath());
    if (found == pending.end())
        return;
    node.listeners.getExact() = std::move(found->second.exact);
    if (!found->second.validations.empty())
        node.listeners.ensureBlock().validations = std::move(found->second.validations);
    pending.erase(found);
}

} // namespace Repository
