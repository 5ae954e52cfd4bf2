#pragma once

#include "repository/documents/common/Values.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// Scalars and arrays of texts between spelling and value. Literals include their quotes.

// Offset after the closing quote of the literal whose opening quote is at `quote`; npos without one.
std::size_t findStringEnd(std::string_view text, std::size_t quote);

// Offset of the first backslash of a literal that begins no escape of json; npos when all are good.
std::size_t findBadEscape(std::string_view literal);

// The text of a well-formed literal. Half of a surrogate pair is three bytes that are not UTF-8.
std::string decodeString(std::string_view literal);

// A literal with only the escapes that json demands.
std::string encodeString(std::string_view text);

bool isNumber(std::string_view spelling);

// Integer, Unsigned or Double. A number that none of them holds (1e400, thirty digits) is a String of its
// spelling.
Value readNumber(std::string_view spelling);

// An element of an array of texts, by the offsets at which its parts begin.
struct JsonListElement
{
    std::size_t leading = 0;
    std::size_t value = 0;
    std::size_t valueEnd = 0;
    std::size_t end = 0; // of the comma or bracket

    bool exists() const { return valueEnd > 0; }
};

// The element whose trivia begins at an offset; it does not exist after the last one.
JsonListElement readElement(std::string_view text, std::size_t at);

// All elements of an array of texts, decoded. The array begins at the first byte.
std::vector<std::string> decodeList(std::string_view array);

// Whether there is a comment in such an array, which is all of the text.
bool hasListComment(std::string_view array);

// True for a list that has a line for each element when it is written anew.
bool isLongList(const std::vector<std::string>& list);

} // namespace Repository::Documents
