#include "repository/transaction/TreeEdit.h"

#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/common/PathRules.h"
#include "repository/common/RepositoryLog.h"
#include "repository/store/Refusals.h"
#include "repository/store/SubtreeBuilder.h"
#include "repository/store/WriteCheck.h"

#include <QSet>

#include <algorithm>
#include <utility>

namespace Repository {

using FrameworkCore::AppConfig::Outcome;

TreeEdit::TreeEdit(AttributeTree& attributes) : tree(attributes), order(tree), lock(attributes.structure)
{
}

TreeEdit::TreeEdit(AttributeTree& attributes, const QStringList& heldPaths, StepRecorder* stepRecorder)
    : tree(attributes), order(tree), recorder(stepRecorder),
      files(heldPaths.isEmpty() ? nullptr : std::make_unique<FileHold>(attributes, heldPaths)),
      lock(attributes.structure)
{
}

TreeEdit::~TreeEdit()
{
    unlock();
    for (const Delivery& delivery : deliveries)
        delivery.send();
    if (order.hasFailed())
        logFailure(
            QStringLiteral("Not all entries are in the order of their file: there is not enough memory "
                           "to sort them; reload the backend"));
    if (!areAllTold)
        logFailure(
            QStringLiteral("Not all watchers were told of new attributes: there is not enough memory for "
                           "it"));
}

void TreeEdit::unlock()
{
    order.restoreAll(deliveries);
    if (recorder && lock.owns_lock())
        tellRecorder();
    documentEdits.clear();
    if (lock.owns_lock())
        lock.unlock();
    files.reset();
    removedNodes.clear();
}

void TreeEdit::note(const Node& node, const NodeState& before)
{
    if (!recorder || !StepRecorder::records(node.backend))
        return;
    if (before.isHidden())
        hiding.insert(node.backend);
    // The value of a new node comes right behind it.
    if (notes.empty() || notes.back().path.constData() != node.path.constData())
        notes.push_back({node.backend, node.path, before});
}

void TreeEdit::tellRecorder()
{
    std::map<Backend*, std::vector<EntryChange>> changes;
    std::map<Backend*, std::size_t> counts;
    for (const Note& each : notes)
        ++counts[each.backend];
    for (const Note& each : notes) {
        if (counts[each.backend] <= StepRecorder::mostEntries)
            changes[each.backend].push_back({each.path, each.before, stateOf(each.path)});
    }
    for (auto& [backend, edit] : documentEdits) {
        if (hiding.count(backend) > 0)
            recorder->forgetText(*backend);
        if (counts[backend] > StepRecorder::mostEntries)
            recorder->forgetEntries(*backend);
        recorder->endShape(*backend, std::move(changes[backend]));
    }
}

Node* TreeEdit::find(QStringView path)
{
    return tree.index.find(NodeIndex::Key(path));
}

NodeState TreeEdit::stateOf(const QString& path)
{
    const NodeIndex::Key key(path);
    const NodeIndex::Shard& shard = tree.index.shardOf(key);
    const std::lock_guard shardLock(shard.mutex);
    const Node* node = shard.find(key);
    return node ? NodeState::of(*node) : NodeState();
}

Node& TreeEdit::nearest(QStringView path)
{
    while (!path.isEmpty()) {
        if (Node* node = find(path))
            return *node;
        path = parentPath(path);
    }
    return tree.top;
}

Node& TreeEdit::ensure(QStringView path)
{
    Node* node = &nearest(path);
    while (node->path.size() < path.size()) {
        const qsizetype nameStart = node->path.isEmpty() ? 0 : node->path.size() + 1;
        const qsizetype nameEnd = path.indexOf(pathSeparator, nameStart);
        const QString made = (nameEnd < 0 ? path : path.left(nameEnd)).toString();
        node = &makeNode(made, NodeIndex::Key(made), *node);
    }
    return *node;
}

Node& TreeEdit::ensureChild(Node& parent, const QString& path)
{
    const NodeIndex::Key key(path);
    Node* node = tree.index.find(key);
    return node ? *node : makeNode(path, key, parent);
}

std::unique_ptr<Node> TreeEdit::linkNode(const QString& path, Node& parent, Placing placing)
{
    budget.spend(std::size_t(path.size()));
    auto made = std::make_unique<Node>(path);
    made->parent = &parent;
    made->backend = parent.backend;
    if (made->backend)
        made->setAccess(made->backend->getAccessMode());
    note(*made, NodeState());
    Children& siblings = parent.childrenToFill();
    siblings.insert(*made, placing == Placing::Last ? siblings.places.size() : order.placeFor(path, parent));
    return made;
}

// A node that cannot be filed is taken out of the tree again.
Node& TreeEdit::fileNode(NodeIndex::Shard& shard, std::unique_ptr<Node> made, quint32 hash)
{
    try {
        shard.nodes.reserveMore(1);
        shard.handWaiting(*made);
    } catch (...) {
        made->parent->children->drop(*made);
        throw;
    }
    return shard.nodes.insert(std::move(made), hash);
}

Node& TreeEdit::makeNode(const QString& path, const NodeIndex::Key& key, Node& parent)
{
    auto made = linkNode(path, parent, Placing::ByDocument);
    NodeIndex::Shard& shard = tree.index.shardOf(key);
    const std::lock_guard shardLock(shard.mutex);
    return fileNode(shard, std::move(made), key.hash);
}

void TreeEdit::setAttribute(Node& node, const QVariant& value, AccessMode access, UpdateResult result)
{
    const std::lock_guard shardLock(tree.index.shardOf(NodeIndex::Key(node.path)).mutex);
    giveValue(node, value, access);
    Delivery::collect(deliveries, node, tree.patterns, result);
}

void TreeEdit::giveValue(Node& node, QVariant value, AccessMode access)
{
    if (recorder) {
        note(node, NodeState::of(node));
        if (node.backend && !isReadable(access))
            hiding.insert(node.backend);
    }
    node.value = std::move(value);
    node.setAccess(access);
    node.setAttribute(true);
}

void TreeEdit::makeGroup(Node& node)
{
    const std::lock_guard shardLock(tree.index.shardOf(NodeIndex::Key(node.path)).mutex);
    if (!node.isAttribute())
        return;
    note(node, NodeState::of(node));
    node.setAttribute(false);
    node.value = QVariant();
    Delivery::collect(deliveries, node, tree.patterns, UpdateResult::Removed);
}

const Rules* TreeEdit::rulesOf(const NodeIndex::Shard& shard, const Node* node, QStringView path) const
{
    if (node)
        return node->getRules();
    if (shard.waiting.empty())
        return nullptr;
    const auto waiting = shard.waiting.find(QString::fromRawData(path.data(), int(path.size())));
    return waiting == shard.waiting.end() ? nullptr : &waiting->second.rules;
}

Outcome TreeEdit::acceptNew(const NodeIndex::Key& key, const Node* node, const Backend* backend,
                            const QVariant& value)
{
    if (backend && !isWritable(backend->getAccessMode()))
        return Refusals::readOnly(*backend);
    NodeIndex::Shard& shard = tree.index.shardOf(key);
    const std::lock_guard shardLock(shard.mutex);
    const Rules* rules = rulesOf(shard, node, key.path);
    const Breach breach = rules ? findBreach(*rules, value) : Breach();
    return breach ? Outcome(StatusCode::RefusedByValidation, breach.explain()) : Outcome();
}

Outcome TreeEdit::createAttribute(const QString& path, QVariant value, AccessMode access)
{
    const NodeIndex::Key key(path);
    Node* node = tree.index.find(key);
    if (node && node->isAttribute())
        return Outcome(StatusCode::AlreadyExists, QStringLiteral("it exists already"))
            .advise(QStringLiteral("write to it, or choose another name"));
    const QStringView parentName = parentPath(path);
    Node& ancestor = node ? *node : nearest(parentName);
    Backend* backend = ancestor.backend;
    Outcome outcome = acceptNew(key, node, backend, value);
    if (!outcome.ok())
        return outcome;
    if (backend) {
        if (recorder)
            editDocument(*backend);
        outcome = backend->insert(path, FrameworkCore::Values::toValue(value));
        if (!outcome.ok())
            return Refusals::unfit(std::move(outcome), value,
                                   !isReadable(access) || !isReadable(backend->getAccessMode()));
        access = AccessMode(quint8(access) & quint8(backend->getAccessMode()));
    }
    if (node) {
        if (backend && !order.isInPlace(*node))
            restoreOrder(*backend); // the value has come before the group
        setAttribute(*node, value, access, UpdateResult::Created);
        return outcome;
    }
    auto made = linkNode(path, ancestor.path.size() == parentName.size() ? ancestor : ensure(parentName),
                         Placing::ByDocument);
    NodeIndex::Shard& shard = tree.index.shardOf(key);
    const std::lock_guard shardLock(shard.mutex);
    Node& filed = fileNode(shard, std::move(made), key.hash);
    giveValue(filed, std::move(value), access);
    Delivery::collect(deliveries, filed, tree.patterns, UpdateResult::Created);
    return outcome;
}

Node& TreeEdit::addGroup(NewNodes& nodes, Node& parent, const QString& path, Placing placing)
{
    return nodes.add(linkNode(path, parent, placing), NodeIndex::Key(path).hash);
}

Node& TreeEdit::addAttribute(NewNodes& nodes, Node& parent, const QString& path, quint32 hash, QVariant value,
                             AccessMode access, Placing placing)
{
    Node& node = nodes.add(linkNode(path, parent, placing), hash);
    giveValue(node, std::move(value), access);
    return node;
}

void TreeEdit::file(SubtreeBuilder& builder)
{
    areAllTold = builder.file(tree.index, tree.patterns, deliveries) && areAllTold;
}

void TreeEdit::file(NewNodes& nodes, const std::vector<Node*>& attributes)
{
    bool anybodyListens = false;
    areAllTold =
        nodes.file(tree.index, tree.patterns, [&anybodyListens](const Node&) { anybodyListens = true; });
    if (!anybodyListens)
        return;
    try {
        for (Node* node : attributes) {
            const std::lock_guard shardLock(tree.index.shardOf(NodeIndex::Key(node->path)).mutex);
            Delivery::collect(deliveries, *node, tree.patterns, UpdateResult::Created);
        }
    } catch (const std::bad_alloc&) { // the nodes are there all the same
        areAllTold = false;
    }
}

Outcome TreeEdit::writeDocument(const Node& node, const QVariant& value, QVariant& accepted)
{
    {
        const std::lock_guard shardLock(tree.index.shardOf(NodeIndex::Key(node.path)).mutex);
        Outcome outcome = acceptWrite(node, value, accepted);
        if (!outcome.ok() || !node.backend)
            return outcome;
    }
    return Refusals::unfit(
        editDocument(*node.backend).set(node.path, FrameworkCore::Values::toValue(accepted)), accepted,
        !node.isReadable());
}

void TreeEdit::remove(Node& node)
{
    node.parent->children->remove(node);
    for (Node* gone : subtreeOf(node, nullptr)) {
        const NodeIndex::Key key(gone->path);
        NodeIndex::Shard& shard = tree.index.shardOf(key);
        const std::lock_guard shardLock(shard.mutex);
        note(*gone, NodeState::of(*gone));
        if (gone->isAttribute())
            Delivery::collect(deliveries, *gone, tree.patterns, UpdateResult::Removed);
        const Rules* const rules = gone->getRules();
        if (!gone->exact.isEmpty() || (rules && !rules->empty())) {
            NodeIndex::Waiting& waiting = shard.waiting[gone->path];
            waiting.exact = std::move(gone->exact);
            if (rules)
                waiting.rules = std::move(gone->extras->rules);
        }
        removedNodes.push_back(shard.nodes.take(*gone, key.hash));
    }
}

void TreeEdit::prune(Node& node)
{
    Node* group = &node;
    while (group->parent && !group->isAttribute() && !group->isBackendRoot() &&
           (!group->children || group->children->count == 0) &&
           !(group->backend && group->backend->contains(group->path))) {
        Node* parent = group->parent;
        remove(*group);
        group = parent;
    }
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

DocumentEdit& TreeEdit::editDocument(Backend& backend)
{
    const auto [edit, isNew] = documentEdits.try_emplace(&backend, backend);
    if (isNew && recorder)
        recorder->beginShape(backend);
    return edit->second;
}

} // namespace Repository
