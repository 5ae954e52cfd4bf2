#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"
#include "host/Shared/Logging/LogRecord.h"

#include <QObject>
#include <QTimer>
#include <QVector>

#include <memory>

namespace Vantry {

// Hands on what the process logs, in batches: at most ten a second, so that thousands of lines a second leave
// the window free. GUI thread, whatever threads log.
class LogFeed : public QObject
{
    Q_OBJECT

public:
    using Repository = FrameworkCore::AppConfig::Interfaces::RepositoryInterface;

    // Begins with the lines that the record keeps already.
    explicit LogFeed(std::shared_ptr<Repository> repository, QObject* parent = nullptr);

    // The line with the paths that it is about as people read them. Any thread.
    static Shared::Logging::LogLine readable(Shared::Logging::LogLine line, Repository& repository);

signals:
    // Never empty, oldest first. Of more than the record keeps, the oldest are missing.
    void linesRead(const QVector<Shared::Logging::LogLine>& lines);

private:
    void schedule();
    void read();

    const std::shared_ptr<Repository> repository;
    QTimer pause;
    quint64 lastNumber = 0;
};

} // namespace Vantry
