#pragma once

#include "host/FrameworkCore/Notification/UpdateResult.h"
#include "host/Utilities/PacedInbox.h"

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QVector>

#include <atomic>

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
    QVector<AttributeTreeChildChange> children; // in the order in which they were told
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

// Collects changes from the threads that make them for the GUI thread, in bounded memory: beyond some
// thousand names it only keeps that there were more. Any thread.
class AttributeTreeInbox : public PacedInbox::Shared
{
public:
    void add(const QString& path, FrameworkCore::Notification::UpdateResult result);
    AttributeTreeBatch takeBatch();

private:
    void addWritten(const QString& path);
    void addStructure(const QString& path, FrameworkCore::Notification::UpdateResult result);
    AttributeTreeStructureChange* changeBelow(const QString& parentPath);

    // Read without the lock by writers that have nothing to add any more.
    std::atomic<bool> writtenLost{false};
    std::atomic<bool> structureLost{false};

    AttributeTreeBatch batch;
    QHash<QString, int> structureByParent; // positions in the batch
    int nameCount = 0;
};

} // namespace Utilities::ModelViews
