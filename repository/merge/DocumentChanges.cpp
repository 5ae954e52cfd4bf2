#include "repository/merge/DocumentChanges.h"

#include "repository/documents/common/WrittenEntries.h"
#include "repository/merge/DocumentComparison.h"
#include "repository/merge/FollowedMoves.h"

#include <algorithm>

namespace Repository {

using Documents::Document;
using Documents::Entry;
using Documents::Outcome;
using FrameworkCore::Values::Reason;
using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;
using Kind = DocumentChange::Kind;

namespace {

// Whether one of the sorted paths lies below this one.
bool hasBelow(const std::vector<std::string_view>& sorted, const std::string& path)
{
    const std::string prefix = path.empty() ? path : path + '.';
    const auto found = std::lower_bound(sorted.begin(), sorted.end(), std::string_view(prefix));
    return found != sorted.end() && found->substr(0, prefix.size()) == prefix &&
           found->size() > prefix.size();
}

bool isGroup(const Value& value)
{
    return value.type == Type::Group;
}

std::string_view parentOf(std::string_view path)
{
    const std::size_t dot = path.rfind('.');
    return path.substr(0, dot == std::string_view::npos ? 0 : dot);
}

std::string withoutReturns(std::string text)
{
    text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
    return text;
}

// Without comments that stayed in the text, with whatever line ends, when the entry they belong to was taken
// out.
Documents::Excerpt withoutCommentsOf(std::string bytes, Documents::Excerpt excerpt)
{
    const std::string text = withoutReturns(std::move(bytes));
    const auto isThere = [&text](const std::string& comments) {
        return !comments.empty() && text.find(withoutReturns(comments)) != std::string::npos;
    };
    if (isThere(excerpt.above))
        excerpt.above.clear();
    const std::size_t name = excerpt.names.empty() ? 0 : excerpt.names.front().first;
    const std::size_t size = name == 0 ? 0 : excerpt.text.find_last_of("\r\n", name - 1) + 1;
    if (!isThere(excerpt.text.substr(0, size)))
        return excerpt;
    excerpt.text.erase(0, size);
    for (auto& [begin, end] : excerpt.names) {
        begin -= size;
        end -= size;
    }
    auto& lines = excerpt.lines;
    lines.erase(std::remove_if(lines.begin(), lines.end(), [size](std::size_t line) { return line < size; }),
                lines.end());
    for (std::size_t& line : lines)
        line -= size;
    return excerpt;
}

// Makes changes in one document, one after the other.
class Application
{
public:
    Application(const std::vector<DocumentChange>& allChanges, const Document& before,
                const Document& spellings, Document& document)
        : changes(allChanges), former(before), model(spellings), target(document)
    {
    }

    RefusedChange run()
    {
        written = followMoves(changes, former, model, target);
        removeAll();
        putSubtrees();
        // Groups come by themselves with what is in them.
        const std::vector<DocumentChange> additions = withoutImpliedGroups(changes);
        target.beginRun();
        for (const DocumentChange& change : additions) {
            if (change.kind == Kind::Created && written.count(change.path) == 0)
                put(change);
        }
        std::string lacking;
        const Outcome outcome = target.endRun(lacking);
        if (refusal.reason.empty() && !outcome.ok())
            refusal = {lacking, outcome.error};
        for (const DocumentChange& change : additions) {
            if (change.kind == Kind::Changed && !takesOut(change))
                put(change);
        }
        return refusal;
    }

private:
    using Origin = Document::Origin;

    static bool takesOut(const DocumentChange& change)
    {
        return change.kind == Kind::Removed || (change.kind == Kind::Changed && isGroup(change.after));
    }

    // A value that becomes a group in its place, which its siblings must not change for that.
    bool becomesGroup(const DocumentChange& change) const
    {
        return change.kind == Kind::Changed && isGroup(change.after) &&
               target.removalMovesSiblings(change.path) && target.valueAt(change.path);
    }

    // From the last to the first, so that numbered siblings keep their paths until it is their turn. What
    // goes as a whole is taken out at once.
    void removeAll()
    {
        PathSet going;
        for (const DocumentChange& change : changes) {
            if (takesOut(change))
                going.insert(change.path);
        }
        if (going.empty())
            return;
        const PathSet kept = leadingToOthers(going);
        const auto goes = [&](std::string_view path) {
            return going.count(path) > 0 && kept.count(path) == 0 && target.contains(path) &&
                   target.originOf(path) != Origin::Copy;
        };
        for (auto change = changes.rbegin(); change != changes.rend(); ++change) {
            if (takesOut(*change) && !becomesGroup(*change) && goes(change->path) &&
                (change->path.empty() || !goes(parentOf(change->path))))
                note(*change, target.remove(change->path));
        }
    }

