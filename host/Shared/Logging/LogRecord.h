#pragma once

#include "host/FrameworkCore/AppConfig/Outcome.h"
#include "host/FrameworkCore/CoreExport.h"
#include "host/Shared/Logging/LogMessageType.h"

#include <QDateTime>
#include <QObject>
#include <QString>
#include <QVector>

#include <atomic>
#include <mutex>
#include <vector>

namespace Shared::Logging {

// One complete log line.
struct LogLine
{
    quint64 number = 0; // counts all lines of the process, from 1
    QDateTime time;     // UTC
    LogMessageType type = LogMessageType::Information;
    QString identification;
    QString category;
    QString text;
    FrameworkCore::AppConfig::Outcome outcome = {}; // that the text was made of; a success where it was none
};

// The last lines of the process's log, kept in memory. Any thread; one object for the process.
class VANTRY_CORE_EXPORT LogRecord : public QObject
{
    Q_OBJECT

public:
    static constexpr int capacity = 10000;

    static LogRecord& instance();

    // The kept lines whose number is above the given one, oldest first.
    QVector<LogLine> getLines(quint64 afterNumber = 0) const;

    // Of the newest line; 0 before the first.
    quint64 getLastNumber() const;

    // Adds a complete line, dropping the oldest when the record is full, and writes it to stderr unless told
    // not to.
    void append(LogLine line, bool writeToStandardError);

    // A program that shows what is logged in a way of its own turns the writing to stderr off.
    void setWritesToStandardError(bool writes);

signals:
    // Lines were added since the last time. Emitted on the thread that logs, outside of any lock, and not
    // again until getLines has been called: connect queued, then read what is new.
    void linesAdded();

private:
    LogRecord();
    ~LogRecord() override;

    // Numbers and keeps the line; gives whether the readers must be notified.
    bool record(LogLine&& line);

    std::atomic<bool> writesToStandardError{true};

    mutable std::mutex mutex;  // guards what follows
    std::vector<LogLine> ring; // line n lies at (n - 1) % capacity
    quint64 lastNumber = 0;
    mutable bool isAnnounced = false;
};

} // namespace Shared::Logging
