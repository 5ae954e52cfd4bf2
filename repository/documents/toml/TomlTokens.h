#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// Where tokens end in a text that was found to be TOML. Offsets are those of the whole text.

// After the blanks at an offset.
std::size_t skipTomlBlanks(std::string_view text, std::size_t at);

// After the blanks, line ends and comments at an offset.
std::size_t skipTomlTrivia(std::string_view text, std::size_t at);

// After the rest of a line and its end.
std::size_t skipTomlLine(std::string_view text, std::size_t at);

// After the string at an offset, which may be of any of the four forms.
std::size_t skipTomlString(std::string_view text, std::size_t at);

// After a value that has no brackets.
std::size_t skipTomlScalar(std::string_view text, std::size_t at);

// After an array that holds nothing but strings; 0 where it does not.
std::size_t skipTomlTextList(std::string_view text, std::size_t at);

// Whether there is a comment in such an array, which is all of a text.
bool hasTomlListComment(std::string_view list);

// After any value.
std::size_t skipTomlValue(std::string_view text, std::size_t at);

// One of the parts of a key that dots separate, with its quotes.
struct TomlKeyPart
{
    std::size_t begin = 0;
    std::size_t end = 0;
    std::size_t next = 0; // where the next one begins, or after the blanks that follow the last one
    bool isLast = true;
};
TomlKeyPart readTomlKeyPart(std::string_view text, std::size_t at);

// The last part of a path that a key begins with; nothing where it begins in another way.
std::optional<TomlKeyPart> findTomlKeyPart(std::string_view key, const std::vector<std::string>& path);

// The key that a part spells.
std::string decodeTomlKey(std::string_view part);

// A part that spells the key, bare where it can be.
std::string encodeTomlKey(std::string_view key);

// The same with the quotes that another part has.
std::string encodeTomlKeyLike(std::string_view key, std::string_view part);

} // namespace Repository::Documents
