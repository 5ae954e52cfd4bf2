#include "host/Utilities/ModelViews/tree/AttributeTreeChanges.h"

#include <QHash>

#include <atomic>
#include <utility>

namespace Utilities::ModelViews {

using FrameworkCore::Notification::UpdatePoint;
using FrameworkCore::Notification::UpdateResult;

constexpr int limit = 4096; // of written attributes, of parents, and of names of children

// Collects changes from the threads that make them for the GUI thread, in bounded memory: beyond some
// thousand names it only keeps that there were more. Any thread.
class AttributeTreeChanges::Inbox : public PacedInbox::Shared
{
public:
    void add(const QString& path, UpdateResult result);
    AttributeTreeBatch takeBatch();

private:
    void addWritten(const QString& path);
    void addStructure(const QString& path, UpdateResult result);
    AttributeTreeStructureChange* changeBelow(const QString& parentPath);

    // Read without the lock by writers that have nothing to add any more.
    std::atomic<bool> writtenLost{false};
    std::atomic<bool> structureLost{false};

    AttributeTreeBatch batch;
    QHash<QString, int> structureByParent; // positions in the batch
    int nameCount = 0;
};

void AttributeTreeChanges::Inbox::add(const QString& path, UpdateResult result)
{
    switch (result) {
    case UpdateResult::Unchanged:
        return;
    case UpdateResult::Changed:
    case UpdateResult::Reloaded:
        if (!writtenLost)
            put([&] { addWritten(path); });
        return;
    case UpdateResult::Created:
    case UpdateResult::Removed:
    case UpdateResult::Reordered:
        if (!structureLost)
            put([&] { addStructure(path, result); });
        return;
    }
}

void AttributeTreeChanges::Inbox::addWritten(const QString& path)
{
    if (batch.written.size() < limit)
        batch.written.insert(path);
    else if (!batch.written.contains(path))
        writtenLost = batch.writtenLost = true;
}

void AttributeTreeChanges::Inbox::addStructure(const QString& path, UpdateResult result)
{
    const int end = path.lastIndexOf(QLatin1Char('.'));
    const QString parentPath = path.left(qMax(end, 0));
    if (AttributeTreeStructureChange* const change = changeBelow(parentPath)) {
        change->created |= result == UpdateResult::Created;
        change->removed |= result == UpdateResult::Removed;
        change->reordered |= result == UpdateResult::Reordered;
        const bool hasName = result != UpdateResult::Reordered;
        if (hasName && nameCount < limit)
            change->children.append({path.mid(end + 1), nameCount++});
        else
            change->namesLost |= hasName;
    }
}

AttributeTreeStructureChange* AttributeTreeChanges::Inbox::changeBelow(const QString& parentPath)
{
    if (!batch.structure.isEmpty() && batch.structure.last().parentPath == parentPath)
        return &batch.structure.last();
    const auto found = structureByParent.constFind(parentPath);
    if (found != structureByParent.constEnd())
        return &batch.structure[*found];
    if (batch.structure.size() == limit) {
        structureLost = batch.structureLost = true;
        return nullptr;
    }
    structureByParent.insert(parentPath, batch.structure.size());
    batch.structure.append(AttributeTreeStructureChange{parentPath, {}, false, false, false});
    return &batch.structure.last();
}

AttributeTreeBatch AttributeTreeChanges::Inbox::takeBatch()
{
    return take([this] {
        // From here on writers add again; what they did before is read from the repository after this.
        writtenLost = structureLost = false;
        structureByParent.clear();
        nameCount = 0;
        return std::exchange(batch, AttributeTreeBatch());
    });
}

AttributeTreeChanges::AttributeTreeChanges(const BatchHandler& batchHandler)
    : handler(batchHandler), inbox([this] { deliver(); }, [this] { return pause; })
{
}

void AttributeTreeChanges::watch(FrameworkCore::AppConfig::Interfaces::NotificationInterface& notifications,
                                 const QString& pathOrPattern)
{
    endWatch();
    changes = std::make_shared<Inbox>();
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
