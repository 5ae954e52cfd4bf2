#include "repository/merge/CommentWatch.h"

#include "repository/documents/common/TypeTag.h"
#include "repository/documents/common/WrittenEntries.h"

#include <algorithm>
#include <unordered_set>

namespace Repository {

using Documents::Document;
using Documents::Excerpt;
using FrameworkCore::Values::Type;
using Kind = DocumentChange::Kind;

namespace {

std::string trimmed(std::string_view text)
{
    const std::size_t begin = text.find_first_not_of(" \t\r\n");
    const std::size_t end = text.find_last_not_of(" \t\r\n");
    return begin == std::string_view::npos ? std::string() : std::string(text.substr(begin, end - begin + 1));
}

std::vector<std::string> linesOf(std::string_view text)
{
    std::vector<std::string> lines;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find_first_of("\r\n", begin), text.size());
        std::string line = trimmed(text.substr(begin, end - begin));
        if (!line.empty())
            lines.push_back(std::move(line));
        begin = end + 1;
    }
    return lines;
}

// With the comment behind it, but without those above, which stay when it goes.
std::vector<std::string> linesOf(const Excerpt& excerpt)
{
    return linesOf(excerpt.text + excerpt.after);
}

// Whether comments in an entry may go with the change.
bool reshapes(const DocumentChange& change)
{
    const auto isShaped = [](const FrameworkCore::Values::Value& value) {
        return value.type == Type::Group || value.type == Type::StringList;
    };
    return change.kind == Kind::Removed ||
           (change.kind == Kind::Changed && (isShaped(change.before) || isShaped(change.after)) &&
            !(change.before.type == Type::Group && change.after.type == Type::Group));
}

} // namespace

void CommentWatch::watchAdded(const std::vector<DocumentChange>& changes, const Document& after)
{
    const auto isAdded = [](const DocumentChange& change) { return change.kind == Kind::Created; };
    const auto count = std::size_t(std::count_if(changes.begin(), changes.end(), isAdded));
    if (count == 0 || !Documents::canTakeExcerpts(count, after.getBytes().size()))
        return;
    for (const DocumentChange& change : changes) {
        const auto excerpt = isAdded(change) ? after.excerpt(change.path) : std::nullopt;
        if (excerpt && !(excerpt->above.empty() && excerpt->after.empty()))
            all.push_back({change.path, linesOf(excerpt->above), trimmed(excerpt->after)});
    }
}

void CommentWatch::watchRemoved(const std::vector<DocumentChange>& changes, const Document& base,
                                const Document& theirs, const PathSet& others)
{
    PathSet seen;
    const auto isSeen = [&seen](std::string_view path) { return seen.count(path) > 0; };
    const std::size_t size = theirs.getBytes().size();
    for (const DocumentChange& change : changes) {
        if (!reshapes(change) || others.count(change.path) > 0 || forEachAncestor(change.path, isSeen))
            continue;
        if (!Documents::canTakeExcerpts(seen.size() + 1, size))
            return;
        seen.insert(change.path);
        const auto was = base.excerpt(change.path);
        const auto is = theirs.hasComments(change.path) ? theirs.excerpt(change.path) : std::nullopt;
        if (!was || !is)
            continue;
        const std::vector<std::string> known = linesOf(*was);
        const std::unordered_set<std::string> old(known.begin(), known.end());
        std::vector<std::string> lines = linesOf(*is);
        lines.erase(std::remove_if(lines.begin(), lines.end(),
                                   [&old](const std::string& line) { return old.count(line) > 0; }),
                    lines.end());
        if (!lines.empty())
            all.push_back({change.path, std::move(lines), {}});
    }
}

std::vector<std::string> CommentWatch::findLost(const std::string& text) const
{
    std::vector<std::string> lost;
    if (all.empty())
        return lost;
    const std::vector<std::string> lines = linesOf(text);
    const std::unordered_set<std::string> present(lines.begin(), lines.end());
    for (const Watched& watched : all) {
        const bool areThere =
            std::all_of(watched.lines.begin(), watched.lines.end(),
                        [&present](const std::string& line) { return present.count(line) > 0; });
        if (!areThere || text.find(watched.tail) == std::string::npos)
            lost.push_back(watched.path);
    }
    return lost;
}

CommentCounts countComments(const Document& document)
{
    CommentCounts counts;
    for (const auto& comment : document.getMarks().comments) {
        if (comment.text.rfind("<?", 0) == 0)
            continue;
        for (const auto& [line, count] : countLines(comment.text))
            counts[line] += count;
    }
    return counts;
}

CommentCounts countLines(std::string_view comments)
{
    CommentCounts counts;
    for (std::string& line : linesOf(comments)) {
        if (!Documents::readTypeTag(line))
            ++counts[std::move(line)];
    }
    return counts;
}

int countIn(const CommentCounts& counts, const std::string& line)
{
    const auto found = counts.find(line);
    return found == counts.end() ? 0 : found->second;
}

CommentBalance::CommentBalance(const Document& base, const Document& mine, const Document& theirs)
    : before(countComments(base)), here(countComments(mine)), there(countComments(theirs))
{
}

std::string CommentBalance::findLost(const Document& merged) const
{
    const CommentCounts found = countComments(merged);
    for (const CommentCounts* const side : {&there, &here}) {
        for (const auto& [line, count] : *side) {
            const int change = countIn(here, line) - countIn(before, line);
            const int left = change > 0 ? std::max(countIn(here, line), countIn(there, line))
                                        : countIn(there, line) + change;
            if (countIn(found, line) < left)
                return line;
        }
    }
    return {};
}

} // namespace Repository
