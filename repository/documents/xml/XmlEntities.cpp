#include "repository/documents/xml/XmlEntities.h"

#include "repository/documents/common/Values.h"

#include <charconv>
#include <cstdint>
#include <vector>

namespace Repository::Documents {

namespace {

constexpr std::size_t longestExpansion = 16 << 20; // the parser refuses files that use larger ones
constexpr std::size_t deepestNesting = 1000;

std::optional<char> predefined(std::string_view name)
{
    if (name == "amp")
        return '&';
    if (name == "lt")
        return '<';
    if (name == "gt")
        return '>';
    if (name == "quot")
        return '"';
    return name == "apos" ? std::optional('\'') : std::nullopt;
}

// The character of a reference such as "#38" and "#x26".
std::optional<std::string> character(std::string_view reference)
{
    const bool isHex = reference.substr(0, 2) == "#x";
    const std::string_view digits = reference.substr(isHex ? 2 : 1);
    std::uint32_t code = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), code, isHex ? 16 : 10);
    if (read.ec != std::errc() || read.ptr != digits.data() + digits.size() || code > 0x10FFFF)
        return std::nullopt;
    std::string text;
    appendUtf8(text, code);
    return text;
}

} // namespace

std::optional<std::string> XmlEntities::expand(std::string_view reference) const
{
    if (!reference.empty() && reference[0] == '#')
        return character(reference);
    if (const auto c = predefined(reference))
        return std::string(1, *c);
    const auto found = texts.find(std::string(reference));
    if (found == texts.end())
        return std::nullopt;
    std::string expanded;
    std::vector<std::string_view> rest{found->second};
    while (!rest.empty()) {
        const std::size_t end = rest.back().find_first_of("&<");
        expanded += rest.back().substr(0, end);
        if (end == std::string_view::npos) {
            rest.pop_back();
            continue;
        }
        const std::size_t semicolon = rest.back().find(';', end);
        if (rest.back()[end] == '<' || semicolon == std::string_view::npos || rest.size() > deepestNesting ||
            expanded.size() > longestExpansion)
            return std::nullopt;
        const std::string_view inner = rest.back().substr(end + 1, semicolon - end - 1);
        rest.back().remove_prefix(semicolon + 1);
        const auto nested = texts.find(std::string(inner));
        if (const auto c = predefined(inner)) {
            expanded += *c;
        } else if (const auto number = inner.substr(0, 1) == "#" ? character(inner) : std::nullopt) {
            expanded += *number;
        } else if (nested != texts.end()) {
            rest.push_back(nested->second);
        } else {
            return std::nullopt;
        }
    }
    return expanded;
}

} // namespace Repository::Documents
