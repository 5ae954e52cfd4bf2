#include "repository/documents/common/ArrayGroups.h"

#include "repository/documents/common/ComponentCodec.h"

#include <algorithm>
#include <charconv>

namespace Repository::Documents {

namespace {

bool isBelow(std::string_view path, std::string_view group)
{
    return group.empty() ? !path.empty()
                         : path.size() > group.size() && path[group.size()] == '.' && startsWith(path, group);
}

} // namespace

std::optional<std::size_t> readIndex(std::string_view name)
{
    std::size_t index = 0;
    const char* const end = name.data() + name.size();
    const auto [stop, error] = std::from_chars(name.data(), end, index);
    const bool isPlain = name == "0" || (!name.empty() && name[0] != '0');
    return isPlain && error == std::errc() && stop == end ? std::optional(index) : std::nullopt;
}

Outcome beyondEnd(std::string_view path, std::size_t greatestIndex)
{
    const std::string greatest = std::to_string(greatestIndex);
    return refused(
        greatestIndex == 0
            ? Reason::tr("%1 is beyond the end of the array: its only index can be 0", {quoted(path)})
            : Reason::tr("%1 is beyond the end of the array: the greatest index can be %2",
                         {quoted(path), greatest}));
}

ArrayGroups::ArrayGroups(const std::vector<Entry>& entries)
{
    groups.push_back({});
    for (const Entry& entry : entries) {
        const std::string_view path = entry.path;
        if (path.empty()) {
            groups.front().isArray = entry.value.type == Type::Group ? entry.isArray : false;
            continue;
        }
        while (!isBelow(path, groups.back().path))
            close();
        while (groups.back().path.size() < path.size()) {
            const std::size_t begin = groups.back().path.empty() ? 0 : groups.back().path.size() + 1;
            open(path.substr(0, path.find('.', begin)), entry);
        }
    }
    while (!groups.empty())
        close();
}

void ArrayGroups::open(std::string_view path, const Entry& entry)
{
    Group& parent = groups.back();
    const bool isEntry = path.size() == entry.path.size();
    const auto index = readIndex(splitLast(path).last);
    ++parent.count;
    parent.greatest = std::max(parent.greatest, index.value_or(0));
    parent.hasOnlyNumbers = parent.hasOnlyNumbers && index;
    parent.hasOnlyTexts = parent.hasOnlyTexts && isEntry && entry.value.type == Type::String;
    Group group;
    group.path = path;
    if (isEntry)
        group.isArray = entry.value.type == Type::Group ? entry.isArray : false;
    groups.push_back(group);
}

void ArrayGroups::close()
{
    const Group group = groups.back();
    groups.pop_back();
    if (!groups.empty() && group.count > 0)
        groups.back().hasOnlyTexts = false;
    const bool looksLikeOne =
        group.count > 0 && group.hasOnlyNumbers && group.greatest + 1 == group.count && !group.hasOnlyTexts;
    if (group.isArray.value_or(looksLikeOne) && looksLikeOne)
        arrays.insert(group.path);
}

} // namespace Repository::Documents
