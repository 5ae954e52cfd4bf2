#include "repository/documents/json/JsonScalar.h"

#include "repository/documents/json/JsonTrivia.h"

#include <charconv>
#include <cstdint>

namespace Repository::Documents {

namespace {

constexpr auto npos = std::string_view::npos;
constexpr std::string_view shortEscapes = "\"\\/bfnrt";
constexpr std::string_view shortMeanings = "\"\\/\b\f\n\r\t";

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

// The code unit of "\uXXXX" at an offset; -1 when there is none.
int readUnit(std::string_view text, std::size_t at)
{
    if (text.size() < at + 6 || text[at] != '\\' || text[at + 1] != 'u')
        return -1;
    int unit = 0;
    const char* const end = text.data() + at + 6;
    const auto [stop, error] = std::from_chars(text.data() + at + 2, end, unit, 16);
    return error == std::errc() && stop == end && text[at + 2] != '-' ? unit : -1;
}

// Appends what the escape at an offset means and gives the offset after it, two units when they are a pair.
std::size_t appendEscape(std::string& text, std::string_view literal, std::size_t at)
{
    const int unit = readUnit(literal, at);
    if (unit < 0) {
        const std::size_t index = shortEscapes.find(literal[at + 1]);
        text += index == npos ? literal[at + 1] : shortMeanings[index];
        return at + 2;
    }
    const bool high = unit >= 0xD800 && unit <= 0xDBFF;
    const int second = high ? readUnit(literal, at + 6) : -1;
    if (second >= 0xDC00 && second <= 0xDFFF) {
        const int character = 0x10000 + ((unit - 0xD800) << 10) + (second - 0xDC00);
        appendUtf8(text, static_cast<std::uint32_t>(character));
        return at + 12;
    }
    appendUtf8(text, static_cast<std::uint32_t>(unit));
    return at + 6;
}

std::size_t skipDigits(std::string_view text, std::size_t at)
{
    while (at < text.size() && isDigit(text[at]))
        ++at;
    return at;
}

} // namespace

std::size_t findStringEnd(std::string_view text, std::size_t quote)
{
    for (std::size_t end = text.find('"', quote + 1); end != npos; end = text.find('"', end + 1)) {
        std::size_t run = end; // of backslashes before it: a pair of them is one character
        while (run > quote + 1 && text[run - 1] == '\\')
            --run;
        if ((end - run) % 2 == 0)
            return end + 1;
    }
    return npos;
}

std::size_t findBadEscape(std::string_view literal)
{
    for (std::size_t at = literal.find('\\'); at != npos; at = literal.find('\\', at)) {
        if (literal[at + 1] != 'u' && shortEscapes.find(literal[at + 1]) == npos)
            return at;
        if (literal[at + 1] == 'u' && readUnit(literal, at) < 0)
            return at;
        at += 2;
    }
    return npos;
}

std::string decodeString(std::string_view literal)
{
    const std::string_view inside = literal.substr(1, literal.size() - 2);
    std::string text;
    text.reserve(inside.size());
    std::size_t from = 0;
    for (std::size_t at = inside.find('\\'); at != npos; at = inside.find('\\', from)) {
        text.append(inside, from, at - from);
        from = appendEscape(text, inside, at);
    }
    text.append(inside, from);
    return text;
}

std::string encodeString(std::string_view text)
{
    std::string literal = "\"";
    literal.reserve(text.size() + 2);
    for (const char c : text) {
        const auto code = static_cast<unsigned char>(c);
        const std::size_t index = c == '/' ? npos : shortMeanings.find(c);
        if (index != npos)
            (literal += '\\') += shortEscapes[index];
        else if (code < 0x20)
            appendHex(literal += "\\u", code, 4);
        else
            literal += c;
    }
    return literal += '"';
}

bool isNumber(std::string_view spelling)
{
    const auto at = [spelling](std::size_t i) { return i < spelling.size() ? spelling[i] : '\0'; };
    std::size_t i = at(0) == '-' ? 1 : 0;
    if (!isDigit(at(i)))
        return false;
    i = at(i) == '0' ? i + 1 : skipDigits(spelling, i);
    if (at(i) == '.') {
        if (!isDigit(at(i + 1)))
            return false;
        i = skipDigits(spelling, i + 1);
    }
    if (at(i) == 'e' || at(i) == 'E') {
        ++i;
        if (at(i) == '+' || at(i) == '-')
            ++i;
        if (!isDigit(at(i)))
            return false;
        i = skipDigits(spelling, i);
    }
    return i == spelling.size();
}

Value readNumber(std::string_view spelling)
{
    const char* const begin = spelling.data();
    const char* const end = begin + spelling.size();
    if (spelling.find_first_of(".eE") == npos) {
        std::int64_t integer = 0;
        if (std::from_chars(begin, end, integer).ec == std::errc())
            return {Type::Integer, integer};
        std::uint64_t natural = 0;
        if (spelling[0] != '-' && std::from_chars(begin, end, natural).ec == std::errc())
            return {Type::Unsigned, natural};
        return {Type::String, std::string(spelling)};
    }
    double number = 0;
    const bool held = std::from_chars(begin, end, number).ec == std::errc();
    const std::string_view digits = spelling.substr(0, spelling.find_first_of("eE"));
    if (!held || (number == 0 && digits.find_first_of("123456789") != npos))
        return {Type::String, std::string(spelling)};
    return {Type::Double, number};
}

JsonListElement readElement(std::string_view text, std::size_t at)
{
    const std::size_t value = skipTrivia(text, at);
    if (text[value] != '"')
        return {at, value, 0, value};
    const std::size_t valueEnd = findStringEnd(text, value);
    return {at, value, valueEnd, skipTrivia(text, valueEnd)};
}

std::vector<std::string> decodeList(std::string_view array)
{
    std::vector<std::string> list;
    for (JsonListElement element = readElement(array, 1); element.exists();) {
        list.push_back(decodeString(array.substr(element.value, element.valueEnd - element.value)));
        element = readElement(array, element.end + (array[element.end] == ',' ? 1 : 0));
    }
    return list;
}

bool hasListComment(std::string_view array)
{
    const auto hasComment = [array](std::size_t begin, std::size_t end) {
        return JsonTrivia(array.substr(begin, end - begin)).hasComment;
    };
    for (std::size_t at = 1; at < array.size();) {
        const JsonListElement element = readElement(array, at);
        if (hasComment(element.leading, element.value))
            return true;
        if (!element.exists())
            return false;
        if (hasComment(element.valueEnd, element.end))
            return true;
        at = element.end + (array[element.end] == ',' ? 1 : 0);
    }
    return false;
}

bool isLongList(const std::vector<std::string>& list)
{
    constexpr std::size_t longestLine = 80;
    std::size_t length = 0;
    for (const std::string& text : list)
        length += text.size() + 4;
    return length > longestLine;
}

} // namespace Repository::Documents
