#include "repository/documents/toml/TomlTokens.h"

#include "repository/documents/toml/TomlString.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

constexpr auto npos = std::string_view::npos;

bool isBare(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '-';
}

std::size_t orEnd(std::size_t at, std::string_view text)
{
    return std::min(at, text.size());
}

// After the quotes that end a string of several lines, of which it may have up to two of its own before them.
std::size_t skipLongString(std::string_view text, std::size_t at)
{
    constexpr std::size_t quotes = 3;
    const char quote = text[at];
    at += quotes;
    for (std::size_t run = 0; at < text.size(); ++at) {
        if (text[at] == quote) {
            ++run;
            continue;
        }
        if (run >= quotes)
            return at;
        run = 0;
        at += quote == '"' && text[at] == '\\' ? 1 : 0;
    }
    return text.size();
}

} // namespace

std::size_t skipTomlBlanks(std::string_view text, std::size_t at)
{
    while (at < text.size() && (text[at] == ' ' || text[at] == '\t'))
        ++at;
    return at;
}

std::size_t skipTomlLine(std::string_view text, std::size_t at)
{
    const std::size_t end = text.find('\n', at);
    return end == npos ? text.size() : end + 1;
}

std::size_t skipTomlTrivia(std::string_view text, std::size_t at)
{
    while (at < text.size()) {
        const char c = text[at];
        if (c == '#')
            at = skipTomlLine(text, at);
        else if (c == ' ' || c == '\t' || c == '\n' || c == '\r')
            ++at;
        else
            break;
    }
    return at;
}

std::size_t skipTomlString(std::string_view text, std::size_t at)
{
    const char quote = text[at];
    if (at + 2 < text.size() && text[at + 1] == quote && text[at + 2] == quote)
        return skipLongString(text, at);
    if (quote == '\'')
        return orEnd(text.find(quote, at + 1), text) + 1;
    for (++at; at < text.size() && text[at] != quote; ++at)
        at += text[at] == '\\' ? 1 : 0;
    return orEnd(at + 1, text);
}

std::size_t skipTomlScalar(std::string_view text, std::size_t at)
{
    if (text[at] == '"' || text[at] == '\'')
        return skipTomlString(text, at);
    const auto ends = [](char c) {
        return c == ',' || c == ']' || c == '}' || c == '#' || c == '\n' || c == '\r';
    };
    std::size_t end = at;
    while (end < text.size() && !ends(text[end]))
        ++end;
    while (end > at && (text[end - 1] == ' ' || text[end - 1] == '\t'))
        --end;
    return end;
}

std::size_t skipTomlTextList(std::string_view text, std::size_t at)
{
    at = skipTomlTrivia(text, at + 1);
    while (at < text.size() && (text[at] == '"' || text[at] == '\'')) {
        at = skipTomlTrivia(text, skipTomlString(text, at));
        at = at < text.size() && text[at] == ',' ? skipTomlTrivia(text, at + 1) : at;
    }
    return at < text.size() && text[at] == ']' ? at + 1 : 0;
}

bool hasTomlListComment(std::string_view list)
{
    for (std::size_t at = 1; at < list.size();) {
        const std::size_t next = skipTomlTrivia(list, at);
        if (list.substr(at, next - at).find('#') != npos)
            return true;
        const bool isMark = next < list.size() && (list[next] == ',' || list[next] == ']');
        at = isMark ? next + 1 : skipTomlString(list, next);
    }
    return false;
}

std::size_t skipTomlValue(std::string_view text, std::size_t at)
{
    std::size_t depth = 0;
    while (at < text.size()) {
        const char c = text[at];
        if (c == '[' || c == '{') {
            ++depth;
            ++at;
        } else if (depth > 0 && (c == ']' || c == '}')) {
            --depth;
            ++at;
        } else if (c == '"' || c == '\'') {
            at = skipTomlString(text, at);
        } else if (c == '#') {
            at = skipTomlLine(text, at);
        } else if (depth == 0) {
            return skipTomlScalar(text, at);
        } else {
            ++at;
        }
        if (depth == 0)
            return at;
    }
    return at;
}

TomlKeyPart readTomlKeyPart(std::string_view text, std::size_t at)
{
    TomlKeyPart part;
    part.begin = part.end = at;
    if (at < text.size() && (text[at] == '"' || text[at] == '\''))
        part.end = skipTomlString(text, at);
    while (part.end < text.size() && isBare(text[part.end]))
        ++part.end;
    part.next = skipTomlBlanks(text, part.end);
    part.isLast = part.next >= text.size() || text[part.next] != '.';
    if (!part.isLast)
        part.next = skipTomlBlanks(text, part.next + 1);
    return part;
}

std::optional<TomlKeyPart> findTomlKeyPart(std::string_view key, const std::vector<std::string>& path)
{
    TomlKeyPart part = readTomlKeyPart(key, 0);
    for (std::size_t i = 0;; ++i) {
        if (decodeTomlKey(key.substr(part.begin, part.end - part.begin)) != path[i])
            return {};
        if (i + 1 == path.size())
            return part;
        if (part.isLast)
            return {};
        part = readTomlKeyPart(key, part.next);
    }
}

std::string decodeTomlKey(std::string_view part)
{
    const bool isQuoted = !part.empty() && (part[0] == '"' || part[0] == '\'');
    return isQuoted ? decodeTomlString(part) : std::string(part);
}

std::string encodeTomlKey(std::string_view key)
{
    return !key.empty() && std::all_of(key.begin(), key.end(), isBare) ? std::string(key)
                                                                       : encodeTomlString(key);
}

std::string encodeTomlKeyLike(std::string_view key, std::string_view part)
{
    const char quote = part.empty() ? '\0' : part[0];
    const std::string literal = encodeTomlString(key);
    const bool isPlain = literal.size() == key.size() + 2 && key.find('\'') == npos;
    if (quote == '\'' && isPlain)
        return quote + std::string(key) + quote;
    return quote == '"' || quote == '\'' ? literal : encodeTomlKey(key);
}

} // namespace Repository::Documents
