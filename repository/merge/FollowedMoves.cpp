#include "repository/merge/FollowedMoves.h"

#include "repository/documents/common/ComponentCodec.h"
#include "repository/documents/common/WrittenEntries.h"

#include <algorithm>

namespace Repository {

using Documents::Document;
using Documents::Entry;
using Documents::Excerpt;
using Documents::splitLast;
using Kind = DocumentChange::Kind;

namespace {

// Entries of one kind of change that lie in one of them; their paths are relative to it.
struct Subtree
{
    std::string_view top;
    std::vector<Entry> entries;
    std::vector<std::string_view> paths;
};

std::vector<Subtree> subtreesOf(const std::vector<DocumentChange>& changes, Kind kind)
{
    PathSet paths;
    for (const DocumentChange& change : changes) {
        if (change.kind == kind)
            paths.insert(change.path);
    }
    std::vector<Subtree> subtrees;
    std::unordered_map<std::string_view, std::size_t> places;
    for (const DocumentChange& change : changes) {
        if (change.kind != kind)
            continue;
        std::string_view top = change.path;
        while (paths.count(splitLast(top).parent) > 0 && !splitLast(top).parent.empty())
            top = splitLast(top).parent;
        const auto [place, isNew] = places.emplace(top, subtrees.size());
        if (isNew)
            subtrees.push_back({top, {}, {}});
        Subtree& subtree = subtrees[place->second];
        subtree.entries.push_back({change.path.substr(std::min(change.path.size(), top.size() + 1)),
                                   kind == Kind::Removed ? change.before : change.after,
                                   {}});
        subtree.paths.push_back(change.path);
    }
    return subtrees;
}

// What is written of an entry, whatever its name, its indentation and its line ends.
std::string bodyOf(const Excerpt& excerpt)
{
    std::string body = excerpt.above;
    std::size_t end = 0;
    for (const auto& [nameBegin, nameEnd] : excerpt.names) {
        body.append(excerpt.text, end, nameBegin - end);
        end = nameEnd;
    }
    body.append(excerpt.text, end).append(excerpt.after);
    const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
    body.erase(std::remove_if(body.begin(), body.end(), isBlank), body.end());
    return body;
}

// Moves an entry that the target has as it was; false, with the target as it is, where it cannot.
bool move(Document& target, const Subtree& from, const Subtree& to)
{
    if (target.contains(to.top) || target.removalMovesSiblings(from.top) || target.isLinked(from.top) ||
        !Documents::holdsEntries(target, from.top, from.entries))
        return false;
    std::string bytes = target.getBytes();
    if (splitLast(from.top).parent == splitLast(to.top).parent) {
        const auto renamed = target.rename(from.top, splitLast(to.top).last);
        if (renamed && renamed->ok() && Documents::holdsEntries(target, to.top, to.entries))
            return true;
        if (renamed && renamed->ok())
            target.parseAgain(bytes);
    }
    const auto excerpt = target.excerpt(from.top);
    if (excerpt && target.removeExcerpt(from.top).ok()) {
        if (Documents::insertAsWritten(target, to.top, *excerpt, to.entries))
            return true;
        target.parseAgain(std::move(bytes));
    }
    return false;
}

} // namespace

PathSet followMoves(const std::vector<DocumentChange>& changes, const Document& before, const Document& after,
                    Document& target)
{
    const std::vector<Subtree> gone = subtreesOf(changes, Kind::Removed);
    const std::vector<Subtree> come = subtreesOf(changes, Kind::Created);
    if (gone.empty() || come.empty() ||
        !Documents::canTakeExcerpts(gone.size() + come.size(), target.getBytes().size()))
        return {};
    std::unordered_map<std::string, const Subtree*> byBody; // null where there are several
    for (const Subtree& subtree : gone) {
        if (const auto excerpt = before.excerpt(subtree.top)) {
            const auto [place, isNew] = byBody.emplace(bodyOf(*excerpt), &subtree);
            place->second = isNew ? &subtree : nullptr;
        }
    }
    PathSet moved;
    for (const Subtree& subtree : come) {
        const auto excerpt = byBody.empty() ? std::nullopt : after.excerpt(subtree.top);
        const auto found = excerpt ? byBody.find(bodyOf(*excerpt)) : byBody.end();
        if (found == byBody.end() || !found->second || !move(target, *found->second, subtree))
            continue;
        found->second = nullptr;
        moved.insert(subtree.paths.begin(), subtree.paths.end());
    }
    return moved;
}

} // namespace Repository
