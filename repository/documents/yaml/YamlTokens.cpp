#include "repository/documents/yaml/YamlTokens.h"

#include <algorithm>

namespace Repository::Documents {

bool isYamlBreak(char c)
{
    return c == '\n' || c == '\r';
}

bool isYamlBlank(char c)
{
    return c == ' ' || c == '\t';
}

std::size_t skipYamlBlanks(std::string_view text, std::size_t at)
{
    while (at < text.size() && isYamlBlank(text[at]))
        ++at;
    return at;
}

std::size_t findYamlLineEnd(std::string_view text, std::size_t at)
{
    while (at < text.size() && !isYamlBreak(text[at]))
        ++at;
    return at;
}

bool hasYamlBreak(std::string_view text)
{
    return text.find('\n') != std::string_view::npos || text.find('\r') != std::string_view::npos;
}

std::size_t skipYamlBreak(std::string_view text, std::size_t at)
{
    if (at + 1 < text.size() && text[at] == '\r' && text[at + 1] == '\n')
        return at + 2;
    return at < text.size() && isYamlBreak(text[at]) ? at + 1 : at;
}

std::size_t skipYamlLine(std::string_view text, std::size_t at)
{
    return skipYamlBreak(text, findYamlLineEnd(text, at));
}

std::size_t endOfYamlContent(std::string_view text, std::size_t at)
{
    if (at > 1 && text[at - 2] == '\r' && text[at - 1] == '\n')
        return at - 2;
    return at > 0 && isYamlBreak(text[at - 1]) ? at - 1 : at;
}

std::size_t findYamlLine(std::string_view text, std::size_t at)
{
    while (at > 0 && !isYamlBreak(text[at - 1]))
        --at;
    return at;
}

std::size_t skipYamlTrivia(std::string_view text, std::size_t at)
{
    while (at < text.size()) {
        const char c = text[at];
        if (c == '#')
            at = findYamlLineEnd(text, at);
        else if (isYamlBlank(c) || isYamlBreak(c))
            ++at;
        else
            break;
    }
    return at;
}

std::size_t endOfYamlIndicators(std::string_view text, std::size_t from, std::size_t to)
{
    std::size_t end = from;
    for (std::size_t at = skipYamlTrivia(text, from);
         at < to && std::string_view("-?:").find(text[at]) != std::string_view::npos;
         at = skipYamlTrivia(text, end))
        end = at + 1;
    return end;
}

bool hasYamlComment(std::string_view text, std::size_t from, std::size_t to)
{
    return text.substr(from, to - from).find('#') != std::string_view::npos;
}

std::size_t skipYamlTail(std::string_view text, std::size_t at)
{
    const std::size_t next = skipYamlBlanks(text, at);
    if (next == text.size() || isYamlBreak(text[next]))
        return next;
    return text[next] == '#' && next > at ? findYamlLineEnd(text, next) : at;
}

std::size_t endOfYamlList(std::string_view text, std::size_t lastElementEnd)
{
    const bool isBehindLine = lastElementEnd > 0 && isYamlBreak(text[lastElementEnd - 1]);
    return isBehindLine ? lastElementEnd : skipYamlTail(text, lastElementEnd);
}

std::size_t columnOfYaml(std::string_view text, std::size_t at)
{
    return at - findYamlLine(text, at);
}

} // namespace Repository::Documents
