#include "host/Utilities/NotificationWrapper.h"

#include "host/FrameworkCore/Values/VariantValue.h"
#include "host/Utilities/RepositoryAccess.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPointer>
#include <QReadLocker>

#include <mutex>
#include <thread>
#include <utility>

namespace Utilities {

using FrameworkCore::Notification::UpdatePoint;
using FrameworkCore::Notification::UpdateResult;

namespace {

constexpr int millisecondsBetweenDeliveries = 16; // a screen shows no more
constexpr QEvent::Type changeAnnounced = QEvent::User;
constexpr int allPoints = 15; // a write may name any of them only

} // namespace

// What the writing threads know of a wrapper. It outlives the wrapper, since a writer may be inside the
// callback when the wrapper goes; from then on it has no owner.
struct NotificationWrapper::Watch
{
    std::mutex mutex;
    NotificationWrapper* owner = nullptr; // not owned
    bool isPending = false;               // a delivery is on its way that will read the value anew
    bool isWritten = false;               // by a write, not by the activation
    std::thread::id writer;               // who called last, and for which point
    UpdatePoint lastPoint = UpdatePoint::AfterStore;

    void announceActivation()
    {
        const std::lock_guard<std::mutex> guard(mutex);
        announce();
    }

    // The points of one operation come on one thread in ascending order; only the first is a write.
    void announceWrite(UpdatePoint point)
    {
        const std::lock_guard<std::mutex> guard(mutex);
        const bool isSameWrite = writer == std::this_thread::get_id() && point > lastPoint;
        writer = std::this_thread::get_id();
        lastPoint = point;
        isWritten = isWritten || !isSameWrite;
        announce();
    }

    // From here on a new change announces itself again. Gives whether there was a write.
    bool beginDelivery()
    {
        const std::lock_guard<std::mutex> guard(mutex);
        if (writer == std::this_thread::get_id())
            writer = {}; // its write has returned
        isPending = false;
        return std::exchange(isWritten, false);
    }

    void disown()
    {
        const std::lock_guard<std::mutex> guard(mutex);
        owner = nullptr;
    }

private:
    // The event carries nothing: all that the two threads share is read under the lock.
    void announce()
    {
        if (owner && !std::exchange(isPending, true))
            QCoreApplication::postEvent(owner, new QEvent(changeAnnounced));
    }
};

NotificationWrapper::NotificationWrapper(const QString& path, const bool& onActivation, const bool& unchanged,
                                         std::shared_ptr<Repository> repository)
    : attributePath(path), deliverOnActivation(onActivation), deliverUnchanged(unchanged),
      givenRepository(std::move(repository))
{
    deliveryTimer.setSingleShot(true);
    deliveryTimer.setTimerType(Qt::PreciseTimer);
    connect(&deliveryTimer, &QTimer::timeout, this, &NotificationWrapper::deliver);
}

NotificationWrapper::~NotificationWrapper()
{
    stop();
}

void NotificationWrapper::setActive(const bool& active)
{
    if (!active) {
        stop();
        return;
    }
    const auto repository = givenRepository ? givenRepository : GetAppConfigRepositoryInterface();
    if (repository && !watch)
        start(repository);
}

void NotificationWrapper::start(const std::shared_ptr<Repository>& watched)
{
    const auto notifications = watched->getNotificationInterface();
    reader = watched->getReaderInterface();
    if (!notifications || !reader)
        return;
    watch = std::make_shared<Watch>();
    watch->owner = this;
    const auto callback = [shared = watch](const QString&, const UpdatePoint& point, const UpdateResult&,
                                           const QVariant&, const QString&) { shared->announceWrite(point); };
    registration = notifications->registerUpdateCallback(attributePath, callback, allPoints);
    // Read after the registration, so that no change falls between the two.
    lastValue = deliverOnActivation ? QVariant() : readValue();
    if (deliverOnActivation)
        watch->announceActivation();
}

void NotificationWrapper::stop()
{
    if (!watch)
        return;
    watch->disown();
    watch.reset();
    if (registration)
        registration->end();
    registration.reset();
    reader.reset();
    deliveryTimer.stop();
    QCoreApplication::removePostedEvents(this, changeAnnounced); // those of this watch
}

void NotificationWrapper::customEvent(QEvent*)
{
    if (watch)
        scheduleDelivery();
}

void NotificationWrapper::scheduleDelivery()
{
    const qint64 passed = sinceDelivery.isValid() ? sinceDelivery.elapsed() : millisecondsBetweenDeliveries;
    if (passed >= millisecondsBetweenDeliveries)
        deliver();
    else
        deliveryTimer.start(int(millisecondsBetweenDeliveries - passed));
}

void NotificationWrapper::deliver()
{
    const std::shared_ptr<Watch> current = watch;
    const bool isWritten = current->beginDelivery();
    const QVariant value = readValue();
    sinceDelivery.start();
    if (FrameworkCore::Values::isSameValue(value, lastValue) && !(deliverUnchanged && isWritten))
        return;
    lastValue = value;

    QList<ValueCallback> callbacks;
    {
        const QReadLocker locker(&lock);
        callbacks = valueChangedCallbacks;
    }
    const QPointer<NotificationWrapper> self(this);
    for (const ValueCallback& callback : qAsConst(callbacks)) {
        callback(value);
        if (!self || watch != current) // the callback has destroyed or stopped this
            return;
    }
}

QVariant NotificationWrapper::readValue() const
{
    QVariant value;
    reader->readAttributeValue(attributePath, value, 0);
    return value;
}

} // namespace Utilities
