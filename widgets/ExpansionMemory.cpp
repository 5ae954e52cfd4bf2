#include "widgets/ExpansionMemory.h"

#include "host/Utilities/ModelViews/AttributeTreeViewModel.h"

#include <QHash>

#include <algorithm>
#include <vector>

namespace Widgets {

namespace {

using Utilities::ModelViews::AttributeTreeViewModel;

constexpr int hitLimit = 66;

// Saved paths by the path of the item above them.
using PathsByParent = QHash<QString, QStringList>;

PathsByParent groupByParent(const QStringList& paths)
{
    PathsByParent groups;
    for (const QString& path : paths)
        groups[path.left(qMax(0, path.lastIndexOf(QLatin1Char('.'))))].append(path);
    return groups;
}

// Counts, while the names of a level go by, for each of some wanted names how many began with it.
class PrefixCounter
{
public:
    explicit PrefixCounter(QStringList foldedNames)
    {
        std::sort(foldedNames.begin(), foldedNames.end());
        foldedNames.erase(std::unique(foldedNames.begin(), foldedNames.end()), foldedNames.end());
        for (const QString& name : qAsConst(foldedNames)) {
            int prefix = int(entries.size()) - 1;
            while (prefix >= 0 && !name.startsWith(entries[size_t(prefix)].name))
                prefix = entries[size_t(prefix)].longestPrefix;
            entries.push_back({name, prefix, 0});
        }
    }

    // Counts one name and gives how many came before it that began with the whole of it.
    int count(const QString& foldedName)
    {
        // Every wanted name that begins this one is the greatest not above it, or a prefix of that.
        const auto above =
            std::upper_bound(entries.begin(), entries.end(), foldedName,
                             [](const QString& name, const Entry& entry) { return name < entry.name; });
        int before = 0;
        for (int i = int(above - entries.begin()) - 1; i >= 0; i = entries[size_t(i)].longestPrefix) {
            Entry& entry = entries[size_t(i)];
            if (!foldedName.startsWith(entry.name))
                continue;
            if (entry.name.size() == foldedName.size())
                before = entry.seen;
            ++entry.seen;
        }
        return before;
    }

private:
    struct Entry
    {
        QString name;
        int longestPrefix; // position of the longest other entry that this name begins with, or -1
        int seen;
    };

    std::vector<Entry> entries; // sorted by name
};

// Those of the items of one level that are among their name's first hits.
QModelIndexList withinHitLimit(const AttributeTreeViewModel& model, const QModelIndex& start,
                               const QModelIndexList& items)
{
    const QModelIndex parent = start.parent();
    const int count = model.rowCount(parent);
    const auto offset = [&](const QModelIndex& item) { return (item.row() - start.row() + count) % count; };
    int last = 0;
    QStringList names;
    QHash<int, QModelIndex> wanted; // by offset
    for (const QModelIndex& item : items) {
        last = qMax(last, offset(item));
        names.append(item.data().toString().toCaseFolded());
        wanted.insert(offset(item), item);
    }
    if (last < hitLimit)
        return items;
    PrefixCounter counter(names);
    QModelIndexList found;
    for (int i = 0; i <= last; ++i) {
        const QModelIndex item = model.index((start.row() + i) % count, 0, parent);
        const int before = counter.count(item.data().toString().toCaseFolded());
        if (before < hitLimit && wanted.contains(i))
            found.append(item);
    }
    return found;
}

void collect(const AttributeTreeViewModel& model, const QModelIndex& start, const QString& parentPath,
             const PathsByParent& saved, QModelIndexList& found)
{
    QModelIndexList items;
    for (const QString& path : saved.value(parentPath)) {
        const QModelIndex item = model.indexFromPath(path);
        if (item.isValid())
            items.append(item);
    }
    if (items.isEmpty())
        return;
    for (const QModelIndex& item : withinHitLimit(model, start, items)) {
        found.append(item);
        const QString path = model.pathFromIndex(item);
        if (saved.contains(path))
            collect(model, model.index(0, 0, item), path, saved, found);
    }
}

} // namespace

QModelIndexList ExpansionMemory::findSavedItems(const AttributeTreeViewModel& model, const QModelIndex& start,
                                                const QStringList& savedPaths)
{
    QModelIndexList found;
    if (start.isValid())
        collect(model, start, model.pathFromIndex(start.parent()), groupByParent(savedPaths), found);
    return found;
}

} // namespace Widgets
