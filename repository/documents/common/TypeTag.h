#pragma once

#include "host/FrameworkCore/Values/Value.h"

#include <optional>
#include <string>
#include <string_view>

namespace Repository::Documents {

// Files of plain texts say by a tag which type an entry has when its plain text alone would load as another:
// a comment line of its own right above the entry, as in "# @type date", which other readers pass over. The
// text of a tagged value is what Values::toText makes of it.

// The name of a type in tags and for people who type it: null, bool, integer, unsigned, double, text, list,
// bytes, date, time, datetime. Empty for a group.
std::string_view typeName(FrameworkCore::Values::Type type);

// Nothing for any other name.
std::optional<FrameworkCore::Values::Type> typeNamed(std::string_view name);

// The type that a line, given without its line end, tags; nothing for a line that is not a type tag. ";" and
// "#" begin comments; blanks may be around each part.
std::optional<FrameworkCore::Values::Type> readTypeTag(std::string_view line);

// True when the last line of the text is a tag, so that it would tag an entry below it.
bool endsInTypeTag(std::string_view text);

// The line that tags the type, without a line end; comment is ";" or "#".
std::string writeTypeTag(char comment, FrameworkCore::Values::Type type);

// The value of a tagged text; plain, what the text is without a tag, when it is none of that type.
FrameworkCore::Values::Value readTaggedValue(FrameworkCore::Values::Type type, std::string_view text,
                                             FrameworkCore::Values::Value plain);

// A tagged text may be between double quotes, where \n, \r, \t, \", \\ and \x with two hex digits are
// escapes, so that it can begin with blanks, hold line breaks and so on. Nothing where the quotes are
// damaged.
std::optional<std::string> readTaggedText(std::string_view spelled);
std::string quoteTaggedText(std::string_view text);

// The value of a tagged entry from how its text is spelled. Null is spelled by nothing at all: "" is a text.
FrameworkCore::Values::Value readSpelledValue(FrameworkCore::Values::Type type, std::string_view spelled,
                                              FrameworkCore::Values::Value plain);

} // namespace Repository::Documents
