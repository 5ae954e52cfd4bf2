#include "repository/AttributeStore.h"
#include "repository/Backend.h"
#include "repository/PathRules.h"
#include "repository/Refusals.h"
#include "repository/TreeEdit.h"
#include "repository/TreeSearch.h"

#include <algorithm>

// The part of the store that looks at, and changes, the shape of the tree.

namespace Repository {

using FrameworkCore::AppConfig::Interfaces::ChildInformation;
using FrameworkCore::AppConfig::Interfaces::PathSearch;

const Node* AttributeStore::nodeOf(QStringView path)
{
    return path.isEmpty() ? &top : index.find(NodeIndex::Key(path));
}

bool AttributeStore::hidesValues(QStringView path)
{
    for (; !path.isEmpty(); path = parentPath(path)) {
        if (const Node* node = nodeOf(path))
            return !node->isReadable();
    }
    return false;
}

QVector<ChildInformation> AttributeStore::getChildren(const QString& path, const QString& beginning)
{
    QVector<ChildInformation> found;
    const std::shared_lock lock(structure);
    const Node* node = nodeOf(path);
    if (!node || !node->children)
        return found;
    if (beginning.isEmpty())
        found.reserve(node->children->count);
    const int nameStart = path.isEmpty() ? 0 : path.size() + 1;
    node->children->visit(NameFilter::beginning(beginning), [&](const Node& child) {
        if (beginning.isEmpty() || child.getName().startsWith(beginning))
            found.append({child.path.mid(nameStart), child.children ? child.children->count : 0});
        return true;
    });
    return found;
}

QStringList AttributeStore::getChildNames(const QString& path)
{
    QStringList names;
    const QVector<ChildInformation> children = getChildren(path, {});
    names.reserve(children.size());
    for (const ChildInformation& child : children)
        names.append(child.name);
    return names;
}

int AttributeStore::getChildCount(const QString& path)
{
    const std::shared_lock lock(structure);
    const Node* node = nodeOf(path);
    return node && node->children ? node->children->count : 0;
}

QStringList AttributeStore::getLastChildNames(const QString& path, int count)
{
    QStringList names;
    const std::shared_lock lock(structure);
    const Node* node = nodeOf(path);
    if (!node || !node->children)
        return names;
    const std::vector<Node*>& places = node->children->places;
    for (auto child = places.rbegin(); child != places.rend() && names.size() < count; ++child) {
        if (*child)
            names.append((*child)->getName().toString());
    }
    std::reverse(names.begin(), names.end());
    return names;
}

FrameworkCore::AppConfig::Interfaces::NodeInformation AttributeStore::getNodeInformation(const QString& path)
{
    NodeInformation information;
    const std::shared_lock lock(structure);
    const NodeIndex::Key key(path);
    NodeIndex::Shard& shard = index.shardOf(key);
    const std::lock_guard shardLock(shard.mutex);
    const Node* node = shard.find(key);
    if (!node)
        return information;
    information.exists = true;
    information.isAttribute = node->isAttribute();
    information.isBackendRoot = node->isBackendRoot();
    information.childCount = node->children ? node->children->count : 0;
    information.accessMode = node->getAccess();
    if (node->isAttribute())
        information.dataType = QString::fromLatin1(node->value.typeName());
    if (node->backend)
        information.backend = node->backend->getName();
    return information;
}

QStringList AttributeStore::findPaths(const PathSearch& search)
{
    const std::shared_lock lock(structure);
    return Repository::findPaths(top, search, [this](QStringView path) { return nodeOf(path); });
}

FrameworkCore::AppConfig::Outcome AttributeStore::removeTree(const QString& path)
{
    if (isAtOrBelow(path, ownRoot))
        return Refusals::ownTree();
    const History::Scope step(history, [&path] { return QStringLiteral("Remove %1").arg(path); });
    TreeEdit edit(*this, step.getRecorder() ? QStringList(path) : QStringList(), step.getRecorder());
    return edit.removeTree(path);
}

} // namespace Repository
