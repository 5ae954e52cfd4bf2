#pragma once

#include "host/Utilities/PacedInbox.h"

#include <functional>
#include <memory>
#include <vector>

namespace Utilities::ModelViews {

class WatchedAttribute;

// The watched attributes that have changed since they were last looked at, each of them once. Any thread.
struct WatchedAttributeInbox : PacedInbox::Shared
{
    using Attributes = std::vector<std::shared_ptr<WatchedAttribute>>;

    Attributes changed;
};

// Brings changed attributes to the GUI thread: the first one in the next turn of the event loop, the next
// ones no faster than pictures are drawn, and as much slower as it takes for showing them to leave most of
// the GUI thread's time to others. GUI thread; may be destroyed while writers run.
class WatchedAttributeUpdates
{
public:
    using Handler = std::function<void(const WatchedAttributeInbox::Attributes&)>;

    explicit WatchedAttributeUpdates(const Handler& handler);
    ~WatchedAttributeUpdates();

    const std::shared_ptr<WatchedAttributeInbox>& getInbox() const { return contents; }

private:
    WatchedAttributeInbox::Attributes takeChanged();
    void deliver();
    qint64 pause() const;

    const Handler handler;
    const std::shared_ptr<WatchedAttributeInbox> contents;
    qint64 usedBefore = 0; // microseconds of this thread at the last delivery
    PacedInbox inbox;
};

} // namespace Utilities::ModelViews
