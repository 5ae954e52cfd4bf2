#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace Repository::Documents {

// A text that is not UTF-8, by what each byte is in ISO-8859-1. Nothing where it holds half a character of
// UTF-16, which has three bytes.
std::optional<std::string> fromLatin1(std::string_view bytes);

// Nothing where the character set lacks a character, or where the bytes would be UTF-8.
std::optional<std::string> toLatin1(std::string_view text);

// Whether a text is not UTF-8, and has no character of UTF-8 that is not ASCII.
bool isLatin1(std::string_view text);

} // namespace Repository::Documents
