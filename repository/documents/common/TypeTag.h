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

// The type tag of an entry that gets a value; Group for none. It has one type before and one that its tag
// named, Group for none; plain is its new spelling without a tag, nothing where there is none, and
// readAs(spelling, type) what that is read as with a tag.
template <typename ReadAs>
Type tagWith(const Value& value, Type present, Type former, const std::optional<std::string>& plain,
             const ReadAs& readAs)
{
    if (former == Type::Group)
        return former;
    if (present == value.type && (!plain || isSame(readAs(*plain, former), value)))
        return former;
    return plain ? Type::Group : value.type;
}

// The same of how the text is spelled: it may be in double quotes, where \n, \r, \t, \", \\ and \x with two
// hex digits are escapes. Null is spelled by nothing at all: "" is a text.
Value readSpelledValue(Type type, std::string_view spelled, Value plain);
std::string quoteTaggedText(std::string_view text);

} // namespace Repository::Documents
