#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// The form of a key of a file as a component of a path. Percent-encoded, in upper-case hex, are ". * % ;",
// control characters, directional formatting, line and paragraph separators, a leading "@" or "#", a final
// "]" that closes a number, and bytes that are not UTF-8. A key of nothing but NULs, or empty, gets one "%00"
// more than it has, so that the encoding is unique.
std::string encodeKey(std::string_view key);
void appendKey(std::string& path, std::string_view key);

// A cheap test that holds for nearly all keys that need no encoding, and for no other.
bool isPlainKey(std::string_view key);

// The path of a name that is itself a dotted path, of which a part that is a component already, codes
// included, is taken as it is.
std::string encodePath(std::string_view name);

// The plainest name of which encodePath makes the path; control characters stay in codes.
std::string decodePath(std::string_view path);

// The inverse of encodeKey; nothing for what it never gives.
std::optional<std::string> decodeKey(std::string_view component);

// True for the text of a key whose last "]" closes a number, as in key[2].
bool endsInNumber(std::string_view key);

// A component without the number that tells siblings of one name apart: key[2] is the second "key".
struct NumberedComponent
{
    std::string_view name;
    std::size_t number = 1;
};

// Numbers are 2 and above, without leading zeros; anything else belongs to the name.
NumberedComponent splitNumber(std::string_view component);

// The component of the number-th sibling of that name, counted from 1.
std::string joinNumber(std::string_view name, std::size_t number);
void appendNumber(std::string& path, std::size_t number);

// Whether entries are named so: an encoded key, which a mark may come before, as in "@id" and "#text", and a
// number after.
bool isComponent(std::string_view component);

// The path with each component replaced.
template <typename Change>
std::string mapPath(std::string_view path, const Change& change)
{
    std::string result;
    while (true) {
        const std::size_t end = path.find('.');
        result += change(path.substr(0, end));
        if (end == std::string_view::npos)
            return result;
        result += '.';
        path.remove_prefix(end + 1);
    }
}

// Views into the path; nothing when it is empty or has an empty component.
std::optional<std::vector<std::string_view>> splitPath(std::string_view path);

// The path of the node above, empty for a path of one component, and the last component.
struct PathEnds
{
    std::string_view parent;
    std::string_view last;
};
PathEnds splitLast(std::string_view path);

std::string joinPath(std::string_view parent, std::string_view component);

} // namespace Repository::Documents
