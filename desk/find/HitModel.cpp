#include "desk/find/HitModel.h"

#include "desk/common/ReadableText.h"
#include "desk/find/HitPlaces.h"
#include "host/Utilities/ModelViews/AttributeTreeViewModel.h"
#include "host/Utilities/ModelViews/AttributeValueText.h"
#include "host/Utilities/ModelViews/ReadablePath.h"
#include "host/Utilities/ModelViews/ToolTipText.h"

#include <QApplication>
#include <QPalette>

#include <algorithm>

namespace Vantry {

using Utilities::ModelViews::AttributeTreeViewModel;
using Utilities::ModelViews::attributeValueText;

HitModel::HitModel(Repository& attributes, HitPlaces& hitPlaces, QObject* parent)
    : QAbstractTableModel(parent), repository(attributes), places(hitPlaces)
{
    connect(&places, &HitPlaces::changed, this, [this] {
        if (!rows.isEmpty())
            emit dataChanged(index(0, PlaceColumn), index(rows.size() - 1, PlaceColumn));
    });
}

void HitModel::clear(bool canBeChecked)
{
    beginResetModel();
    rows.clear();
    areCheckable = canBeChecked;
    checkedCount = 0;
    endResetModel();
    emit checkedChanged();
}

void HitModel::add(const QVector<SearchHit>& hits)
{
    const int count = std::min(hits.size(), mostRows - rows.size());
    if (count <= 0)
        return;
    beginInsertRows({}, rows.size(), rows.size() + count - 1);
    for (int i = 0; i < count; ++i) {
        const bool isChecked = areCheckable && hits[i].refusal.ok();
        rows.append({hits[i], isChecked});
        checkedCount += isChecked ? 1 : 0;
    }
    endInsertRows();
    if (areCheckable)
        emit checkedChanged();
}

void HitModel::tellValueChanged(int row)
{
    emit dataChanged(index(row, ValueColumn), index(row, ValueColumn));
}

QVector<HitModel::SearchHit> HitModel::getChecked() const
{
    QVector<SearchHit> checked;
    for (const Row& row : rows) {
        if (row.isChecked)
            checked.append(row.hit);
    }
    return checked;
}

int HitModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : rows.size();
}

int HitModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant HitModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const Row& row = rows[index.row()];
    switch (role) {
    case Qt::DisplayRole:
        return textOf(row, index.column());
    case Qt::ToolTipRole:
        return Utilities::ModelViews::toolTipText(toolTipOf(row, index.column()));
    case Qt::CheckStateRole:
        if (areCheckable && index.column() == PathColumn && row.hit.refusal.ok())
            return row.isChecked ? Qt::Checked : Qt::Unchecked;
        return {};
    case PathRole:
        return row.hit.path;
    case Qt::AccessibleTextRole:
    case AttributeTreeViewModel::ReadableNameRole:
        return index.column() == PathColumn ? Utilities::ModelViews::readablePath(row.hit.path, repository)
                                            : QVariant();
    case Qt::ForegroundRole:
        return row.hit.refusal.ok() ? QVariant()
                                    : QApplication::palette().brush(QPalette::Disabled, QPalette::Text);
    default:
        return {};
    }
}

std::optional<QVariant> HitModel::valueOf(const SearchHit& hit) const
{
    QVariant value;
    const int status = repository.getReaderInterface()->readAttributeValue(hit.path, value, 0);
    const bool isThere = status == FrameworkCore::AppConfig::Success ||
                         repository.getTreeInterface()->getNodeInformation(hit.path).exists;
    return isThere ? std::optional(value) : std::nullopt;
}

QString HitModel::textOf(const Row& row, int column) const
{
    switch (column) {
    case PathColumn:
        return row.hit.path;
    case ValueColumn: {
        const auto value = valueOf(row.hit);
        return value ? attributeValueText(*value) : tr("(no longer there)");
    }
    case ReplacementColumn:
        return row.hit.refusal.ok() ? attributeValueText(row.hit.replacement) : row.hit.refusal.explain();
    default:
        return places.textOf(row.hit.path);
    }
}

QString HitModel::toolTipOf(const Row& row, int column) const
{
    constexpr int longest = 2000;
    constexpr int mostLines = 20;
    switch (column) {
    case ValueColumn:
        return Utilities::ModelViews::attributeValueLines(valueOf(row.hit).value_or(QVariant()), longest,
                                                          mostLines);
    case ReplacementColumn:
        return row.hit.refusal.ok()
                   ? Utilities::ModelViews::attributeValueLines(row.hit.replacement, longest, mostLines)
                   : readableText(row.hit.refusal, repository);
    case PlaceColumn:
        return places.longTextOf(row.hit.path);
    default:
        return row.hit.path;
    }
}

bool HitModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::CheckStateRole || !flags(index).testFlag(Qt::ItemIsUserCheckable))
        return false;
    Row& row = rows[index.row()];
    const bool isChecked = value.toInt() == Qt::Checked;
    if (row.isChecked == isChecked)
        return true;
    row.isChecked = isChecked;
    checkedCount += isChecked ? 1 : -1;
    emit dataChanged(index, index, {Qt::CheckStateRole});
    emit checkedChanged();
    return true;
}

QVariant HitModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    const QString names[] = {tr("Path"), tr("Value"), tr("New Value"), tr("Place")};
    return section < ColumnCount ? names[section] : QVariant();
}

Qt::ItemFlags HitModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return {};
    const bool canBeChecked =
        areCheckable && index.column() == PathColumn && rows[index.row()].hit.refusal.ok();
    const Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    return canBeChecked ? flags | Qt::ItemIsUserCheckable : flags;
}

} // namespace Vantry
