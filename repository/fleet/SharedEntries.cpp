#include "repository/fleet/SharedEntries.h"

#include <algorithm>
#include <set>
#include <utility>

namespace Repository {

using FrameworkCore::Values::Value;
using Kind = DocumentChange::Kind;

namespace {

unsigned weightOf(char c)
{
    return c == '.' ? 0U : static_cast<unsigned char>(c) + 1U;
}

bool isSameOrNone(const std::optional<Value>& a, const std::optional<Value>& b)
{
    return a && b ? isSame(*a, *b) : a.has_value() == b.has_value();
}

DocumentChange changeOf(const std::string& path, const std::optional<Value>& before,
                        const std::optional<Value>& after)
{
    const Kind kind = !before ? Kind::Created : !after ? Kind::Removed : Kind::Changed;
    return {path, kind, before.value_or(Value()), after.value_or(Value())};
}

} // namespace

bool TreeOrder::operator()(std::string_view a, std::string_view b) const
{
    const auto [inA, inB] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    if (inA == a.end() || inB == b.end())
        return inB != b.end();
    return weightOf(*inA) < weightOf(*inB);
}

const Value* SharedEntries::find(std::string_view path) const
{
    const auto entry = entries.find(path);
    return entry == entries.end() ? nullptr : &entry->second.value;
}

// All below a path comes right after it.
bool SharedEntries::contains(std::string_view path) const
{
    const auto first = entries.lower_bound(path);
    return first != entries.end() && isWithin(first->first, path);
}

bool SharedEntries::isForeign(std::string_view path) const
{
    const auto entry = entries.find(path);
    return entry != entries.end() && entry->second.isForeign;
}

void SharedEntries::visit(const std::function<void(const Documents::Entry& entry)>& visitor) const
{
    std::string_view last;
    for (const auto& [path, entry] : entries) {
        const auto shared = std::size_t(
            std::mismatch(path.begin(), path.end(), last.begin(), last.end()).first - path.begin());
        for (std::size_t dot = path.find('.'); dot != std::string::npos; dot = path.find('.', dot + 1)) {
            const bool isNew = dot > shared || (dot == shared && last.size() > shared);
            if (isNew)
                visitor({path.substr(0, dot), Value(), {}});
        }
        visitor({path, entry.value, {}});
        last = path;
    }
}

void SharedEntries::visitOwn(
    const std::function<void(const std::string& path, const Value& value)>& visitor) const
{
    for (const auto& [path, entry] : entries) {
        if (!entry.isForeign)
            visitor(path, entry.value);
    }
}

std::vector<std::string> SharedEntries::pathsWithin(std::string_view path) const
{
    std::vector<std::string> paths;
    for (auto entry = entries.lower_bound(path); entry != entries.end() && isWithin(entry->first, path);
         ++entry)
        paths.push_back(entry->first);
    return paths;
}

std::optional<std::string> SharedEntries::siblingBefore(std::string_view path) const
{
    const auto first = entries.lower_bound(path);
    const std::size_t dot = path.rfind('.');
    const std::string_view parent = path.substr(0, dot == std::string_view::npos ? 0 : dot);
    if (first == entries.begin())
        return {};
    const std::string& before = std::prev(first)->first;
    if (before.size() <= parent.size() || !isWithin(before, parent))
        return {};
    return before.substr(0, before.find('.', parent.empty() ? 0 : parent.size() + 1));
}

std::size_t SharedEntries::getStoredCount() const
{
    std::size_t count = entries.size();
    for (const auto& [path, edit] : edits) {
        count += edit.stored.value ? 1 : 0;
        count -= entries.count(path);
    }
    return count;
}

SharedEntries::Stored SharedEntries::storedAt(const std::string& path) const
{
    const auto entry = entries.find(path);
    return entry == entries.end()
               ? Stored()
               : Stored{entry->second.value, entry->second.revision, entry->second.isForeign};
}

std::optional<Value> SharedEntries::valueHere(const std::string& path) const
{
    const Value* const value = find(path);
    return value ? std::optional(*value) : std::nullopt;
}

void SharedEntries::setHere(const std::string& path, const Stored& stored)
{
    if (stored.value)
        entries.insert_or_assign(path, Entry{*stored.value, stored.revision, stored.isForeign});
    else
        entries.erase(path);
    ++revision;
}

// Keeps count of conflicts while an edit is changed.
void SharedEntries::change(Edit& edit, const std::function<void()>& operation)
{
    const bool wasConflict = edit.isConflict();
    const bool wasHeldBack = edit.isHeldBack();
    operation();
    const int difference = int(edit.isConflict()) - int(wasConflict);
    queue[edit.batch].heldBack += int(edit.isHeldBack()) - int(wasHeldBack);
    conflicts += difference;
    if (difference != 0)
        edit.isReported = false;
}

void SharedEntries::enterBatch(const std::string& path, Edit& edit)
{
    edit.batch = openBatch != 0 ? openBatch : ++batches;
    Batch& batch = queue[edit.batch];
    batch.paths.push_back(path);
    ++batch.live;
    batch.heldBack += edit.isHeldBack() ? 1 : 0;
}

void SharedEntries::leaveBatch(const Edit& edit)
{
    const auto batch = queue.find(edit.batch);
    batch->second.heldBack -= edit.isHeldBack() ? 1 : 0;
    if (--batch->second.live == 0)
        queue.erase(batch);
}

void SharedEntries::edit(const std::string& path, std::optional<Value> value)
{
    auto known = edits.find(path);
    if (known == edits.end())
        known = edits.emplace(path, Edit{storedAt(path), storedAt(path)}).first;
    else
        leaveBatch(known->second);
    known->second.isRefused = false;
    known->second.number = ++numbers;
    enterBatch(path, known->second);
    setHere(path, {std::move(value), 0, false});
    if (known->second.sent == 0)
        dropIfDone(path);
}

// An edit that the store holds by now.
bool SharedEntries::dropIfDone(const std::string& path)
{
    const auto known = edits.find(path);
    if (!isSameOrNone(valueHere(path), known->second.stored.value))
        return false;
    const auto entry = entries.find(path);
    if (entry != entries.end()) {
        entry->second.revision = known->second.stored.revision;
        entry->second.isForeign = known->second.stored.isForeign;
    }
    conflicts -= known->second.isConflict() ? 1 : 0;
    leaveBatch(known->second);
    edits.erase(known);
    return true;
}

std::vector<DocumentChange> SharedEntries::revert(const std::vector<std::string>& paths)
{
    std::vector<DocumentChange> changes;
    for (const std::string& path : paths) {
        for (auto known = edits.lower_bound(path); known != edits.end() && isWithin(known->first, path);) {
            const std::string edited = known->first;
            const Stored stored = known->second.stored;
            if (!isSameOrNone(valueHere(edited), stored.value))
                changes.push_back(changeOf(edited, valueHere(edited), stored.value));
            setHere(edited, stored);
            dropIfDone(edited);
            known = edits.lower_bound(edited);
        }
    }
    return ordered(std::move(changes));
}

bool SharedEntries::keepEdits(std::string_view path)
{
    bool areSome = false;
    for (auto known = edits.lower_bound(path); known != edits.end() && isWithin(known->first, path);
         ++known) {
        Edit& kept = known->second;
        areSome = areSome || kept.isConflict();
        change(kept, [&kept] { kept.base = kept.stored; });
    }
    return areSome;
}

std::vector<DocumentChange> SharedEntries::takeBases(std::string_view path)
{
    std::vector<std::pair<std::string, std::optional<Value>>> bases;
    for (auto known = edits.lower_bound(path); known != edits.end() && isWithin(known->first, path);
         ++known) {
        if (known->second.isConflict())
            bases.emplace_back(known->first, known->second.base.value);
    }
    keepEdits(path);
    std::vector<DocumentChange> changes;
    for (auto& [edited, base] : bases) {
        if (!isSameOrNone(valueHere(edited), base))
            changes.push_back(changeOf(edited, valueHere(edited), base));
        edit(edited, std::move(base));
    }
    return ordered(std::move(changes));
}

bool SharedEntries::concernsEntries(const std::vector<Arrival>& arrivals) const
{
    return std::any_of(arrivals.begin(), arrivals.end(), [this](const Arrival& arrival) {
        if (edits.count(arrival.path) > 0)
            return false;
        const bool isNews = arrival.revision > knownRevisionOf(arrival.path);
        return isNews && (arrival.stored.value || entries.count(arrival.path) > 0);
    });
}

std::optional<DocumentChange> SharedEntries::takeOne(const Arrival& arrival)
{
    const auto known = edits.find(arrival.path);
    if (known == edits.end()) {
        const auto before = valueHere(arrival.path);
        setHere(arrival.path, arrival.stored);
        return isSameOrNone(before, arrival.stored.value)
                   ? std::nullopt
                   : std::optional(changeOf(arrival.path, before, arrival.stored.value));
    }
    Edit& edited = known->second;
    change(edited, [&] {
        edited.stored = arrival.stored;
        if (arrival.isOwn || isSameOrNone(edited.stored.value, edited.base.value))
            edited.base = edited.stored;
    });
    dropIfDone(arrival.path);
    return {};
}

// Of the news of a path, those up to it are known.
std::int64_t SharedEntries::knownRevisionOf(const std::string& path) const
{
    const auto gone = removed.find(path);
    const std::int64_t least = gone == removed.end() ? 0 : gone->second;
    const auto known = edits.find(path);
    if (known != edits.end())
        return std::max(least, known->second.stored.revision);
    const auto entry = entries.find(path);
    return entry == entries.end() ? least : std::max(least, entry->second.revision);
}

std::vector<DocumentChange> SharedEntries::take(const std::vector<Arrival>& arrivals)
{
    std::vector<DocumentChange> changes;
    for (const Arrival& arrival : arrivals) {
        const bool isKnown = arrival.revision <= knownRevisionOf(arrival.path);
        const auto gone = removed.find(arrival.path);
        if (gone != removed.end() && arrival.revision >= gone->second)
            removed.erase(gone);
        if (isKnown)
            continue;
        if (auto change = takeOne(arrival))
            changes.push_back(*std::move(change));
    }
    return ordered(std::move(changes));
}

std::vector<DocumentChange> SharedEntries::takeAll(std::vector<Arrival> all)
{
    removed.clear();
    std::sort(all.begin(), all.end(),
              [](const Arrival& a, const Arrival& b) { return TreeOrder()(a.path, b.path); });
    const auto isThere = [&all](const std::string& path) {
        const auto place =
            std::lower_bound(all.begin(), all.end(), path, [](const Arrival& a, const std::string& wanted) {
                return TreeOrder()(a.path, wanted);
            });
        return place != all.end() && place->path == path;
    };
    std::vector<std::string> gone;
    for (const auto& [path, entry] : entries) {
        if (!isThere(path) && edits.count(path) == 0)
            gone.push_back(path);
    }
    for (const auto& [path, edited] : edits) {
        if (!isThere(path) && edited.stored.value)
            gone.push_back(path);
    }
    std::vector<DocumentChange> changes;
    const auto take = [&](const Arrival& arrival) {
        if (auto change = takeOne(arrival))
            changes.push_back(*std::move(change));
    };
    for (std::string& path : gone)
        take({std::move(path), {}, 0, false});
    for (const Arrival& arrival : all)
        take(arrival);
    return ordered(std::move(changes));
}

void SharedEntries::clear()
{
    entries.clear();
    removed.clear();
    ++revision;
}

void SharedEntries::fill(std::vector<Arrival> arrivals)
{
    for (Arrival& arrival : arrivals)
        entries.insert_or_assign(
            entries.end(), std::move(arrival.path),
            Entry{*std::move(arrival.stored.value), arrival.stored.revision, arrival.stored.isForeign});
    ++revision;
}

// Removed ones first, and with them the groups in which nothing lies any more.
std::vector<DocumentChange> SharedEntries::ordered(std::vector<DocumentChange> changes) const
{
    std::set<std::string> emptied;
    for (const DocumentChange& change : changes) {
        if (change.kind != Kind::Removed)
            continue;
        for (std::size_t dot = change.path.rfind('.'); dot != std::string::npos && dot > 0;
             dot = change.path.rfind('.', dot - 1)) {
            if (contains(std::string_view(change.path).substr(0, dot)))
                break;
            emptied.insert(change.path.substr(0, dot));
        }
    }
    for (const DocumentChange& change : changes)
        emptied.erase(change.path);
    for (const std::string& group : emptied)
        changes.push_back({group, Kind::Removed, {}, {}});
    std::sort(changes.begin(), changes.end(), [](const DocumentChange& a, const DocumentChange& b) {
        const bool isARemoved = a.kind == Kind::Removed;
        const bool isBRemoved = b.kind == Kind::Removed;
        return isARemoved != isBRemoved ? isARemoved : TreeOrder()(a.path, b.path);
    });
    return changes;
}

std::vector<std::string> SharedEntries::takeNewConflicts()
{
    std::vector<std::string> paths;
    if (conflicts == 0)
        return paths;
    for (auto& [path, edited] : edits) {
        if (!edited.isConflict() || edited.isReported || edited.sent != 0)
            continue;
        edited.isReported = true;
        paths.push_back(path);
    }
    return paths;
}

} // namespace Repository
