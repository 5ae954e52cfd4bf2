#include "repository/SubtreeBuilder.h"

#include "host/FrameworkCore/Values/Utf8.h"
#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/PathRules.h"
#include "repository/PatternIndex.h"

#include <algorithm>

namespace Repository {

using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;

namespace {

// Nearly all names are ASCII, which needs no decoder and just one block of memory.
QString joinedPath(const QString& parent, std::string_view name)
{
    if (!FrameworkCore::Values::isAscii(name))
        return parent + pathSeparator + QString::fromUtf8(name.data(), int(name.size()));
    QString path(parent.size() + 1 + int(name.size()), Qt::Uninitialized);
    QChar* end = std::copy(parent.begin(), parent.end(), path.begin());
    *end++ = pathSeparator;
    std::transform(name.begin(), name.end(), end, [](char c) { return QLatin1Char(c); });
    return path;
}

} // namespace

SubtreeBuilder::SubtreeBuilder(Node& emptyRoot) : root(emptyRoot), levels{{0, &emptyRoot}}
{
}

void SubtreeBuilder::add(std::string_view path, const Value& value)
{
    const Level above = levelAbove(path);
    Node& parent = *above.node;
    auto node = std::make_unique<Node>(joinedPath(parent.path, path.substr(above.nameBegin())));
    node->parent = &parent;
    node->backend = root.backend;
    node->access = root.access;
    if (value.type != Type::Group) {
        node->isAttribute = true;
        node->value = FrameworkCore::Values::toVariant(value);
    }
    parent.childrenToFill().append(*node);

    last.assign(path);
    levels.push_back({path.size(), node.get()});
    if (!byPath.isEmpty())
        byPath.insert(node->path, node.get());
    const NodeIndex::Key key(node->path);
    made[NodeIndex::shardNumber(key)].push_back({std::move(node), key.hash});
}

SubtreeBuilder::Level SubtreeBuilder::levelAbove(std::string_view path)
{
    const auto leadsTo = [&](std::size_t length) {
        return length == 0 ||
               (length < path.size() && path[length] == '.' && last.compare(0, length, path, 0, length) == 0);
    };
    while (!leadsTo(levels.back().pathLength))
        levels.pop_back();
    if (path.find('.', levels.back().nameBegin()) == std::string_view::npos)
        return levels.back();
    // The file comes back to a section that it has left.
    const std::string_view parent = path.substr(0, path.rfind('.'));
    levels.push_back({parent.size(), &search(joinedPath(root.path, parent))});
    return levels.back();
}

Node& SubtreeBuilder::search(const QString& path)
{
    if (byPath.isEmpty()) {
        for (const std::vector<NodeIndex::Entry>& entries : made) {
            for (const NodeIndex::Entry& entry : entries)
                byPath.insert(entry.node->path, entry.node.get());
        }
    }
    return *byPath.value(path, &root);
}

void SubtreeBuilder::file(NodeIndex& index, const PatternIndex& patterns, std::vector<Delivery>& deliveries)
{
    byPath.clear();
    for (std::size_t number = 0; number < made.size(); ++number) {
        NodeIndex::Shard& shard = index.shard(number);
        const std::lock_guard shardLock(shard.mutex);
        shard.reserveMore(made[number].size());
        const bool anybodyListens = !shard.waiting.empty() || patterns.getGeneration() != 0;
        for (NodeIndex::Entry& entry : made[number]) {
            Node& node = *entry.node;
            if (anybodyListens)
                shard.handWaiting(node);
            shard.insert(std::move(entry));
            if (anybodyListens && node.isAttribute)
                Delivery::collect(deliveries, node, patterns, Delivery::UpdateResult::Created);
        }
    }
}

} // namespace Repository
