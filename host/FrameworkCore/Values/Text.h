#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace FrameworkCore::Values {

// Which says that a file is UTF-8.
constexpr std::string_view utf8ByteOrderMark = "\xEF\xBB\xBF";

inline bool startsWith(std::string_view text, std::string_view front)
{
    return text.substr(0, front.size()) == front;
}

// Of ASCII letters.
inline std::string lowered(std::string_view text)
{
    std::string lower(text);
    for (char& c : lower)
        c = static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
    return lower;
}

inline std::string quoted(std::string_view text)
{
    return '"' + std::string(text) + '"';
}

// Appends the last so many digits of the code.
inline void appendHex(std::string& text, std::uint32_t code, int count,
                      const char* digits = "0123456789abcdef")
{
    while (count > 0)
        text += digits[code >> 4 * --count & 15];
}

} // namespace FrameworkCore::Values
