#pragma once

#include "host/FrameworkCore/AppConfig/NotificationInterface.h"
#include "host/Utilities/ModelViews/tree/AttributeTreeInbox.h"

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QObject>

#include <functional>
#include <memory>

namespace Utilities::ModelViews {

// Brings the repository's changes to the GUI thread in batches: the first one in the next turn of the event
// loop, the next ones no faster than pictures are drawn, and slower when they take long, so that writers on
// other threads cannot keep the GUI thread busy. GUI thread; may be destroyed while writers run.
class AttributeTreeChanges : public QObject
{
public:
    using BatchHandler = std::function<void(const AttributeTreeBatch&)>;

    explicit AttributeTreeChanges(const BatchHandler& handler);
    ~AttributeTreeChanges() override;

    // Ends the earlier watch and begins another.
    void watch(FrameworkCore::AppConfig::Interfaces::NotificationInterface& notifications,
               const QString& pathOrPattern);

    void requestBatch(); // in a later turn, also when nothing has changed
    void deliverNow();

protected:
    void customEvent(QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void deliverInTime();
    void endWatch();

    BatchHandler handler;
    std::shared_ptr<AttributeTreeInbox> inbox;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RegistrationInterface> registration;
    QBasicTimer timer;
    QElapsedTimer sinceDelivery;
    qint64 pause = 0; // milliseconds from the last delivery to the next
    bool delivering = false;
};

} // namespace Utilities::ModelViews
