#include "repository/store/SubtreeBuilder.h"

#include "host/FrameworkCore/Values/Utf8.h"
#include "host/FrameworkCore/Values/VariantText.h"
#include "repository/common/PathRules.h"
#include "repository/notification/PatternIndex.h"

#include <algorithm>

namespace Repository {

using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;

SubtreeBuilder::SubtreeBuilder(Node& emptyRoot, NodePages& memory)
    : root(emptyRoot), pages(memory), fullPath(emptyRoot.getPath()), levels{{0, fullPath.size(), &emptyRoot}}
{
}

void SubtreeBuilder::add(std::string_view path, const Value& value)
{
    const Level above = levelAbove(path);
    Node& parent = *above.node;
    budget.spend(path.size());
    fullPath.resize(above.fullLength);
    appendName(path.substr(above.nameBegin()));
    const NodeIndex::Key key(fullPath);
    auto node = Node::make(parent, pathAfter(fullPath, above.fullLength), key.hash, &pages);
    node->backend = root.backend;
    node->setAccess(root.getAccess());
    if (value.type != Type::Group) {
        node->setAttribute(true);
        node->value = NodeValue(value, &pages);
    }
    if (!parent.children)
        groups.push_back(&parent);
    parent.ensureChildren().append(*node);

    last.assign(path);
    levels.push_back({path.size(), fullPath.size(), node.get()});
    if (!byPath.isEmpty())
        byPath.insert(fullPath, node.get());
    made.add(std::move(node), key.hash);
}

// Nearly all names are ASCII, which needs no decoder.
void SubtreeBuilder::appendName(std::string_view name)
{
    if (!fullPath.isEmpty())
        fullPath += pathSeparator;
    if (!FrameworkCore::Values::isAscii(name)) {
        fullPath += FrameworkCore::Values::decodeUtf8(name);
        return;
    }
    const int begin = fullPath.size();
    fullPath.resize(begin + int(name.size()));
    std::transform(name.begin(), name.end(), fullPath.data() + begin, [](char c) { return QLatin1Char(c); });
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
    fullPath = joinedPath(root.getPath(), parent);
    levels.push_back({parent.size(), fullPath.size(), &search(fullPath)});
    return levels.back();
}

Node& SubtreeBuilder::search(const QString& path)
{
    if (byPath.isEmpty())
        made.forEach([this](Node& node) { byPath.insert(node.getPath(), &node); });
    return *byPath.value(path, &root);
}

bool SubtreeBuilder::file(NodeIndex& index, const PatternIndex& patterns, std::vector<Delivery>& deliveries)
{
    byPath.clear();
    for (Node* const group : groups)
        group->children->shrink();
    return made.file(index, patterns, [&](Node& node) {
        if (node.isAttribute())
            Delivery::collect(deliveries, node, patterns, Delivery::UpdateResult::Created);
    });
}

} // namespace Repository
