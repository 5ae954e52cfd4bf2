#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// Marks a text for translators, as Qt does in the same words where it is there.
#define QT_TRANSLATE_NOOP(scope, x) x

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

// The text with the parts in place of its "%1", "%2" and so on.
inline std::string filledText(std::string_view form, const std::vector<std::string>& parts)
{
    std::string text;
    for (std::size_t at = 0; at < form.size(); ++at) {
        const std::size_t part =
            form[at] == '%' && at + 1 < form.size() ? std::size_t(form[at + 1] - '1') : parts.size();
        if (part < parts.size()) {
            text += parts[part];
            ++at;
        } else {
            text += form[at];
        }
    }
    return text;
}

// Appends the last so many digits of the code.
inline void appendHex(std::string& text, std::uint32_t code, int count,
                      const char* digits = "0123456789abcdef")
{
    while (count > 0)
        text += digits[code >> 4 * --count & 15];
}

} // namespace FrameworkCore::Values
