#include "host/Utilities/ModelViews/monitor/AdvancedAttributeModelPrivate.h"

#include "host/Utilities/ModelViews/AttributePathsMimeData.h"
#include "host/Utilities/ModelViews/monitor/DroppedAttributes.h"
#include "host/Utilities/ModelViews/monitor/WatchedRowsMimeData.h"
#include "host/Utilities/RepositoryAccess.h"

#include <QMimeData>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QTimer>
#include <QTimerEvent>

#include <algorithm>
#include <iterator>

namespace Utilities::ModelViews {

namespace {

constexpr int watchesAtOnce = 4000; // begun or ended unnoticed; the event loop does more in such portions
constexpr int largeDrop = 500;
constexpr qint64 lightTime = 1000;     // milliseconds
constexpr int lightPeriod = 200;       // between looks for lights that are over
constexpr std::size_t mostRanges = 32; // of rows, told one by one

} // namespace

AdvancedAttributeModel::Private::Private(AdvancedAttributeModel& owner)
    : model(owner), updates([this](const Rows& changed) { showChanges(changed); })
{
    clock.start();
    takeRepository();
}

AdvancedAttributeModel::Private::~Private()
{
    retire(rows.begin(), rows.end());
    endWatches(int(retired.size()));
}

void AdvancedAttributeModel::Private::takeRepository()
{
    if (repository)
        return;
    repository = GetAppConfigRepositoryInterface();
    cells.setReader(repository ? repository->getReaderInterface() : nullptr);
}

// Rows

void AdvancedAttributeModel::Private::retire(Rows::iterator first, Rows::iterator last)
{
    std::for_each(first, last,
                  [](const std::shared_ptr<WatchedAttribute>& attribute) { attribute->row = -1; });
    retired.insert(retired.end(), std::make_move_iterator(first), std::make_move_iterator(last));
}

AdvancedAttributeModel::Private::Rows AdvancedAttributeModel::Private::makeRows(const QStringList& paths)
{
    takeRepository();
    Rows made;
    made.reserve(std::size_t(paths.size()));
    for (const QString& path : paths) {
        made.push_back(std::make_shared<WatchedAttribute>(path, updates.getInbox()));
        made.back()->row = 0; // some row, until they are numbered
    }
    unwatched.insert(unwatched.end(), made.begin(), made.end());
    return made;
}

void AdvancedAttributeModel::Private::replace(const QStringList& paths)
{
    model.beginResetModel();
    Rows before;
    before.swap(rows);
    retire(before.begin(), before.end());
    unwatched.clear();
    lit.clear();
    rows = makeRows(paths);
    isNumbered = false;
    model.endResetModel();
    serveWatches();
}

void AdvancedAttributeModel::Private::insert(int row, const QStringList& paths)
{
    model.beginInsertRows({}, row, row + paths.size() - 1);
    Rows made = makeRows(paths);
    rows.insert(rows.begin() + row, std::make_move_iterator(made.begin()),
                std::make_move_iterator(made.end()));
    isNumbered = false;
    model.endInsertRows();
    serveWatches();
}

void AdvancedAttributeModel::Private::remove(int row, int count)
{
    model.beginRemoveRows({}, row, row + count - 1);
    const auto first = rows.begin() + row;
    retire(first, first + count);
    rows.erase(first, first + count);
    isNumbered = false;
    model.endRemoveRows();
    serveWatches();
}

void AdvancedAttributeModel::Private::rotate(int row, int count, int destination)
{
    const auto first = rows.begin() + row;
    if (destination < row)
        std::rotate(rows.begin() + destination, first, first + count);
    else
        std::rotate(first, first + count, rows.begin() + destination);
    isNumbered = false;
}

// Gathers the moved rows, which are in ascending order, before the one that is the destination now.
void AdvancedAttributeModel::Private::reorder(const std::vector<int>& moved, int destination)
{
    emit model.layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    const Rows before = rows;
    const auto isMoved = [&](const std::shared_ptr<WatchedAttribute>& attribute) {
        return std::binary_search(moved.begin(), moved.end(), attribute->row);
    };
    number();
    std::stable_partition(rows.begin(), rows.begin() + destination, std::not_fn(isMoved));
    std::stable_partition(rows.begin() + destination, rows.end(), isMoved);
    isNumbered = false;
    number();
    const QModelIndexList known = model.persistentIndexList();
    for (const QModelIndex& index : known) {
        const int row = before[std::size_t(index.row())]->row;
        model.changePersistentIndex(index, model.index(row, index.column()));
    }
    emit model.layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

void AdvancedAttributeModel::Private::number()
{
    if (isNumbered)
        return;
    int row = 0;
    for (const auto& attribute : rows)
        attribute->row = row++;
    isNumbered = true;
}

// Drops

bool AdvancedAttributeModel::Private::dropRows(const QMimeData& data, int destination)
{
    std::vector<int> moved = watchedRowsFrom(data);
    const auto isGone = [this](int row) { return row < 0 || row >= int(rows.size()); };
    moved.erase(std::remove_if(moved.begin(), moved.end(), isGone), moved.end());
    if (moved.empty())
        return false;
    reorder(moved, destination);
    return true;
}

bool AdvancedAttributeModel::Private::dropPaths(const QMimeData& data, int destination)
{
    takeRepository();
    const QStringList paths = attributePathsFrom(data);
    const QStringList added = missing(paths);
    if (added.isEmpty())
        return false;
    if (added.size() <= largeDrop || !confirmLargeDrop) {
        insert(destination, added);
        return true;
    }
    const QPersistentModelIndex place = model.index(destination, NameColumn);
    // Not posted: the event loop of the drag itself may still send what is posted.
    QTimer::singleShot(1, this, [=] { askAndInsert(paths, added.size(), place); });
    return true;
}

// Of what the paths stand for, the attributes that are no rows yet.
QStringList AdvancedAttributeModel::Private::missing(const QStringList& paths) const
{
    QSet<QString> watched;
    for (const auto& attribute : rows)
        watched.insert(attribute->path);
    const auto tree = repository ? repository->getTreeInterface() : nullptr;
    return droppedAttributes(tree.get(), paths, watched);
}

void AdvancedAttributeModel::Private::askAndInsert(const QStringList& paths, int attributes,
                                                   const QPersistentModelIndex& place)
{
    const QPointer<AdvancedAttributeModel> self(&model);
    const auto confirm = confirmLargeDrop; // outlives a model that goes meanwhile
    if (!confirm(attributes) || !self)
        return;
    const QStringList added = missing(paths); // the rows may be others by now
    if (!added.isEmpty())
        insert(place.isValid() ? place.row() : int(rows.size()), added);
}

// Following the repository

void AdvancedAttributeModel::Private::serveWatches()
{
    endWatches(watchesAtOnce);
    beginWatches(watchesAtOnce);
    if (retired.empty() && (unwatched.empty() || !repository))
        watchTimer.stop();
    else if (!watchTimer.isActive())
        watchTimer.start(0, this);
}

void AdvancedAttributeModel::Private::endWatches(int most)
{
    for (; most > 0 && !retired.empty(); --most) {
        retired.back()->endWatch();
        retired.pop_back();
    }
}

void AdvancedAttributeModel::Private::beginWatches(int most)
{
    const auto notifications = repository ? repository->getNotificationInterface() : nullptr;
    if (!notifications)
        return; // the rows wait for a repository
    std::vector<int> seenTooEarly;
    for (; most > 0 && !unwatched.empty(); --most) {
        const std::shared_ptr<WatchedAttribute> attribute = std::move(unwatched.front());
        unwatched.pop_front();
        if (attribute->row < 0)
            continue;
        attribute->watch(*notifications);
        if (!attribute->content)
            continue;
        attribute->content.reset(); // nobody would have told of a change since
        number();
        seenTooEarly.push_back(attribute->row);
    }
    announce(std::move(seenTooEarly));
}

void AdvancedAttributeModel::Private::showChanges(const Rows& changed)
{
    number();
    std::vector<int> changedRows;
    changedRows.reserve(changed.size());
    for (const auto& attribute : changed) {
        attribute->beginLook();
        if (attribute->row < 0)
            continue;
        light(attribute);
        changedRows.push_back(attribute->row);
    }
    announce(std::move(changedRows));
}

void AdvancedAttributeModel::Private::light(const std::shared_ptr<WatchedAttribute>& attribute)
{
    attribute->litUntil = clock.elapsed() + lightTime;
    if (!attribute->isLit)
        lit.push_back(attribute);
    attribute->isLit = true;
    if (!lightTimer.isActive())
        lightTimer.start(lightPeriod, this);
}

void AdvancedAttributeModel::Private::endLights()
{
    number();
    const qint64 now = clock.elapsed();
    const auto over =
        std::partition(lit.begin(), lit.end(), [now](const std::shared_ptr<WatchedAttribute>& attribute) {
            return attribute->row >= 0 && attribute->litUntil > now;
        });
    std::vector<int> changedRows;
    std::for_each(over, lit.end(), [&changedRows](const std::shared_ptr<WatchedAttribute>& attribute) {
        attribute->isLit = false;
        if (attribute->row >= 0)
            changedRows.push_back(attribute->row);
    });
    lit.erase(over, lit.end());
    if (lit.empty())
        lightTimer.stop();
    announce(std::move(changedRows), {Qt::BackgroundRole, Qt::ForegroundRole});
}

void AdvancedAttributeModel::Private::announce(std::vector<int> changedRows, const QVector<int>& roles)
{
    if (changedRows.empty())
        return;
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

void AdvancedAttributeModel::Private::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == watchTimer.timerId())
        serveWatches();
    else if (event->timerId() == lightTimer.timerId())
        endLights();
}

} // namespace Utilities::ModelViews
