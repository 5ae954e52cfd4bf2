#include "repository/transaction/NodeOrder.h"

#include "repository/backends/Backend.h"

#include <algorithm>
#include <limits>
#include <new>
#include <utility>

namespace Repository {

using FrameworkCore::Notification::UpdateResult;
using Kind = Documents::SiblingPlace::Kind;

namespace {

Node* firstIn(const Node& group)
{
    const std::vector<Node*>& places = group.children->places;
    return *std::find_if(places.begin(), places.end(), [](const Node* child) { return child; });
}

Node* nodeAt(AttributeTree& tree, const QString& path)
{
    return tree.index.find(NodeIndex::Key(path));
}

} // namespace

// Where among its siblings a new child belongs, as its document has them.
std::size_t NodeOrder::placeFor(const QString& path, const Node& parent)
{
    const Children& siblings = *parent.children;
    if (!parent.backend || siblings.count == 0)
        return siblings.places.size();
    const Backend::SiblingPosition place = parent.backend->positionOf(path);
    if (place.kind == Kind::First)
        return 0;
    if (place.kind == Kind::After) {
        const Node* const last = siblings.last();
        const Node* const before = last->hasPath(place.sibling) ? last : nodeAt(tree, place.sibling);
        if (before && before->parent == &parent)
            return before->slot + std::size_t(1);
    }
    if (place.kind != Kind::Last)
        restoreLater(*parent.backend);
    std::size_t end = siblings.places.size();
    while (end > 0 && siblings.places[end - 1] && siblings.places[end - 1]->backend != parent.backend)
        --end;
    return end;
}

// Whether a node is known to be where its document has it.
bool NodeOrder::isInPlace(const Node& node)
{
    const Children& siblings = *node.parent->children;
    const Backend::SiblingPosition place = node.backend->positionOf(node.getPath());
    if (place.kind == Kind::Last)
        return siblings.last() == &node;
    if (place.kind == Kind::First)
        return firstIn(*node.parent) == &node;
    const Node* const before = place.kind == Kind::After ? nodeAt(tree, place.sibling) : nullptr;
    if (!before || before->parent != node.parent || before->slot > node.slot)
        return false;
    const auto begin = siblings.places.begin();
    return std::all_of(begin + before->slot + 1, begin + node.slot, [](const Node* each) { return !each; });
}

void NodeOrder::restoreAll(std::vector<Delivery>& deliveries)
{
    for (Backend* const backend : std::exchange(unordered, {}))
        restore(*backend, deliveries);
}

void NodeOrder::restore(Backend& backend, std::vector<Delivery>& deliveries)
{
    std::vector<Node*> held;
    std::vector<Node*> nodes;
    try {
        if (Node* const root = nodeAt(tree, backend.getName()))
            nodes = subtreeOf(*root, &backend);
        backend.visit([&](const QString& path, const FrameworkCore::Values::Value&) {
            Node* const node = nodeAt(tree, path);
            if (node && node->parent && node->parent->backend == &backend)
                held.push_back(node);
        });
    } catch (const std::bad_alloc&) {
        failed = true;
        return;
    }
    // What the document does not hold, as the roots of other backends, comes last.
    for (const Node* const node : nodes) {
        if (node->children)
            node->children->giveSlots(std::numeric_limits<quint32>::max());
    }
    for (std::size_t i = 0; i < held.size(); ++i)
        held[i]->slot = quint32(i);
    for (const Node* const node : nodes) {
        if (node->children && node->children->orderBySlots())
            announce(*node, deliveries);
    }
}

// Watchers are of attributes, so that those of the first one below are notified.
void NodeOrder::announce(const Node& parent, std::vector<Delivery>& deliveries)
{
    Node* node = firstIn(parent);
    while (!node->isAttribute() && node->children && node->children->count > 0)
        node = firstIn(*node);
    if (!node->isAttribute())
        return;
    const std::lock_guard shardLock(tree.index.shardOf(*node).mutex);
    try {
        Delivery::collect(deliveries, *node, tree.patterns, UpdateResult::Reordered);
    } catch (const std::bad_alloc&) {
        failed = true;
    }
}

} // namespace Repository
