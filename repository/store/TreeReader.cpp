#include "repository/store/TreeReader.h"

#include "host/FrameworkCore/AppConfig/PathPattern.h"
#include "repository/backends/Backend.h"
#include "repository/common/PathRules.h"
#include "repository/store/AttributeTree.h"
#include "repository/store/ListElement.h"
#include "repository/store/WriteCheck.h"

#include <algorithm>
#include <deque>

namespace Repository {

using FrameworkCore::AppConfig::Interfaces::ChildInformation;
using FrameworkCore::AppConfig::Interfaces::NodeInformation;
using FrameworkCore::AppConfig::Interfaces::PathSearch;

namespace {

// Whether a match can lie at the path or below it, given the text that every match begins with.
bool canLeadTo(QStringView path, const QString& start, Qt::CaseSensitivity sensitivity)
{
    if (path.size() >= start.size())
        return path.left(start.size()).compare(start, sensitivity) == 0;
    return start[int(path.size())] == pathSeparator &&
           path.compare(start.leftRef(int(path.size())), sensitivity) == 0;
}

// Which children of the node can match the pattern, or have somebody below them that does.
NameFilter candidates(const Node& node, const QString& start, const QString& end)
{
    const int pathSize = node.getPathSize();
    const int nameBegin = pathSize == 0 ? 0 : pathSize + 1;
    if (start.size() > nameBegin) {
        const QStringView rest = QStringView(start).mid(nameBegin);
        const qsizetype nameEnd = rest.indexOf(pathSeparator);
        return nameEnd < 0 ? NameFilter::beginning(rest) : NameFilter::name(rest.left(nameEnd));
    }
    const int lastName = end.lastIndexOf(pathSeparator);
    return lastName < 0 ? NameFilter::everything()
                        : NameFilter::name(QStringView(end).mid(lastName + 1)).orBranches();
}

} // namespace

QVector<ChildInformation> TreeReader::getChildren(const QString& path, const QString& beginning) const
{
    QVector<ChildInformation> found;
    const std::shared_lock lock(tree.structure);
    const Node* node = tree.nodeOf(path);
    if (!node || !node->children)
        return found;
    if (beginning.isEmpty())
        found.reserve(node->children->count);
    node->children->visit(NameFilter::beginning(beginning), [&](const Node& child) {
        QString name = child.getName();
        if (beginning.isEmpty() || name.startsWith(beginning))
            found.append({std::move(name), child.children ? child.children->count : 0});
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
            names.append((*child)->getName());
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
    std::unique_lock shardLock(shard.mutex);
    const Node* node = shard.find(key);
    if (!node) {
        shardLock.unlock();
        return elementInformation(path);
    }
    information.exists = true;
    information.isAttribute = node->isAttribute();
    information.isBackendRoot = node->isBackendRoot();
    information.childCount = node->children ? node->children->count : 0;
    information.accessMode = presentAccess(*node);
    if (node->isAttribute())
        information.dataType = QString::fromLatin1(node->value.getTypeName());
    if (node->backend)
        information.backend = node->backend->getName();
    return information;
}

NodeInformation TreeReader::elementInformation(const QString& path) const
{
    NodeInformation information;
    const auto element = ListElement::at(path);
    const Node* const list = element ? tree.nodeOf(element->list) : nullptr;
    if (!list)
        return information;
    const std::lock_guard shardLock(tree.index.shardOf(*list).mutex);
    const QVariant text = element->readFrom(list);
    if (!text.isValid())
        return information;
    information.exists = information.isAttribute = true;
    information.accessMode = presentAccess(*list);
    information.dataType = QString::fromLatin1(text.typeName());
    if (list->backend)
        information.backend = list->backend->getName();
    return information;
}

// Only nodes that can lead to a match are walked.
QStringList TreeReader::findPaths(const PathSearch& search) const
{
    const std::shared_lock lock(tree.structure);
    const FrameworkCore::AppConfig::PathPattern pattern(search.pattern, search.caseSensitivity);
    const QString& start = pattern.getLiterals().first();
    const QString& end = pattern.getLiterals().last();

    // The names that the pattern spells out need no search where case counts.
    const Node* first = &tree.top;
    const QStringView firstPath = parentPath(start);
    if (search.caseSensitivity == Qt::CaseSensitive && !firstPath.isEmpty())
        first = tree.nodeOf(firstPath);

    QStringList found;
    std::deque<const Node*> walk;
    if (first)
        walk.push_back(first);
    for (; !walk.empty() && found.size() != search.limit; walk.pop_front()) {
        const Children* children = walk.front()->children.get();
        if (!children)
            continue;
        QString path = walk.front()->getPath(); // of the children, one after the other
        const int parentSize = path.size();
        children->visit(candidates(*walk.front(), start, end), [&](const Node& child) {
            path.resize(parentSize);
            child.appendName(path);
            if (!canLeadTo(path, start, search.caseSensitivity))
                return true;
            const bool isMatch = pattern.matches(path);
            if (isMatch)
                found.append(path);
            if (child.children && !(isMatch && search.topmostOnly))
                walk.push_back(&child);
            return found.size() != search.limit;
        });
    }
    return found;
}

} // namespace Repository
