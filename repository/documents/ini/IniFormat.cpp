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

// Of a few words; the five fields of a table of times and a command are none.
bool isKey(std::string_view text)
{
    constexpr int mostBlanks = 4;
    return !text.empty() && std::all_of(text.begin(), text.end(), isKeyCharacter) &&
           std::count(text.begin(), text.end(), ' ') <= mostBlanks;
}

// A key, also before an operator like "+=".
bool isAssigned(std::string_view text)
{
    if (!text.empty() && std::string_view("+*?").find(text.back()) != std::string_view::npos)
        text.remove_suffix(1);
    return isKey(trimBlanks(text));
}

// A statement of most programming languages ends like this.
bool endsLikeCode(std::string_view value)
{
    return !value.empty() && (value.back() == ';' || value.back() == '{');
}

// Not a test of a shell.
bool isSection(std::string_view content, const Dialect& dialect)
{
    return startsWith(content, "[") && !startsWith(content, "[[ ") && !startsWith(content, "[ -") &&
           findSectionEnd(content, 1, dialect) != std::string_view::npos;
}

// That which separates a key: it ends the line, or a blank follows.
std::size_t findColon(std::string_view content)
{
    std::size_t colon = content.find(':');
    while (colon != std::string_view::npos && colon + 1 < content.size() && !isBlank(content[colon + 1]))
        colon = content.find(':', colon + 1);
    return colon;
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
            return isSection(content, dialect);
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

// Without a section, blocks in brackets are those of another syntax, and so are words alone, which would be
// keys without values, and more lines of several words or with odd keys than entries.
bool IniFormat::rulesOut(std::string_view text) const
{
    std::size_t words = 0;
    std::size_t entries = 0;
    std::size_t others = 0;
    for (std::size_t at = 0; at < text.size();) {
        const TextLine line = textLineAt(text, at);
        at = line.end;
        const std::string_view content = trimBlanks(line.content);
        if (content.empty() || isSkipped(content, dialect))
            continue;
        if (isSection(content, dialect))
            return false;
        const std::size_t equals = content.find('=');
        const bool isBlock = content.back() == '{' && equals == std::string_view::npos;
        const std::size_t separator = std::min(equals, findColon(content));
        const std::string_view operation = content.substr(std::min(separator, content.size()), 2);
        const bool isPair = operation == "=>" || operation == "==";
        if (isBlock || isPair || content.front() == '}' || content.front() == ')')
            return true;
        const bool goesOn = entries > 0 && indentOf(line.content) > 0;
        if (separator != std::string_view::npos)
            ++(isAssigned(content.substr(0, separator)) || goesOn ? entries : others);
        else if (!goesOn)
            ++(content.find_first_of(" \t") == std::string_view::npos ? words : others);
    }
    return others > entries || (entries == 0 && words > 0);
}

} // namespace Repository::Documents
