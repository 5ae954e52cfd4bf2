#include "repository/documents/TextLine.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace Repository::Documents {

namespace {

// Eight bytes at a time, since this is where most of the time of reading a file of lines goes.
std::size_t findLineEnd(std::string_view text, std::size_t at)
{
    constexpr std::uint64_t ones = 0x0101010101010101u;
    const auto hasZero = [](std::uint64_t word) { return (word - ones) & ~word & ones << 7; };
    std::uint64_t word = 0;
    for (; at + sizeof word <= text.size(); at += sizeof word) {
        std::memcpy(&word, text.data() + at, sizeof word);
        if (hasZero(word ^ ones * '\n') || hasZero(word ^ ones * '\r'))
            break;
    }
    while (at < text.size() && text[at] != '\n' && text[at] != '\r')
        ++at;
    return at;
}

} // namespace

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

bool endsLine(std::string_view text)
{
    return text.empty() || text.back() == '\n' || text.back() == '\r';
}

bool endsInBackslash(std::string_view content)
{
    std::size_t count = 0;
    while (count < content.size() && content[content.size() - 1 - count] == '\\')
        ++count;
    return count % 2 == 1;
}

} // namespace Repository::Documents
