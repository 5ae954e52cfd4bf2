#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// An element of an array of texts, by the offsets at which its parts begin.
struct JsonListElement
{
    std::size_t leading = 0;
    std::size_t value = 0;
    std::size_t valueEnd = 0;
    std::size_t end = 0; // of the comma or bracket

    bool exists() const { return valueEnd > 0; }
};

// The element whose leading trivia begins at an offset of a well-formed json text; after the last one it does
// not exist.
JsonListElement readElement(std::string_view text, std::size_t at);

// All elements of an array of texts, decoded. The array begins at the first byte.
std::vector<std::string> decodeList(std::string_view array);

// True for a list that has a line for each element when it is written anew.
bool isLongList(const std::vector<std::string>& list);

} // namespace Repository::Documents
