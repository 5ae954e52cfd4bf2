#include "repository/history/StepRecorder.h"

#include "repository/backends/Backend.h"

#include <algorithm>

namespace Repository {

namespace {

bool isUnchanged(const NodeState& a, const NodeState& b)
{
    return a.isNode == b.isNode && (!a.isAttribute || a.access == b.access) && isSameValue(a, b);
}

std::size_t sizeOf(const QString& path, const NodeState& before, const NodeState& after)
{
    return std::size_t(path.size()) * sizeof(QChar) + sizeof(EntryChange) + before.getSize() +
           after.getSize();
}

} // namespace

StepRecorder::StepRecorder(const QString& stepName) : name(stepName)
{
}

StepRecorder::~StepRecorder() = default;

bool StepRecorder::records(const Backend* backend)
{
    return backend && isReadable(backend->getAccessMode());
}

StepRecorder::Pending& StepRecorder::pendingOf(Backend& backend)
{
    Pending& found = pending[&backend];
    if (!found.change.backend)
        found.change.backend = backend.shared_from_this();
    return found;
}

void StepRecorder::addWrite(Backend& backend, ValueChange change)
{
    Pending& place = pendingOf(backend);
    if (place.textBefore) {
        ++place.revision;
        addEntry(place, {change.path, change.before, change.after});
        return;
    }
    const auto known = place.valuePlaces.constFind(change.path);
    if (known == place.valuePlaces.constEnd()) {
        place.valuePlaces.insert(change.path, int(place.change.values.size()));
        place.change.values.push_back(std::move(change));
        return;
    }
    ValueChange& first = place.change.values[std::size_t(*known)];
    first.after = std::move(change.after);
    first.spellingAfter = std::move(change.spellingAfter);
}

void StepRecorder::beginShape(Backend& backend)
{
    if (!records(&backend))
        return;
    Pending& place = pendingOf(backend);
    const quint64 revision = backend.getRevision();
    if (!place.textBefore)
        place.textBefore = backend.getBytes();
    else if (revision != place.revision)
        place.isTextKnown = false;
    place.revision = revision;
}

void StepRecorder::endShape(Backend& backend, std::vector<EntryChange> changes)
{
    if (!records(&backend))
        return;
    Pending& place = pendingOf(backend);
    place.revision = backend.getRevision();
    for (EntryChange& change : changes)
        addEntry(place, std::move(change));
}

void StepRecorder::forgetText(Backend& backend)
{
    if (records(&backend))
        pendingOf(backend).isTextKnown = false;
}

void StepRecorder::forgetEntries(Backend& backend)
{
    if (records(&backend))
        pendingOf(backend).change.hasAllEntries = false;
}

void StepRecorder::addEntry(Pending& pending, EntryChange change)
{
    if (change.before.isHidden() || change.after.isHidden())
        return;
    std::vector<EntryChange>& entries = pending.change.entries;
    const auto known = pending.entryPlaces.constFind(change.path);
    if (known != pending.entryPlaces.constEnd()) {
        entries[std::size_t(*known)].after = std::move(change.after);
        return;
    }
    pending.entryPlaces.insert(change.path, int(entries.size()));
    entries.push_back(std::move(change));
}

void StepRecorder::finishShape(Pending& pending)
{
    BackendChange& change = pending.change;
    std::vector<EntryChange>& entries = change.entries;
    const auto kept = std::remove_if(entries.begin(), entries.end(), [](const EntryChange& entry) {
        return isUnchanged(entry.before, entry.after);
    });
    entries.erase(kept, entries.end());
    if (entries.size() > mostEntries)
        change.hasAllEntries = false;
    if (!change.hasAllEntries)
        std::vector<EntryChange>().swap(entries);
    if (!pending.textBefore || !pending.isTextKnown)
        return;
    const std::string text = change.backend->getBytes();
    if (change.backend->getRevision() != pending.revision)
        return;
    if (text != *pending.textBefore)
        change.text.emplace(*pending.textBefore, text);
    else
        change.hasAllEntries = true;
}

HistoryStep StepRecorder::finish()
{
    HistoryStep step;
    step.name = name;
    for (auto& [backend, place] : pending) {
        finishShape(place);
        std::vector<ValueChange>& values = place.change.values;
        values.erase(std::remove_if(values.begin(), values.end(),
                                    [](const ValueChange& value) {
                                        return isSameValue(value.before, value.after) &&
                                               value.spellingBefore == value.spellingAfter;
                                    }),
                     values.end());
        if (place.change.isEmpty())
            continue;
        step.size += sizeOf(place.change);
        step.changes.push_back(std::move(place.change));
    }
    pending.clear();
    return step;
}

std::size_t StepRecorder::sizeOf(const BackendChange& change)
{
    std::size_t size = sizeof(BackendChange) + (change.text ? change.text->getSize() : 0);
    for (const EntryChange& entry : change.entries)
        size += Repository::sizeOf(entry.path, entry.before, entry.after);
    for (const ValueChange& value : change.values)
        size += Repository::sizeOf(value.path, value.before, value.after) +
                value.spellingBefore.value_or(std::string()).size() +
                value.spellingAfter.value_or(std::string()).size();
    return size;
}

} // namespace Repository
