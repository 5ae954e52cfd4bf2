#pragma once

#include "repository/documents/common/Values.h"

#include <optional>
#include <string>
#include <string_view>

namespace Repository::Documents {

// A type tag says in a file of plain texts which type an entry has whose text alone would load as another: a
// comment line right above the entry, as in "# @type date", which other readers skip. The text of a tagged
// value is that of toText.

// The type that a line without its line end tags; nothing for any other line. ";" and "#" begin comments;
// blanks may be around each part.
std::optional<Type> readTypeTag(std::string_view line);

// True when an entry below the text would be tagged by its last line.
bool endsInTypeTag(std::string_view text);

// Without the tags that it ends in.
std::string_view withoutTypeTags(std::string_view text);

// Without a line end; comment is ";" or "#".
std::string writeTypeTag(char comment, Type type);

// Tag lines, of which the last one names another type.
std::string renameTypeTag(std::string_view tags, Type type);

// The value of a tagged text; plain when the text is not one of that type.
Value readTaggedValue(Type type, std::string_view text, Value plain);

// The same of how the text is spelled: it may be in double quotes, where \n, \r, \t, \", \\ and \x with two
// hex digits are escapes. Null is spelled by nothing at all: "" is a text.
Value readSpelledValue(Type type, std::string_view spelled, Value plain);
std::string quoteTaggedText(std::string_view text);

} // namespace Repository::Documents
