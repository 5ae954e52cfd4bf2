#include "host/Utilities/ModelViews/monitor/WatchedAttribute.h"

#include "host/FrameworkCore/AppConfig/AttributePath.h"

#include <chrono>
#include <ctime>

namespace Utilities::ModelViews {

using FrameworkCore::Notification::UpdatePoint;
using FrameworkCore::Notification::UpdateResult;

namespace {

constexpr quint64 inInbox = 1;
constexpr quint64 oneChange = 2;

bool canNameAttribute(const QString& path)
{
    using FrameworkCore::AppConfig::pathSeparator;
    return !path.isEmpty() && !path.startsWith(pathSeparator) && !path.endsWith(pathSeparator) &&
           !path.contains(QLatin1String("..")) && !path.contains(QLatin1Char('*'));
}

qint64 exactTime()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
}

// Late by some milliseconds, at a quarter of the cost.
qint64 coarseTime()
{
    timespec time{};
    clock_gettime(CLOCK_REALTIME_COARSE, &time);
    return qint64(time.tv_sec) * 1000 + time.tv_nsec / 1'000'000;
}

} // namespace

WatchedAttribute::WatchedAttribute(const QString& attributePath,
                                   const std::shared_ptr<WatchedAttributeInbox>& changedOnes)
    : path(attributePath), inbox(changedOnes)
{
}

void WatchedAttribute::countChange()
{
    // Of changes that come faster than anybody looks, only the first one is worth the exact clock.
    const bool isFollowing = (state.load(std::memory_order_relaxed) & inInbox) != 0;
    const qint64 time = isFollowing ? coarseTime() : exactTime();
    if (time > lastTime.load(std::memory_order_relaxed))
        lastTime.store(time, std::memory_order_relaxed);
    // Whoever looks clears the bit by such an operation too: either it sees this change, or the bit is gone.
    if ((state.fetch_add(oneChange, std::memory_order_acq_rel) & inInbox) != 0)
        return;
    if ((state.fetch_or(inInbox, std::memory_order_acq_rel) & inInbox) == 0)
        inbox->put([this] { inbox->changed.push_back(shared_from_this()); });
}

WatchedAttribute::Changes WatchedAttribute::getChanges() const
{
    return {state.load(std::memory_order_acquire) / oneChange, lastTime.load(std::memory_order_relaxed)};
}

void WatchedAttribute::watch(FrameworkCore::AppConfig::Interfaces::NotificationInterface& notifications)
{
    if (registration || !canNameAttribute(path))
        return;
    const auto callback = [self = shared_from_this()](const QString&, const UpdatePoint&,
                                                      const UpdateResult& result, const QVariant&,
                                                      const QString&) {
        if (result != UpdateResult::Unchanged)
            self->countChange();
    };
    registration =
        notifications.registerUpdateCallback(path, callback, static_cast<int>(UpdatePoint::AfterStore));
}

void WatchedAttribute::endWatch()
{
    if (registration)
        registration->end();
    registration.reset(); // it may hold this
}

void WatchedAttribute::beginLook()
{
    state.fetch_and(~inInbox, std::memory_order_acq_rel);
    content.reset();
}

} // namespace Utilities::ModelViews
