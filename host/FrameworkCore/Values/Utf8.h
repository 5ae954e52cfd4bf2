#pragma once

#include "host/FrameworkCore/CoreExport.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace FrameworkCore::Values {

// Length of the UTF-8 sequence at the front; 0 for an empty text and for bytes that are not UTF-8 (truncated,
// overlong, a surrogate, beyond U+10FFFF).
VANTRY_CORE_EXPORT std::size_t utf8Length(std::string_view text);

// True when the whole text is UTF-8.
VANTRY_CORE_EXPORT bool isUtf8(std::string_view text);

VANTRY_CORE_EXPORT bool isAscii(std::string_view text);

// The three bytes that the code of a surrogate gives.
VANTRY_CORE_EXPORT bool beginsWithSurrogate(std::string_view text);

// Up to U+10FFFF; a surrogate gives three bytes that are not UTF-8.
VANTRY_CORE_EXPORT void appendUtf8(std::string& text, char32_t codePoint);

// The code point of one sequence of UTF-8, or of the three bytes of a surrogate.
VANTRY_CORE_EXPORT char32_t utf8CodePoint(std::string_view sequence);

} // namespace FrameworkCore::Values
