#include "host/Utilities/NotificationWrapper.h"

#include "host/FrameworkCore/Values/VariantValue.h"
#include "host/Utilities/PacedInbox.h"
#include "host/Utilities/RepositoryAccess.h"

#include <QPointer>
#include <QReadLocker>

#include <thread>
#include <utility>

namespace Utilities {

using FrameworkCore::Notification::UpdatePoint;
using FrameworkCore::Notification::UpdateResult;

constexpr int allPoints = 15; // a write may name any of them only

// What the writing threads know of a wrapper; guarded by its inbox.
struct NotificationWrapper::Watch : PacedInbox::Shared
{
    bool isWritten = false; // by a write, not by the activation
    std::thread::id writer; // who called last, and for which point
    UpdatePoint lastPoint = UpdatePoint::AfterStore;

    // The points of one operation come on one thread in ascending order; only the first is a write.
    void announceWrite(UpdatePoint point)
    {
        put([&] {
            const bool isSameWrite = writer == std::this_thread::get_id() && point > lastPoint;
            writer = std::this_thread::get_id();
            lastPoint = point;
            isWritten = isWritten || !isSameWrite;
        });
    }

    // Whether there was a write.
    bool takeWritten()
    {
        return take([this] {
            if (writer == std::this_thread::get_id())
                writer = {}; // its write has returned
            return std::exchange(isWritten, false);
        });
    }
};

NotificationWrapper::NotificationWrapper(const QString& path, const bool& onActivation, const bool& unchanged,
                                         std::shared_ptr<Repository> repository)
    : attributePath(path), deliverOnActivation(onActivation), deliverUnchanged(unchanged),
      givenRepository(std::move(repository)), inbox(std::make_unique<PacedInbox>([this] { deliver(); }))
{
    inbox->setParent(this); // to be of its thread
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
    inbox->open(watch);
    const auto callback = [shared = watch](const QString&, const UpdatePoint& point, const UpdateResult&,
                                           const QVariant&, const QString&) { shared->announceWrite(point); };
    registration = notifications->registerUpdateCallback(attributePath, callback, allPoints);
    // Read after the registration, so that no change falls between the two.
    lastValue = deliverOnActivation ? QVariant() : readValue();
    if (deliverOnActivation)
        watch->put([] {});
}

void NotificationWrapper::stop()
{
    if (!watch)
        return;
    inbox->close();
    watch.reset();
    if (registration)
        registration->end();
    registration.reset();
    reader.reset();
}

void NotificationWrapper::deliver()
{
    const std::shared_ptr<Watch> current = watch;
    const bool isWritten = current->takeWritten();
    const QVariant value = readValue();
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
