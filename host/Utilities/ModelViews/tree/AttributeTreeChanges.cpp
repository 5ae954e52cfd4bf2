#include "host/Utilities/ModelViews/tree/AttributeTreeChanges.h"

namespace Utilities::ModelViews {

using FrameworkCore::Notification::UpdatePoint;

AttributeTreeChanges::AttributeTreeChanges(const BatchHandler& batchHandler)
    : handler(batchHandler), inbox([this] { deliver(); }, [this] { return pause; })
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
    changes = std::make_shared<AttributeTreeInbox>();
    inbox.open(changes);
    registration = notifications.registerUpdateCallback(
        pathOrPattern,
        [target = changes](const QString& path, const auto&, const auto& result, const auto&, const auto&) {
            target->add(path, result);
        },
        static_cast<int>(UpdatePoint::AfterStore) | static_cast<int>(UpdatePoint::AfterReorder));
}

void AttributeTreeChanges::endWatch()
{
    if (registration)
        registration->end();
    inbox.close(); // a callback that still runs puts in nothing any more
}

void AttributeTreeChanges::deliverNow()
{
    if (changes)
        inbox.deliverNow();
}

void AttributeTreeChanges::deliver()
{
    constexpr qint64 pausePerWork = 3; // the GUI thread keeps three quarters of its time
    if (delivering) {                  // a slot runs an event loop of its own
        requestBatch();
        return;
    }
    QElapsedTimer work;
    work.start();
    delivering = true;
    handler(changes->takeBatch());
    delivering = false;
    pause = qBound(PacedInbox::shortestPause, pausePerWork * work.elapsed(), PacedInbox::longestPause);
    inbox.beginPause();
}

} // namespace Utilities::ModelViews
