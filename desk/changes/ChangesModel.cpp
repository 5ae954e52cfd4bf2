#include "desk/changes/ChangesModel.h"

#include "host/Utilities/ModelViews/AttributeValueText.h"
#include "host/Utilities/ModelViews/ToolTipText.h"

#include <QBrush>
#include <QFont>
#include <QGuiApplication>
#include <QPalette>

#include <algorithm>

namespace Vantry {

using Utilities::ModelViews::attributeValueText;
using Utilities::ModelViews::toolTipText;

namespace {

bool hasConflict(const ChangedFile& file)
{
    return std::any_of(file.changes.begin(), file.changes.end(),
                       [](const auto& change) { return change.isConflict; });
}

// What one side holds.
QString valueText(const QVariant& value, bool isThere)
{
    if (!isThere)
        return ChangesModel::tr("(not there)");
    return value.isValid() ? attributeValueText(value) : ChangesModel::tr("(not shown)");
}

QColor warningColour()
{
    const bool isDark = QGuiApplication::palette().color(QPalette::Base).lightness() < 128;
    return isDark ? QColor(255, 140, 130) : QColor(176, 0, 16);
}

} // namespace

void ChangesModel::setFiles(std::vector<ChangedFile> changedFiles)
{
    beginResetModel();
    files = std::move(changedFiles);
    endResetModel();
}

QModelIndex ChangesModel::find(const QString& path) const
{
    for (std::size_t number = 0; number < files.size(); ++number) {
        const QModelIndex file = index(int(number), 0);
        if (files[number].backend == path)
            return file;
        const auto& changes = files[number].changes;
        const auto found = std::find_if(changes.begin(), changes.end(),
                                        [&path](const UnsavedChange& change) { return change.path == path; });
        if (found != changes.end())
            return index(int(found - changes.begin()), 0, file);
    }
    return {};
}

// A change keeps the number of its file, counted from 1.
QModelIndex ChangesModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column, parent.isValid() ? quintptr(parent.row()) + 1 : quintptr(0));
}

QModelIndex ChangesModel::parent(const QModelIndex& index) const
{
    return !index.isValid() || isFile(index) ? QModelIndex()
                                             : createIndex(int(index.internalId()) - 1, 0, quintptr(0));
}

int ChangesModel::rowCount(const QModelIndex& parent) const
{
    if (!parent.isValid())
        return int(files.size());
    return isFile(parent) && parent.column() == 0 ? fileOf(parent).changes.size() : 0;
}

const ChangedFile& ChangesModel::fileOf(const QModelIndex& index) const
{
    return files[std::size_t(isFile(index) ? index.row() : int(index.internalId()) - 1)];
}

QVariant ChangesModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    const QStringList titles{tr("Attribute"), tr("State"), tr("Saved"), tr("Unsaved"), tr("Base")};
    return titles.value(section);
}

QVariant ChangesModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const ChangedFile& file = fileOf(index);
    if (role == BackendRole)
        return file.backend;
    return isFile(index) ? fileData(file, index.column(), role)
                         : changeData(file, file.changes[index.row()], index.column(), role);
}

QVariant ChangesModel::fileData(const ChangedFile& file, int column, int role)
{
    if (role == PathRole)
        return file.backend;
    if (role == ConflictRole)
        return hasConflict(file);
    if (role == Qt::FontRole) {
        QFont bold;
        bold.setBold(true);
        return bold;
    }
    if (role == Qt::ForegroundRole && column == StateColumn && hasConflict(file))
        return QBrush(warningColour());
    if (role == Qt::ToolTipRole)
        return toolTipText(file.label);
    if (role != Qt::DisplayRole)
        return {};
    if (column == PathColumn)
        return file.label;
    if (column != StateColumn)
        return {};
    return file.changes.size() == 1 ? tr("1 change") : tr("%1 changes").arg(file.changes.size());
}

QVariant ChangesModel::changeData(const ChangedFile& file, const UnsavedChange& change, int column, int role)
{
    switch (role) {
    case PathRole:
        return change.path;
    case ConflictRole:
        return change.isConflict;
    case Qt::ForegroundRole:
        return change.isConflict && column == StateColumn ? QBrush(warningColour()) : QVariant();
    case Qt::ToolTipRole:
        return toolTipText(textOf(file, change, column));
    case Qt::DisplayRole:
        return textOf(file, change, column);
    default:
        return {};
    }
}

QString ChangesModel::textOf(const ChangedFile& file, const UnsavedChange& change, int column)
{
    using Kind = UnsavedChange::Kind;
    const bool isGone = change.path == file.backend && change.isConflict && !change.before.isValid();
    switch (column) {
    case PathColumn:
        return change.path == file.backend ? QStringLiteral(".") : change.path.mid(file.backend.size() + 1);
    case StateColumn:
        return change.isConflict              ? tr("conflict")
               : change.kind == Kind::Created ? tr("new")
               : change.kind == Kind::Removed ? tr("removed")
                                              : tr("changed");
    case FileColumn:
        return isGone ? tr("(the file is gone)") : valueText(change.before, change.kind != Kind::Created);
    case UnsavedColumn:
        return isGone ? tr("(what is open)") : valueText(change.after, change.kind != Kind::Removed);
    default:
        return change.isConflict && !isGone ? valueText(change.base, change.base.isValid()) : QString();
    }
}

} // namespace Vantry
