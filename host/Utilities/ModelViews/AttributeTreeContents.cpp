#include "host/Utilities/ModelViews/AttributeTreeContents.h"

#include <algorithm>

namespace Utilities::ModelViews {

namespace {

// From so many children on, new ones are appended without comparing all names, if their number agrees.
constexpr int manyChildren = 256;

AttributeTreeNode nodeOf(const AttributeTreeItem& item)
{
    return {item.getParent(), item.row()};
}

} // namespace

AttributeTreeContents::AttributeTreeContents(AttributeTreeRowListener& rowListener,
                                             const std::shared_ptr<TreeInterface>& treeInterface,
                                             const QString& searchPath)
    : listener(rowListener), tree(treeInterface), filter(searchPath),
      top(std::make_unique<AttributeTreeItem>(nullptr, 0, QString(), filter.isEverything()))
{
    filter.readFrom(*tree);
    top->insert(0, shownChildren({}, top->isComplete()));
}

bool AttributeTreeContents::isComplete(const AttributeTreeNode& node, const QString& path) const
{
    return node.holder->isComplete() || filter.matches(path);
}

QVector<AttributeTreeContents::ChildInformation> AttributeTreeContents::shownChildren(const QString& path,
                                                                                      bool complete) const
{
    return complete ? tree->getChildren(path) : filter.children(*tree, path);
}

int AttributeTreeContents::count(const AttributeTreeNode& node)
{
    if (!node.holder)
        return top->size();
    AttributeTreeItem::Child& child = node.holder->child(node.row);
    if (child.item)
        return child.item->size();
    if (child.count < 0) {
        const QString path = node.holder->childPath(node.row);
        if (!isComplete(node, path))
            return children(node).size();
        child.count = tree->getChildCount(path);
    }
    return child.count;
}

AttributeTreeItem& AttributeTreeContents::children(const AttributeTreeNode& node)
{
    if (!node.holder)
        return *top;
    AttributeTreeItem::Child& child = node.holder->child(node.row);
    if (!child.item) {
        const QString path = node.holder->childPath(node.row);
        auto item = std::make_unique<AttributeTreeItem>(node.holder, quint32(child.serial), path,
                                                        isComplete(node, path));
        QVector<ChildInformation> shown = shownChildren(path, item->isComplete());
        if (child.count >= 0 && child.count != shown.size()) {
            // The number that was told holds until the next change of rows; rows without a name wait for
            // theirs.
            shown.resize(child.count);
            stalePaths.insert(path);
            listener.foundStale();
        }
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
        if (!listing && node.holder && !node.holder->child(node.row).item)
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

void AttributeTreeContents::follow(const QVector<AttributeTreeStructureChange>& changes)
{
    noteForFilter(changes);
    DirtyNodes dirty;
    for (const QString& path : qAsConst(stalePaths))
        dirty[path].everything = true;
    stalePaths.clear();
    for (const AttributeTreeStructureChange& change : changes)
        collect(change, dirty);

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
        for (const QString& name : change.names) {
            const QString path = prefix + name;
            if (!change.removed || tree->getNodeInformation(path).exists)
                filter.noteCreated(path);
        }
        if (change.removed)
            removed.append(prefix + change.names.value(0));
    }
    filter.noteRemoved(*tree, removed);
}

// Finds the node from which on the rows may differ. When something has gone, or has gone and come again, that
// can be any node above.
void AttributeTreeContents::collect(const AttributeTreeStructureChange& change, DirtyNodes& dirty)
{
    if (change.removed) {
        QStringList above = ancestorPaths(change.parentPath);
        above << change.parentPath << QString();
        for (const QString& path : qAsConst(above))
            dirty[path].everything = true;
        return;
    }
    AttributeTreeItem* item = top.get();
    const QVector<QStringRef> components = change.parentPath.splitRef(QLatin1Char('.'), Qt::SkipEmptyParts);
    for (const QStringRef& component : components) {
        const QString name = component.toString();
        const int row = item->rowOf(name);
        if (row < 0) {
            if (item->isComplete() || filter.shows(item->childPath(name)))
                dirty[item->getPath()].created.append(name);
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
    for (const QString& name : change.names) {
        if (!dirt.everything && item->rowOf(name) < 0 &&
            (item->isComplete() || filter.shows(item->childPath(name))))
            dirt.created.append(name);
    }
}

void AttributeTreeContents::bringUpToDate(const QString& path, const Dirt& dirt)
{
    const auto node = find(path, false);
    if (!node)
        return;
    AttributeTreeItem* const item = node->holder ? node->holder->child(node->row).item.get() : top.get();
    if (!item) {
        setCount(*node, tree->getChildCount(path));
        return;
    }
    if (!dirt.everything && dirt.created.isEmpty())
        return;
    QStringList created = dirt.created;
    created.removeDuplicates();
    const bool onlyMore = !dirt.everything && item->isComplete() && item->size() >= manyChildren &&
                          tree->getChildCount(path) == item->size() + created.size();
    if (!onlyMore) {
        arrange(*item, shownChildren(path, item->isComplete()));
        return;
    }
    QVector<ChildInformation> more;
    for (const QString& name : qAsConst(created))
        more.append({name, -1});
    insert(*item, item->size(), more);
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
    arrange(item, present);
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
    AttributeTreeItem::Child& child = node.holder->child(node.row);
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
        stalePaths.insert(node.holder->childPath(node.row));
        listener.foundStale();
    }
}

// Makes the rows those of the wanted names, in their order, with as few changes as a simple walk finds.
void AttributeTreeContents::arrange(AttributeTreeItem& item, const QVector<ChildInformation>& wanted)
{
    const int shorter = std::min(item.size(), wanted.size());
    int row = 0;
    while (row < shorter && item.child(row).name == wanted.at(row).name)
        ++row;
    int after = 0; // so many agree at the end
    while (after < shorter - row &&
           item.child(item.size() - 1 - after).name == wanted.at(wanted.size() - 1 - after).name)
        ++after;
    const int end = wanted.size() - after;
    const auto isMissing = [&](int place) { return item.rowOf(wanted.at(place).name) < 0; };

    removeUnwanted(item, row, item.size() - after, wanted.mid(row, end - row));
    while (row < end) {
        if (row < item.size() && item.child(row).name == wanted.at(row).name) {
            ++row;
        } else if (!isMissing(row)) {
            remove(item, row, row); // out of order; it comes again at its place
        } else {
            int next = row + 1;
            while (next < end && isMissing(next))
                ++next;
            insert(item, row, wanted.mid(row, next - row));
            row = next;
        }
    }
}

void AttributeTreeContents::removeUnwanted(AttributeTreeItem& item, int begin, int end,
                                           const QVector<ChildInformation>& wanted)
{
    QSet<QString> names;
    for (const ChildInformation& child : wanted)
        names.insert(child.name);
    const auto isWanted = [&](int row) { return names.contains(item.child(row).name); };
    int last = end - 1;
    while (last >= begin) {
        int first = last;
        if (!isWanted(last)) {
            while (first > begin && !isWanted(first - 1))
                --first;
            remove(item, first, last);
        }
        last = first - 1;
    }
}

void AttributeTreeContents::insert(AttributeTreeItem& item, int row,
                                   const QVector<ChildInformation>& children)
{
    listener.beginInsert(nodeOf(item), row, row + children.size() - 1);
    item.insert(row, children);
    listener.endInsert();
}

void AttributeTreeContents::remove(AttributeTreeItem& item, int first, int last)
{
    listener.beginRemove(nodeOf(item), first, last);
    item.remove(first, last);
    listener.endRemove();
}

} // namespace Utilities::ModelViews
