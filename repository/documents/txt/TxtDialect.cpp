#include "repository/documents/txt/TxtDialect.h"

namespace Repository::Documents {

std::string TxtDialect::joinLines(std::string_view lines) const
{
    std::string joined;
    for (std::size_t at = 0; at < lines.size();) {
        const TextLine line = textLineAt(lines, at);
        at = line.end;
        std::string_view content = trimBlanks(line.content);
        if (at < lines.size())
            content.remove_suffix(1); // the backslash
        const std::string_view trimmed = trimBlanks(content);
        joined += trimmed;
        if (at < lines.size() && (trimmed.size() < content.size() || isBlank(lines[at])))
            joined += ' ';
    }
    return joined;
}

bool TxtDialect::runsOn(std::string_view text) const
{
    const std::optional<Statement> entry = scanTxtEntry(text, dialect);
    return entry && wouldSwallow(*entry, std::string(entry->indent()) + "key = 1", dialect);
}

std::string TxtDialect::explainRefusal(const Statement& entry, const Value& value,
                                       const LineStyle& style) const
{
    const std::string text = toText(value);
    if (std::string reason = explainCharacters(entry, text, style);
        value.type == Type::String && !reason.empty())
        return reason;
    if (!dialect.spelling && text.find_first_of("\r\n") != std::string::npos)
        return Reason::tr("a value of a txt file ends with its line; the text has line breaks");
    if (text.find('\0') != std::string::npos)
        return Reason::tr("the text holds a NUL character, which no text file has");
    if (value.type == Type::ByteArray)
        return Reason::tr("a txt file would read these bytes back as a text, or cut them");
    return explainReading(std::string(entry.text.substr(0, entry.valueBegin)) + ' ' + text, value);
}

} // namespace Repository::Documents
