#pragma once

#include "host/FrameworkCore/AppConfig/NotificationInterface.h"
#include "host/Utilities/PacedInbox.h"

#include <QSet>
#include <QString>
#include <QVector>

#include <functional>
#include <memory>

namespace Utilities::ModelViews {

// A child that has come or gone.
struct AttributeTreeChildChange
{
    QString name;
    int arrival; // its place among all of the batch
};

// Children of one node that have come or gone.
struct AttributeTreeStructureChange
{
    QString parentPath;
    QVector<AttributeTreeChildChange> children; // in the order in which they were reported
    bool namesLost = false;                     // there were more than are named
    bool created = false;                       // some have come
    bool removed = false;                       // some have gone, and perhaps nodes above them
    bool reordered = false;                     // they, or nodes above them, may come in another order
};

// What happened to the repository since the last batch.
struct AttributeTreeBatch
{
    QVector<AttributeTreeStructureChange> structure;
    QSet<QString> written;
    bool writtenLost = false;   // any other attribute may have been written too
    bool structureLost = false; // any other node may have come or gone too
};

// Brings the repository's changes to the GUI thread in batches: the first one in the next turn of the event
// loop, the next ones no faster than pictures are drawn, and slower when they take long, so that writers on
// other threads cannot keep the GUI thread busy. GUI thread; may be destroyed while writers run.
class AttributeTreeChanges
{
public:
    using BatchHandler = std::function<void(const AttributeTreeBatch&)>;

    explicit AttributeTreeChanges(const BatchHandler& handler);
    ~AttributeTreeChanges() { endWatch(); }

    // Ends the earlier watch and begins another.
    void watch(FrameworkCore::AppConfig::Interfaces::NotificationInterface& notifications,
               const QString& pathOrPattern);

    void requestBatch() { inbox.requestDelivery(); } // in a later turn, also when nothing has changed
    void deliverNow();

private:
    class Inbox;

    void deliver();
    void endWatch();

    const BatchHandler handler;
    PacedInbox inbox;
    std::shared_ptr<Inbox> changes; // none before the first watch
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RegistrationInterface> registration;
    qint64 pause = PacedInbox::shortestPause; // milliseconds from the last delivery's end to the next
    bool delivering = false;
};

} // namespace Utilities::ModelViews
