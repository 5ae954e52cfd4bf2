#include "repository/documents/ini/IniFormat.h"

#include "repository/documents/common/TextLine.h"
#include "repository/documents/ini/IniSections.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

bool isKeyCharacter(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
           static_cast<unsigned char>(c) >= 0x80 ||
           std::string_view("_-./:$@%*[] ").find(c) != std::string_view::npos;
}

bool isKey(std::string_view text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(), isKeyCharacter);
}

// A statement of most programming languages ends like this.
bool endsLikeCode(std::string_view value)
{
    return !value.empty() && (value.back() == ';' || value.back() == '{');
}

bool isEntry(std::string_view content)
{
    const std::size_t equals = content.find('=');
    return equals != std::string_view::npos && isKey(trimBlanks(content.substr(0, equals))) &&
           !endsLikeCode(content);
}

// How many items a list like "a;b;" has, each of which ends with a semicolon; 0 for any other line, as one of
// a program: declarations have keys of several words, and expressions other characters.
std::size_t countItems(std::string_view content)
{
    const std::size_t equals = content.find('=');
    if (equals == std::string_view::npos || content.back() != ';')
        return 0;
    const std::string_view key = trimBlanks(content.substr(0, equals));
    const std::string_view items = trimBlanks(content.substr(equals + 1));
    const bool isPlain = isKey(key) && key.find(' ') == std::string_view::npos &&
                         std::all_of(items.begin(), items.end(), [](char c) {
                             return c == ';' || c == '\\' || c == '+' ||
                                    (isKeyCharacter(c) && c != '[' && c != ']' && c != '$');
                         });
    return isPlain ? std::size_t(std::count(items.begin(), items.end(), ';')) : 0;
}

} // namespace

// A section is a sign of its own; before it, and without any, all lines must be like those of ini. Lists that
// end with a semicolon need more than lists beside them. Comments alone are as good as nothing, since that is
// what removal may leave.
bool IniFormat::resembles(std::string_view text) const
{
    bool hasEntry = false;
    bool hasPlainEntry = false;
    bool hasLists = false;
    bool hasAssignments = false; // of one item, as a program may have them
    for (std::size_t at = 0; at < text.size();) {
        const TextLine line = textLineAt(text, at);
        const bool isFirst = at == 0;
        at = line.end;
        const std::string_view content = trimBlanks(line.content);
        const bool goesOn = hasEntry && indentOf(line.content) > 0;
        if (isFirst && startsWith(content, "#!"))
            return false;
        if (content.empty() || isSkipped(content, dialect) || goesOn)
            continue;
        if (content.front() == '[')
            return findSectionEnd(content, 1, dialect) != std::string_view::npos;
        const std::size_t items = countItems(content);
        if (items == 0 && !isEntry(content))
            return false;
        hasEntry = true;
        hasPlainEntry = hasPlainEntry || items == 0;
        hasLists = hasLists || items > 1;
        hasAssignments = hasAssignments || items == 1;
    }
    return !hasAssignments && (!hasLists || hasPlainEntry);
}

// Without a section, blocks in braces are those of another syntax, and so are words alone, which would be
// keys without values.
bool IniFormat::rulesOut(std::string_view text) const
{
    bool hasWords = false;
    bool hasSeparator = false;
    for (std::size_t at = 0; at < text.size();) {
        const TextLine line = textLineAt(text, at);
        at = line.end;
        const std::string_view content = trimBlanks(line.content);
        if (content.empty() || isSkipped(content, dialect))
            continue;
        if (content.front() == '[')
            return false;
        const bool isEntry = content.find('=') != std::string_view::npos;
        if (content.back() == '{' && !isEntry)
            return true;
        hasWords = true;
        hasSeparator =
            hasSeparator || isEntry || content.back() == ':' || content.find(": ") != std::string_view::npos;
    }
    return hasWords && !hasSeparator;
}

} // namespace Repository::Documents
