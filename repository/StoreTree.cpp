#include "repository/AttributeStore.h"
#include "repository/Backend.h"
#include "repository/PathRules.h"
#include "repository/TreeEdit.h"
#include "repository/TreeSearch.h"

// The part of the store that looks at, and changes, the shape of the tree.

namespace Repository {

using FrameworkCore::AppConfig::Interfaces::ChildInformation;
using FrameworkCore::AppConfig::Interfaces::PathSearch;

namespace {

const QLatin1String backendNamesPath("internal.backends.names");

} // namespace

const Node* AttributeStore::nodeOf(QStringView path)
{
    return path.isEmpty() ? &top : index.find(NodeIndex::Key(path));
}

QVector<ChildInformation> AttributeStore::getChildren(const QString& path)
{
    QVector<ChildInformation> found;
    const std::shared_lock lock(structure);
    const Node* node = nodeOf(path);
    if (!node || !node->children)
        return found;
    found.reserve(node->children->count);
    const int nameStart = path.isEmpty() ? 0 : path.size() + 1;
    for (const Node* child : node->children->places) {
        if (child)
            found.append({child->path.mid(nameStart), child->children ? child->children->count : 0});
    }
    return found;
}

QStringList AttributeStore::getChildNames(const QString& path)
{
    QStringList names;
    const QVector<ChildInformation> children = getChildren(path);
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
    information.isAttribute = node->isAttribute;
    information.isBackendRoot = node->isBackendRoot;
    information.childCount = node->children ? node->children->count : 0;
    information.accessMode = node->access;
    if (node->isAttribute)
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

FrameworkCore::AppConfig::StatusCode AttributeStore::removeTree(const QString& path)
{
    if (isAtOrBelow(path, ownRoot))
        return refuse(StatusCode::NotWritable, path, QStringLiteral("it belongs to the repository itself"));
    QString reason;
    StatusCode status = StatusCode::Success;
    {
        TreeEdit edit(*this);
        status = edit.removeTree(path, reason);
    }
    return status == StatusCode::Success ? status : refuse(status, path, reason);
}

void AttributeStore::publish(const QString& path, const QVariant& value)
{
    TreeEdit edit(*this);
    Node& node = edit.ensure(path);
    edit.setAttribute(node, value, AccessMode::ReadOnly,
                      node.isAttribute ? UpdateResult::Changed : UpdateResult::Created);
}

QString AttributeStore::mount(std::unique_ptr<Backend> backend)
{
    const QString name = backend->getName();
    QStringList names;
    {
        TreeEdit edit(*this);
        const Node* place = edit.find(name);
        if (place && place->isBackendRoot)
            return QStringLiteral("the backend '%1' exists already").arg(name);
        if (place && (place->isAttribute || (place->children && place->children->count > 0)))
            return QStringLiteral("there are attributes at or below '%1' already").arg(name);
        Node& root = edit.ensure(name);
        root.backend = backend.get();
        root.isBackendRoot = true;
        root.access = backend->getAccessMode();
        edit.showDocument(*backend);
        backends.push_back(std::move(backend));
        for (const auto& mounted : backends)
            names.append(mounted->getName());
    }
    publish(backendNamesPath + pathSeparator + name, name);
    publish(backendNamesPath, names.join(QLatin1Char(';')));
    return {};
}

void AttributeStore::showDocument(Backend& backend)
{
    TreeEdit edit(*this);
    edit.showDocument(backend);
}

std::vector<Backend*> AttributeStore::getBackends()
{
    const std::shared_lock lock(structure);
    std::vector<Backend*> mounted;
    for (const auto& backend : backends)
        mounted.push_back(backend.get());
    return mounted;
}

} // namespace Repository
