#include "repository/documents/ini/IniDialect.h"

#include "host/FrameworkCore/Values/Utf8.h"
#include "host/FrameworkCore/Values/ValueText.h"
#include "repository/documents/common/TextLine.h"
#include "repository/documents/ini/IniScanner.h"

namespace Repository::Documents {

using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;

namespace {

std::string_view withoutBackslash(std::string_view content)
{
    content.remove_suffix(1);
    return content;
}

} // namespace

std::optional<Statement> IniDialect::scan(std::string_view text) const
{
    const std::optional<Statement> line = scanSingle(text, comments);
    return line && line->isEntry() ? line : std::nullopt;
}

std::string IniDialect::joinLines(std::string_view lines) const
{
    const TextLine first = textLineAt(lines, 0);
    std::string joined;
    std::string_view pending = trimBlanks(first.content);
    for (std::size_t at = first.end; at < lines.size();) {
        const TextLine further = textLineAt(lines, at);
        at = further.end;
        if (isIniComment(further.content))
            continue;
        const std::string_view content = trimBlanks(further.content);
        if (!content.empty() && endsInBackslash(pending)) {
            const std::string_view before = withoutBackslash(pending);
            const bool indented = content.data() != further.content.data();
            joined += trimBlanks(before);
            if (indented || trimBlanks(before).size() < before.size())
                joined += ' ';
        } else {
            joined += pending;
            joined += '\n';
        }
        pending = content;
    }
    return joined.append(pending);
}

bool IniDialect::isLeftOut(const Value& value) const
{
    return value == Value{Type::String, std::string()};
}

// After a ":" some values need a blank to be told from what separates.
bool IniDialect::mayNeedBlank(char last) const
{
    return last == ':';
}

std::string IniDialect::explainRefusal(const Statement&, const Value& value, const LineStyle&) const
{
    const std::string kind(FrameworkCore::Values::describeType(value.type));
    const std::string text = FrameworkCore::Values::toText(value);
    if (!FrameworkCore::Values::isUtf8(text))
        return "the text holds half a character, which UTF-8 cannot hold";
    if (text.find('\0') != std::string::npos)
        return "the text holds a NUL character, which no text file has";
    switch (value.type) {
    case Type::Null:
        return "an ini entry has a value; this file has no keys without one";
    case Type::Bool:
    case Type::Integer:
    case Type::Unsigned:
    case Type::String:
        break;
    default:
        return "no mark above the entry says that it is " + kind + "; remove it and create it as " + kind;
    }
    if (text.find_first_of("\r\n") != std::string::npos)
        return "a value of this ini file ends with its line; the text has line breaks";
    return explainReading("k=" + text, value);
}

} // namespace Repository::Documents
