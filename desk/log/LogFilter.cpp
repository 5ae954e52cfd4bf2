#include "desk/log/LogFilter.h"

#include "desk/log/LogModel.h"

namespace Vantry {

void LogFilter::showType(Shared::Logging::LogMessageType type, bool isShown)
{
    if (isShown)
        hiddenTypes.remove(int(type));
    else
        hiddenTypes.insert(int(type));
    invalidateFilter();
}

void LogFilter::setText(const QString& text)
{
    wantedText = text;
    invalidateFilter();
}

bool LogFilter::filterAcceptsRow(int row, const QModelIndex& parent) const
{
    const QModelIndex line = sourceModel()->index(row, LogModel::TextColumn, parent);
    if (hiddenTypes.contains(line.data(LogModel::LineTypeRole).toInt()))
        return false;
    return wantedText.isEmpty() ||
           line.data(LogModel::PlainTextRole).toString().contains(wantedText, Qt::CaseInsensitive);
}

} // namespace Vantry
