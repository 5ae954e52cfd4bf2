#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// The form of a key of a file as one component of a path. Percent-encoded (upper-case hex of
// the bytes) are ". * % ;", control characters, marks and overrides of writing direction, line and paragraph
// separators, a leading "@" or "#", a final "]" that closes a number, and bytes that are no UTF-8; all else
// is left as it is. A key of nothing but NUL characters, the empty one too,
// has one "%00" more than it has characters, so that no two keys share a form.
std::string encodeKey(std::string_view key);
void appendKey(std::string& path, std::string_view key);

// True for keys that can be told at a glance to need no encoding, as nearly all can.
bool isPlainKey(std::string_view key);

// The path that a name with dots in it stands for, where a file holds paths as they are. The parts between
// the dots are in the file as in the path, "%" too, but for what a path cannot hold.
std::string encodePath(std::string_view name);

// The key that the component stands for; nothing when encodeKey never gives this component.
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

// The path of which each component was changed.
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

// The components of a path; nothing when it is not a path (empty, or with an empty component). The views live
// as long as the path.
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
