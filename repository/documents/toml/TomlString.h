#pragma once

#include <string>
#include <string_view>

namespace Repository::Documents {

// The text of a string of any of the four forms; a line end in it is one "\n".
std::string decodeTomlString(std::string_view literal);

// A basic string in one line.
std::string encodeTomlString(std::string_view text);

// How a string may lie in its place.
struct TomlStringPlace
{
    std::string_view lineEnd = "\n";
    bool mayBreak = true; // over several lines, which an inline table may not
};

// A string of the form that the former one has, if it can hold the text, or the nearest that can. A text of
// several lines is written in several.
std::string encodeTomlStringLike(std::string_view text, std::string_view former,
                                 const TomlStringPlace& place);

} // namespace Repository::Documents
