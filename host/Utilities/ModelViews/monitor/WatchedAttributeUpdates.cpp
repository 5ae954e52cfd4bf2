#include "host/Utilities/ModelViews/monitor/WatchedAttributeUpdates.h"

#include "host/Utilities/ModelViews/monitor/WatchedAttribute.h"

#include <QEvent>
#include <QTimerEvent>

#include <ctime>

namespace Utilities::ModelViews {

namespace {

constexpr qint64 shortestPause = 16; // milliseconds; about one picture
constexpr qint64 longestPause = 400;
// The thread spends one part in fourteen. When processors are few, a writer that gives way to it may hold a
// lock that the other writers want, so that its time counts for all of them.
constexpr qint64 pausePerWork = 14;

// Processor time of this thread in microseconds. Drawing happens long after the model has told of changes, so
// that the time in which it tells says little.
qint64 usedTime()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return qint64(time.tv_sec) * 1'000'000 + time.tv_nsec / 1000;
}

} // namespace

WatchedAttributeUpdates::WatchedAttributeUpdates(const Handler& batchHandler)
    : handler(batchHandler), inbox(std::make_shared<WatchedAttributeInbox>())
{
    inbox->setReceiver(this);
}

WatchedAttributeUpdates::~WatchedAttributeUpdates()
{
    inbox->setReceiver(nullptr); // a callback that still runs posts nothing any more
}

void WatchedAttributeUpdates::customEvent(QEvent*)
{
    deliverInTime();
}

void WatchedAttributeUpdates::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != timer.timerId())
        return;
    timer.stop();
    deliverInTime();
}

void WatchedAttributeUpdates::deliverInTime()
{
    const qint64 remaining = sinceDelivery.isValid() ? pause() - sinceDelivery.elapsed() : 0;
    if (remaining > 0) {
        timer.start(int(remaining), Qt::PreciseTimer, this);
        return;
    }
    sinceDelivery.start();
    usedBefore = usedTime();
    handler(inbox->take());
}

qint64 WatchedAttributeUpdates::pause() const
{
    return qBound(shortestPause, pausePerWork * (usedTime() - usedBefore) / 1000, longestPause);
}

} // namespace Utilities::ModelViews
