#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/store/SubtreeBuilder.h"
#include "repository/transaction/TreeEdit.h"

#include <QSet>

#include <algorithm>

// The part of an edit that brings documents into the tree and takes them out again.

namespace Repository {

void TreeEdit::mount(Backend& backend)
{
    Node& root = ensure(backend.getName());
    const auto belongTo = [&](Backend* owner) {
        const std::lock_guard shardLock(tree.index.shardOf(NodeIndex::Key(root.path)).mutex);
        root.backend = owner;
        root.setAccess(owner ? owner->getAccessMode() : AccessMode::ReadWrite);
    };
    belongTo(&backend);
    try {
        showDocument(backend);
    } catch (...) { // there is no memory for its nodes
        belongTo(root.parent->backend);
        makeGroup(root);
        prune(root);
        throw;
    }
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
        const std::lock_guard shardLock(tree.index.shardOf(NodeIndex::Key(node->path)).mutex);
        node->backend = outer;
        node->setAccess(outer ? outer->getAccessMode() : AccessMode::ReadWrite);
    });
    prune(parent);
}

// Of a node that the document does not hold any more; what lies below it there has gone before.
void TreeEdit::hideEntry(Node& node)
{
    if (node.isBackendRoot() || (node.children && node.children->count > 0))
        makeGroup(node);
    else
        remove(node);
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
    const bool isNew = !node.isAttribute();
    {
        const std::lock_guard shardLock(tree.index.shardOf(NodeIndex::Key(path)).mutex);
        if (!isNew && FrameworkCore::Values::isSameValue(node.value, variant))
            return;
    }
    setAttribute(node, variant, backend.getAccessMode(),
                 isNew ? UpdateResult::Created : UpdateResult::Reloaded);
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
    areAllTold = builder.file(tree.index, tree.patterns, deliveries) && areAllTold;
}

void TreeEdit::showDocument(Backend& backend)
{
    editDocument(backend);
    Node& root = ensure(backend.getName());
    if (!recorder && !root.isAttribute() && (!root.children || root.children->count == 0)) {
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
        if (!wanted.contains(node->path))
            hideEntry(*node);
    });
    for (const auto& [path, value] : entries)
        showEntry(backend, path, value);
    restoreOrder(backend);
}

void TreeEdit::showChanges(Backend& backend, const DocumentChanges& changes)
{
    editDocument(backend);
    if (changes.areMoved)
        restoreOrder(backend);
    std::for_each(changes.entries.rbegin(), changes.entries.rend(), [&](const DocumentChange& change) {
        Node* const node =
            change.kind == DocumentChange::Kind::Removed ? find(backend.absolute(change.path)) : nullptr;
        if (node && node->backend == &backend)
            hideEntry(*node);
    });
    for (const DocumentChange& change : changes.entries) {
        if (change.kind != DocumentChange::Kind::Removed)
            showEntry(backend, backend.absolute(change.path), change.after);
    }
}

} // namespace Repository
