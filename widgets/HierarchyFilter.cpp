#include "widgets/HierarchyFilter.h"

#include "host/FrameworkCore/AppConfig/AttributePath.h"
#include "host/Utilities/ModelViews/AttributeTreeViewModel.h"
#include "host/Utilities/ModelViews/AttributeTreeViewModelUtils.h"

namespace Widgets {

namespace {

using Utilities::ModelViews::AttributeTreeViewModel;

constexpr QLatin1Char wildcard('*');
using FrameworkCore::AppConfig::pathSeparator;

// The path whose children the first box offers.
QString parentPath(QString searchPath)
{
    if (searchPath.endsWith(wildcard))
        searchPath.remove(wildcard);
    if (searchPath.endsWith(pathSeparator))
        searchPath.chop(1);
    return searchPath;
}

QStringList childNames(const AttributeTreeViewModel& model, const QString& path)
{
    const QModelIndex item = model.indexFromPath(path);
    if (!path.isEmpty() && !item.isValid())
        return {};
    return Utilities::ModelViews::AttributeTreeViewModelUtils().extractStringsFromModel(&model, item);
}

} // namespace

HierarchyFilter::HierarchyFilter(std::shared_ptr<RepositoryInterface> attributes)
    : repository(std::move(attributes))
{
}

void HierarchyFilter::fill(const AttributeTreeViewModel& model, const QString& searchPath)
{
    searchPathText = searchPath;
    levelOneItems = childNames(model, parentPath(searchPath));
    lowerItems.clear();
}

QStringList HierarchyFilter::names(const QVector<int>& rows)
{
    if (rows.isEmpty())
        return levelOneItems;
    const auto known = lowerItems.constFind(rows);
    if (known != lowerItems.constEnd())
        return *known;
    QString path = parentPath(searchPathText);
    for (int level = 0; level < rows.size(); ++level) {
        const QString name = names(rows.mid(0, level)).value(rows.at(level));
        if (name.isEmpty())
            return {};
        if (!path.isEmpty())
            path += pathSeparator;
        path += name;
    }
    // The page's tree may show less by now than what the boxes choose from. Below the item that a search path
    // names, everything belongs to the search, whatever wildcards it has: each may stand for nothing.
    const auto tree = repository ? repository->getTreeInterface() : nullptr;
    return *lowerItems.insert(rows, tree ? tree->getChildNames(path) : QStringList());
}

QString HierarchyFilter::filterPath(const QStringList& chosenTexts) const
{
    QString path = searchPathText;
    path.remove(wildcard);
    if (path.endsWith(pathSeparator))
        path.chop(1);
    if (!path.isEmpty() && !chosenTexts.isEmpty())
        path += pathSeparator;
    for (const QString& text : chosenTexts) {
        path.replace(wildcard, pathSeparator);
        path += text + wildcard;
    }
    return path;
}

} // namespace Widgets
