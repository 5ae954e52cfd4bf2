#include "repository/documents/common/TypeTag.h"

#include "repository/documents/common/TextLine.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

constexpr std::string_view keyword = "@type";
constexpr std::string_view blanks = " \t";

constexpr std::string_view escapedCharacters = "\n\r\t\"\\";
constexpr std::string_view escapeLetters = "nrt\"\\";

std::string_view afterBlanks(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return text;
}

} // namespace

std::optional<Type> readTypeTag(std::string_view line)
{
    line = afterBlanks(line);
    if (line.empty() || (line[0] != ';' && line[0] != '#'))
        return std::nullopt;
    line = afterBlanks(line.substr(1));
    if (!startsWith(line, keyword))
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

std::string_view withoutTypeTags(std::string_view text)
{
    while (endsInTypeTag(text)) {
        const std::size_t line = text.find_last_not_of("\r\n");
        text = text.substr(0, text.rfind('\n', line) + 1);
    }
    return text;
}

std::string writeTypeTag(char comment, Type type)
{
    return std::string(1, comment) + " @type " + std::string(rowOf(type).name);
}

std::string renameTypeTag(std::string_view tags, Type type)
{
    const std::size_t begin = tags.find_first_not_of(blanks, tags.rfind(keyword) + keyword.size());
    const std::size_t end = std::min(tags.find_first_of(" \t\r\n", begin), tags.size());
    return std::string(tags.substr(0, begin)).append(rowOf(type).name).append(tags.substr(end));
}

Value readTaggedValue(Type type, std::string_view text, Value plain)
{
    auto tagged = readFileText(text, type);
    return tagged.ok() ? std::move(tagged.value) : std::move(plain);
}

Value readSpelledValue(Type type, std::string_view spelled, Value plain)
{
    if (type == Type::Null)
        return spelled.empty() ? Value{Type::Null, {}} : plain;
    if (spelled.size() < 2 || spelled.front() != '"' || spelled.back() != '"')
        return readTaggedValue(type, spelled, std::move(plain));
    const std::optional<std::string> text = FrameworkCore::Values::unescape(
        spelled.substr(1, spelled.size() - 2), escapeLetters, escapedCharacters, "0123456789abcdef");
    return text ? readTaggedValue(type, *text, std::move(plain)) : plain;
}

std::string quoteTaggedText(std::string_view text)
{
    std::string value(1, '"');
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = utf8Length(text.substr(at));
        const auto byte = static_cast<unsigned char>(text[at]);
        const std::size_t letter = escapedCharacters.find(text[at]);
        if (letter != std::string_view::npos)
            (value += '\\') += escapeLetters[letter];
        else if (length == 0 || byte < 0x20)
            appendHex(value += "\\x", byte, 2);
        else
            value += text.substr(at, length);
        at += std::max<std::size_t>(length, 1);
    }
    return value += '"';
}

} // namespace Repository::Documents
