#include "repository/documents/dialects/PropertiesSpelling.h"

#include "repository/documents/common/TextLine.h"
#include "repository/documents/dialects/Escapes.h"

#include <algorithm>
#include <charconv>

namespace Repository::Documents {

namespace {

constexpr Escapes escapes{"tnrf\\", "\t\n\r\f\\"};

// The unit of UTF-16 that four hex digits are; nothing for anything else.
std::optional<std::uint32_t> unitAt(std::string_view digits)
{
    std::uint32_t unit = 0;
    digits = digits.substr(0, 4);
    const char* const end = digits.data() + digits.size();
    if (digits.size() < 4 || std::from_chars(digits.data(), end, unit, 16).ptr != end)
        return std::nullopt;
    return unit;
}

// The characters of \uXXXX, two of them where they are a surrogate pair; 0 where there is none. The place is
// that of the "u", and becomes that of the last digit.
std::uint32_t takeCharacter(std::string_view spelled, std::size_t& at)
{
    const std::optional<std::uint32_t> high = unitAt(spelled.substr(at + 1));
    if (!high)
        return 0;
    at += 4;
    const bool isHigh = *high >= 0xD800 && *high < 0xDC00;
    const bool hasNext = isHigh && spelled.substr(at + 1, 2) == "\\u";
    const std::optional<std::uint32_t> low = hasNext ? unitAt(spelled.substr(at + 3)) : std::nullopt;
    if (!low || *low < 0xDC00 || *low >= 0xE000)
        return *high;
    at += 6;
    return 0x10000 + ((*high - 0xD800) << 10) + (*low - 0xDC00);
}

Spelling::Reading read(std::string_view spelled)
{
    Spelling::Reading reading;
    for (std::size_t at = 0; at < spelled.size(); ++at) {
        if (spelled[at] != '\\') {
            reading.text += spelled[at];
            continue;
        }
        if (++at == spelled.size())
            break;
        const char letter = spelled[at];
        if (isLineEnd(letter)) {
            at += spelled.substr(at, 2) == "\r\n" ? 1 : 0;
            while (at + 1 < spelled.size() && isBlank(spelled[at + 1]))
                ++at;
            reading.isText = true;
        } else if (letter == 'u') {
            const std::uint32_t character = takeCharacter(spelled, at);
            reading.isValid = reading.isValid && character != 0;
            appendUtf8(reading.text, character);
        } else {
            const char escaped = escapes.characterOf(letter);
            reading.text += escaped == '\0' ? letter : escaped;
        }
    }
    return reading;
}

void appendUnit(std::string& spelled, std::uint32_t unit)
{
    appendHex(spelled += "\\u", unit, 4);
}

// The text with the escapes that it needs where none of these characters has its meaning.
std::string escape(std::string_view text, std::string_view special, bool keepsCharacters)
{
    std::string spelled;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = std::max<std::size_t>(1, utf8Length(text.substr(at)));
        const std::string_view one = text.substr(at, length);
        const char c = one.front();
        at += length;
        if (length > 1 && !keepsCharacters) {
            const std::uint32_t code = utf8CodePoint(one);
            if (code >= 0x10000)
                appendUnit(spelled, 0xD800 + ((code - 0x10000) >> 10));
            appendUnit(spelled, code < 0x10000 ? code : 0xDC00 + (code & 0x3FF));
        } else if (special.find(c) != std::string_view::npos) {
            (spelled += '\\') += c;
        } else if (static_cast<unsigned char>(c) < 0x20 &&
                   escapes.characters.find(c) == std::string_view::npos) {
            appendUnit(spelled, static_cast<unsigned char>(c));
        } else {
            spelled += escapes.write(one);
        }
    }
    return spelled;
}

std::vector<std::string> write(std::string_view text, std::string_view before)
{
    const bool keepsCharacters = !FrameworkCore::Values::isAscii(before) && isUtf8(before);
    std::string spelled = escape(text, {}, keepsCharacters);
    // Blanks before a value do not belong to it, and neither does what would be a second separator.
    if (!text.empty() && std::string_view(" =:").find(text.front()) != std::string_view::npos)
        spelled.insert(0, 1, '\\');
    return {spelled};
}

std::string readKey(std::string_view key)
{
    return read(key).text;
}

std::string writeKey(std::string_view key)
{
    return escape(key, " =:#!", false);
}

} // namespace

const Spelling propertiesSpelling{read, write, nullptr, readKey, writeKey};

} // namespace Repository::Documents
