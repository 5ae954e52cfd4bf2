#include "repository/documents/common/TextLine.h"

#include <algorithm>
#include <cstdint>

namespace Repository::Documents {

namespace {

// In windows, since the search for one kind of line end must not run through a file that has only the other.
std::size_t findLineEnd(std::string_view text, std::size_t at)
{
    constexpr std::size_t window = 256;
    for (; at < text.size(); at += window) {
        const std::string_view part = text.substr(at, window);
        const std::size_t feed = std::min(part.find('\n'), part.size());
        const std::size_t end = std::min(part.substr(0, feed).find('\r'), feed);
        if (end < part.size())
            return at + end;
    }
    return text.size();
}

} // namespace

bool isLineEnd(char c)
{
    return c == '\n' || c == '\r';
}

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\v' || c == '\f';
}

std::string_view trimBlanks(std::string_view text)
{
    text.remove_prefix(indentOf(text));
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

std::size_t indentOf(std::string_view content)
{
    std::size_t indent = 0;
    while (indent < content.size() && isBlank(content[indent]))
        ++indent;
    return indent;
}

bool isBlankLine(std::string_view content)
{
    return indentOf(content) == content.size();
}

TextLine textLineAt(std::string_view text, std::size_t begin)
{
    const std::size_t end = findLineEnd(text, begin);
    const bool pair = text.substr(end, 2) == "\r\n";
    return {text.substr(begin, end - begin), std::min(text.size(), end + (pair ? 2 : 1))};
}

std::string lineEndOf(std::string_view text)
{
    const TextLine first = textLineAt(text, 0);
    const std::size_t size = first.end - first.content.size();
    return size == 0 ? "\n" : std::string(text.substr(first.content.size(), size));
}

std::size_t countLineEnds(std::string_view text, char lineEnd)
{
    std::size_t count = 0;
    // What is counted in a byte is counted sixteen at a time.
    for (; !text.empty(); text.remove_prefix(std::min<std::size_t>(text.size(), UINT8_MAX))) {
        std::uint8_t found = 0;
        for (const char c : text.substr(0, UINT8_MAX))
            found = static_cast<std::uint8_t>(found + (c == lineEnd ? 1 : 0));
        count += found;
    }
    return count;
}

bool endsLine(std::string_view text)
{
    return text.empty() || isLineEnd(text.back());
}

std::string endedByLineFeed(std::string_view lines)
{
    if (!lines.empty() && lines.back() == '\n')
        lines.remove_suffix(1);
    if (!lines.empty() && lines.back() == '\r')
        lines.remove_suffix(1);
    return std::string(lines) += '\n';
}

bool endsInBackslash(std::string_view content)
{
    std::size_t count = 0;
    while (count < content.size() && content[content.size() - 1 - count] == '\\')
        ++count;
    return count % 2 == 1;
}

char quoteAround(std::string_view value)
{
    if (value.size() < 2 || (value[0] != '"' && value[0] != '\'') || value.back() != value[0])
        return '\0';
    const std::string_view inner = value.substr(1, value.size() - 2);
    if (inner.find(value[0]) != std::string_view::npos || (!inner.empty() && inner.back() == '\\'))
        return '\0';
    return value[0];
}

std::string plainSeparator(std::string_view separator)
{
    std::string plain(trimBlanks(separator));
    if (!separator.empty() && isBlank(separator.front()))
        plain.insert(0, 1, ' ');
    if (!separator.empty() && isBlank(separator.back()))
        plain += ' ';
    return plain;
}

std::string alignedSeparator(std::string_view separator, std::size_t siblingSize, std::size_t size,
                             bool isInColumn)
{
    const std::size_t blanks = std::min(separator.find_first_not_of(' '), separator.size());
    if (blanks < 2 && !(blanks == 1 && isInColumn))
        return std::string(separator);
    const std::size_t column = siblingSize + blanks;
    const std::size_t padding = column > size + 1 ? column - size : 1;
    return std::string(padding, ' ') + std::string(separator.substr(blanks));
}

std::size_t findCommentsAbove(std::string_view lead)
{
    std::size_t begin = lead.size();
    while (begin > 0) {
        const std::size_t line = begin < 2 ? 0 : lead.rfind('\n', begin - 2) + 1;
        if (isBlankLine(textLineAt(lead, line).content))
            break;
        begin = line;
    }
    return begin;
}

} // namespace Repository::Documents
