#include "desk/log/LogModel.h"

#include "host/Utilities/ModelViews/TextBeginning.h"
#include "host/Utilities/ModelViews/ToolTipText.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>

#include <algorithm>

namespace Vantry {

using Shared::Logging::LogLine;
using Shared::Logging::LogMessageType;
using Shared::Logging::LogRecord;

namespace {

// A row has one line; a text that has more, or is very long, is seen whole in its tool tip.
QString onOneLine(const QString& text)
{
    constexpr int mostShown = 1000;
    QString line = Utilities::ModelViews::shortened(text, mostShown, mostShown);
    line.replace(QLatin1Char('\n'), QStringLiteral(" \u21B5 "));
    return line;
}

QString displayText(const LogLine& line, int column)
{
    switch (column) {
    case LogModel::TimeColumn:
        return line.time.toLocalTime().toString(QStringLiteral("HH:mm:ss.zzz"));
    case LogModel::TypeColumn:
        return LogModel::nameOf(line.type);
    case LogModel::CategoryColumn:
        return line.category;
    default:
        return onOneLine(line.text);
    }
}

QString fullTime(const LogLine& line)
{
    return line.time.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz"));
}

QString plainText(const LogLine& line)
{
    return QStringLiteral("%1 %2 [%3] %4")
        .arg(fullTime(line), LogModel::nameOf(line.type).toLower(), line.category, line.text);
}

QColor failureColour()
{
    const bool isDark = QApplication::palette().color(QPalette::Base).lightness() < 128;
    return isDark ? QColor(255, 140, 130) : QColor(176, 0, 16);
}

} // namespace

QString LogModel::nameOf(LogMessageType type)
{
    switch (type) {
    case LogMessageType::Information:
        return tr("Information");
    case LogMessageType::Outcome:
        return tr("Outcome");
    case LogMessageType::Failure:
        return tr("Failure");
    }
    return tr("Unknown");
}

QIcon LogModel::iconOf(LogMessageType type)
{
    const QStyle& style = *QApplication::style();
    switch (type) {
    case LogMessageType::Outcome:
        return style.standardIcon(QStyle::SP_DialogApplyButton);
    case LogMessageType::Failure:
        return style.standardIcon(QStyle::SP_MessageBoxCritical);
    default:
        return style.standardIcon(QStyle::SP_MessageBoxInformation);
    }
}

void LogModel::addLines(const QVector<LogLine>& added)
{
    if (added.isEmpty())
        return;
    emit linesAboutToBeAdded();
    const int kept = std::min(int(added.size()), int(LogRecord::capacity));
    dropOldest(rowCount() + kept - LogRecord::capacity);
    beginInsertRows({}, rowCount(), rowCount() + kept - 1);
    lines.insert(lines.end(), added.end() - kept, added.end());
    endInsertRows();
    emit linesAdded();
}

void LogModel::dropOldest(int count)
{
    if (count <= 0)
        return;
    beginRemoveRows({}, 0, count - 1);
    lines.erase(lines.begin(), lines.begin() + count);
    endRemoveRows();
}

int LogModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(lines.size());
}

int LogModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant LogModel::data(const QModelIndex& index, int role) const
{
    if (!hasIndex(index.row(), index.column(), index.parent()))
        return {};
    const LogLine& line = lines[std::size_t(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return displayText(line, index.column());
    case Qt::ToolTipRole:
        return Utilities::ModelViews::toolTipText(index.column() == TimeColumn ? fullTime(line) : line.text);
    case Qt::DecorationRole:
        return index.column() == TypeColumn ? QVariant(iconOf(line.type)) : QVariant();
    case Qt::ForegroundRole:
        return line.type == LogMessageType::Failure ? QVariant(failureColour()) : QVariant();
    case LineTypeRole:
        return int(line.type);
    case PlainTextRole:
        return plainText(line);
    default:
        return {};
    }
}

QVariant LogModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case TimeColumn:
        return tr("Time");
    case TypeColumn:
        return tr("Type");
    case CategoryColumn:
        return tr("Category");
    default:
        return tr("Text");
    }
}

} // namespace Vantry
