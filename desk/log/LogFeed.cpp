#include "desk/log/LogFeed.h"

namespace Vantry {

using Shared::Logging::LogRecord;

LogFeed::LogFeed(QObject* parent) : QObject(parent)
{
    constexpr int milliseconds = 100;
    pause.setInterval(milliseconds);
    pause.setSingleShot(true);
    connect(&pause, &QTimer::timeout, this, &LogFeed::read);
    connect(&LogRecord::instance(), &LogRecord::linesAdded, this, &LogFeed::schedule, Qt::QueuedConnection);
    pause.start();
}

void LogFeed::schedule()
{
    if (!pause.isActive())
        pause.start();
}

void LogFeed::read()
{
    const auto lines = LogRecord::instance().getLines(lastNumber);
    if (lines.isEmpty())
        return;
    lastNumber = lines.last().number;
    emit linesRead(lines);
}

} // namespace Vantry
