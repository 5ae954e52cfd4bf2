#include "repository/transaction/Projection.h"

#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/common/PathRules.h"
#include "repository/documents/common/Pipeline.h"
#include "repository/store/SubtreeBuilder.h"

#include <algorithm>
#include <unordered_set>

namespace Repository {

using FrameworkCore::AppConfig::AccessMode;
using FrameworkCore::Notification::UpdateResult;

void Projection::mount(Backend& backend)
{
    Node& root = nodes.ensure(backend.getName());
    const auto belongTo = [&](Backend* owner) {
        const std::lock_guard shardLock(nodes.getTree().index.shardOf(root).mutex);
        root.backend = owner;
        root.setAccess(owner ? owner->getAccessMode() : AccessMode::ReadWrite);
    };
    belongTo(&backend);
    try {
        showAll(backend);
    } catch (...) { // there is no memory for its nodes
        belongTo(root.parent->backend);
        nodes.makeGroup(root);
        nodes.prune(root);
        throw;
    }
}

void Projection::unmount(const Backend& backend)
{
    Node& root = *nodes.find(backend.getName());
    Node& parent = *root.parent;
    Backend* const outer = parent.backend;
    const std::vector<Node*> present = subtreeOf(root, &backend);
    std::for_each(present.rbegin(), present.rend(), [&](Node* node) {
        if (!node->children || node->children->count == 0) {
            nodes.remove(*node);
            return;
        }
        nodes.makeGroup(*node);
        const std::lock_guard shardLock(nodes.getTree().index.shardOf(*node).mutex);
        node->backend = outer;
        node->setAccess(outer ? outer->getAccessMode() : AccessMode::ReadWrite);
    });
    nodes.prune(parent);
}

// Of a node that the backend does not hold any more; what lies below it there has gone before.
void Projection::hideEntry(Node& node)
{
    if (node.isBackendRoot() || (node.children && node.children->count > 0))
        nodes.makeGroup(node);
    else
        nodes.remove(node);
}

void Projection::showEntry(Backend& backend, Node& node, const FrameworkCore::Values::Value& value,
                           UpdateResult kind)
{
    if (node.backend != &backend)
        return;
    if (value.type == FrameworkCore::Values::Type::Group) {
        nodes.makeGroup(node);
        return;
    }
    const QVariant variant = FrameworkCore::Values::toVariant(value);
    {
        const std::lock_guard shardLock(nodes.getTree().index.shardOf(node).mutex);
        if (node.isAttribute() && node.value.isSame(variant))
            return;
    }
    nodes.setAttribute(node, variant, backend.getAccessMode(), kind);
}

void Projection::build(Backend& backend, Node& root)
{
    SubtreeBuilder builder(root, nodes.getTree().pages);
    FrameworkCore::Values::Value ofRoot;
    Documents::Pipeline<Documents::Entry> entries([&builder](const Documents::Entry& entry) {
        builder.add(entry.path, entry.value);
        return true;
    });
    backend.visitEntries([&](const Documents::Entry& entry) {
        if (entry.path.empty()) {
            ofRoot = entry.value;
        } else {
            entries.next() = entry;
            entries.put();
        }
    });
    entries.finish();
    showEntry(backend, root, ofRoot);
    nodes.file(builder);
}

void Projection::showAll(Backend& backend, UpdateResult kind)
{
    transaction.edit(backend);
    Node& root = nodes.ensure(backend.getName());
    if (!transaction.isRecorded() && !root.isAttribute() && (!root.children || root.children->count == 0)) {
        build(backend, root);
        return;
    }
    // There may be a million: those that are there already are neither named nor searched again.
    struct Entry
    {
        Node* node; // or a path
        QString path;
        FrameworkCore::Values::Value value;
    };
    std::vector<Entry> entries;
    std::unordered_set<const Node*> kept;
    backend.visit([&](const QString& path, const FrameworkCore::Values::Value& value) {
        Node* const node = nodes.find(path);
        entries.push_back({node, node ? QString() : path, value});
        if (node)
            kept.insert(node);
    });

    std::vector<Node*> present = subtreeOf(root, &backend);
    std::for_each(present.rbegin(), present.rend(), [&](Node* node) {
        if (kept.count(node) == 0)
            hideEntry(*node);
    });
    for (const Entry& entry : entries)
        showEntry(backend, entry.node ? *entry.node : nodes.ensure(entry.path), entry.value, kind);
    nodes.getOrder().restoreLater(backend);
}

void Projection::showChanges(Backend& backend, const DocumentChanges& changes)
{
    transaction.edit(backend);
    if (changes.areMoved)
        nodes.getOrder().restoreLater(backend);
    std::for_each(changes.entries.rbegin(), changes.entries.rend(), [&](const DocumentChange& change) {
        Node* const node = change.kind == DocumentChange::Kind::Removed
                               ? nodes.find(backend.absolute(change.path))
                               : nullptr;
        if (node && node->backend == &backend)
            hideEntry(*node);
    });
    for (const DocumentChange& change : changes.entries) {
        if (change.kind != DocumentChange::Kind::Removed)
            showEntry(backend, nodes.ensure(backend.absolute(change.path)), change.after);
    }
}

} // namespace Repository
