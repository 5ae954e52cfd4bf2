#include "repository/documents/common/EncodedNames.h"

#include "repository/documents/common/ComponentCodec.h"

namespace Repository::Documents {

namespace {

constexpr std::string_view declaration = "# @names encoded";
constexpr std::string_view emptyGroup = "#";
constexpr std::string_view ownValue = "#value";

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
