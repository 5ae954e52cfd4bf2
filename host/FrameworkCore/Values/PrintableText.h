#pragma once

#include "host/FrameworkCore/CoreExport.h"

#include <string>
#include <string_view>

namespace FrameworkCore::Values {

// Text made safe to show: characters that steer a terminal, are invisible or reorder others become escapes.
// "\n" is a line break; "\x" and two hex digits another control character of ASCII or a byte that is not
// UTF-8; "\u" and four or "\U" and eight are controls beyond ASCII, directional formatting, line and
// paragraph separators, zero width.

// On one line, whatever it holds.
VANTRY_CORE_EXPORT std::string printableLine(std::string_view text);

// Of several lines: line breaks and tabs stay.
VANTRY_CORE_EXPORT std::string printableLines(std::string_view text);

} // namespace FrameworkCore::Values
