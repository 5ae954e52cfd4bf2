#include "desk/text/TextModel.h"

#include <QBrush>
#include <QGuiApplication>
#include <QPalette>

namespace Vantry {

void TextModel::setRows(std::shared_ptr<const TextRows> textRows)
{
    beginResetModel();
    marked = nullptr;
    rows = std::move(textRows);
    endResetModel();
}

void TextModel::mark(const QString& path)
{
    marked = rows ? rows->findPath(path) : nullptr;
    if (rowCount() > 0)
        emit dataChanged(index(0, TextColumn), index(rowCount() - 1, TextColumn));
}

int TextModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() || !rows ? 0 : rows->size();
}

QVariant TextModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const int line = rows->getLine(index.row());
    switch (role) {
    case Qt::DisplayRole:
        if (index.column() == TextColumn)
            return rows->getText(index.row());
        return line > 0 ? QVariant(line) : QVariant();
    case Qt::TextAlignmentRole:
        return index.column() == LineColumn ? QVariant(int(Qt::AlignRight | Qt::AlignVCenter)) : QVariant();
    case Qt::ForegroundRole:
        return index.column() == LineColumn
                   ? QVariant(QGuiApplication::palette().brush(QPalette::Disabled, QPalette::Text))
                   : QVariant();
    default:
        return {};
    }
}

} // namespace Vantry
