#include "widgets/ExpansionMemory.h"

#include "host/Utilities/ModelViews/AttributeTreeViewModel.h"

#include <QHash>

#include <algorithm>
#include <vector>

namespace Widgets {

namespace {

using Utilities::ModelViews::AttributeTreeViewModel;
using SavedItem = ExpansionMemory::SavedItem;
using SavedItems = QVector<SavedItem>;

constexpr int hitLimit = 66;

using PathsByParent = QHash<QString, QStringList>; // paths by the path of the item above them

struct SavedPaths
{
    PathsByParent open;
    PathsByParent closed; // of items that are not saved themselves and have saved ones somewhere below
};

QStringRef parentOf(const QString& path)
{
    return path.leftRef(qMax(0, path.lastIndexOf(QLatin1Char('.'))));
}

PathsByParent groupByParent(const QStringList& paths)
{
    PathsByParent groups;
    QStringRef parent;
    QStringList* group = nullptr; // that of the parent; a million paths often have the same
    for (const QString& path : paths) {
        const QStringRef itsParent = parentOf(path);
        if (!group || itsParent != parent) {
            parent = itsParent;
            group = &groups[parent.toString()];
        }
        group->append(path);
    }
    return groups;
}

SavedPaths groupSaved(const QStringList& paths)
{
    SavedPaths saved{groupByParent(paths), {}};
    QSet<QString> known(paths.cbegin(), paths.cend());
    for (auto group = saved.open.keyBegin(); group != saved.open.keyEnd(); ++group) {
        for (QString path = *group; !path.isEmpty() && !known.contains(path);) {
            known.insert(path);
            const QString parent = parentOf(path).toString();
            saved.closed[parent].append(path);
            path = parent;
        }
    }
    return saved;
}

// Counts, while the names of a level go by, for each of some wanted names how many began with it.
class PrefixCounter
{
public:
    explicit PrefixCounter(QVector<QString> foldedNames)
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

// An item of one level with its distance from the one where the search starts.
struct Candidate
{
    int offset;
    SavedItem saved;
};

// Those of the items of one level, given in its order, that are among their name's first hits.
SavedItems withinHitLimit(const AttributeTreeViewModel& model, const QModelIndex& start,
                          const std::vector<Candidate>& candidates)
{
    SavedItems found;
    const int last = candidates.empty() ? -1 : candidates.back().offset;
    if (last < hitLimit) {
        for (const Candidate& candidate : candidates)
            found.append(candidate.saved);
        return found;
    }
    const QModelIndex parent = start.parent();
    const int count = model.rowCount(parent);
    QVector<QString> names;
    names.reserve(last + 1);
    for (int i = 0; i <= last; ++i)
        names.append(model.index((start.row() + i) % count, 0, parent).data().toString().toCaseFolded());
    QVector<QString> wanted;
    wanted.reserve(int(candidates.size()));
    for (const Candidate& candidate : candidates)
        wanted.append(names.at(candidate.offset));
    PrefixCounter counter(std::move(wanted));
    auto next = candidates.begin();
    for (int i = 0; i <= last; ++i) {
        const int before = counter.count(names.at(i));
        if (next->offset != i)
            continue;
        if (before < hitLimit)
            found.append(next->saved);
        ++next;
    }
    return found;
}

void collect(const AttributeTreeViewModel& model, const QModelIndex& start, const QString& parentPath,
             const SavedPaths& saved, SavedItems& found)
{
    for (const QString& path : saved.closed.value(parentPath)) {
        const QModelIndex item = model.indexFromPath(path);
        if (item.isValid())
            collect(model, model.index(0, 0, item), path, saved, found);
    }
    const int count = model.rowCount(start.parent());
    std::vector<Candidate> candidates;
    for (const QString& path : saved.open.value(parentPath)) {
        const QModelIndex item = model.indexFromPath(path);
        if (item.isValid())
            candidates.push_back({(item.row() - start.row() + count) % count, {item, path}});
    }
    std::sort(candidates.begin(), candidates.end(),
              [](const Candidate& a, const Candidate& b) { return a.offset < b.offset; });
    const SavedItems open = withinHitLimit(model, start, candidates);
    for (const SavedItem& each : open) {
        found.append(each);
        if (saved.open.contains(each.path) || saved.closed.contains(each.path))
            collect(model, model.index(0, 0, each.item), each.path, saved, found);
    }
}

} // namespace

QVector<ExpansionMemory::SavedItem> ExpansionMemory::findSavedItems(const AttributeTreeViewModel& model,
                                                                    const QModelIndex& start,
                                                                    const QStringList& savedPaths)
{
    SavedItems found;
    if (start.isValid())
        collect(model, start, model.pathFromIndex(start.parent()), groupSaved(savedPaths), found);
    return found;
}

} // namespace Widgets
