#pragma once

#include "host/FrameworkCore/AppConfig/RegistrationInterface.h"
#include "host/FrameworkCore/Notification/UpdatePoint.h"
#include "host/FrameworkCore/Notification/UpdateResult.h"

#include <QString>
#include <QVariant>

#include <functional>
#include <memory>

namespace FrameworkCore::AppConfig::Interfaces {

// path, moment, outcome, value (invalid when removed, null or write-only), name of the backend (or empty).
using UpdateCallback =
    std::function<void(const QString&, const Notification::UpdatePoint&, const Notification::UpdateResult&,
                       const QVariant&, const QString&)>;

// Watching attributes. Any thread, also from inside a callback.
class VANTRY_CORE_EXPORT NotificationInterface
{
public:
    virtual ~NotificationInterface() = default;

    // Calls back on every operation that changes, creates, removes or reloads the attribute, which may be yet
    // to come. A path with "*" is a pattern: "*" stands for any run of characters, separators included.
    // points is the sum of the UpdatePoints to listen to. The callback runs on the thread of the operation
    // and may outlive its registration; see RegistrationInterface::end and endAndWait. Returns null if the
    // path or pattern is invalid.
    //
    // Every operation that succeeds calls back, once for each point, before it returns, with what it has set;
    // by then the attribute holds that or something newer. Operations of one thread call back in their order.
    // Those of several threads on one attribute may call back in either order, or at the same time, and so
    // may an operation and one that a callback of it makes: the last call need not bring the last value. Who
    // keeps the newest value takes a lock of its own in the callback, reads the value there and stores it
    // before the lock is released; or it only notes that there was a call and reads later, as
    // Utilities::NotificationWrapper does. Either way nothing is missed, since something newer brings a call
    // of its own after it is there to be read.
    virtual std::shared_ptr<RegistrationInterface> registerUpdateCallback(const QString& pathOrPattern,
                                                                          const UpdateCallback& callback,
                                                                          const int& points) = 0;
};

} // namespace FrameworkCore::AppConfig::Interfaces
