#include "desk/log/LogFeed.h"

#include "host/Utilities/ModelViews/ReadablePath.h"

namespace Vantry {

using Shared::Logging::LogLine;
using Shared::Logging::LogRecord;

LogFeed::LogFeed(std::shared_ptr<Repository> attributes, QObject* parent)
    : QObject(parent), repository(std::move(attributes))
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
    auto lines = LogRecord::instance().getLines(lastNumber);
    if (lines.isEmpty())
        return;
    lastNumber = lines.last().number;
    for (auto& line : lines)
        line = readable(std::move(line), *repository);
    emit linesRead(lines);
}

// Replaced in the text, as the outcome is kept without the value that the text has.
LogLine LogFeed::readable(LogLine line, Repository& repository)
{
    const auto& parts = line.outcome.get();
    const auto replace = [&](const QString& path) {
        if (path.contains(QLatin1Char('%')))
            line.text.replace(path, Utilities::ModelViews::readablePath(path, repository));
    };
    replace(parts.subject);
    for (const auto& detail : parts.details)
        replace(detail.path);
    return line;
}

} // namespace Vantry
