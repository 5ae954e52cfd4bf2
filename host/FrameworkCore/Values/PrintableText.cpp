#include "host/FrameworkCore/Values/PrintableText.h"

#include "host/FrameworkCore/Values/Utf8.h"

#include <algorithm>
#include <iterator>

namespace FrameworkCore::Values {

namespace {

struct Range
{
    char32_t first;
    char32_t last;
};

constexpr Range unprintable[] = {
    {0x00, 0x1F},     {0x7F, 0x9F},     {0x061C, 0x061C}, {0x200B, 0x200B}, {0x200E, 0x200F},
    {0x2028, 0x202E}, {0x2060, 0x206F}, {0xFEFF, 0xFEFF}, {0xFFF9, 0xFFFB}, {0xE0000, 0xE007F},
};

bool isPrintable(char32_t code)
{
    return std::none_of(std::begin(unprintable), std::end(unprintable),
                        [code](const Range& range) { return code >= range.first && code <= range.last; });
}

void appendHex(std::string& text, char kind, char32_t code, int digits)
{
    constexpr std::string_view hex = "0123456789abcdef";
    text += '\\';
    text += kind;
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
        text += hex[(code >> shift) & 15];
}

void appendEscape(std::string& text, char32_t code)
{
    if (code == '\n')
        text += "\\n";
    else if (code < 0x80)
        appendHex(text, 'x', code, 2);
    else if (code <= 0xFFFF)
        appendHex(text, 'u', code, 4);
    else
        appendHex(text, 'U', code, 8);
}

// A carriage return is kept only as part of a line break.
std::string escaped(std::string_view bytes, bool keepsLines)
{
    std::string text;
    text.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t length = utf8Length(bytes.substr(at));
        const std::string_view sequence = bytes.substr(at, std::max<std::size_t>(length, 1));
        const bool isKept =
            keepsLines && (sequence == "\n" || sequence == "\t" || bytes.substr(at, 2) == "\r\n");
        const char32_t code =
            length == 0 ? static_cast<unsigned char>(sequence.front()) : utf8CodePoint(sequence);
        if (length == 0)
            appendHex(text, 'x', code, 2);
        else if (isKept || isPrintable(code))
            text += sequence;
        else
            appendEscape(text, code);
        at += sequence.size();
    }
    return text;
}

} // namespace

std::string printableLine(std::string_view text)
{
    return escaped(text, false);
}

std::string printableLines(std::string_view text)
{
    return escaped(text, true);
}

} // namespace FrameworkCore::Values
