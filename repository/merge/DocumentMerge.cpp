#include "repository/merge/DocumentMerge.h"

#include "repository/documents/Formats.h"
#include "repository/merge/CommentWatch.h"
#include "repository/merge/EntryList.h"
#include "repository/merge/ListArrangement.h"

#include <algorithm>
#include <set>

namespace Repository {

using Documents::Document;
using FrameworkCore::Values::Reason;
using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;
using Kind = DocumentChange::Kind;

namespace {

bool isNumber(std::string_view text)
{
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

// The path that the first of the numbered siblings has, if this is the path of one.
std::string firstSibling(std::string_view path)
{
    const std::size_t dot = path.rfind('.');
    const std::size_t nameStart = dot == std::string_view::npos ? 0 : dot + 1;
    if (isNumber(path.substr(nameStart)))
        return std::string(path.substr(0, nameStart)) + '0';
    const std::size_t bracket = path.rfind('[');
    if (path.size() > 0 && path.back() == ']' && bracket != std::string_view::npos && bracket > nameStart &&
        isNumber(path.substr(bracket + 1, path.size() - bracket - 2)))
        return std::string(path.substr(0, bracket));
    return std::string(path);
}

// What one side did to the siblings that share a numbering.
struct NumberedUse
{
    bool members = false; // some came or went
    bool inside = false;  // what they hold was changed

    // After members came or went elsewhere than at the end, the numbers mean other members than before.
    bool renumbers() const { return members && inside; }
};

// What one side did to each group of numbered siblings, by the path of the first.
class NumberedUses
{
public:
    NumberedUses(const Document& before, const Document& after, const std::vector<DocumentChange>& changes)
        : base(before), result(after)
    {
        for (const DocumentChange& change : changes) {
            for (const auto& [first, isMember] : numbersIn(change.path)) {
                NumberedUse& use = uses[first];
                const bool comesOrGoes = isMember && change.kind != Kind::Changed;
                (comesOrGoes ? use.members : use.inside) = true;
            }
        }
    }

    // Whether the two sides' changes at this path may speak of different members.
    bool clash(const NumberedUses& other, const std::string& path) const
    {
        for (const auto& [first, isMember] : numbersIn(path)) {
            const auto mine = uses.find(first);
            const auto theirs = other.uses.find(first);
            if (mine == uses.end() || theirs == other.uses.end())
                continue;
            if ((mine->second.members && theirs->second.members) || mine->second.renumbers() ||
                theirs->second.renumbers())
                return true;
        }
        return false;
    }

private:
    // The numberings in which the path takes part, and whether it is itself one of the members.
    std::vector<std::pair<std::string, bool>> numbersIn(std::string_view path) const
    {
        std::vector<std::pair<std::string, bool>> found;
        for (std::size_t end = path.find('.');; end = path.find('.', end + 1)) {
            const bool isWhole = end == std::string_view::npos;
            std::string first = firstSibling(path.substr(0, end));
            if (base.removalMovesSiblings(first) || result.removalMovesSiblings(first))
                found.emplace_back(std::move(first), isWhole);
            if (isWhole)
                return found;
        }
    }

    const Document& base;
    const Document& result;
    std::unordered_map<std::string, NumberedUse> uses;
};

const Value* valueAt(const EntryMap& entries, const std::string& path)
{
    const auto found = entries.find(path);
    return found == entries.end() ? nullptr : &found->second;
}

bool holds(const EntryMap& entries, const DocumentChange& change)
{
    const Value* const value = valueAt(entries, change.path);
    return change.kind == Kind::Removed ? !value : value && isSame(*value, change.after);
}

bool isOfGroups(const DocumentChange& change)
{
    return change.before.type == Type::Group && change.after.type == Type::Group;
}

bool isCopy(const Document& document, const std::string& path)
{
    return document.originOf(path) == Document::Origin::Copy;
}

// Without what only follows others, whose text it shows. New copies are kept: they come with what is written.
std::vector<DocumentChange> ownChanges(const EntryList& old, const Document& before, const Document& after)
{
    std::vector<DocumentChange> changes = compareDocuments(old, after);
    const auto shows = [](const Document& document, const std::string& path) {
        return isCopy(document, path) || document.originOf(path) == Document::Origin::Alias;
    };
    const auto follows = [&](const DocumentChange& change) {
        return change.kind == Kind::Changed ? shows(before, change.path) && shows(after, change.path)
                                            : change.kind == Kind::Removed && isCopy(before, change.path);
    };
    changes.erase(std::remove_if(changes.begin(), changes.end(), follows), changes.end());
    return changes;
}

// The paths and all that they lie in.
PathSet withAncestors(const PathSet& paths)
{
    PathSet all;
    for (const std::string_view path : paths)
        forEachAncestor(path, [&all](std::string_view ancestor) { return !all.insert(ancestor).second; });
    return all;
}

// The first entry that has become another one in a document without being meant; the empty text for none.
// A value beside which entries were added has become a member of its group.
std::string unmeantChange(const EntryList& before, const Document& after,
                          const std::vector<DocumentChange>& meant)
{
    const PathSet paths = pathsOf(meant);
    const PathSet above = withAncestors(paths);
    for (const DocumentChange& change : compareDocuments(before, after)) {
        const bool isWrapped =
            change.kind == Kind::Changed && change.after.type == Type::Group && above.count(change.path) > 0;
        const bool isWrapper =
            change.kind == Kind::Created && above.count(change.path.substr(0, change.path.rfind('.'))) > 0;
        if (!isOfGroups(change) && paths.count(change.path) == 0 && !isWrapped && !isWrapper &&
            after.originOf(change.path) == Document::Origin::Own)
            return change.path;
    }
    return {};
}

// Documents in which a path means the same.
MergedDocument mergeByPaths(const Document& base, const Document& mine, std::unique_ptr<Document> theirs,
                            const PathSet& watched)
{
    MergedDocument result;
    const EntryList old(base);
    const std::vector<DocumentChange> myChanges = ownChanges(old, base, mine);
    std::vector<DocumentChange> theirChanges = ownChanges(old, base, *theirs);
    const auto isNewCopy = [](const Document& document, const DocumentChange& change) {
        return change.kind == Kind::Created && isCopy(document, change.path);
    };
    theirChanges.erase(std::remove_if(theirChanges.begin(), theirChanges.end(),
                                      [&](const auto& change) { return isNewCopy(*theirs, change); }),
                       theirChanges.end());
    const PathSet theirPaths = pathsOf(theirChanges);
    PathSet changed = pathsOf(myChanges);
    changed.insert(theirPaths.begin(), theirPaths.end());
    PathSet asked = changed;
    asked.insert(watched.begin(), watched.end());
    result.theirs = entriesAt(*theirs, asked);

    std::set<std::string> conflicts;
    const NumberedUses myNumbers(base, mine, myChanges);
    const NumberedUses theirNumbers(base, *theirs, theirChanges);
    for (const DocumentChange& change : myChanges) {
        const bool isShared = theirPaths.count(change.path) > 0 || myNumbers.clash(theirNumbers, change.path);
        if (isShared && !isOfGroups(change) && !isNewCopy(mine, change) && !holds(result.theirs, change))
            conflicts.insert(change.path);
    }

    CommentWatch comments;
    comments.watchAdded(myChanges, mine);
    comments.watchRemoved(myChanges, base, *theirs, withAncestors(theirPaths));
    const bool canTellAll = conflicts.empty() && !theirs->isLinked({});
    const std::optional<EntryList> found = canTellAll ? std::optional<EntryList>(*theirs) : std::nullopt;

    const RefusedChange refused = applyChanges(myChanges, base, mine, *theirs);
    if (!refused.reason.empty()) {
        result.refusal =
            Reason::tr("'%1' has no place in what the file holds now: %2", {refused.path, refused.reason});
        conflicts.insert(refused.path);
        result.conflicts.assign(conflicts.begin(), conflicts.end());
        return result;
    }
    // Nothing of either side may have got lost on the way without a word.
    const std::string unmeant = found ? unmeantChange(*found, *theirs, myChanges) : std::string();
    if (!unmeant.empty()) {
        conflicts.insert(unmeant);
        result.refusal = Reason::tr("'%1' would change with what was edited", {unmeant});
    }
    const EntryMap merged = entriesAt(*theirs, changed);
    for (const DocumentChange& change : myChanges) {
        if (!isOfGroups(change) && !isCopy(mine, change.path) && !holds(merged, change) &&
            conflicts.insert(change.path).second)
            result.refusal = Reason::tr("'%1' has no place in what the file holds now", {change.path});
    }
    for (const DocumentChange& change : withoutImpliedGroups(myChanges)) {
        if (isOfGroups(change) && change.kind == Kind::Created && !holds(merged, change))
            conflicts.insert(change.path);
    }
    for (const DocumentChange& change : theirChanges) {
        if (!isOfGroups(change) && !isCopy(*theirs, change.path) && !holds(merged, change))
            conflicts.insert(change.path);
    }
    for (std::string& path : comments.findLost(theirs->getBytes()))
        conflicts.insert(std::move(path));
    result.conflicts.assign(conflicts.begin(), conflicts.end());
    if (result.refusal.empty())
        result.document = std::move(theirs);
    return result;
}

std::unique_ptr<Document> parsed(const std::string& type, std::string text)
{
    auto document = Documents::makeDocument(type);
    document->parseAgain(std::move(text));
    return document;
}

// Whether the document and theirs differ at a conflict.
bool hasOpenConflict(const MergedDocument& merged)
{
    const auto& paths = merged.conflicts;
    const EntryMap mine = entriesAt(*merged.document, PathSet(paths.begin(), paths.end()));
    return std::any_of(paths.begin(), paths.end(), [&](const std::string& path) {
        const Value* const one = valueAt(mine, path);
        const Value* const other = valueAt(merged.theirs, path);
        return one && other ? !isSame(*one, *other) : one != other;
    });
}

// The sides of a merge, freshly parsed, with their arrays in one order.
class ArrangedMerge
{
public:
    ArrangedMerge(const std::string& documentType, const Document& before, const Document& edited,
                  const Document& found, const std::vector<DocumentChange>& myChanges)
        : type(documentType), base(before), mine(edited), lists({&before, &edited, &found}, myChanges)
    {
    }

    // Nothing, with theirs as it was, where the arrays need no order, or cannot be brought into one.
    std::optional<MergedDocument> run(std::unique_ptr<Document>& theirs, const PathSet& watched)
    {
        const std::string text = theirs->getBytes();
        if (lists.getPlans().empty() || !arrange(*theirs, text))
            return std::nullopt;
        MergedDocument result;
        std::unordered_map<std::string, std::string> asked; // by the path here
        for (const std::string_view path : watched)
            asked.emplace(path, lists.translated(path, MergeSide::Mine, MergeSide::Merged));
        PathSet merged;
        for (const auto& [path, place] : asked)
            merged.insert(place);
        result = mergeByPaths(*arrangedBase, *arrangedMine, std::move(arrangedTheirs), merged);
        result.renumbered = std::move(asked);
        tellConflicts(result, *theirs);
        return result;
    }

private:
    bool arrange(const Document& theirs, const std::string& text)
    {
        const ListArrangement arrangement(lists, base, mine, theirs);
        arrangedBase = parsed(type, base.getBytes());
        arrangedMine = parsed(type, mine.getBytes());
        arrangedTheirs = parsed(type, text);
        if (!arrangement.apply(*arrangedTheirs, MergeSide::Theirs) ||
            !arrangement.apply(*arrangedBase, MergeSide::Base) ||
            !arrangement.apply(*arrangedMine, MergeSide::Mine))
            return false;
        arrangedBase = parsed(type, arrangedBase->getBytes());
        arrangedMine = parsed(type, arrangedMine->getBytes());
        return true;
    }

    // In an array of which all is in conflict, what the file has at a path counts, whatever it was.
    void tellConflicts(MergedDocument& result, const Document& theirs) const
    {
        const auto inLists = [this](const std::string& path) { return lists.findConflict(path) != nullptr; };
        auto& conflicts = result.conflicts;
        conflicts.erase(std::remove_if(conflicts.begin(), conflicts.end(), inLists), conflicts.end());
        const auto isElsewhere = [this](const std::string& path) {
            return lists.translated(path, MergeSide::Merged, MergeSide::Theirs) != path;
        };
        const auto lost = std::find_if(conflicts.begin(), conflicts.end(), isElsewhere);
        if (result.document && lost != conflicts.end()) {
            result.refusal = Reason::tr("'%1' was changed there, too, and is at another place", {*lost});
            result.document.reset();
        }
        if (!result.document) {
            for (std::string& path : conflicts)
                path = lists.translated(path, MergeSide::Merged, MergeSide::Mine);
            return;
        }
        result.bases = entriesAt(*arrangedBase, PathSet(conflicts.begin(), conflicts.end()));
        std::vector<std::string> added;
        for (const DocumentChange& change : compareDocuments(theirs, *result.document)) {
            if (!inLists(change.path))
                continue;
            added.push_back(change.path);
            result.theirs.erase(change.path);
            if (change.kind != Kind::Created)
                result.theirs.emplace(change.path, change.before);
        }
        result.bases.merge(entriesAt(base, PathSet(added.begin(), added.end())));
        conflicts.insert(conflicts.end(), added.begin(), added.end());
        std::sort(conflicts.begin(), conflicts.end());
    }

    const std::string& type;
    const Document& base;
    const Document& mine;
    const ListPlans lists;
    std::unique_ptr<Document> arrangedBase;
    std::unique_ptr<Document> arrangedMine;
    std::unique_ptr<Document> arrangedTheirs;
};

} // namespace

MergedDocument mergeDocuments(const std::string& type, const Document& base, const Document& mine,
                              std::unique_ptr<Document> theirs, const PathSet& watched)
{
    const std::vector<DocumentChange> myChanges = ownChanges(EntryList(base), base, mine);
    const auto ours = parsed(type, mine.getBytes());
    const CommentBalance comments(base, *ours, *theirs);
    MergedDocument result;
    if (auto arranged = ArrangedMerge(type, base, *ours, *theirs, myChanges).run(theirs, watched)) {
        result = std::move(*arranged);
    } else {
        result = mergeByPaths(base, mine, std::move(theirs), watched);
        result.bases = entriesAt(base, PathSet(result.conflicts.begin(), result.conflicts.end()));
    }
    if (result.document && !hasOpenConflict(result)) {
        const std::string lost = comments.findLost(*parsed(type, result.document->getBytes()));
        if (!lost.empty())
            result = {nullptr,
                      Reason::tr("the comment %1 has no place in what the file holds now", {lost}),
                      {},
                      {},
                      std::move(result.theirs),
                      {}};
    }
    return result;
}

} // namespace Repository
