#include "host/Utilities/ModelViews/AttributeModel.h"

#include "host/Utilities/ModelViews/ToolTipText.h"
#include "host/Utilities/RepositoryAccess.h"

#include <QSet>

namespace Utilities::ModelViews {

using FrameworkCore::AppConfig::Interfaces::PathSearch;

constexpr int firstPaths = 1000;

AttributeModel::AttributeModel(const QString& pathPattern, QObject* parent,
                               const std::shared_ptr<RepositoryInterface>& givenRepository)
    : QAbstractListModel(parent), pattern(pathPattern)
{
    if (const auto repository = givenRepository ? givenRepository : GetAppConfigRepositoryInterface())
        tree = repository->getTreeInterface();
    paths = findPaths(firstPaths);
    complete = paths.size() < firstPaths;
    // A completer asks for all there is as soon as it gets the model; a view asks when it shows the end.
    QMetaObject::invokeMethod(
        this, [this] { isSettled = true; }, Qt::QueuedConnection);
}

AttributeModel::~AttributeModel() = default;

int AttributeModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : paths.size();
}

QVariant AttributeModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return paths.at(index.row());
    case Qt::ToolTipRole:
        return toolTipText(paths.at(index.row()));
    default:
        return {};
    }
}

bool AttributeModel::canFetchMore(const QModelIndex& parent) const
{
    return !parent.isValid() && !complete && isSettled && !isFetching;
}

void AttributeModel::fetchMore(const QModelIndex& parent)
{
    if (!canFetchMore(parent))
        return;
    // Twice as many each time, so that the searches together cost no more than one for all.
    const int wanted = paths.size() * 2;
    QStringList added = findPaths(wanted);
    complete = added.size() < wanted;
    const QSet<QString> known(paths.cbegin(), paths.cend());
    added.erase(std::remove_if(added.begin(), added.end(),
                               [&known](const QString& path) { return known.contains(path); }),
                added.end());
    if (added.isEmpty())
        return;
    isFetching = true;
    beginInsertRows({}, paths.size(), paths.size() + added.size() - 1);
    paths += added;
    endInsertRows();
    isFetching = false;
}

QStringList AttributeModel::findPaths(int limit) const
{
    if (!tree)
        return {};
    PathSearch search;
    search.pattern = pattern;
    search.caseSensitivity = Qt::CaseInsensitive;
    search.limit = limit;
    return tree->findPaths(search);
}

} // namespace Utilities::ModelViews
