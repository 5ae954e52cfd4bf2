#include "host/Utilities/ModelViews/monitor/AdvancedAttributeModelPrivate.h"

#include "host/Utilities/ModelViews/AttributePathsMimeData.h"
#include "host/Utilities/RepositoryAccess.h"

#include <QPersistentModelIndex>
#include <QPointer>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace Utilities::ModelViews {

constexpr int largeDrop = 500;
constexpr std::size_t mostRanges = 32; // of rows, signalled one by one

AdvancedAttributeModel::Private::Private(AdvancedAttributeModel& owner)
    : model(owner), updates([this](const Attributes& changed) { showChanges(changed); }),
      watches([this](const Attributes& seenTooEarly) { announce(seenTooEarly); }),
      lights([this](const Attributes& gone) {
          announce(gone, {Qt::BackgroundRole, Qt::ForegroundRole});
      })
{
    takeRepository();
}

void AdvancedAttributeModel::Private::takeRepository()
{
    if (repository)
        return;
    repository = GetAppConfigRepositoryInterface();
    cells.setReader(repository ? repository->getReaderInterface() : nullptr);
    watches.setNotifications(repository ? repository->getNotificationInterface() : nullptr);
}

void AdvancedAttributeModel::Private::replace(const QStringList& paths)
{
    model.beginResetModel();
    watches.endAll(rows.take(0, rows.size()));
    insertRows(0, paths);
    model.endResetModel();
    watches.serve();
}

void AdvancedAttributeModel::Private::insert(int row, const QStringList& paths)
{
    model.beginInsertRows({}, row, row + paths.size() - 1);
    insertRows(row, paths);
    model.endInsertRows();
    watches.serve();
}

void AdvancedAttributeModel::Private::insertRows(int row, const QStringList& paths)
{
    takeRepository();
    Attributes made;
    made.reserve(std::size_t(paths.size()));
    for (const QString& path : paths)
        made.push_back(std::make_shared<WatchedAttribute>(path, updates.getInbox()));
    rows.insert(row, made);
    watches.begin(made);
}

void AdvancedAttributeModel::Private::remove(int row, int count)
{
    model.beginRemoveRows({}, row, row + count - 1);
    watches.end(rows.take(row, count));
    model.endRemoveRows();
    watches.serve();
}

bool AdvancedAttributeModel::Private::dropRows(const QMimeData& data, int destination)
{
    const std::vector<int> moved = WatchedRowsDrag::rowsIn(data, rows.size());
    if (moved.empty())
        return false;
    emit model.layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    const std::vector<int> after = rows.gather(moved, destination);
    const QModelIndexList known = model.persistentIndexList();
    for (const QModelIndex& index : known)
        model.changePersistentIndex(index, model.index(after[std::size_t(index.row())], index.column()));
    emit model.layoutChanged({}, QAbstractItemModel::VerticalSortHint);
    return true;
}

bool AdvancedAttributeModel::Private::dropPaths(const QMimeData& data, int destination)
{
    takeRepository();
    const QStringList paths = attributePathsFrom(data);
    const QStringList added = addedBy(paths);
    if (added.isEmpty())
        return false;
    if (added.size() <= largeDrop || !confirmLargeDrop) {
        insert(destination, added);
        return true;
    }
    const QPersistentModelIndex place = model.index(destination, NameColumn);
    // Not posted: the event loop of the drag itself may still send what is posted.
    QTimer::singleShot(1, &model, [=] { askAndInsert(paths, added.size(), place); });
    return true;
}

QStringList AdvancedAttributeModel::Private::addedBy(const QStringList& paths) const
{
    const auto tree = repository ? repository->getTreeInterface() : nullptr;
    return WatchedRowsDrag::addedBy(paths, rows, tree.get());
}

void AdvancedAttributeModel::Private::askAndInsert(const QStringList& paths, int attributes,
                                                   const QPersistentModelIndex& place)
{
    const QPointer<AdvancedAttributeModel> self(&model);
    const auto confirm = confirmLargeDrop; // outlives a model that goes meanwhile
    if (!confirm(attributes) || !self)
        return;
    const QStringList added = addedBy(paths); // the rows may be others by now
    if (!added.isEmpty())
        insert(place.isValid() ? place.row() : rows.size(), added);
}

void AdvancedAttributeModel::Private::showChanges(const Attributes& changed)
{
    for (const auto& attribute : changed) {
        attribute->beginLook();
        if (attribute->row >= 0)
            lights.light(attribute);
    }
    announce(changed);
}

void AdvancedAttributeModel::Private::announce(const Attributes& changed, const QVector<int>& roles)
{
    std::vector<int> changedRows;
    changedRows.reserve(changed.size());
    for (const auto& attribute : changed) {
        const int row = rows.rowOf(*attribute);
        if (row >= 0)
            changedRows.push_back(row);
    }
    std::sort(changedRows.begin(), changedRows.end());
    std::vector<std::pair<int, int>> ranges;
    for (const int row : changedRows) {
        if (!ranges.empty() && row <= ranges.back().second + 1)
            ranges.back().second = row;
        else
            ranges.emplace_back(row, row);
    }
    if (ranges.size() > mostRanges)
        ranges = {{ranges.front().first, ranges.back().second}};
    for (const auto& [first, last] : ranges)
        emit model.dataChanged(model.index(first, NameColumn), model.index(last, PathColumn), roles);
}

} // namespace Utilities::ModelViews
