#pragma once

#include "host/FrameworkCore/Values/Value.h"

#include <optional>
#include <string>
#include <string_view>

namespace Repository::Documents {

// Files of plain texts say by a mark which type an entry has when its plain text alone would load as another:
// a comment line of its own right above the entry, as in "# @type date", which other readers pass over. The
// text of a marked value is what Values::toText makes of it.

// The name of a type in marks and for people who type it: null, bool, integer, unsigned, double, text, list,
// bytes, date, time, datetime. Empty for a group.
std::string_view typeName(FrameworkCore::Values::Type type);

// Nothing for any other name.
std::optional<FrameworkCore::Values::Type> typeNamed(std::string_view name);

// The type that a line, given without its line end, marks; nothing for a line that is no mark. ";" and "#"
// begin comments; blanks may stand around each part.
std::optional<FrameworkCore::Values::Type> readTypeMark(std::string_view line);

// True when the last line of the text is a mark, so that it would mark an entry below it.
bool endsInTypeMark(std::string_view text);

// The line that marks the type, without a line end; comment is ";" or "#".
std::string writeTypeMark(char comment, FrameworkCore::Values::Type type);

// The value of a marked text; plain, what the text is without a mark, when it is none of that type.
FrameworkCore::Values::Value readMarkedValue(FrameworkCore::Values::Type type, std::string_view text,
                                             FrameworkCore::Values::Value plain);

// A marked text may stand between double quotes, where \n, \r, \t, \", \\ and \x with two hex digits are
// escapes, so that it can begin with blanks, hold line breaks and so on. Nothing where the quotes are
// damaged.
std::optional<std::string> readMarkedText(std::string_view spelled);
std::string quoteMarkedText(std::string_view text);

// The value of a marked entry from how its text is spelled. Null is spelled by nothing at all: "" is a text.
FrameworkCore::Values::Value readSpelledValue(FrameworkCore::Values::Type type, std::string_view spelled,
                                              FrameworkCore::Values::Value plain);

} // namespace Repository::Documents
