#include "repository/documents/common/TypeTag.h"

#include "host/FrameworkCore/Values/Utf8.h"
#include "host/FrameworkCore/Values/ValueText.h"
#include "repository/documents/common/TextLine.h"

#include <algorithm>
#include <array>

namespace Repository::Documents {

using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;

namespace {

constexpr std::string_view keyword = "@type";
constexpr std::string_view blanks = " \t";

constexpr std::string_view escapedCharacters = "\n\r\t\"\\";
constexpr std::string_view escapeLetters = "nrt\"\\";

// In the order of Type.
constexpr std::array<std::string_view, 12> names{"",     "null", "bool",  "integer", "unsigned", "double",
                                                 "text", "list", "bytes", "date",    "time",     "datetime"};
static_assert(names.size() == static_cast<std::size_t>(Type::DateTime) + 1);

std::string_view afterBlanks(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return text;
}

int hexDigit(char c)
{
    constexpr std::string_view digits = "0123456789abcdef";
    const std::size_t digit = digits.find(c);
    return digit == std::string_view::npos ? -1 : static_cast<int>(digit);
}

} // namespace

std::string_view typeName(Type type)
{
    return names[static_cast<std::size_t>(type)];
}

std::optional<Type> typeNamed(std::string_view name)
{
    const auto found = std::find(names.begin() + 1, names.end(), name);
    if (found == names.end())
        return std::nullopt;
    return static_cast<Type>(found - names.begin());
}

std::optional<Type> readTypeTag(std::string_view line)
{
    line = afterBlanks(line);
    if (line.empty() || (line[0] != ';' && line[0] != '#'))
        return std::nullopt;
    line = afterBlanks(line.substr(1));
    if (line.substr(0, keyword.size()) != keyword)
        return std::nullopt;
    line.remove_prefix(keyword.size());
    const std::string_view name = afterBlanks(line);
    if (name.size() == line.size())
        return std::nullopt;
    return typeNamed(name.substr(0, name.find_last_not_of(blanks) + 1));
}

bool endsInTypeTag(std::string_view text)
{
    if (text.size() > 1 && text.substr(text.size() - 2) == "\r\n")
        text.remove_suffix(1);
    if (!text.empty() && endsLine(text))
        text.remove_suffix(1);
    return readTypeTag(text.substr(text.find_last_of("\r\n") + 1)).has_value();
}

std::string writeTypeTag(char comment, Type type)
{
    std::string line(1, comment);
    line += ' ';
    line += keyword;
    line += ' ';
    return line.append(typeName(type));
}

Value readTaggedValue(Type type, std::string_view text, Value plain)
{
    FrameworkCore::Values::ReadResult tagged = FrameworkCore::Values::readText(text, type);
    return tagged.ok() ? std::move(tagged.value) : std::move(plain);
}

std::optional<std::string> readTaggedText(std::string_view value)
{
    if (value.size() < 2 || value.front() != '"' || value.back() != '"')
        return std::string(value);
    value = value.substr(1, value.size() - 2);
    std::string text;
    text.reserve(value.size());
    for (std::size_t at = 0; at < value.size(); ++at) {
        if (value[at] != '\\') {
            text += value[at];
            continue;
        }
        const std::string_view escape = value.substr(at + 1, 3);
        const std::size_t letter = escape.empty() ? std::string_view::npos : escapeLetters.find(escape[0]);
        if (letter != std::string_view::npos) {
            text += escapedCharacters[letter];
            ++at;
            continue;
        }
        const int high = escape.size() == 3 && escape[0] == 'x' ? hexDigit(escape[1]) : -1;
        const int low = high >= 0 ? hexDigit(escape[2]) : -1;
        if (low < 0)
            return std::nullopt;
        text += static_cast<char>(static_cast<unsigned char>(high * 16 + low));
        at += 3;
    }
    return text;
}

Value readSpelledValue(Type type, std::string_view spelled, Value plain)
{
    if (type == Type::Null)
        return spelled.empty() ? Value{Type::Null, {}} : plain;
    const std::optional<std::string> text = readTaggedText(spelled);
    return text ? readTaggedValue(type, *text, std::move(plain)) : plain;
}

std::string quoteTaggedText(std::string_view text)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string value(1, '"');
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = FrameworkCore::Values::utf8Length(text.substr(at));
        const auto byte = static_cast<unsigned char>(text[at]);
        const std::size_t letter = escapedCharacters.find(text[at]);
        if (letter != std::string_view::npos) {
            value += '\\';
            value += escapeLetters[letter];
        } else if (length == 0 || byte < 0x20) {
            value += "\\x";
            value += digits[byte >> 4];
            value += digits[byte & 15];
        } else {
            value += text.substr(at, length);
        }
        at += std::max<std::size_t>(length, 1);
    }
    return value += '"';
}

} // namespace Repository::Documents
