#pragma once

#include "host/FrameworkCore/AppConfig/NotificationInterface.h"
#include "host/Utilities/ModelViews/tree/AttributeTreeInbox.h"

#include <functional>
#include <memory>

namespace Utilities::ModelViews {

// Brings the repository's changes to the GUI thread in batches: the first one in the next turn of the event
// loop, the next ones no faster than pictures are drawn, and slower when they take long, so that writers on
// other threads cannot keep the GUI thread busy. GUI thread; may be destroyed while writers run.
class AttributeTreeChanges
{
public:
    using BatchHandler = std::function<void(const AttributeTreeBatch&)>;

    explicit AttributeTreeChanges(const BatchHandler& handler);
    ~AttributeTreeChanges();

    // Ends the earlier watch and begins another.
    void watch(FrameworkCore::AppConfig::Interfaces::NotificationInterface& notifications,
               const QString& pathOrPattern);

    void requestBatch() { inbox.requestDelivery(); } // in a later turn, also when nothing has changed
    void deliverNow();

private:
    void deliver();
    void endWatch();

    const BatchHandler handler;
    PacedInbox inbox;
    std::shared_ptr<AttributeTreeInbox> changes; // none before the first watch
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RegistrationInterface> registration;
    qint64 pause = PacedInbox::shortestPause; // milliseconds from the last delivery's end to the next
    bool delivering = false;
};

} // namespace Utilities::ModelViews
