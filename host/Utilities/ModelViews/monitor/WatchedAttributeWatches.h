#pragma once

#include "host/Utilities/ModelViews/monitor/WatchedAttribute.h"

#include <QTimer>

#include <deque>
#include <functional>
#include <memory>
#include <utility>

namespace Utilities::ModelViews {

// Has attributes watched as long as they are rows, in portions between which the event loop runs. GUI thread.
class WatchedAttributeWatches
{
public:
    using Attributes = WatchedAttributeInbox::Attributes;
    using Notifications = FrameworkCore::AppConfig::Interfaces::NotificationInterface;

    // Called with attributes that were read before their watch began, so that nobody would have reported a
    // change since.
    explicit WatchedAttributeWatches(std::function<void(const Attributes&)> seenTooEarly);
    ~WatchedAttributeWatches() { endSome(int(retired.size())); }

    void setNotifications(std::shared_ptr<Notifications> source) { notifications = std::move(source); }
    // At the next calls of serve.
    void begin(const Attributes& rows) { unwatched.insert(unwatched.end(), rows.begin(), rows.end()); }
    void end(const Attributes& formerRows);
    void endAll(const Attributes& formerRows);
    void serve();

private:
    void endSome(int most);
    void beginSome(int most);

    const std::function<void(const Attributes&)> readAgain;
    std::shared_ptr<Notifications> notifications;            // none without a repository, for which rows wait
    std::deque<std::shared_ptr<WatchedAttribute>> unwatched; // rows whose watch waits for its turn to begin
    Attributes retired;                                      // no rows any more; their watch waits to end
    QTimer timer;
};

} // namespace Utilities::ModelViews
