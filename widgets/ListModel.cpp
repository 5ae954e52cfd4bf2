#include "widgets/ListModel.h"

#include "host/Utilities/ModelViews/ToolTipText.h"
#include "widgets/CellEditor.h"

namespace Widgets {

ListModel::ListModel(const QStringList& texts, QObject* parent) : QAbstractTableModel(parent), elements(texts)
{
}

void ListModel::replace(const QStringList& texts)
{
    beginResetModel();
    elements = texts;
    endResetModel();
}

void ListModel::append(const QString& element)
{
    beginInsertRows({}, elements.size(), elements.size());
    elements.append(element);
    endInsertRows();
}

void ListModel::removeLast()
{
    beginRemoveRows({}, elements.size() - 1, elements.size() - 1);
    elements.removeLast();
    endRemoveRows();
}

int ListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : elements.size();
}

int ListModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant ListModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    QString reason;
    if (role == Qt::ToolTipRole && !isLineEditable(elements.at(index.row()), reason))
        return Utilities::ModelViews::toolTipText(reason);
    if (role != Qt::DisplayRole && role != Qt::EditRole)
        return {};
    return index.column() == TextColumn ? elements.at(index.row()) : QString::number(index.row());
}

bool ListModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::EditRole || index.column() != TextColumn)
        return false;
    elements[index.row()] = value.toString();
    emit dataChanged(index, index);
    return true;
}

Qt::ItemFlags ListModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    QString reason;
    const bool isEditable = index.column() == TextColumn && isLineEditable(elements.at(index.row()), reason);
    return isEditable ? flags | Qt::ItemIsEditable : flags;
}

} // namespace Widgets
