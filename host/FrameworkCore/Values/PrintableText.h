#pragma once

#include "host/FrameworkCore/CoreExport.h"

#include <string>
#include <string_view>

namespace FrameworkCore::Values {

// Text without what would steer a terminal, or hide or reorder what it shows. In place of a character comes
// its escape: "\n" for a line break, "\x" and two hex digits for other control characters of ASCII and for a
// byte that is not UTF-8, "\u" and four or "\U" and eight hex digits for control characters beyond ASCII,
// marks and overrides of writing direction, line and paragraph separators and characters without width.

// On one line, whatever it holds.
VANTRY_CORE_EXPORT std::string printableLine(std::string_view text);

// Of several lines: line breaks and tabs stay.
VANTRY_CORE_EXPORT std::string printableLines(std::string_view text);

} // namespace FrameworkCore::Values
