#include "widgets/NameSearch.h"

#include "host/Utilities/ModelViews/AttributeTreeViewModel.h"

#include <QHash>
#include <QMap>

namespace Widgets {

namespace {

using FrameworkCore::AppConfig::Interfaces::PathSearch;
using Utilities::ModelViews::AttributeTreeViewModel;

constexpr QLatin1Char separator('.');

// Paths that begin with one item of a level, the item itself perhaps among them.
struct Branch
{
    QModelIndex item;
    QStringList paths;
};

// The branches of the tree, in the order of its rows, that the paths run through below the first `prefix`
// characters, which all of them share. What the tree does not show is left out.
QMap<int, Branch> branches(const AttributeTreeViewModel& model, const QStringList& paths, int prefix)
{
    QHash<QString, QStringList> byItem;
    for (const QString& path : paths) {
        const int end = path.indexOf(separator, prefix);
        byItem[path.left(end)].append(path);
    }
    QMap<int, Branch> byRow;
    for (auto i = byItem.cbegin(); i != byItem.cend(); ++i) {
        const QModelIndex item = model.indexFromPath(i.key());
        if (item.isValid())
            byRow.insert(item.row(), {item, i.value()});
    }
    return byRow;
}

void collect(const AttributeTreeViewModel& model, const QStringList& paths, int prefix, int limit,
             QModelIndexList& found)
{
    const QMap<int, Branch> levelBranches = branches(model, paths, prefix);
    for (const Branch& branch : levelBranches) {
        if (found.size() >= limit)
            return;
        const QString path = model.pathFromIndex(branch.item);
        QStringList below = branch.paths;
        if (below.removeAll(path) > 0)
            found.append(branch.item);
        if (found.size() < limit && !below.isEmpty())
            collect(model, below, path.size() + 1, limit, found);
    }
}

} // namespace

NameSearch::NameSearch(const FrameworkCore::AppConfig::Interfaces::TreeInterface& repositoryTree,
                       const AttributeTreeViewModel& shownModel)
    : tree(repositoryTree), model(shownModel)
{
}

QModelIndexList NameSearch::find(const QString& name, int limit) const
{
    if (name.isEmpty())
        return {};
    PathSearch search;
    search.pattern = QLatin1Char('*') + (separator + name);
    QStringList paths = tree.findPaths(search);
    if (tree.getNodeInformation(name).exists)
        paths.append(name);
    QModelIndexList found;
    collect(model, paths, 0, limit, found);
    return found;
}

} // namespace Widgets
