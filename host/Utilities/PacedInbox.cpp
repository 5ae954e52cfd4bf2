#include "host/Utilities/PacedInbox.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimerEvent>

namespace Utilities {

PacedInbox::PacedInbox(std::function<void()> deliver, std::function<qint64()> pauseAfterDelivery)
    : handler(std::move(deliver)), pause(std::move(pauseAfterDelivery))
{
}

void PacedInbox::open(const std::shared_ptr<Shared>& contents)
{
    close();
    shared = contents;
    const std::lock_guard<std::mutex> guard(shared->mutex);
    shared->inbox = this;
}

void PacedInbox::close()
{
    if (!shared)
        return;
    {
        const std::lock_guard<std::mutex> guard(shared->mutex);
        shared->inbox = nullptr;
    }
    shared.reset();
    timer.stop();
    QCoreApplication::removePostedEvents(this, QEvent::User);
}

void PacedInbox::announce()
{
    QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}

void PacedInbox::requestDelivery()
{
    if (!timer.isActive())
        timer.start(int(shortestPause), this);
}

void PacedInbox::deliverNow()
{
    timer.stop();
    beginPause();
    handler(); // this may be gone now
}

void PacedInbox::deliverInTime()
{
    const qint64 remaining = sinceDelivery.isValid() ? pause() - sinceDelivery.elapsed() : 0;
    if (remaining > 0)
        timer.start(int(remaining), Qt::PreciseTimer, this);
    else
        deliverNow();
}

void PacedInbox::customEvent(QEvent* /*event*/)
{
    deliverInTime();
}

void PacedInbox::timerEvent(QTimerEvent* /*event*/)
{
    timer.stop();
    deliverInTime();
}

} // namespace Utilities
