#include "repository/history/NodeState.h"

#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/store/AttributeTree.h"

namespace Repository {

NodeState NodeState::of(const Node& node)
{
    return {true, node.isAttribute(), node.getAccess(),
            node.isAttribute() ? node.value.toVariant() : QVariant()};
}

NodeState NodeState::at(AttributeTree& tree, const QString& path)
{
    const NodeIndex::Key key(path);
    const NodeIndex::Shard& shard = tree.index.shardOf(key);
    const std::lock_guard shardLock(shard.mutex);
    const Node* node = shard.find(key);
    return node ? of(*node) : NodeState();
}

std::size_t NodeState::getSize() const
{
    switch (value.userType()) {
    case QMetaType::QString:
        return std::size_t(value.toString().size()) * sizeof(QChar) + sizeof(NodeState);
    case QMetaType::QByteArray:
        return std::size_t(value.toByteArray().size()) + sizeof(NodeState);
    case QMetaType::QStringList: {
        std::size_t size = sizeof(NodeState);
        for (const QString& text : value.toStringList())
            size += std::size_t(text.size()) * sizeof(QChar) + sizeof(QString);
        return size;
    }
    default:
        return sizeof(NodeState);
    }
}

bool isSameValue(const NodeState& a, const NodeState& b)
{
    if (!a.isAttribute || !b.isAttribute)
        return a.isAttribute == b.isAttribute;
    return FrameworkCore::Values::isSameValue(a.value, b.value);
}

} // namespace Repository
