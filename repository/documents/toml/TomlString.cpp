#include "repository/documents/toml/TomlString.h"

#include "repository/documents/common/Values.h"

#include <algorithm>
#include <charconv>

namespace Repository::Documents {

namespace {

constexpr std::string_view escapeLetters = "btnfr\"\\";
constexpr std::string_view escapedCharacters = "\b\t\n\f\r\"\\";
constexpr std::string_view longBasic = "\"\"\"";
constexpr std::string_view longLiteral = "'''";

bool isLong(std::string_view literal)
{
    return startsWith(literal, longBasic) || startsWith(literal, longLiteral);
}

// After a backslash that ends a line: the next character that is not a blank or a line end.
std::size_t skipFold(std::string_view text, std::size_t at)
{
    return std::min(text.find_first_not_of(" \t\r\n", at), text.size());
}

// Appends what the escape after a backslash stands for; gives the offset after it.
std::size_t decodeEscape(std::string& target, std::string_view text, std::size_t at)
{
    constexpr std::size_t fewDigits = 4;
    constexpr std::size_t manyDigits = 8;
    const char c = text[at];
    if (c == 'u' || c == 'U') {
        const std::size_t digits = c == 'u' ? fewDigits : manyDigits;
        const std::string_view code = text.substr(at + 1, digits);
        std::uint32_t codePoint = 0;
        std::from_chars(code.data(), code.data() + code.size(), codePoint, 16);
        appendUtf8(target, codePoint);
        return at + 1 + digits;
    }
    const std::size_t letter = escapeLetters.find(c);
    if (letter == std::string_view::npos)
        return skipFold(text, at);
    target += escapedCharacters[letter];
    return at + 1;
}

bool isControl(char c)
{
    return (static_cast<unsigned char>(c) < 0x20 && c != '\t') || c == '\x7F';
}

// Control characters that a string of several lines has to escape, or cannot hold.
bool isControlInLines(char c)
{
    return isControl(c) && c != '\n';
}

void appendEscape(std::string& target, char c)
{
    const std::size_t letter = escapedCharacters.find(c);
    target += '\\';
    if (letter == std::string_view::npos)
        appendHex(target += 'u', static_cast<unsigned char>(c), 4);
    else
        target += escapeLetters[letter];
}

void appendLines(std::string& target, std::string_view text, std::string_view lineEnd)
{
    for (const char c : text) {
        if (c == '\n')
            target += lineEnd;
        else
            target += c;
    }
}

std::string encodeLongBasic(std::string_view text, std::string_view lineEnd)
{
    std::string escaped;
    std::size_t quotes = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        quotes = c == '"' ? quotes + 1 : 0;
        const bool endsQuotes = c == '"' && (quotes % 3 == 0 || at + 1 == text.size());
        if (isControlInLines(c) || c == '\\' || endsQuotes)
            appendEscape(escaped, c);
        else
            escaped += c;
    }
    std::string literal(longBasic);
    literal += lineEnd;
    appendLines(literal, escaped, lineEnd);
    return literal += longBasic;
}

// Keeps what is special about a literal of several lines: whether its text begins in a line of its own.
std::string withFormerBeginning(std::string literal, std::string_view former, std::string_view lineEnd)
{
    const bool beganInLine =
        isLong(former) && former.substr(longBasic.size()).find_first_of("\r\n") != 0 && former.size() > 2;
    const bool startsWithBreak =
        startsWith(std::string_view(literal).substr(longBasic.size()), lineEnd) &&
        startsWith(std::string_view(literal).substr(longBasic.size() + lineEnd.size()), lineEnd);
    return beganInLine && !startsWithBreak ? literal.erase(longBasic.size(), lineEnd.size()) : literal;
}

} // namespace

std::string decodeTomlString(std::string_view literal)
{
    const bool isBasic = literal[0] == '"';
    const std::size_t quotes = isLong(literal) ? longBasic.size() : 1;
    std::string_view text = literal.substr(quotes, literal.size() - 2 * quotes);
    if (quotes > 1)
        text.remove_prefix(startsWith(text, "\r\n") ? 2 : startsWith(text, "\n") ? 1 : 0);
    if (text.find_first_of(isBasic ? "\\\r" : "\r") == std::string_view::npos)
        return std::string(text);
    std::string decoded;
    decoded.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        if (isBasic && text[at] == '\\' && at + 1 < text.size()) {
            at = decodeEscape(decoded, text, at + 1);
            continue;
        }
        if (text[at] != '\r') // it is before a "\n"
            decoded += text[at];
        ++at;
    }
    return decoded;
}

std::string encodeTomlString(std::string_view text)
{
    std::string literal(1, '"');
    for (const char c : text) {
        if (isControl(c) || c == '"' || c == '\\')
            appendEscape(literal, c);
        else
            literal += c;
    }
    return literal += '"';
}

std::string encodeTomlStringLike(std::string_view text, std::string_view former, const TomlStringPlace& place)
{
    const bool hasBreak = text.find('\n') != std::string_view::npos;
    const bool wasLong = isLong(former);
    const bool isForLines = place.mayBreak && (hasBreak || wasLong);
    const bool hasControl = std::any_of(text.begin(), text.end(), isControlInLines);
    if (!former.empty() && former[0] == '\'' && !hasControl) {
        if (!hasBreak && !wasLong && text.find('\'') == std::string_view::npos)
            return ('\'' + std::string(text)) + '\'';
        const bool endsInQuote = !text.empty() && text.back() == '\'';
        if (isForLines && text.find(longLiteral) == std::string_view::npos && !endsInQuote) {
            std::string literal(longLiteral);
            literal += place.lineEnd;
            appendLines(literal, text, place.lineEnd);
            return withFormerBeginning(literal += longLiteral, former, place.lineEnd);
        }
    }
    if (!isForLines)
        return encodeTomlString(text);
    return withFormerBeginning(encodeLongBasic(text, place.lineEnd), former, place.lineEnd);
}

} // namespace Repository::Documents