    // Those of the paths below which the target holds what is not among them.
    PathSet leadingToOthers(const PathSet& paths) const
    {
        PathSet leading;
        target.visit([&](const Entry& entry) {
            if (paths.count(entry.path) > 0)
                return;
            forEachAncestor(entry.path, [&](std::string_view ancestor) {
                const auto found = paths.find(ancestor);
                return found != paths.end() && !leading.insert(*found).second;
            });
        });
        return leading;
    }

    // What is new as a whole comes as its author wrote it.
    void putSubtrees()
    {
        PathSet created;
        for (const DocumentChange& change : changes) {
            if (change.kind == Kind::Created || becomesGroup(change))
                created.insert(change.path);
        }
        std::vector<std::string_view> tops;
        std::unordered_map<std::string_view, std::vector<const DocumentChange*>> subtrees;
        for (const DocumentChange& change : changes) {
            std::string_view top = change.path;
            while (created.count(parentOf(top)) > 0 && !parentOf(top).empty())
                top = parentOf(top);
            if (created.count(change.path) == 0)
                continue;
            if (top == change.path && written.count(top) == 0)
                tops.push_back(top);
            subtrees[top].push_back(&change);
        }
        if (tops.empty())
            return;
        const bool canTakeExcerpts = Documents::canTakeExcerpts(tops.size(), target.getBytes().size());
        for (const std::string_view top : tops) {
            const std::vector<Entry> entries = relativeTo(top, subtrees[top]);
            const DocumentChange& change = *subtrees[top].front();
            if (change.kind == Kind::Changed)
                note(change, replace(top, entries));
            else if ((!canTakeExcerpts || !(putAsWritten(top, entries) || addComments(top, entries))) &&
                     !putAsArrays(top, entries))
                continue;
            for (const DocumentChange* put : subtrees[top])
                written.insert(put->path);
        }
    }

    // A group at the top that its entries imply is left out.
    std::vector<Entry> relativeTo(std::string_view top,
                                  const std::vector<const DocumentChange*>& subtree) const
    {
        std::vector<Entry> entries;
        for (const DocumentChange* change : subtree) {
            const auto isArray = model.isArray(change->path);
            const bool isImplied = change->path == top && subtree.size() > 1 && isGroup(change->after);
            if (!isImplied || isArray.value_or(false))
                entries.push_back({change->path.substr(std::min(change->path.size(), top.size() + 1)),
                                   change->after, isArray});
        }
        return entries;
    }

    bool putAsWritten(std::string_view path, std::vector<Entry> entries)
    {
        const auto excerpt = target.contains(path) ? std::nullopt : model.excerpt(path);
        return excerpt &&
               Documents::insertAsWritten(target, path, withoutCommentsOf(target.getBytes(), *excerpt),
                                          std::move(entries));
    }

    // Both sides have added the same: mine comes with theirs where the comments at it are others. False, with
    // the target as it is, where they are not, or where the entry would change its place for that.
    bool addComments(std::string_view path, const std::vector<Entry>& entries)
    {
        if (!target.contains(path) || former.contains(path) || model.comment(path).empty() ||
            model.comment(path) == target.comment(path))
            return false;
        const auto mine = model.excerpt(path);
        auto both = target.excerpt(path);
        if (!mine || !both || !Documents::addComments(*both, *mine))
            return false;
        const Documents::SiblingPlace place = target.placeOf(path);
        std::string bytes = target.getBytes();
        const bool isAdded =
            target.removeExcerpt(path).ok() && Documents::insertAsWritten(target, path, *both, entries) &&
            target.placeOf(path).kind == place.kind && target.placeOf(path).sibling == place.sibling;
        if (!isAdded)
            target.parseAgain(std::move(bytes));
        return isAdded;
    }

    // What has arrays cannot come one by one, since a group would come instead of each. False for all else.
    bool putAsArrays(std::string_view path, const std::vector<Entry>& entries)
    {
        const auto isArray = [](const Entry& entry) { return entry.isArray.value_or(false); };
        std::size_t refused = 0;
        return !target.contains(path) && !model.isLinked({}) &&
               std::any_of(entries.begin(), entries.end(), isArray) &&
               target.insertAll(path, entries, refused).ok();
    }

    Outcome replace(std::string_view path, const std::vector<Entry>& entries)
    {
        std::size_t refused = 0;
        return target.replaceAll(path, entries, refused);
    }

