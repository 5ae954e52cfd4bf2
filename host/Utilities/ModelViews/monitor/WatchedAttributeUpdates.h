#pragma once

#include "host/Utilities/ModelViews/monitor/WatchedAttributeInbox.h"

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QObject>

#include <functional>
#include <memory>

namespace Utilities::ModelViews {

// Brings changed attributes to the GUI thread: the first one in the next turn of the event loop, the next
// ones no faster than pictures are drawn, and as much slower as it takes for showing them to leave most of
// the GUI thread's time to others. GUI thread; may be destroyed while writers run.
class WatchedAttributeUpdates : public QObject
{
public:
    using Handler = std::function<void(const WatchedAttributeInbox::Attributes&)>;

    explicit WatchedAttributeUpdates(const Handler& handler);
    ~WatchedAttributeUpdates() override;

    const std::shared_ptr<WatchedAttributeInbox>& getInbox() const { return inbox; }

protected:
    void customEvent(QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void deliverInTime();
    qint64 pause() const;

    const Handler handler;
    const std::shared_ptr<WatchedAttributeInbox> inbox;
    QBasicTimer timer;
    QElapsedTimer sinceDelivery;
    qint64 usedBefore = 0; // microseconds of this thread at the last delivery
};

} // namespace Utilities::ModelViews
