#include "repository/store/TreeReader.h"

#include "repository/backends/Backend.h"
#include "repository/store/AttributeTree.h"
#include "repository/store/TreeSearch.h"

#include <algorithm>

namespace Repository {

using FrameworkCore::AppConfig::Interfaces::ChildInformation;
using FrameworkCore::AppConfig::Interfaces::NodeInformation;
using FrameworkCore::AppConfig::Interfaces::PathSearch;

QVector<ChildInformation> TreeReader::getChildren(const QString& path, const QString& beginning) const
{
    QVector<ChildInformation> found;
    const std::shared_lock lock(tree.structure);
    const Node* node = tree.nodeOf(path);
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

QStringList TreeReader::getChildNames(const QString& path) const
{
    QStringList names;
    const QVector<ChildInformation> children = getChildren(path, {});
    names.reserve(children.size());
    for (const ChildInformation& child : children)
        names.append(child.name);
    return names;
}

int TreeReader::getChildCount(const QString& path) const
{
    const std::shared_lock lock(tree.structure);
    const Node* node = tree.nodeOf(path);
    return node && node->children ? node->children->count : 0;
}

QStringList TreeReader::getLastChildNames(const QString& path, int count) const
{
    QStringList names;
    const std::shared_lock lock(tree.structure);
    const Node* node = tree.nodeOf(path);
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

NodeInformation TreeReader::getNodeInformation(const QString& path) const
{
    NodeInformation information;
    const std::shared_lock lock(tree.structure);
    const NodeIndex::Key key(path);
    NodeIndex::Shard& shard = tree.index.shardOf(key);
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

QStringList TreeReader::findPaths(const PathSearch& search) const
{
    const std::shared_lock lock(tree.structure);
    return Repository::findPaths(tree.top, search, [this](QStringView path) { return tree.nodeOf(path); });
}

} // namespace Repository
