#include "host/Utilities/ModelViews/tree/AttributeTreeChanges.h"

#include <QEvent>
#include <QTimerEvent>

namespace Utilities::ModelViews {

using FrameworkCore::Notification::UpdatePoint;

namespace {

constexpr qint64 shortestPause = 16; // milliseconds; about one picture
constexpr qint64 longestPause = 400;
constexpr qint64 pausePerWork = 3; // the GUI thread keeps three quarters of its time

} // namespace

AttributeTreeChanges::AttributeTreeChanges(const BatchHandler& batchHandler) : handler(batchHandler)
{
}

AttributeTreeChanges::~AttributeTreeChanges()
{
    endWatch();
}

void AttributeTreeChanges::watch(FrameworkCore::AppConfig::Interfaces::NotificationInterface& notifications,
                                 const QString& pathOrPattern)
{
    endWatch();
    inbox = std::make_shared<AttributeTreeInbox>();
    inbox->setReceiver(this);
    registration = notifications.registerUpdateCallback(
        pathOrPattern,
        [target = inbox](const QString& path, const auto&, const auto& result, const auto&, const auto&) {
            target->add(path, result);
        },
        static_cast<int>(UpdatePoint::AfterStore) | static_cast<int>(UpdatePoint::AfterReorder));
}

void AttributeTreeChanges::endWatch()
{
    if (registration)
        registration->end();
    if (inbox)
        inbox->setReceiver(nullptr); // a callback that still runs posts nothing any more
}

void AttributeTreeChanges::requestBatch()
{
    if (!timer.isActive())
        timer.start(int(shortestPause), this);
}

void AttributeTreeChanges::deliverNow()
{
    if (!inbox || delivering)
        return;
    timer.stop();
    QElapsedTimer work;
    work.start();
    delivering = true;
    handler(inbox->take());
    delivering = false;
    pause = qBound(shortestPause, pausePerWork * work.elapsed(), longestPause);
    sinceDelivery.start();
}

void AttributeTreeChanges::deliverInTime()
{
    const qint64 remaining = sinceDelivery.isValid() ? pause - sinceDelivery.elapsed() : 0;
    if (delivering)
        requestBatch();
    else if (remaining > 0)
        timer.start(int(remaining), this);
    else
        deliverNow();
}

void AttributeTreeChanges::customEvent(QEvent*)
{
    deliverInTime();
}

void AttributeTreeChanges::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != timer.timerId())
        return;
    timer.stop();
    deliverInTime();
}

} // namespace Utilities::ModelViews
