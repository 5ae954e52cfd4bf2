#include "host/Utilities/ModelViews/monitor/WatchedAttributeUpdates.h"

#include <ctime>

namespace Utilities::ModelViews {

namespace {

// The thread spends one part in fourteen. When processors are few, a writer that gives way to it may hold a
// lock that the other writers want, so that its time counts for all of them.
constexpr qint64 pausePerWork = 14;

// Processor time of this thread in microseconds. Drawing happens long after the model has signalled changes,
// so that the time of signalling says little.
qint64 usedTime()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return qint64(time.tv_sec) * 1'000'000 + time.tv_nsec / 1000;
}

} // namespace

WatchedAttributeUpdates::WatchedAttributeUpdates(const Handler& batchHandler)
    : handler(batchHandler), contents(std::make_shared<WatchedAttributeInbox>()),
      inbox([this] { deliver(); }, [this] { return pause(); })
{
    inbox.open(contents);
}

WatchedAttributeUpdates::~WatchedAttributeUpdates()
{
    inbox.close();
    takeChanged(); // they own the inbox in turn
}

WatchedAttributeInbox::Attributes WatchedAttributeUpdates::takeChanged()
{
    return contents->take([this] { return std::exchange(contents->changed, {}); });
}

void WatchedAttributeUpdates::deliver()
{
    usedBefore = usedTime();
    handler(takeChanged());
}

qint64 WatchedAttributeUpdates::pause() const
{
    return qBound(PacedInbox::shortestPause, pausePerWork * (usedTime() - usedBefore) / 1000,
                  PacedInbox::longestPause);
}

} // namespace Utilities::ModelViews
