#include "repository/documents/common/EncodedNames.h"

#include "repository/documents/common/ArrayGroups.h"
#include "repository/documents/common/ComponentCodec.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

constexpr std::string_view declaration = "# @names encoded";
constexpr std::string_view emptyGroup = "#";
constexpr std::string_view ownValue = "#value";

// Whether json, or another format of trees, has no key for a name of the path as it is.
bool needsCodes(const Entry& entry)
{
    if (EncodedNames::areNeededBy(entry.path))
        return true;
    if (entry.path.find('%') == std::string::npos)
        return false;
    const auto components = splitPath(entry.path);
    return components && std::any_of(components->begin(), components->end(), [](std::string_view component) {
               return !isUtf8(decodeKey(component).value_or(std::string()));
           });
}

} // namespace

bool EncodedNames::areNeededBy(std::string_view path)
{
    for (std::size_t at = path.find(']'); at != std::string_view::npos; at = path.find(']', at + 1)) {
        const std::string_view before = path.substr(0, at + 1);
        const bool endsName = at + 1 == path.size() || path[at + 1] == '.';
        if (endsName && splitNumber(splitLast(before).last).number > 1)
            return true;
    }
    for (std::size_t at = path.find_first_of("@#"); at != std::string_view::npos;
         at = path.find_first_of("@#", at + 1)) {
        if (at == 0 || path[at - 1] == '.')
            return true;
    }
    return false;
}

bool EncodedNames::areNeededBy(const std::vector<Entry>& entries)
{
    return std::any_of(entries.begin(), entries.end(), needsCodes);
}

std::string EncodedNames::toDocument(std::string_view path)
{
    return path.empty() ? std::string() : mapPath(path, encodeKey);
}

std::string EncodedNames::fromDocument(std::string_view path)
{
    return mapPath(path, [](std::string_view component) {
        return decodeKey(component).value_or(std::string(component));
    });
}

bool EncodedNames::isDeclaredIn(const Document& document)
{
    return document.spell(member) == quoted(form);
}

void EncodedNames::encodeWhole(std::vector<Entry>& entries, bool alsoArray)
{
    const bool isNeeded = areNeededBy(entries);
    const bool isArray = (isNeeded || alsoArray) && ArrayGroups(entries).contain({});
    if (!isNeeded && !isArray)
        return;
    for (Entry& entry : entries) {
        const bool isMember = entry.path.compare(0, entry.path.find('.'), member) == 0;
        entry.path = toDocument(isMember ? '@' + entry.path : entry.path);
        if (isArray)
            entry.path = joinPath(encodeKey(whole), entry.path);
    }
    entries.push_back({std::string(member), {Type::String, std::string(form)}});
}

std::string EncodedNames::pathInWhole(std::string_view path, const std::vector<Entry>& encoded)
{
    const std::string array = encodeKey(whole);
    const bool isInArray = encoded.front().path.compare(0, array.size(), array) == 0;
    const std::string place = toDocument(path);
    return !isInArray ? place : place.empty() ? array : joinPath(array, place);
}

std::optional<Entry> EncodedNames::originalOf(const Entry& entry)
{
    if (entry.path == member)
        return {};
    const std::string path = fromDocument(entry.path);
    const std::string_view top = std::string_view(path).substr(0, path.find('.'));
    const std::size_t own = top == whole ? std::min(top.size() + 1, path.size()) : 0;
    const bool isMember = top.substr(0, 1) == "@" && top.substr(1) == member;
    return Entry{path.substr(isMember ? 1 : own), entry.value, entry.isArray};
}

Entry EncodedNames::toLines(const Entry& entry)
{
    const bool isGroup = entry.value.type == Type::Group;
    std::string path = isGroup ? joinPath(entry.path, emptyGroup) : entry.path;
    if (path.empty())
        path = ownValue;
    path = mapPath(path, [](std::string_view component) {
        return encodeKey(component.front() == '#' ? std::string("@").append(component) : component);
    });
    return {path, isGroup ? Value{Type::String, std::string()} : entry.value};
}

Entry EncodedNames::fromLines(const Entry& entry)
{
    const std::string path = mapPath(fromDocument(entry.path), [](std::string_view component) {
        return std::string(component.substr(startsWith(component, "@#") ? 1 : 0));
    });
    const PathEnds ends = splitLast(path);
    if (ends.last == emptyGroup)
        return {std::string(ends.parent), Value(), false};
    return {path == ownValue ? std::string() : path, entry.value};
}

std::string EncodedNames::lineOf(std::string_view text)
{
    const bool isDos = text.find("\r\n") != std::string_view::npos;
    return std::string(declaration) + (isDos ? "\r\n" : "\n");
}

bool EncodedNames::areDeclaredInLines(const Document& document)
{
    const std::string text = document.getBytes();
    const std::string_view line = std::string_view(text).substr(0, text.find_first_of("\r\n"));
    return line == declaration;
}

} // namespace Repository::Documents
