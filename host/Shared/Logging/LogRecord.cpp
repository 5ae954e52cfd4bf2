#include "host/Shared/Logging/LogRecord.h"

#include "host/FrameworkCore/Values/PrintableText.h"

#include <QStringList>

#include <algorithm>
#include <cstdio>
#include <utility>

namespace Shared::Logging {

namespace {

QLatin1String nameOf(LogMessageType type)
{
    switch (type) {
    case LogMessageType::Information:
        return QLatin1String("information");
    case LogMessageType::Outcome:
        return QLatin1String("outcome");
    case LogMessageType::Failure:
        return QLatin1String("failure");
    }
    return QLatin1String("unknown");
}

// One call of fwrite, which locks the stream and, since stderr has no buffer, is one write: lines of threads,
// and of others that write to stderr, never mix. Later lines of a text are indented, so that none looks like
// a record of its own. It may be a terminal that shows them.
void writeToStandardErrorStream(const LogLine& line)
{
    QString text = QString::fromStdString(FrameworkCore::Values::printableLines(line.text.toStdString()));
    text.replace(QLatin1Char('\n'), QLatin1String("\n    "));
    QStringList parts{line.time.toString(Qt::ISODateWithMs), nameOf(line.type)};
    if (!line.identification.isEmpty())
        parts.append(line.identification);
    parts.append(QLatin1Char('[') + line.category + QLatin1Char(']'));
    parts.append(text + QLatin1Char('\n'));
    const QByteArray written = parts.join(QLatin1Char(' ')).toUtf8();
    std::fwrite(written.constData(), 1, size_t(written.size()), stderr);
}

} // namespace

LogRecord& LogRecord::instance()
{
    static LogRecord& record = *new LogRecord; // never destroyed: static objects log at their end
    return record;
}

LogRecord::LogRecord() = default;

LogRecord::~LogRecord() = default;

QVector<LogLine> LogRecord::getLines(quint64 afterNumber) const
{
    const std::lock_guard<std::mutex> guard(mutex);
    isAnnounced = false;
    const quint64 oldest = lastNumber - quint64(ring.size());
    QVector<LogLine> lines;
    for (quint64 number = std::max(oldest, afterNumber) + 1; number <= lastNumber; ++number)
        lines.append(ring[(number - 1) % capacity]);
    return lines;
}

quint64 LogRecord::getLastNumber() const
{
    const std::lock_guard<std::mutex> guard(mutex);
    return lastNumber;
}

void LogRecord::append(LogLine line, bool writeToStandardError)
{
    if (writeToStandardError && writesToStandardError)
        writeToStandardErrorStream(line);
    if (record(std::move(line)))
        emit linesAdded();
}

void LogRecord::setWritesToStandardError(bool writes)
{
    writesToStandardError = writes;
}

bool LogRecord::record(LogLine&& line)
{
    const std::lock_guard<std::mutex> guard(mutex);
    line.number = ++lastNumber;
    if (ring.size() < capacity)
        ring.push_back(std::move(line));
    else
        ring[(lastNumber - 1) % capacity] = std::move(line);
    return !std::exchange(isAnnounced, true);
}

} // namespace Shared::Logging
