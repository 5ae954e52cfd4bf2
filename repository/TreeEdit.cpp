#include "repository/TreeEdit.h"

#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/PathRules.h"
#include "repository/SubtreeBuilder.h"

#include <QSet>

#include <algorithm>

namespace Repository {

TreeEdit::TreeEdit(AttributeStore& attributeStore) : store(attributeStore), lock(attributeStore.structure)
{
}

TreeEdit::TreeEdit(AttributeStore& attributeStore, const QStringList& heldPaths)
    : store(attributeStore), files(std::make_unique<FileHold>(attributeStore, heldPaths)),
      lock(attributeStore.structure)
{
}

TreeEdit::~TreeEdit()
{
    unlock();
    for (const Delivery& delivery : deliveries)
        delivery.send();
}

void TreeEdit::unlock()
{
    reshapes.clear();
    if (lock.owns_lock())
        lock.unlock();
    files.reset();
    removedNodes.clear();
}

Node* TreeEdit::find(QStringView path)
{
    return store.index.find(NodeIndex::Key(path));
}

Node& TreeEdit::nearest(QStringView path)
{
    while (!path.isEmpty()) {
        if (Node* node = find(path))
            return *node;
        path = parentPath(path);
    }
    return store.top;
}

Node& TreeEdit::ensure(QStringView path)
{
    Node* node = &nearest(path);
    while (node->path.size() < path.size()) {
        const qsizetype nameStart = node->path.isEmpty() ? 0 : node->path.size() + 1;
        const qsizetype nameEnd = path.indexOf(pathSeparator, nameStart);
        node = &makeNode((nameEnd < 0 ? path : path.left(nameEnd)).toString(), *node);
    }
    return *node;
}

Node& TreeEdit::makeNode(const QString& path, Node& parent)
{
    auto made = std::make_unique<Node>(path);
    made->parent = &parent;
    made->backend = parent.backend;
    if (made->backend)
        made->access = made->backend->getAccessMode();
    if (!parent.children)
        parent.children = std::make_unique<Children>();
    parent.children->append(*made);

    const NodeIndex::Key key(path);
    NodeIndex::Shard& shard = store.index.shardOf(key);
    const std::lock_guard shardLock(shard.mutex);
    shard.handWaiting(*made);
    return shard.insert({std::move(made), key.hash});
}

void TreeEdit::setAttribute(Node& node, const QVariant& value, AccessMode access, UpdateResult result)
{
    const std::lock_guard shardLock(store.index.shardOf(NodeIndex::Key(node.path)).mutex);
    node.value = value;
    node.access = access;
    node.isAttribute = true;
    Delivery delivery(node, store.patterns, result, Delivery::allPoints);
    if (!delivery.isEmpty())
        deliveries.push_back(std::move(delivery));
}

void TreeEdit::makeGroup(Node& node)
{
    const std::lock_guard shardLock(store.index.shardOf(NodeIndex::Key(node.path)).mutex);
    if (!node.isAttribute)
        return;
    node.isAttribute = false;
    node.value = QVariant();
    Delivery delivery(node, store.patterns, UpdateResult::Removed, Delivery::allPoints);
    if (!delivery.isEmpty())
        deliveries.push_back(std::move(delivery));
}

const Rules* TreeEdit::rulesOf(const NodeIndex::Shard& shard, const Node* node, const QString& path) const
{
    if (node)
        return node->rules.get();
    if (shard.waiting.empty())
        return nullptr;
    const auto waiting = shard.waiting.find(path);
    return waiting == shard.waiting.end() ? nullptr : &waiting->second.rules;
}

FrameworkCore::AppConfig::StatusCode TreeEdit::acceptNew(const QString& path, const Node* node,
                                                         const Backend* backend, const QVariant& value,
                                                         QString& reason)
{
    if (backend && !isWritable(backend->getAccessMode())) {
        reason = QStringLiteral("the backend '%1' is read-only").arg(backend->getName());
        return StatusCode::NotWritable;
    }
    NodeIndex::Shard& shard = store.index.shardOf(NodeIndex::Key(path));
    const std::lock_guard shardLock(shard.mutex);
    const Rules* rules = rulesOf(shard, node, path);
    const Rule* broken = rules ? findBrokenRule(*rules, value) : nullptr;
    if (broken)
        reason = broken->explain(value);
    return broken ? StatusCode::RefusedByValidation : StatusCode::Success;
}

FrameworkCore::AppConfig::StatusCode TreeEdit::createAttribute(const QString& path, const QVariant& value,
                                                               AccessMode access, QString& reason)
{
    Node* node = find(path);
    Node& ancestor = node ? *node : nearest(parentPath(path));
    Backend* backend = ancestor.backend;
    const StatusCode status = acceptNew(path, node, backend, value, reason);
    if (status != StatusCode::Success)
        return status;
    if (backend) {
        reason = backend->insert(path, FrameworkCore::Values::toValue(value));
        if (!reason.isEmpty())
            return StatusCode::BackendFailure;
        access = AccessMode(quint8(access) & quint8(backend->getAccessMode()));
    }
    if (!node) {
        const QStringView parent = parentPath(path);
        node = &makeNode(path, ancestor.path.size() == parent.size() ? ancestor : ensure(parent));
    }
    setAttribute(*node, value, access, UpdateResult::Created);
    return StatusCode::Success;
}

FrameworkCore::AppConfig::StatusCode TreeEdit::writeDocument(const Node& node, const QVariant& value,
                                                             QVariant& accepted, QString& reason)
{
    {
        const std::lock_guard shardLock(store.index.shardOf(NodeIndex::Key(node.path)).mutex);
        const StatusCode status = AttributeStore::accept(node, value, accepted, reason);
        if (status != StatusCode::Success)
            return status;
    }
    if (node.backend)
        reason = reshape(*node.backend).set(node.path, FrameworkCore::Values::toValue(accepted));
    return reason.isEmpty() ? StatusCode::Success : StatusCode::BackendFailure;
}

std::vector<Node*> TreeEdit::subtree(Node& node, const Backend* onlyBackend) const
{
    std::vector<Node*> found{&node};
    for (std::size_t i = 0; i < found.size(); ++i) {
        const Children* children = found[i]->children.get();
        if (!children)
            continue;
        for (Node* child : children->places) {
            if (child && (!onlyBackend || child->backend == onlyBackend))
                found.push_back(child);
        }
    }
    return found;
}

FrameworkCore::AppConfig::StatusCode TreeEdit::removeTree(const QString& path, QString& reason)
{
    Node* node = find(path);
    if (!node) {
        reason = QStringLiteral("there is no such attribute");
        return StatusCode::NotFound;
    }
    bool siblingsMove = false;
    const StatusCode status = removeFromDocument(*node, siblingsMove, reason);
    if (status == StatusCode::Success)
        removeFromTree(*node, siblingsMove);
    return status;
}

FrameworkCore::AppConfig::StatusCode TreeEdit::removeFromDocument(Node& node, bool& siblingsMove,
                                                                  QString& reason)
{
    for (const auto& backend : store.backends) {
        if (isAtOrBelow(backend->getName(), node.path)) {
            reason = QStringLiteral("it holds the root of the backend '%1'").arg(backend->getName());
            return StatusCode::NotWritable;
        }
    }
    for (const Node* below : subtree(node, nullptr)) {
        if (below->isAttribute && !isWritable(below->access)) {
            reason = QStringLiteral("'%1' is read-only").arg(below->path);
            return StatusCode::NotWritable;
        }
    }
    if (!node.backend)
        return StatusCode::Success;
    reshape(*node.backend);
    siblingsMove = node.backend->removalMovesSiblings(node.path);
    reason = node.backend->remove(node.path);
    return reason.isEmpty() ? StatusCode::Success : StatusCode::BackendFailure;
}

void TreeEdit::removeFromTree(Node& node, bool siblingsMove)
{
    Backend* const backend = node.backend;
    Node& parent = *node.parent;
    remove(node);
    if (siblingsMove)
        showDocument(*backend);
    else
        prune(parent);
}

void TreeEdit::remove(Node& node)
{
    node.parent->children->remove(node);
    for (Node* gone : subtree(node, nullptr)) {
        const NodeIndex::Key key(gone->path);
        NodeIndex::Shard& shard = store.index.shardOf(key);
        const std::lock_guard shardLock(shard.mutex);
        if (gone->isAttribute) {
            Delivery delivery(*gone, store.patterns, UpdateResult::Removed, Delivery::allPoints);
            if (!delivery.isEmpty())
                deliveries.push_back(std::move(delivery));
        }
        if (!gone->exact.empty() || gone->rules) {
            NodeIndex::Waiting& waiting = shard.waiting[gone->path];
            waiting.exact = std::move(gone->exact);
            if (gone->rules)
                waiting.rules = std::move(*gone->rules);
        }
        removedNodes.push_back(shard.take(key));
    }
}

void TreeEdit::prune(Node& node)
{
    Node* group = &node;
    while (group->parent && !group->isAttribute && !group->isBackendRoot &&
           (!group->children || group->children->count == 0) &&
           !(group->backend && group->backend->contains(group->path))) {
        Node* parent = group->parent;
        remove(*group);
        group = parent;
    }
}

void TreeEdit::showEntry(Backend& backend, const QString& path, const FrameworkCore::Values::Value& value)
{
    Node& node = ensure(path);
    if (node.backend != &backend)
        return;
    if (value.type == FrameworkCore::Values::Type::Group) {
        makeGroup(node);
        return;
    }
    const QVariant variant = FrameworkCore::Values::toVariant(value);
    const bool isNew = !node.isAttribute;
    {
        const std::lock_guard shardLock(store.index.shardOf(NodeIndex::Key(path)).mutex);
        if (!isNew && node.value.userType() == variant.userType() && node.value == variant)
            return;
    }
    setAttribute(node, variant, backend.getAccessMode(),
                 isNew ? UpdateResult::Created : UpdateResult::Reloaded);
}

void TreeEdit::takeAttribute(const QString& path)
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

Backend::Reshape& TreeEdit::reshape(Backend& backend)
{
    return reshapes.try_emplace(&backend, backend).first->second;
}

void TreeEdit::mount(Backend& backend)
{
    Node& root = ensure(backend.getName());
    root.backend = &backend;
    root.isBackendRoot = true;
    root.access = backend.getAccessMode();
    showDocument(backend);
}

void TreeEdit::unmount(const Backend& backend)
{
    Node& root = *find(backend.getName());
    Node& parent = *root.parent;
    Backend* const outer = parent.backend;
    const std::vector<Node*> nodes = subtree(root, &backend);
    std::for_each(nodes.rbegin(), nodes.rend(), [&](Node* node) {
        if (!node->children || node->children->count == 0) {
            remove(*node);
            return;
        }
        makeGroup(*node);
        const std::lock_guard shardLock(store.index.shardOf(NodeIndex::Key(node->path)).mutex);
        node->isBackendRoot = false;
        node->backend = outer;
        node->access = outer ? outer->getAccessMode() : AccessMode::ReadWrite;
    });
    prune(parent);
}

void TreeEdit::buildDocument(Backend& backend, Node& root)
{
    SubtreeBuilder builder(root);
    FrameworkCore::Values::Value ofRoot;
    backend.visitEntries([&](const Documents::Entry& entry) {
        if (entry.path.empty())
            ofRoot = entry.value;
        else
            builder.add(entry.path, entry.value);
    });
    showEntry(backend, root.path, ofRoot);
    builder.file(store.index, store.patterns, deliveries);
}

void TreeEdit::showDocument(Backend& backend)
{
    reshape(backend);
    Node& root = ensure(backend.getName());
    if (!root.isAttribute && (!root.children || root.children->count == 0)) {
        buildDocument(backend, root);
        return;
    }
    std::vector<std::pair<QString, FrameworkCore::Values::Value>> entries;
    QSet<QString> wanted;
    backend.visit([&](const QString& path, const FrameworkCore::Values::Value& value) {
        entries.emplace_back(path, value);
        wanted.insert(path);
    });

    std::vector<Node*> present = subtree(root, &backend);
    std::for_each(present.rbegin(), present.rend(), [&](Node* node) {
        if (wanted.contains(node->path))
            return;
        if (node->isBackendRoot || (node->children && node->children->count > 0))
            makeGroup(*node);
        else
            remove(*node);
    });
    for (const auto& [path, value] : entries)
        showEntry(backend, path, value);
}

} // namespace Repository
