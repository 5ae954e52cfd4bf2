#include "desk/common/LatestTask.h"

#include "host/Utilities/GuiThread.h"
#include "host/Utilities/Worker.h"

#include <QPointer>

#include <utility>

namespace Vantry {

void LatestTask::start(Task task)
{
    waiting = std::move(task);
    if (!worker.valid())
        startNext();
}

void LatestTask::startNext()
{
    QString reason;
    const QPointer<LatestTask> self(this);
    worker = Utilities::startWorker(
        [self, task = std::exchange(waiting, nullptr)] {
            Result result;
            QString failure;
            try {
                result = task();
            } catch (...) {
                failure = Utilities::currentFailure();
            }
            Utilities::postToGuiThread([self, result, failure] {
                if (self)
                    self->finish(result, failure);
            });
        },
        reason);
    if (!worker.valid())
        emit failed(reason);
}

void LatestTask::finish(const Result& result, const QString& failure)
{
    worker = {};
    if (waiting)
        startNext();
    else if (result)
        result();
    else
        emit failed(failure);
}

} // namespace Vantry
