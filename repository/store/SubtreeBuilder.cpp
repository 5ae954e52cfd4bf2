#include "repository/store/SubtreeBuilder.h"

#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/common/PathRules.h"
#include "repository/notification/PatternIndex.h"

namespace Repository {

using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;

SubtreeBuilder::SubtreeBuilder(Node& emptyRoot) : root(emptyRoot), levels{{0, &emptyRoot}}
{
}

void SubtreeBuilder::add(std::string_view path, const Value& value)
{
    const Level above = levelAbove(path);
    Node& parent = *above.node;
    budget.spend(path.size());
    auto node = std::make_unique<Node>(joinedPath(parent.path, path.substr(above.nameBegin())));
    node->parent = &parent;
    node->backend = root.backend;
    node->setAccess(root.getAccess());
    if (value.type != Type::Group) {
        node->setAttribute(true);
        node->value = FrameworkCore::Values::toVariant(value);
    }
    parent.ensureChildren().append(*node);

    last.assign(path);
    levels.push_back({path.size(), node.get()});
    if (!byPath.isEmpty())
        byPath.insert(node->path, node.get());
    const NodeIndex::Key key(node->path);
    made.add(std::move(node), key.hash);
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
    if (byPath.isEmpty())
        made.forEach([this](Node& node) { byPath.insert(node.path, &node); });
    return *byPath.value(path, &root);
}

bool SubtreeBuilder::file(NodeIndex& index, const PatternIndex& patterns, std::vector<Delivery>& deliveries)
{
    byPath.clear();
    return made.file(index, patterns, [&](Node& node) {
        if (node.isAttribute())
            Delivery::collect(deliveries, node, patterns, Delivery::UpdateResult::Created);
    });
}

} // namespace Repository
