#include "repository/documents/ini/IniDialect.h"

#include "repository/documents/common/TextLine.h"
#include "repository/documents/ini/IniScanner.h"

namespace Repository::Documents {

std::optional<Statement> IniDialect::scan(std::string_view text) const
{
    const std::optional<Statement> line = scanCommented(text, dialect);
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
        if (isSkipped(further.content, dialect))
            continue;
        const std::string_view content = trimBlanks(further.content);
        if (!content.empty() && endsInBackslash(pending)) {
            const std::string_view before = pending.substr(0, pending.size() - 1);
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

std::string IniDialect::explainRefusal(const Statement& entry, const Value& value,
                                       const LineStyle& style) const
{
    const std::string text = toText(value);
    if (std::string reason = explainCharacters(entry, text, style); !reason.empty())
        return reason;
    if (text.find('\0') != std::string::npos)
        return Reason::tr("the text holds a NUL character, which no text file has");
    if (value.type == Type::Null)
        return Reason::tr("an ini entry has a value; this file has no keys without one");
    const std::string_view marks =
        dialect.continuation == Dialect::Continuation::Indentation ? dialect.commentsAfter : "";
    if (findCommentAfterBlank(entry.value(), 0, marks) < entry.value().size())
        return Reason::tr("comments follow its lines, which would be lost");
    if (dialect.spelling && dialect.spelling->explain && !dialect.spelling->explain(text).empty())
        return dialect.spelling->explain(text);
    if (!rowOf(value.type).isPlain)
        return Reason::tr("no mark above the entry says that it is %1", {describeType(value.type)});
    if (text.find_first_of("\r\n") != std::string::npos)
        return Reason::tr("a value of %1 ends with its line; the text has line breaks",
                          {dialect.spelling ? fileNoun() : Reason::tr("this ini file")});
    return explainReading("k=" + text, value);
}

} // namespace Repository::Documents
