#pragma once

#include "host/Shared/Logging/LogRecord.h"

#include <QObject>
#include <QTimer>
#include <QVector>

namespace Vantry {

// Hands on what the process logs, in batches: at most ten a second, so that thousands of lines a second leave
// the window free. GUI thread, whatever threads log.
class LogFeed : public QObject
{
    Q_OBJECT

public:
    // Begins with the lines that the record keeps already.
    explicit LogFeed(QObject* parent = nullptr);

signals:
    // Never empty, oldest first. Of more than the record keeps, the oldest are missing.
    void linesRead(const QVector<Shared::Logging::LogLine>& lines);

private:
    void schedule();
    void read();

    QTimer pause;
    quint64 lastNumber = 0;
};

} // namespace Vantry
