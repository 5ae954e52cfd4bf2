#include "repository/documents/common/TextEncoding.h"

#include "repository/documents/common/CharacterSet.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

using Kind = TextEncoding::Kind;
using namespace std::string_view_literals;

constexpr std::string_view littleMark = "\xFF\xFE"sv;
constexpr std::string_view bigMark = "\xFE\xFF"sv;
constexpr std::string_view littleWideMark = "\xFF\xFE\0\0"sv; // of UTF-32
constexpr std::string_view bigWideMark = "\0\0\xFE\xFF"sv;

bool mayBeginUnmarked(std::string_view bytes)
{
    return !startsWith(bytes, utf8ByteOrderMark) && !startsWith(bytes, littleMark) &&
           !startsWith(bytes, bigMark) && !startsWith(bytes, bigWideMark);
}

bool isHighHalf(char32_t c)
{
    return c >= 0xD800 && c <= 0xDBFF;
}

bool isLowHalf(char32_t c)
{
    return c >= 0xDC00 && c <= 0xDFFF;
}

struct Character
{
    char32_t code = 0;
    std::size_t length = 0; // in bytes of the text; 0 where there is no character
};

// The character, or half of one, at the front of the text.
Character characterAt(std::string_view text)
{
    std::size_t length = utf8Length(text);
    if (length == 0 && FrameworkCore::Values::beginsWithSurrogate(text))
        length = 3;
    return length == 0 ? Character() : Character{utf8CodePoint(text.substr(0, length)), length};
}

std::string decodeUtf16(std::string_view bytes, bool bigEnd)
{
    const auto unitAt = [bytes, bigEnd](std::size_t at) {
        const char32_t first = static_cast<unsigned char>(bytes[at]);
        const char32_t second = static_cast<unsigned char>(bytes[at + 1]);
        return bigEnd ? first << 8 | second : second << 8 | first;
    };
    std::string text;
    text.reserve(bytes.size());
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        char32_t unit = unitAt(at);
        if (isHighHalf(unit) && at + 3 < bytes.size() && isLowHalf(unitAt(at + 2))) {
            unit = 0x10000 + ((unit - 0xD800) << 10) + (unitAt(at + 2) - 0xDC00);
            at += 2;
        }
        appendUtf8(text, unit);
    }
    return text;
}

void appendUnit(std::string& bytes, char32_t unit, bool bigEnd)
{
    const char high = static_cast<char>(static_cast<unsigned char>(unit >> 8));
    const char low = static_cast<char>(static_cast<unsigned char>(unit));
    bytes += bigEnd ? high : low;
    bytes += bigEnd ? low : high;
}

void appendUtf16(std::string& bytes, std::string_view text, bool bigEnd)
{
    for (std::size_t at = 0; at < text.size();) {
        const Character c = characterAt(text.substr(at));
        if (c.code >= 0x10000) {
            appendUnit(bytes, 0xD7C0 + (c.code >> 10), bigEnd);
            appendUnit(bytes, 0xDC00 + (c.code & 0x3FF), bigEnd);
        } else {
            appendUnit(bytes, c.code, bigEnd);
        }
        at += c.length ? c.length : 1;
    }
}

} // namespace

Outcome TextEncoding::decode(std::string& bytes, Rules rules)
{
    if (startsWith(bytes, littleWideMark) || startsWith(bytes, bigWideMark))
        return {Reason::tr("the text is UTF-32; save it as UTF-8 to have it read"), 1, 1};
    const bool bigEnd = startsWith(bytes, bigMark);
    if (bigEnd || startsWith(bytes, littleMark)) {
        if (!rules.utf16)
            return {Reason::tr("the text is UTF-16; save it as UTF-8 to have it read"), 1, 1};
        std::string text = decodeUtf16(std::string_view(bytes).substr(littleMark.size()), bigEnd);
        if (bytes.size() % 2 != 0) {
            return outcomeAt(text, text.size(),
                             Reason::tr("the UTF-16 text ends in the middle of a character"));
        }
        kind = bigEnd ? Kind::Utf16Be : Kind::Utf16Le;
        bytes = std::move(text);
    } else if (startsWith(bytes, utf8ByteOrderMark)) {
        kind = Kind::Utf8WithByteOrderMark;
        bytes.erase(0, utf8ByteOrderMark.size());
    } else if (!rules.declared.empty()) {
        CharacterSet::Conversion text = CharacterSet::toUtf8(rules.declared, bytes);
        const bool isExact =
            !text.failedAt && CharacterSet::fromUtf8(rules.declared, text.text).text == bytes;
        if (!isExact)
            return outcomeAt(
                text.text, text.failedAt ? text.text.size() : 0,
                Reason::tr("the bytes from here are not %1 that could be written back", {rules.declared}));
        kind = Kind::Declared;
        characterSet = std::move(rules.declared);
        bytes = std::move(text.text);
    } else {
        kind = Kind::Utf8;
    }
    return {};
}

