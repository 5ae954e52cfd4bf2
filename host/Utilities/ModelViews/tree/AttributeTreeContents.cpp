#include "host/Utilities/ModelViews/tree/AttributeTreeContents.h"

#include "host/FrameworkCore/AppConfig/AttributePath.h"

#include <algorithm>
#include <utility>

namespace Utilities::ModelViews {

namespace {

// From so many children on, those reported to have come or gone are enough, if their number agrees.
constexpr int manyChildren = 256;
constexpr int fewPaths = 64;

using Rows = std::vector<int>; // from the top down to a node

Rows rowsTo(const AttributeTreeNode& node)
{
    Rows rows{node.row};
    for (const AttributeTreeItem* item = node.parentItem; item->getParent(); item = item->getParent())
        rows.insert(rows.begin(), item->row());
    return rows;
}

} // namespace

AttributeTreeContents::AttributeTreeContents(AttributeTreeRowListener& rowListener,
                                             const std::shared_ptr<TreeInterface>& treeInterface,
                                             const QString& searchPath)
    : listener(rowListener), editor(rowListener), tree(treeInterface), filter(searchPath),
      top(std::make_unique<AttributeTreeItem>(nullptr, 0, QString(), filter.isEverything()))
{
    filter.readFrom(*tree);
    top->insert(0, shownChildren({}, top->isComplete()));
}

bool AttributeTreeContents::isComplete(const AttributeTreeNode& node, const QString& path) const
{
    return node.parentItem->isComplete() || filter.matches(path);
}

QVector<AttributeTreeContents::ChildInformation> AttributeTreeContents::shownChildren(const QString& path,
                                                                                      bool complete) const
{
    return complete ? tree->getChildren(path) : filter.children(*tree, path);
}

int AttributeTreeContents::count(const AttributeTreeNode& node)
{
    if (!node.parentItem)
        return top->size();
    AttributeTreeItem::Child& child = node.parentItem->child(node.row);
    if (child.item)
        return child.item->size();
    if (child.count < 0) {
        const QString path = node.parentItem->childPath(node.row);
        if (!isComplete(node, path))
            return children(node).size();
        child.count = tree->getChildCount(path);
    }
    return child.count;
}

AttributeTreeItem& AttributeTreeContents::children(const AttributeTreeNode& node)
{
    if (!node.parentItem)
        return *top;
    AttributeTreeItem::Child& child = node.parentItem->child(node.row);
    if (!child.item) {
        const QString path = node.parentItem->childPath(node.row);
        auto item = std::make_unique<AttributeTreeItem>(node.parentItem, quint32(child.serial), path,
                                                        isComplete(node, path));
        QVector<ChildInformation> shown = shownChildren(path, item->isComplete());
        // The number that was reported holds until the change that is on its way here is followed; rows that
        // are too many have no name until then.
        if (child.count >= 0)
            shown.resize(child.count);
        item->insert(0, shown);
        child.item = std::move(item);
    }
    return *child.item;
}

std::optional<AttributeTreeNode> AttributeTreeContents::find(const QString& path, bool listing)
{
    AttributeTreeNode node;
    if (path.isEmpty())
        return node;
    int begin = 0;
    do {
        if (!listing && node.parentItem && !node.parentItem->child(node.row).item)
            return {};
        AttributeTreeItem& item = children(node);
        const int end = path.indexOf(QLatin1Char('.'), begin);
        const QString name = path.mid(begin, end < 0 ? -1 : end - begin);
        const int row = name.isEmpty() ? -1 : item.rowOf(name);
        if (row < 0)
            return {};
        node = {&item, row};
        begin = end + 1;
    } while (begin > 0);
    return node;
}

std::optional<std::vector<AttributeTreeNode>> AttributeTreeContents::findName(const QString& name, int hits)
{
    if (name.isEmpty() || name.contains(QLatin1Char('.')) || name.contains(QLatin1Char('*')))
        return std::vector<AttributeTreeNode>(); // no node has such a name
    QStringList paths = tree->findPaths({QStringLiteral("*.") + name, Qt::CaseSensitive, false, fewPaths});
    if (paths.size() == fewPaths)
        return {};
    paths.append(name);

    std::vector<std::pair<Rows, AttributeTreeNode>> found;
    for (const QString& path : qAsConst(paths)) {
        if (const auto node = find(path, true))
            found.emplace_back(rowsTo(*node), *node);
    }
    std::sort(found.begin(), found.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<AttributeTreeNode> nodes;
    for (const auto& [rows, node] : found) {
        if (hits < 0 || int(nodes.size()) < hits)
            nodes.push_back(node);
    }
    return nodes;
}

void AttributeTreeContents::follow(const QVector<AttributeTreeStructureChange>& changes)
{
    noteForFilter(changes);
    DirtyNodes dirty;
    for (const QString& path : qAsConst(stalePaths))
        dirty[path].everything = true;
    stalePaths.clear();
    const auto isMoreThanGone = [](const AttributeTreeStructureChange& change) {
        return change.created || change.namesLost || change.reordered;
    };
    const bool onlyGone =
        filter.isEverything() && std::none_of(changes.begin(), changes.end(), isMoreThanGone);
    for (const AttributeTreeStructureChange& change : changes) {
        if (change.reordered || (change.removed && !onlyGone))
            collectAbove(change.parentPath, dirty);
        else if (change.removed)
            collectGone(change, dirty);
        else
            collectCreated(change, dirty);
    }

    // Upper nodes first: with them lower ones may go.
    QStringList paths = dirty.keys();
    std::sort(paths.begin(), paths.end(),
              [](const QString& a, const QString& b) { return a.size() < b.size(); });
    for (const QString& path : qAsConst(paths))
        bringUpToDate(path, dirty[path]);
}

void AttributeTreeContents::noteForFilter(const QVector<AttributeTreeStructureChange>& changes)
{
    if (filter.isEverything())
        return;
    QStringList removed;
    for (const AttributeTreeStructureChange& change : changes) {
        const QString prefix = change.parentPath.isEmpty() ? QString() : change.parentPath + QLatin1Char('.');
        if (change.namesLost) {
            filter.readFrom(*tree);
            return;
        }
        for (const AttributeTreeChildChange& child : change.children) {
            const QString path = prefix + child.name;
            if (!change.removed || tree->getNodeInformation(path).exists)
                filter.noteCreated(path);
        }
        if (change.removed)
            removed.append(prefix + change.children.first().name);
    }
    filter.noteRemoved(*tree, removed);
}

// When something may have gone and come again, or the filter may hide what leads nowhere any more, any node
// above may have other rows, or the same in another order.
void AttributeTreeContents::collectAbove(const QString& parentPath, DirtyNodes& dirty)
{
    QStringList above = ancestorPaths(parentPath);
    above << parentPath << QString();
    for (const QString& path : qAsConst(above))
        dirty[path].everything = true;
}

// With what has gone may have gone the groups that held nothing else. What has come again since is reported
// in the next batch, when it looks as if it had stayed; so the nodes above are looked at too.
void AttributeTreeContents::collectGone(const AttributeTreeStructureChange& change, DirtyNodes& dirty)
{
    QString path = change.parentPath;
    QStringList gone;
    for (const AttributeTreeChildChange& child : change.children)
        gone.append(child.name);
    for (;;) {
        dirty[path].gone += gone;
        if (path.isEmpty())
            return;
        const bool isGone = !tree->getNodeInformation(path).exists;
        gone = isGone ? QStringList(FrameworkCore::AppConfig::nameOf(path)) : QStringList();
        path = FrameworkCore::AppConfig::parentPath(path).toString();
    }
}

// Finds the node below which the first row is missing.
void AttributeTreeContents::collectCreated(const AttributeTreeStructureChange& change, DirtyNodes& dirty)
{
    AttributeTreeItem* item = top.get();
    const QVector<QStringRef> components = change.parentPath.splitRef(QLatin1Char('.'), Qt::SkipEmptyParts);
    for (const QStringRef& component : components) {
        const QString name = component.toString();
        const int row = item->rowOf(name);
        if (row < 0) {
            if (!item->isComplete() && !filter.shows(item->childPath(name)))
                return;
            Dirt& dirt = dirty[item->getPath()];
            if (change.namesLost)
                dirt.everything = true;
            else
                dirt.created.append({name, change.children.first().arrival});
            return;
        }
        AttributeTreeItem* const next = item->child(row).item.get();
        if (!next) {
            if (item->child(row).count >= 0)
                dirty[item->childPath(row)].everything = true;
            return;
        }
        item = next;
    }
    Dirt& dirt = dirty[item->getPath()];
    dirt.everything |= change.namesLost;
    for (const AttributeTreeChildChange& child : change.children) {
        if (!dirt.everything && item->rowOf(child.name) < 0 &&
            (item->isComplete() || filter.shows(item->childPath(child.name))))
            dirt.created.append(child);
    }
}

void AttributeTreeContents::bringUpToDate(const QString& path, const Dirt& dirt)
{
    const auto node = find(path, false);
    if (!node)
        return;
    AttributeTreeItem* const item =
        node->parentItem ? node->parentItem->child(node->row).item.get() : top.get();
    if (!item) {
        setCount(*node, tree->getChildCount(path));
        return;
    }
    auto arrived = dirt.created;
    std::sort(arrived.begin(), arrived.end(),
              [](const auto& a, const auto& b) { return a.arrival < b.arrival; });
    QStringList created;
    for (const AttributeTreeChildChange& child : qAsConst(arrived))
        created.append(child.name);
    created.removeDuplicates();
    QStringList gone = dirt.gone;
    gone.removeDuplicates();
    const auto isUnknown = [item](const QString& name) { return item->rowOf(name) < 0; };
    gone.erase(std::remove_if(gone.begin(), gone.end(), isUnknown), gone.end());
    const auto isThere = [&](const QString& name) {
        return tree->getNodeInformation(item->childPath(name)).exists;
    };
    const bool knowsAll = !dirt.everything && item->isComplete() && item->size() >= manyChildren &&
                          tree->getChildCount(path) == item->size() + created.size() - gone.size() &&
                          std::none_of(gone.begin(), gone.end(), isThere) &&
                          tree->getLastChildNames(path, created.size()) == created;
    if (!knowsAll) {
        editor.arrange(*item, shownChildren(path, item->isComplete()));
        return;
    }
    QVector<ChildInformation> more;
    for (const QString& name : qAsConst(created))
        more.append({name, -1});
    editor.remove(*item, gone);
    if (!more.isEmpty())
        editor.insert(*item, item->size(), more);
}

void AttributeTreeContents::reread()
{
    stalePaths.clear();
    filter.readFrom(*tree);
    reread(*top);
}

void AttributeTreeContents::reread(AttributeTreeItem& item)
{
    const QVector<ChildInformation> present = shownChildren(item.getPath(), item.isComplete());
    editor.arrange(item, present);
    for (int row = 0; row < item.size(); ++row) {
        if (item.child(row).item)
            reread(*item.child(row).item);
        else
            setCount({&item, row}, present.at(row).childCount);
    }
}

// Tells that a node that has been counted, but not listed, has another number of children.
void AttributeTreeContents::setCount(const AttributeTreeNode& node, int now)
{
    // A child that is listed while the listener hears of its rows gets them as they were announced; the rows
    // that come are then still without names.
    AttributeTreeItem::Child& child = node.parentItem->child(node.row);
    const int before = child.count;
    if (child.item || before < 0 || before == now)
        return;
    if (now > before) {
        listener.beginInsert(node, before, now - 1);
        if (child.item)
            child.item->insert(before, QVector<ChildInformation>(now - before));
        child.count = now;
        listener.endInsert();
    } else {
        listener.beginRemove(node, now, before - 1);
        if (child.item)
            child.item->remove(now, before - 1);
        child.count = now;
        listener.endRemove();
    }
    if (child.item) {
        stalePaths.insert(node.parentItem->childPath(node.row));
        listener.foundStale();
    }
}

} // namespace Utilities::ModelViews
