#include "host/Utilities/ModelViews/AdvancedAttributeModel.h"

#include "host/Utilities/ModelViews/AttributePathsMimeData.h"
#include "host/Utilities/ModelViews/monitor/AdvancedAttributeModelPrivate.h"

#include <algorithm>
#include <utility>

namespace Utilities::ModelViews {

static_assert(int(AdvancedAttributeModel::PathColumn) == int(WatchedAttributeCells::Path));

AdvancedAttributeModel::AdvancedAttributeModel(QObject* parent)
    : QAbstractTableModel(parent), d(std::make_unique<Private>(*this))
{
}

AdvancedAttributeModel::~AdvancedAttributeModel() = default;

QStringList AdvancedAttributeModel::getAttributeFullPathList() const
{
    return d->rows.paths();
}

void AdvancedAttributeModel::loadCustomAttributeList(const QStringList& paths)
{
    QStringList kept;
    kept.reserve(paths.size());
    for (QString path : paths) {
        while (path.endsWith(QLatin1Char('\r'))) // it would be another path each time it is saved and loaded
            path.chop(1);
        if (!path.isEmpty())
            kept.append(path);
    }
    d->replace(kept);
}

void AdvancedAttributeModel::setLargeDropConfirmation(std::function<bool(int)> confirm)
{
    d->confirmLargeDrop = std::move(confirm);
}

int AdvancedAttributeModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : d->rows.size();
}

int AdvancedAttributeModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant AdvancedAttributeModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    return d->cells.cell(d->rows.at(index.row()), index.column(), role);
}

QVariant AdvancedAttributeModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal)
        return WatchedAttributeCells::header(section, role);
    return QAbstractTableModel::headerData(section, orientation, role);
}

Qt::ItemFlags AdvancedAttributeModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::ItemIsDropEnabled;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled | Qt::ItemNeverHasChildren;
}

bool AdvancedAttributeModel::removeRows(int row, int count, const QModelIndex& parent)
{
    if (parent.isValid() || row < 0 || count <= 0 || count > rowCount() - row)
        return false;
    d->remove(row, count);
    return true;
}

bool AdvancedAttributeModel::moveRows(const QModelIndex& sourceParent, int sourceRow, int count,
                                      const QModelIndex& destinationParent, int destinationChild)
{
    if (sourceParent.isValid() || destinationParent.isValid() || sourceRow < 0 || count <= 0 ||
        count > rowCount() - sourceRow || destinationChild < 0 || destinationChild > rowCount())
        return false;
    if (!beginMoveRows({}, sourceRow, sourceRow + count - 1, {}, destinationChild))
        return false;
    d->rows.rotate(sourceRow, count, destinationChild);
    endMoveRows();
    return true;
}

Qt::DropActions AdvancedAttributeModel::supportedDropActions() const
{
    return Qt::CopyAction;
}

QStringList AdvancedAttributeModel::mimeTypes() const
{
    return WatchedRowsDrag::mimeTypes();
}

QMimeData* AdvancedAttributeModel::mimeData(const QModelIndexList& indexes) const
{
    std::vector<int> rows;
    for (const QModelIndex& index : indexes) {
        if (checkIndex(index, CheckIndexOption::IndexIsValid))
            rows.push_back(index.row());
    }
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows.empty() ? nullptr : d->drag.dataOf(d->rows, rows).release();
}

bool AdvancedAttributeModel::canDropMimeData(const QMimeData* data, Qt::DropAction action, int row,
                                             int column, const QModelIndex& parent) const
{
    const bool isFile = data && data->hasUrls() && !data->hasFormat(attributePathsMimeType());
    return !isFile && QAbstractTableModel::canDropMimeData(data, action, row, column, parent);
}

bool AdvancedAttributeModel::dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int,
                                          const QModelIndex& parent)
{
    if (action == Qt::IgnoreAction)
        return true;
    if (!data)
        return false;
    const bool isBetween = row >= 0 && row <= rowCount();
    const int destination = parent.isValid() ? parent.row() : isBetween ? row : rowCount();
    return d->drag.isOwn(*data) ? d->dropRows(*data, destination) : d->dropPaths(*data, destination);
}

} // namespace Utilities::ModelViews
