#pragma once

#include <QObject>
#include <QString>

#include <functional>
#include <future>

namespace Vantry {

// Work on another thread of which only the newest counts, as what is looked up for a selection: of the tasks
// that come while one runs, the last follows it, and results that are out of date are dropped. GUI thread.
class LatestTask : public QObject
{
    Q_OBJECT

public:
    using Result = std::function<void()>;

    // Run on the worker; gives what is then to be done on the GUI thread.
    using Task = std::function<Result()>;

    using QObject::QObject; // going, it waits for the task that runs

    void start(Task task);

    bool isBusy() const { return worker.valid(); }

signals:
    // A task threw, or its thread could not be started.
    void failed(const QString& reason);

private:
    void startNext();
    void finish(const Result& result, const QString& failure);

    Task waiting;
    std::future<void> worker; // valid until its result is delivered
};

} // namespace Vantry
