#include "repository/documents/common/WrittenEntries.h"

#include "repository/documents/common/ComponentCodec.h"
#include "repository/documents/common/ExcerptText.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace Repository::Documents {

namespace {

bool isWithin(std::string_view path, std::string_view top)
{
    return top.empty() ||
           (path.substr(0, top.size()) == top && (path.size() == top.size() || path[top.size()] == '.'));
}

// The text that has the path as an element of a list; null where that is not one.
const std::string* elementIn(const Entry& entry, std::string_view path)
{
    if (entry.value.type != Type::StringList || path.size() <= entry.path.size() + 1 ||
        !isWithin(path, entry.path))
        return nullptr;
    const auto& texts = std::get<std::vector<std::string>>(entry.value.data);
    const std::string_view index = path.substr(entry.path.empty() ? 0 : entry.path.size() + 1);
    for (std::size_t i = 0; i < texts.size(); ++i) {
        if (std::to_string(i) == index)
            return &texts[i];
    }
    return nullptr;
}

// Groups that have entries are implied by those, and the root is there anyway.
void dropImpliedGroups(std::vector<Entry>& entries)
{
    std::unordered_set<std::string> groups{std::string()};
    for (const Entry& entry : entries) {
        for (std::size_t dot = entry.path.rfind('.'); dot != std::string::npos && dot > 0;
             dot = entry.path.rfind('.', dot - 1))
            groups.insert(entry.path.substr(0, dot));
    }
    const auto isImplied = [&groups](const Entry& entry) {
        return entry.value.type == Type::Group && groups.count(entry.path) > 0;
    };
    entries.erase(std::remove_if(entries.begin(), entries.end(), isImplied), entries.end());
}

// One of a line, and not a part of a longer one.
bool isComment(std::string_view line)
{
    const auto isBetween = [line](std::string_view begin, std::string_view end) {
        return line.substr(0, begin.size()) == begin && line.size() >= begin.size() + end.size() &&
               line.substr(line.size() - end.size()) == end;
    };
    return isBetween("#", "") || isBetween(";", "") || isBetween("!", "") || isBetween("//", "") ||
           isBetween("/*", "*/") || isBetween("<!--", "-->");
}

// Where the group is missing too, a value holds its place until it has the entry.
bool insertInNewGroup(Document& document, std::string_view path, const Excerpt& excerpt)
{
    const std::string group(splitLast(path).parent);
    if (group.empty() || document.contains(group))
        return false;
    std::string before = document.getBytes();
    const std::string value = joinPath(group, "-");
    if (document.insert(value, {Type::Bool, true}).ok() && document.insertExcerpt(path, excerpt) &&
        document.remove(value).ok())
        return true;
    document.parseAgain(std::move(before));
    return false;
}

} // namespace

bool holdsEntries(const Document& document, std::string_view path, std::vector<Entry> expected)
{
    const auto isReference = [&document](const std::string& place) {
        return document.originOf(place) == Document::Origin::Reference;
    };
    expected.erase(std::remove_if(expected.begin(), expected.end(),
                                  [&](const Entry& entry) {
                                      return isReference(entry.path.empty() ? std::string(path)
                                                                            : joinPath(path, entry.path));
                                  }),
                   expected.end());
    std::vector<Entry> found;
    document.visit([&](const Entry& entry) {
        if (const std::string* const text = elementIn(entry, path))
            found.push_back({{}, {Type::String, *text}, {}});
        if (isWithin(entry.path, path) && !isReference(entry.path))
            found.push_back(
                {path.empty() ? entry.path : entry.path.substr(std::min(path.size() + 1, entry.path.size())),
                 entry.value,
                 {}});
    });
    const auto isBefore = [](const Entry& a, const Entry& b) { return a.path < b.path; };
    for (auto* const list : {&found, &expected}) {
        dropImpliedGroups(*list);
        if (!std::is_sorted(list->begin(), list->end(), isBefore))
            std::sort(list->begin(), list->end(), isBefore);
    }
    return std::equal(
        found.begin(), found.end(), expected.begin(), expected.end(),
        [](const Entry& a, const Entry& b) { return a.path == b.path && isSame(a.value, b.value); });
}

bool insertAsWritten(Document& document, std::string_view path, const Excerpt& excerpt,
                     std::vector<Entry> expected)
{
    std::string before = document.getBytes();
    if (!document.insertExcerpt(path, excerpt) && !insertInNewGroup(document, path, excerpt))
        return false;
    if (holdsEntries(document, path, std::move(expected)))
        return true;
    document.parseAgain(std::move(before));
    return false;
}

bool addComments(Excerpt& excerpt, const Excerpt& other)
{
    const std::string known = '\n' + joinComments(excerpt.above, excerpt.after) + '\n';
    const std::string lines = joinComments(other.above, other.after) + '\n';
    std::string added;
    for (std::size_t begin = 0; begin < lines.size();) {
        const std::size_t end = lines.find('\n', begin);
        const std::string line = lines.substr(begin, end - begin);
        if (!line.empty() && !isComment(line))
            return false;
        if (!line.empty() && known.find('\n' + line + '\n') == std::string::npos)
            added += excerpt.indentation + line + excerpt.lineEnd;
        begin = end + 1;
    }
    excerpt.above += added;
    return !added.empty();
}

bool canTakeExcerpts(std::size_t count, std::size_t textSize)
{
    constexpr std::size_t mostRead = 16 << 20; // bytes
    return count <= 1 || textSize <= mostRead / count;
}

} // namespace Repository::Documents
