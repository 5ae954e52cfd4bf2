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

} // namespace

// A section is a sign of its own; before it, and without any, all lines must be like those of ini. Comments
// alone are as good as nothing, since that is what removal may leave.
bool IniFormat::resembles(std::string_view text) const
{
    bool hasEntry = false;
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
        if (!isEntry(content))
            return false;
        hasEntry = true;
    }
    return true;
}

} // namespace Repository::Documents