    void put(const DocumentChange& change)
    {
        const Origin origin = model.originOf(change.path);
        const bool isThere = target.contains(change.path);
        if (origin == Origin::Copy || (origin == Origin::Reference && !isThere)) {
            followOrigin(change, origin);
            return;
        }
        const std::optional<Value> before = target.valueAt(change.path);
        const bool isSpeltHere = before && hasOwnComments(change.path);
        if (isThere && (isGroup(change.after) || (before && isSame(*before, change.after))))
            return;
        Outcome outcome = before ? target.set(change.path, change.after)
                          : isThere && isEmptyGroup(change.path)
                              ? replace(change.path, {{{}, change.after, {}}})
                              : target.insert(change.path, change.after);
        if (!outcome.ok() && before && before->type != change.after.type && isAlone(change.path) &&
            !target.hasComments(change.path) && target.remove(change.path).ok())
            outcome = target.insert(change.path, change.after); // with a type tag, which set never adds
        note(change, outcome);
        // What the spelling adds is looks; without it the value is there all the same.
        const auto spelling = outcome.ok() && !isSpeltHere ? model.spell(change.path) : std::nullopt;
        if (spelling)
            target.respell(change.path, *spelling);
    }

    // Whether a value can take the place of a group: in formats with arrays it would become a member of that.
    bool isEmptyGroup(const std::string& path) const
    {
        return !path.empty() && target.isArray(path) && leadingToOthers({path}).empty();
    }

    // Whether there are comments in a value or behind it that were not there before.
    bool hasOwnComments(const std::string& path) const
    {
        return withoutReturns(target.spell(path).value_or(std::string())) !=
                   withoutReturns(former.spell(path).value_or(std::string())) &&
               target.hasComments(path);
    }

    // Of what the model only shows: it comes with what it shows, and is not written. Where its group shows
    // others in the target, it does not come.
    void followOrigin(const DocumentChange& change, Origin origin)
    {
        if (change.kind == Kind::Changed && target.originOf(change.path) != origin)
            note(change, target.remove(change.path));
        if (!target.contains(change.path) &&
            (origin == Origin::Reference || !target.contains(parentOf(change.path))))
            note(change, {Reason::tr("what it shows is not there"), 0, 0});
    }

    // Nothing else goes with it, or gets another path.
    bool isAlone(const std::string& path) const
    {
        return !target.removalMovesSiblings(path) && leadingToOthers({path}).empty();
    }

    void note(const DocumentChange& change, const Outcome& outcome)
    {
        if (refusal.reason.empty() && !outcome.ok())
            refusal = {change.path, outcome.error};
    }

    const std::vector<DocumentChange>& changes;
    const Document& former;
    const Document& model;
    Document& target;
    PathSet written;       // what came with all that it is in
    RefusedChange refusal; // the first
};

} // namespace

PathSet pathsOf(const std::vector<DocumentChange>& changes)
{
    PathSet paths;
    for (const DocumentChange& change : changes)
        paths.insert(change.path);
    return paths;
}

EntryMap entriesAt(const Document& document, const PathSet& paths)
{
    EntryMap entries;
    if (paths.empty())
        return entries;
    document.visit([&](const Entry& entry) {
        if (paths.count(entry.path) > 0)
            entries.emplace(entry.path, entry.value);
    });
    return entries;
}

std::vector<DocumentChange> compareDocuments(const Document& before, const Document& after)
{
    return compareDocuments(EntryList(before), after);
}

std::vector<DocumentChange> compareDocuments(const EntryList& before, const Document& after)
{
    return DocumentComparison(before).run(after).entries;
}

std::vector<DocumentChange> withoutImpliedGroups(std::vector<DocumentChange> changes)
{
    std::vector<std::string> all;
    for (const DocumentChange& change : changes)
        all.push_back(change.path);
    std::vector<std::string_view> sorted(all.begin(), all.end());
    std::sort(sorted.begin(), sorted.end());
    const auto isImplied = [&sorted](const DocumentChange& change) {
        return isGroup(change.before) && isGroup(change.after) && hasBelow(sorted, change.path);
    };
    changes.erase(std::remove_if(changes.begin(), changes.end(), isImplied), changes.end());
    return changes;
}

bool isWithin(std::string_view path, std::string_view ancestor)
{
    return ancestor.empty() || (path.substr(0, ancestor.size()) == ancestor &&
                                (path.size() == ancestor.size() || path[ancestor.size()] == '.'));
}

RefusedChange applyChanges(const std::vector<DocumentChange>& changes, const Document& before,
                           const Document& model, Document& target)
{
    return Application(changes, before, model, target).run();
}

} // namespace Repository
