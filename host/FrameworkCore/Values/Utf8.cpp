#include "host/FrameworkCore/Values/Utf8.h"

#include <cstdint>
#include <cstring>

namespace FrameworkCore::Values {

namespace {

// The lead byte gives the length and the range of the second byte, which alone excludes overlong forms,
// surrogates and all beyond U+10FFFF.
struct Lead
{
    std::size_t length;
    unsigned char secondFrom;
    unsigned char secondTo;
};

Lead leadOf(unsigned char byte)
{
    if (byte >= 0xC2 && byte <= 0xDF)
        return {2, 0x80, 0xBF};
    if (byte >= 0xE0 && byte <= 0xEF)
        return {3, static_cast<unsigned char>(byte == 0xE0 ? 0xA0 : 0x80),
                static_cast<unsigned char>(byte == 0xED ? 0x9F : 0xBF)};
    if (byte >= 0xF0 && byte <= 0xF4)
        return {4, static_cast<unsigned char>(byte == 0xF0 ? 0x90 : 0x80),
                static_cast<unsigned char>(byte == 0xF4 ? 0x8F : 0xBF)};
    return {0, 0, 0};
}

// Eight plain ASCII bytes at a time, since nearly all text of configuration files is that.
std::size_t skipAscii(std::string_view text, std::size_t at)
{
    constexpr std::uint64_t highBits = 0x8080808080808080u;
    std::uint64_t word = 0;
    while (at + sizeof word <= text.size()) {
        std::memcpy(&word, text.data() + at, sizeof word);
        if (word & highBits)
            break;
        at += sizeof word;
    }
    while (at < text.size() && static_cast<unsigned char>(text[at]) < 0x80)
        ++at;
    return at;
}

} // namespace

std::size_t utf8Length(std::string_view text)
{
    if (text.empty())
        return 0;
    const auto byteAt = [text](std::size_t at) { return static_cast<unsigned char>(text[at]); };
    if (byteAt(0) < 0x80)
        return 1;
    const Lead lead = leadOf(byteAt(0));
    if (lead.length == 0 || lead.length > text.size())
        return 0;
    if (byteAt(1) < lead.secondFrom || byteAt(1) > lead.secondTo)
        return 0;
    for (std::size_t at = 2; at < lead.length; ++at) {
        if (byteAt(at) < 0x80 || byteAt(at) > 0xBF)
            return 0;
    }
    return lead.length;
}

bool beginsWithSurrogate(std::string_view text)
{
    return text.size() >= 3 && text[0] == '\xED' && (text[1] & 0xE0) == 0xA0 && (text[2] & 0xC0) == 0x80;
}

bool isUtf8(std::string_view text)
{
    std::size_t at = skipAscii(text, 0);
    while (at < text.size()) {
        const std::size_t length = utf8Length(text.substr(at));
        if (length == 0)
            return false;
        at = skipAscii(text, at + length);
    }
    return true;
}

bool isAscii(std::string_view text)
{
    return skipAscii(text, 0) == text.size();
}

void appendUtf8(std::string& text, char32_t codePoint)
{
    const auto add = [&text](char32_t byte) { text += static_cast<char>(static_cast<unsigned char>(byte)); };
    if (codePoint < 0x80) {
        add(codePoint);
        return;
    }
    if (codePoint < 0x800) {
        add(0xC0 | codePoint >> 6);
    } else {
        if (codePoint < 0x10000) {
            add(0xE0 | codePoint >> 12);
        } else {
            add(0xF0 | codePoint >> 18);
            add(0x80 | (codePoint >> 12 & 0x3F));
        }
        add(0x80 | (codePoint >> 6 & 0x3F));
    }
    add(0x80 | (codePoint & 0x3F));
}

char32_t utf8CodePoint(std::string_view sequence)
{
    constexpr char32_t leadBits[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
    char32_t codePoint = static_cast<unsigned char>(sequence[0]) & leadBits[sequence.size()];
    for (const char byte : sequence.substr(1))
        codePoint = codePoint << 6 | (static_cast<unsigned char>(byte) & 0x3F);
    return codePoint;
}

} // namespace FrameworkCore::Values
