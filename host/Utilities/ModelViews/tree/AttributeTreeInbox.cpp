#include "host/Utilities/ModelViews/tree/AttributeTreeInbox.h"

#include <utility>

namespace Utilities::ModelViews {

using FrameworkCore::Notification::UpdateResult;

namespace {

constexpr int limit = 4096; // of written attributes, of parents, and of names of children

} // namespace

void AttributeTreeInbox::add(const QString& path, UpdateResult result)
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

void AttributeTreeInbox::addWritten(const QString& path)
{
    if (batch.written.size() < limit)
        batch.written.insert(path);
    else if (!batch.written.contains(path))
        writtenLost = batch.writtenLost = true;
}

void AttributeTreeInbox::addStructure(const QString& path, UpdateResult result)
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

AttributeTreeStructureChange* AttributeTreeInbox::changeBelow(const QString& parentPath)
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

AttributeTreeBatch AttributeTreeInbox::takeBatch()
{
    return take([this] {
        // From here on writers add again; what they did before is read from the repository after this.
        writtenLost = structureLost = false;
        structureByParent.clear();
        nameCount = 0;
        return std::exchange(batch, AttributeTreeBatch());
    });
}

} // namespace Utilities::ModelViews
