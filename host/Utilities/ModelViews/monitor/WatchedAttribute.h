#pragma once

#include "host/FrameworkCore/AppConfig/AccessMode.h"
#include "host/FrameworkCore/AppConfig/NotificationInterface.h"
#include "host/Utilities/ModelViews/monitor/WatchedAttributeUpdates.h"

#include <QString>
#include <QVariant>

#include <atomic>
#include <memory>
#include <optional>

namespace Utilities::ModelViews {

// One attribute that a table watches. Threads that write only count here, so that a write costs some ten
// nanoseconds more; the first one after each look also puts the attribute into the inbox. Its value is read
// when a view asks for it. Always owned by a shared pointer, since a callback may outlast the row.
class WatchedAttribute : public std::enable_shared_from_this<WatchedAttribute>
{
public:
    // What the repository knows of it.
    struct Content
    {
        bool exists = false;
        FrameworkCore::AppConfig::AccessMode access = FrameworkCore::AppConfig::AccessMode::None;
        QString type;
        QVariant value; // invalid for write-only attributes, too
        QString text;   // the value's
    };

    // The changes since the watch began.
    struct Changes
    {
        quint64 count = 0;
        qint64 lastTime = 0; // milliseconds since 1970, UTC
    };

    WatchedAttribute(const QString& attributePath, const std::shared_ptr<WatchedAttributeInbox>& changedOnes);

    // Any thread.
    void countChange();
    Changes getChanges() const;

    // GUI thread, as all below. A path that can name no attribute is not watched.
    void watch(FrameworkCore::AppConfig::Interfaces::NotificationInterface& notifications);
    void endWatch(); // must be called before the row lets it go

    // Taken out of the inbox: from here on the next change puts it in again.
    void beginLook();

    const QString path;
    int row = -1;                   // as of the last time that the rows were numbered; -1 when it is none
    std::optional<Content> content; // empty when it must be read anew
    qint64 litUntil = 0;            // milliseconds on its table's clock
    bool isLit = false;

private:
    const std::shared_ptr<WatchedAttributeInbox> inbox;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RegistrationInterface> registration;
    // What writers touch, in one cache line of its own.
    alignas(64) std::atomic<quint64> state{
        0}; // twice the number of changes, plus one while it is in the inbox
    std::atomic<qint64> lastTime{0};
};

} // namespace Utilities::ModelViews
