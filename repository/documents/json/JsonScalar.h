#pragma once

#include "host/FrameworkCore/Values/Value.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace Repository::Documents {

// The scalars of json between their spelling in a file and their value. Literals are passed with their
// quotes.

// Offset after the closing quote of the literal whose opening quote is at `quote`; npos without one.
std::size_t findStringEnd(std::string_view text, std::size_t quote);

// Offset of the first backslash of a literal that begins no escape of json; npos when all are good.
std::size_t findBadEscape(std::string_view literal);

// The text of a well-formed literal. Half of a surrogate pair, which UTF-8 cannot hold, reads as U+FFFD.
std::string decodeString(std::string_view literal);

// A literal with only the escapes that json demands.
std::string encodeString(std::string_view text);

bool isNumber(std::string_view spelling);

// Integer, else Unsigned, else Double. A number that none of them holds (an integer of thirty digits, 1e400,
// 1e-400) is a String of its spelling, so that nothing of it is lost.
FrameworkCore::Values::Value readNumber(std::string_view spelling);

} // namespace Repository::Documents
