#include "repository/transaction/NodeWriter.h"

#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/backends/Backend.h"
#include "repository/common/PathRules.h"
#include "repository/common/RepositoryLog.h"
#include "repository/common/Texts.h"
#include "repository/store/SubtreeBuilder.h"

#include <new>
#include <utility>

namespace Repository {

NodeWriter::NodeWriter(AttributeTree& attributes, bool keepsImages)
    : tree(attributes), order(tree), images(keepsImages ? std::make_unique<BeforeImages>() : nullptr)
{
}

void NodeWriter::deliver()
{
    removedNodes.clear();
    for (const Delivery& delivery : deliveries)
        delivery.send();
    if (order.hasFailed())
        logFailure(Texts::tr("Not all entries are in the order of their file: there is not enough memory "
                             "to sort them; reload the backend"));
    if (!areAllDelivered)
        logFailure(
            Texts::tr("Not all watchers were notified of new attributes: there is not enough memory for "
                      "it"));
}

Node* NodeWriter::find(QStringView path) const
{
    return tree.index.find(NodeIndex::Key(path));
}

Node& NodeWriter::nearest(QStringView path) const
{
    while (!path.isEmpty()) {
        if (Node* node = find(path))
            return *node;
        path = parentPath(path);
    }
    return tree.top;
}

Node& NodeWriter::ensure(QStringView path)
{
    Node* node = &nearest(path);
    for (int length = node->getPathSize(); length < path.size();) {
        const qsizetype nameEnd = path.indexOf(pathSeparator, length == 0 ? 0 : length + 1);
        const QString made = (nameEnd < 0 ? path : path.left(nameEnd)).toString();
        node = &makeNode(made, NodeIndex::Key(made), *node);
        length = made.size();
    }
    return *node;
}

Node& NodeWriter::ensureChild(Node& parent, const QString& path)
{
    const NodeIndex::Key key(path);
    Node* node = tree.index.find(key);
    return node ? *node : makeNode(path, key, parent);
}

NodePointer NodeWriter::linkNode(const QString& path, quint32 hash, Node& parent, Placing placing)
{
    budget.spend(std::size_t(path.size()));
    auto made = Node::make(parent, QStringView(path).mid(path.lastIndexOf(pathSeparator) + 1), hash);
    made->backend = parent.backend;
    if (made->backend)
        made->setAccess(made->backend->getAccessMode());
    if (images)
        images->add(*made, NodeState());
    Children& siblings = parent.ensureChildren();
    siblings.insert(*made, placing == Placing::Last ? siblings.places.size() : order.placeFor(path, parent));
    return made;
}

// A node that cannot be filed is taken out of the tree again.
Node& NodeWriter::fileNode(NodeIndex::Shard& shard, NodePointer made)
{
    try {
        shard.nodes.reserveMore(1);
        shard.attachPending(*made);
    } catch (...) {
        made->parent->children->drop(*made);
        throw;
    }
    const quint32 hash = made->pathHash;
    return shard.nodes.insert(std::move(made), hash);
}

Node& NodeWriter::makeNode(const QString& path, const NodeIndex::Key& key, Node& parent)
{
    auto made = linkNode(path, key.hash, parent, Placing::ByDocument);
    NodeIndex::Shard& shard = tree.index.shardOf(key);
    const std::lock_guard shardLock(shard.mutex);
    return fileNode(shard, std::move(made));
}

void NodeWriter::setAttribute(Node& node, const QVariant& value, AccessMode access, UpdateResult kind)
{
    const std::lock_guard shardLock(tree.index.shardOf(node).mutex);
    UpdateResult result = UpdateResult::Created;
    if (node.isAttribute())
        result = node.value.isSame(value) ? UpdateResult::Unchanged : kind;
    giveValue(node, value, access);
    Delivery::collect(deliveries, node, tree.patterns, result, points);
}

void NodeWriter::editText(Node& node, const std::function<void(QString& text)>& edit)
{
    const std::lock_guard shardLock(tree.index.shardOf(node).mutex);
    if (images)
        images->add(node, NodeState::of(node));
    QString& text = node.value.ensureText();
    edit(text);
    if (text.isEmpty())
        node.value = NodeValue();
    Delivery::collect(deliveries, node, tree.patterns, UpdateResult::Changed);
}

void NodeWriter::giveValue(Node& node, const QVariant& value, AccessMode access)
{
    if (images) {
        images->add(node, NodeState::of(node));
        if (!isReadable(access))
            images->hide(node.backend);
    }
    node.value = NodeValue(value);
    node.setAccess(access);
    node.setAttribute(true);
}

void NodeWriter::makeGroup(Node& node)
{
    const std::lock_guard shardLock(tree.index.shardOf(node).mutex);
    if (!node.isAttribute())
        return;
    if (images)
        images->add(node, NodeState::of(node));
    node.setAttribute(false);
    node.value = NodeValue();
    Delivery::collect(deliveries, node, tree.patterns, UpdateResult::Removed);
}

void NodeWriter::followValue(Node& node)
{
    if (node.isAttribute() && node.backend && !node.backend->spell(node.getPath()))
        makeGroup(node);
}

void NodeWriter::create(const QString& path, const NodeIndex::Key& key, Node& ancestor, const QVariant& value,
                        AccessMode access)
{
    const QStringView parentName = parentPath(path);
    Node& parent = ancestor.getPathSize() == parentName.size() ? ancestor : ensure(parentName);
    auto made = linkNode(path, key.hash, parent, Placing::ByDocument);
    NodeIndex::Shard& shard = tree.index.shardOf(key);
    const std::lock_guard shardLock(shard.mutex);
    Node& filed = fileNode(shard, std::move(made));
    giveValue(filed, value, access);
    Delivery::collect(deliveries, filed, tree.patterns, UpdateResult::Created);
}

Node& NodeWriter::addGroup(NewNodes& nodes, Node& parent, const QString& path, Placing placing)
{
    const quint32 hash = NodeIndex::Key(path).hash;
    return nodes.add(linkNode(path, hash, parent, placing), hash);
}

Node& NodeWriter::addAttribute(NewNodes& nodes, Node& parent, const QString& path, quint32 hash,
                               const QVariant& value, AccessMode access, Placing placing)
{
    Node& node = nodes.add(linkNode(path, hash, parent, placing), hash);
    giveValue(node, value, access);
    return node;
}

void NodeWriter::file(SubtreeBuilder& builder)
{
    areAllDelivered = builder.file(tree.index, tree.patterns, deliveries) && areAllDelivered;
}

void NodeWriter::file(NewNodes& nodes, const std::vector<Node*>& attributes)
{
    bool anybodyListens = false;
    areAllDelivered =
        nodes.file(tree.index, tree.patterns, [&anybodyListens](const Node&) { anybodyListens = true; });
    if (!anybodyListens)
        return;
    try {
        for (Node* node : attributes) {
            const std::lock_guard shardLock(tree.index.shardOf(*node).mutex);
            Delivery::collect(deliveries, *node, tree.patterns, UpdateResult::Created);
        }
    } catch (const std::bad_alloc&) { // the nodes are there all the same
        areAllDelivered = false;
    }
}

void NodeWriter::remove(Node& node)
{
    node.parent->children->remove(node);
    for (Node* gone : subtreeOf(node, nullptr)) {
        NodeIndex::Shard& shard = tree.index.shardOf(*gone);
        const std::lock_guard shardLock(shard.mutex);
        if (images)
            images->add(*gone, NodeState::of(*gone));
        if (gone->isAttribute())
            Delivery::collect(deliveries, *gone, tree.patterns, UpdateResult::Removed);
        RegistrationList& exact = gone->listeners.getExact();
        NodeListeners::Block* const block = gone->listeners.getBlock();
        if (!exact.isEmpty() || (block && !block->validations.empty())) {
            NodeIndex::Pending& pending = shard.pending[gone->getPath()];
            pending.exact = std::move(exact);
            if (block)
                pending.validations = std::move(block->validations);
        }
        removedNodes.push_back(shard.nodes.take(*gone));
    }
}

void NodeWriter::prune(Node& node)
{
    Node* group = &node;
    while (group->parent && !group->isAttribute() && !group->isBackendRoot() &&
           (!group->children || group->children->count == 0) &&
           !(group->backend && group->backend->contains(group->getPath()))) {
        Node* parent = group->parent;
        remove(*group);
        group = parent;
    }
}

void NodeWriter::takeAttribute(const QString& path)
{
    Node* node = find(path);
    if (!node)
        return;
    Node& parent = *node->parent;
    if (node->children && node->children->count > 0)
        makeGroup(*node);
    else
        remove(*node);
    prune(parent);
}

} // namespace Repository
