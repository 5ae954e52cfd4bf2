#include "repository/merge/EditedDocument.h"

#include "repository/documents/Formats.h"
#include "repository/merge/DocumentMerge.h"
#include "repository/merge/Subtrees.h"

#include <algorithm>
#include <utility>

namespace Repository {

using Documents::Document;
using Documents::Outcome;
using FrameworkCore::Values::Reason;
using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;

namespace {

std::optional<Value> valueIn(const EntryMap& entries, const std::string& path)
{
    const auto found = entries.find(path);
    return found == entries.end() ? std::nullopt : std::optional(found->second);
}

bool isSameOrNone(const std::optional<Value>& a, const std::optional<Value>& b)
{
    return a && b ? isSame(*a, *b) : a.has_value() == b.has_value();
}

// With the entries whose text the others show in both documents.
std::vector<std::string> withSources(std::vector<std::string> paths, const std::vector<std::string>& shown,
                                     const Document& from, const Document& model)
{
    for (const std::string& path : shown) {
        std::string source = from.sourceOf(path);
        if (source != path && source == model.sourceOf(path))
            paths.push_back(std::move(source));
    }
    return paths;
}

} // namespace

EditedDocument::EditedDocument(std::string documentType)
    : type(std::move(documentType)), document(Documents::makeDocument(type))
{
}

EditedDocument::Snapshot EditedDocument::getSnapshot() const
{
    Snapshot snapshot;
    snapshot.type = type;
    snapshot.base = base.get();
    snapshot.text = getText();
    snapshot.revision = revision;
    snapshot.conflicts = conflicts;
    return snapshot;
}

EditedDocument::EditedDocument(const Snapshot& snapshot)
    : type(snapshot.type), document(parsed(snapshot.text)), revision(snapshot.revision),
      comparedRevision(snapshot.revision), differs(snapshot.text != snapshot.base),
      edited(differs ? snapshot.text : std::string()), conflicts(snapshot.conflicts)
{
    base = snapshot.base;
}

// Of a text that parsed before.
std::unique_ptr<Document> EditedDocument::parsed(const std::string& text) const
{
    auto fresh = Documents::makeDocument(type);
    fresh->parseAgain(text);
    return fresh;
}

Document& EditedDocument::presentDocument() const
{
    if (!document)
        document = parsed(base.get());
    return *document;
}

void EditedDocument::release()
{
    if (hasEdits())
        return;
    document.reset();
    base.pack();
}

Outcome EditedDocument::load(std::string text)
{
    auto fresh = Documents::makeDocument(type);
    Outcome outcome = fresh->parse(text);
    if (outcome.ok())
        begin(std::move(fresh), std::move(text));
    return outcome;
}

void EditedDocument::begin(std::unique_ptr<Document> fresh, std::string text)
{
    document = std::move(fresh);
    base = std::move(text);
    conflicts.clear();
    comparedRevision = ++revision;
    damaged = false;
    differs = false;
    edited.clear();
}

std::string EditedDocument::getText() const
{
    compare();
    return differs ? edited : base.get();
}

bool EditedDocument::hasEdits() const
{
    compare();
    return damaged || differs;
}

void EditedDocument::compare() const
{
    if (damaged || comparedRevision == revision)
        return;
    edited = presentDocument().getBytes();
    differs = edited != base.get();
    comparedRevision = revision;
    if (!differs)
        edited = {};
}

Outcome EditedDocument::edit(const std::function<Outcome(Document&)>& operation)
{
    if (damaged)
        return {Reason::tr("there was not enough memory for an edit before; revert the file or open it anew"),
                0, 0};
    Document& present = presentDocument();
    damaged = true; // unless it comes back
    Outcome outcome = operation(present);
    damaged = false;
    if (outcome.ok())
        ++revision;
    return outcome;
}

Outcome EditedDocument::replaceText(std::string text)
{
    auto fresh = Documents::makeDocument(type);
    Outcome outcome = fresh->parse(std::move(text));
    if (!outcome.ok())
        return outcome;
    document = std::move(fresh);
    damaged = false;
    ++revision;
    return outcome;
}

// The texts change places without a copy: when a file is saved, nothing may ask for memory any more. Nor are
// they compared again where nobody has edited meanwhile.
void EditedDocument::setSaved(std::string text, std::size_t writtenRevision)
{
    conflicts.clear();
    if (writtenRevision != revision) {
        setBase(std::move(text));
        return;
    }
    if (std::exchange(differs, false))
        base.swap(edited);
    std::string().swap(edited);
}

void EditedDocument::setBase(std::string text)
{
    presentDocument(); // what was not edited is not in the new base
    compare();
    if (!differs)
        base.swap(edited);
    base = std::move(text);
    differs = edited != base.get();
    if (!differs)
        std::string().swap(edited);
}

void EditedDocument::dropBase()
{
    conflicts.clear();
    setBase({});
}

std::string EditedDocument::merge(std::unique_ptr<Document> theirs, std::string text)
{
    if (!hasEdits()) {
        begin(std::move(theirs), std::move(text));
        return {};
    }
    const std::unique_ptr<Document> former = parsed(base.get());
    MergedDocument merged =
        mergeDocuments(type, *former, presentDocument(), std::move(theirs), conflictPaths());
    Origins renumbered;
    for (auto& [path, origin] : conflicts) {
        const auto place = merged.renumbered.find(path);
        const bool isMoved = merged.document && place != merged.renumbered.end();
        renumbered.emplace(isMoved ? place->second : path, std::move(origin));
    }
    conflicts = std::move(renumbered);
    for (const std::string& path : merged.conflicts) {
        const std::optional<Value> was = valueIn(merged.bases, path);
        const bool mayEnd = !isSameOrNone(was, valueIn(merged.theirs, path));
        conflicts.insert({path, {was, was, mayEnd}}).first->second.isSettled = false;
    }
    if (!merged.document)
        return merged.refusal;
    // The other side may have gone back to what it was before both had changed it.
    for (auto conflict = conflicts.begin(); conflict != conflicts.end();) {
        Origin& origin = conflict->second;
        origin.inBase = valueIn(merged.theirs, conflict->first);
        const bool isOver = origin.mayEnd && isSameOrNone(origin.inBase, origin.before);
        conflict = isOver ? conflicts.erase(conflict) : std::next(conflict);
    }
    document = std::move(merged.document);
    ++revision;
    setBase(std::move(text));
    return {};
}

PathSet EditedDocument::conflictPaths() const
{
    PathSet paths;
    for (const auto& [path, origin] : conflicts)
        paths.insert(path);
    return paths;
}

std::vector<DocumentChange> EditedDocument::changesBetween(const std::string& type, std::string before,
                                                           std::string after)
{
    if (before == after)
        return {};
    const auto old = Documents::makeDocument(type);
    const auto present = Documents::makeDocument(type);
    old->parseAgain(std::move(before));
    present->parseAgain(std::move(after));
    return withoutImpliedGroups(compareDocuments(*old, *present));
}

std::string EditedDocument::revert(const std::vector<std::string>& paths)
{
    if (damaged)
        return load(base.get()).error;
    Taken taken = takeEntries(presentDocument(), *parsed(base.get()), paths);
    if (taken.areAll) {
        const Outcome outcome = replaceText(base.get());
        settleConflicts({std::string()});
        return outcome.error;
    }
    if (!taken.document)
        return Reason::tr("%1; revert all of the file instead", {taken.reason});
    document = std::move(taken.document);
    ++revision;
    settleConflicts(paths);
    return {};
}

std::optional<std::string> EditedDocument::baseWith(const std::vector<std::string>& paths,
                                                    std::string& reason) const
{
    const Taken taken = takeEntries(*parsed(base.get()), presentDocument(), paths);
    if (taken.areAll)
        return getText();
    reason = Reason::tr("%1; save all of the file instead", {taken.reason});
    return taken.document ? std::optional(taken.document->getBytes()) : std::nullopt;
}

std::vector<std::string> EditedDocument::pathsIn(const std::vector<DocumentChange>& changes,
                                                 const Subtrees& subtrees)
{
    std::vector<std::string> paths;
    for (const DocumentChange& change : changes) {
        if (subtrees.contain(change.path))
            paths.push_back(change.path);
    }
    return paths;
}

// A copy of the document with the entries as the model has them; tried on a copy, since a refusal in the
// middle must leave the document as it was.
EditedDocument::Taken EditedDocument::takeEntries(const Document& from, const Document& model,
                                                  const std::vector<std::string>& paths) const
{
    std::vector<DocumentChange> changes = compareDocuments(from, model);
    const std::vector<std::string> all = withSources(paths, pathsIn(changes, Subtrees(paths)), from, model);
    const Subtrees wanted(all);
    const auto others = std::stable_partition(
        changes.begin(), changes.end(), [&wanted](const auto& change) { return wanted.concern(change); });
    if (others == changes.end())
        return {nullptr, {}, true};
    changes.erase(others, changes.end());
    std::unique_ptr<Document> taken = parsed(from.getBytes());
    const RefusedChange refused = applyChanges(changes, from, model, *taken);
    if (!refused.reason.empty())
        return {nullptr, "'" + refused.path + "': " + refused.reason, false};
    for (const DocumentChange& left : withoutImpliedGroups(compareDocuments(*taken, model))) {
        if (wanted.contain(left.path))
            return {nullptr, Reason::tr("'%1' cannot be written there as it is elsewhere", {left.path}),
                    false};
    }
    return {std::move(taken), {}, false};
}

std::vector<EditedDocument::Conflict> EditedDocument::getConflicts() const
{
    std::vector<Conflict> open;
    if (conflicts.empty())
        return open;
    const EntryMap mine = entriesAt(presentDocument(), conflictPaths());
    for (const auto& [path, origin] : conflicts) {
        Conflict conflict{path, origin.before, valueIn(mine, path), origin.inBase};
        if (isOpen(conflict, origin.isSettled))
            open.push_back(std::move(conflict));
    }
    return open;
}

// What was settled has no other side any more once a part has been saved that holds it.
bool EditedDocument::isOpen(const Conflict& conflict, bool isSettled) const
{
    if (isSameOrNone(conflict.mine, conflict.theirs))
        return false;
    return !isSettled ||
           (isSameOrNone(conflict.mine, conflict.base) &&
            isSameOrNone(conflict.theirs,
                         valueIn(entriesAt(*parsed(base.get()), {conflict.path}), conflict.path)));
}

std::string EditedDocument::takeBases(const std::vector<Conflict>& chosen)
{
    const std::string before = getText();
    std::vector<std::string> paths;
    const Outcome outcome = edit([&](Document& present) {
        Outcome changed;
        const auto take = [&](const Conflict& conflict) { // below before above, and the other way round
            if (!conflict.base)
                return present.contains(conflict.path) ? present.remove(conflict.path) : Outcome();
            return conflict.mine ? present.set(conflict.path, *conflict.base)
                                 : present.insert(conflict.path, *conflict.base);
        };
        for (auto conflict = chosen.rbegin(); conflict != chosen.rend() && changed.ok(); ++conflict)
            changed = conflict->base ? Outcome() : take(*conflict);
        for (const Conflict& conflict : chosen) {
            changed = changed.ok() && conflict.base ? take(conflict) : changed;
            paths.push_back(conflict.path);
        }
        return changed;
    });
    if (outcome.ok())
        settleConflicts(paths);
    else
        replaceText(before);
    return outcome.error;
}

// A decision for what both sides began with is final: nothing can lead back to it later.
void EditedDocument::settleConflicts(const std::vector<std::string>& paths)
{
    ++revision;
    const Subtrees wanted(paths);
    const EntryMap mine = entriesAt(presentDocument(), conflictPaths());
    for (auto conflict = conflicts.begin(); conflict != conflicts.end();) {
        const auto& [path, origin] = *conflict;
        const bool isFinal = wanted.contain(path) && isSameOrNone(origin.before, valueIn(mine, path));
        if (wanted.contain(path))
            conflict->second.isSettled = true;
        conflict = isFinal ? conflicts.erase(conflict) : std::next(conflict);
    }
}

} // namespace Repository