std::string TextEncoding::encode(std::string text) const
{
    if (kind == Kind::Utf8 || kind == Kind::Utf8WithByteOrderMark) {
        text.insert(0, byteOrderMark());
        return text;
    }
    if (kind == Kind::Declared)
        return CharacterSet::fromUtf8(characterSet, text).text;
    std::string bytes(byteOrderMark());
    bytes.reserve(byteOrderMark().size() + 2 * text.size());
    appendUtf16(bytes, text, kind == Kind::Utf16Be);
    return bytes;
}

std::string TextEncoding::findRefusal(std::string_view text) const
{
    if (kind == Kind::Utf8 || kind == Kind::Utf8WithByteOrderMark)
        return {};
    if (kind == Kind::Declared)
        return findRefusalOfSet(text);
    char32_t before = 0;
    for (std::size_t at = 0; at < text.size();) {
        const Character c = characterAt(text.substr(at));
        if (c.length == 0)
            return Reason::tr("the file is UTF-16, which has no place for bytes that are not characters");
        if (isHighHalf(before) && isLowHalf(c.code))
            return Reason::tr("the file is UTF-16, where these two halves would become one character");
        before = c.code;
        at += c.length;
    }
    return {};
}

std::string TextEncoding::findRefusalOfSet(std::string_view text) const
{
    const CharacterSet::Conversion bytes = CharacterSet::fromUtf8(characterSet, text);
    if (bytes.failedAt) {
        const std::size_t length = characterAt(text.substr(*bytes.failedAt)).length;
        return length ? Reason::tr("the file is %1, which has no %2",
                                   {characterSet, quoted(text.substr(*bytes.failedAt, length))})
                      : Reason::tr("the file is %1, which has no place for bytes that are not characters",
                                   {characterSet});
    }
    const std::string back = CharacterSet::toUtf8(characterSet, bytes.text).text;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = std::max<std::size_t>(characterAt(text.substr(at)).length, 1);
        if (std::string_view(back).substr(std::min(at, back.size()), length) != text.substr(at, length))
            return Reason::tr("the file is %1, from which %2 would be read back as another character",
                              {characterSet, quoted(text.substr(at, length))});
        at += length;
    }
    return {};
}

bool TextEncoding::mayBegin(std::string_view text) const
{
    switch (kind) {
    case Kind::Utf8WithByteOrderMark:
    case Kind::Utf16Be:
        return true;
    case Kind::Utf16Le:
        return text.empty() || text.front() != '\0';
    case Kind::Declared:
        return mayBeginUnmarked(encode(std::string(text.substr(0, 8))));
    case Kind::Utf8:
        break;
    }
    return mayBeginUnmarked(text);
}

std::size_t TextEncoding::sizeOf(std::string_view text) const
{
    if (kind == Kind::Utf8 || kind == Kind::Utf8WithByteOrderMark)
        return text.size();
    if (kind == Kind::Declared)
        return encode(std::string(text)).size();
    std::size_t size = 0;
    for (std::size_t at = 0; at < text.size();) {
        const Character c = characterAt(text.substr(at));
        size += c.code >= 0x10000 ? 4 : 2;
        at += c.length ? c.length : 1;
    }
    return size;
}

std::size_t TextEncoding::textSizeOf(std::string_view bytes) const
{
    if (kind == Kind::Utf8 || kind == Kind::Utf8WithByteOrderMark)
        return bytes.size();
    if (kind == Kind::Declared)
        return CharacterSet::toUtf8(characterSet, bytes).text.size();
    return decodeUtf16(bytes, kind == Kind::Utf16Be).size();
}

std::string_view TextEncoding::byteOrderMark() const
{
    switch (kind) {
    case Kind::Utf8WithByteOrderMark:
        return utf8ByteOrderMark;
    case Kind::Utf16Le:
        return littleMark;
    case Kind::Utf16Be:
        return bigMark;
    case Kind::Utf8:
    case Kind::Declared:
        break;
    }
    return {};
}

} // namespace Repository::Documents
