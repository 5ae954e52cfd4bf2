#include "repository/documents/ini/IniScanner.h"

#include "repository/documents/common/TypeTag.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

constexpr std::size_t none = std::string_view::npos;

// Sections that unit and desktop files begin with, as far as others do not.
constexpr std::array<std::string_view, 20> sections{
    "Unit",      "Service", "Socket",  "Timer",         "Mount",      "Automount",    "Swap",
    "Slice",     "Scope",   "Install", "Match",         "NetDev",     "Manager",      "Journal",
    "Container", "Pod",     "Kube",    "Desktop Entry", "Icon Theme", "D-BUS Service"};

bool isWordCharacter(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
           static_cast<unsigned char>(c) >= 0x80;
}

// Offset after the quotation at this place; the same place for none. An apostrophe inside a word does not
// quote.
std::size_t skipQuotation(std::string_view content, std::size_t at)
{
    const char quote = content[at];
    if ((quote != '"' && quote != '\'') || (at > 0 && isWordCharacter(content[at - 1])))
        return at;
    for (std::size_t close = at + 1; close < content.size(); ++close) {
        if (content[close] == '\\')
            ++close;
        else if (content[close] == quote)
            return close + 1;
    }
    return at;
}

// Where the comment after a value begins; the end of the content when there is none.
std::size_t inlineComment(std::string_view content, std::size_t from, IniComments comments)
{
    // One search for both would look at each character apart.
    const bool mayHold = content.find(';', from) != none || content.find('#', from) != none;
    if (comments == IniComments::OwnLines || !mayHold)
        return content.size();
    for (std::size_t at = from; at < content.size();) {
        const std::size_t after = skipQuotation(content, at);
        if (after > at) {
            at = after;
            continue;
        }
        const bool tag = content[at] == ';' || content[at] == '#';
        if (tag && at > 0 && isBlank(content[at - 1]) && at + 1 < content.size() && isBlank(content[at + 1]))
            return at;
        ++at;
    }
    return content.size();
}

std::size_t findColon(std::string_view content)
{
    std::size_t colon = content.find(':');
    while (colon != none && content.substr(colon, 3) == "://")
        colon = content.find(':', colon + 1);
    return colon;
}

std::size_t findSeparator(std::string_view content)
{
    const std::size_t equals = content.find('=');
    const std::size_t colon = findColon(content.substr(0, equals));
    if (equals == none || colon == none)
        return std::min(equals, colon);
    return isBlank(content[colon + 1]) ? colon : equals;
}

// Names may hold brackets: the first "]" counts after which there are only blanks or a comment.
std::size_t findHeaderEnd(std::string_view content, std::size_t open)
{
    for (std::size_t close = content.find(']', open); close != none; close = content.find(']', close + 1)) {
        const std::string_view after = trimBlanks(content.substr(close + 1));
        if (after.empty() || isIniComment(after))
            return close;
    }
    return none;
}

bool isHeader(std::string_view content)
{
    const std::size_t open = indentOf(content);
    return open < content.size() && content[open] == '[' && findHeaderEnd(content, open) != none;
}

bool goesOnAfterBackslash(std::string_view content, std::string_view next)
{
    if (indentOf(next) > 0)
        return true;
    if (isHeader(next))
        return false;
    const bool blankBefore = content.size() < 2 || isBlank(content[content.size() - 2]);
    return blankBefore || findSeparator(next) == none;
}

bool goesOn(std::string_view content, std::size_t indent, IniTrivia trivia, std::string_view next)
{
    if (indentOf(next) > indent)
        return true;
    if (!endsInBackslash(content) || trivia.blank)
        return false;
    return trivia.any ? indentOf(next) > 0 : goesOnAfterBackslash(content, next);
}

// The value in the first line of an entry. An empty one gets one of the blanks before it, so that a value put
// there looks like the others.
void placeValue(Statement& line, std::string_view content, std::size_t separator, IniComments comments)
{
    const std::size_t comment =
        line.continued ? content.size() : inlineComment(content, separator + 1, comments);
    std::size_t begin = separator + 1;
    while (begin < comment && isBlank(content[begin]))
        ++begin;
    std::size_t end = comment;
    while (end > begin && isBlank(content[end - 1]))
        --end;
    if (begin == end) {
        const bool blank = separator + 1 < comment && (comment == content.size() || separator + 2 < comment);
        begin = end = separator + (blank ? 2 : 1);
    }
    line.valueBegin = std::uint32_t(begin);
    line.valueEnd = std::uint32_t(end);
}

std::string_view lastContent(const Statement& line)
{
    std::size_t at = 0;
    std::string_view content;
    while (at < line.text.size()) {
        const TextLine physical = textLineAt(line.text, at);
        content = physical.content;
        at = physical.end;
    }
    return content;
}

} // namespace

bool isIniComment(std::string_view line)
{
    const std::size_t begin = indentOf(line);
    return begin < line.size() && (line[begin] == ';' || line[begin] == '#');
}

std::optional<Statement> IniScanner::next()
{
    if (position == text.size() || !error.empty())
        return std::nullopt;
    const std::size_t begin = position;
    std::size_t tagsBegin = begin; // of the tags right above the line that is looked at
    Type tag = Type::Group;
    while (position < text.size()) {
        const TextLine physical = textLineAt(text, position);
        const std::string_view content = physical.content;
        const bool isComment = isIniComment(content);
        if (!isComment && !isBlankLine(content)) {
            const bool isSection = content[indentOf(content)] == '[';
            if (isSection && position == begin)
                return takeHeader(physical);
            if (!isSection && tagsBegin == begin)
                return takeEntry(begin, physical, tag);
            position = isSection ? position : tagsBegin;
            break;
        }
        const std::optional<Type> read = isComment ? readTypeTag(content) : std::nullopt;
        // Of tags one above the other the last one holds; all of them go with the entry.
        if (!read)
            tagsBegin = physical.end;
        tag = read.value_or(Type::Group);
        position = physical.end;
    }
    Statement trivia;
    trivia.text = text.substr(begin, position - begin);
    return trivia;
}

std::optional<Statement> IniScanner::takeHeader(const TextLine& physical)
{
    const std::size_t open = indentOf(physical.content);
    const std::size_t close = findHeaderEnd(physical.content, open);
    if (close == none) {
        const std::size_t bracket = physical.content.find(']', open);
        errorOffset = position + (bracket == none ? open : bracket + 1);
        error = bracket == none ? "the name of a section is not closed by \"]\""
                                : "only a comment may follow the \"]\" of a section";
        return std::nullopt;
    }
    Statement line;
    line.kind = Statement::Kind::Header;
    line.keyBegin = std::uint32_t(open + 1);
    line.keyEnd = line.valueBegin = line.valueEnd = std::uint32_t(close);
    line.text = text.substr(position, physical.end - position);
    position = physical.end;
    return line;
}

Statement IniScanner::takeEntry(std::size_t begin, const TextLine& first, Type tag)
{
    const std::size_t lineBegin = position;
    Statement line;
    line.kind = Statement::Kind::Entry;
    line.tag = tag;
    const std::size_t indent = indentOf(first.content);
    line.keyBegin = std::uint32_t(indent);
    position = first.end;

    const std::size_t comment = inlineComment(first.content, indent, comments);
    const std::size_t separator = findSeparator(first.content.substr(0, comment));
    const bool separated = separator != none;
    std::size_t keyEnd = std::min(separator, comment);
    while (keyEnd > line.keyBegin && isBlank(first.content[keyEnd - 1]))
        --keyEnd;
    line.keyEnd = line.valueBegin = line.valueEnd = std::uint32_t(keyEnd);
    if (separated) {
        const std::size_t furtherEnd = takeFurtherLines(first.content, indent);
        line.continued = furtherEnd > 0;
        placeValue(line, first.content, separator, comments);
        if (line.continued)
            line.valueEnd = std::uint32_t(furtherEnd - lineBegin);
    }
    line.shift(lineBegin - begin);
    line.text = text.substr(begin, position - begin);
    return line;
}

std::size_t IniScanner::takeFurtherLines(std::string_view content, std::size_t indent)
{
    std::size_t end = 0;
    IniTrivia trivia;
    for (std::size_t at = position; at < text.size();) {
        // Told by one character in nearly all files.
        if (isWordCharacter(text[at]) && !endsInBackslash(content))
            break;
        const TextLine further = textLineAt(text, at);
        at = further.end;
        if (isBlankLine(further.content) || isIniComment(further.content)) {
            trivia.any = true;
            trivia.blank = trivia.blank || isBlankLine(further.content);
            continue;
        }
        if (!goesOn(content, indent, trivia, further.content))
            break;
        content = further.content;
        trivia = IniTrivia();
        const std::string_view trimmed = trimBlanks(content);
        end = static_cast<std::size_t>(trimmed.data() - text.data()) + trimmed.size();
        position = further.end;
    }
    return end;
}

IniComments iniCommentsOf(std::string_view firstSection)
{
    const bool known = std::find(sections.begin(), sections.end(), firstSection) != sections.end() ||
                       startsWith(firstSection, "Desktop Action ");
    return known ? IniComments::OwnLines : IniComments::AfterValues;
}

IniComments findIniComments(std::string_view text)
{
    for (std::size_t at = 0; at < text.size();) {
        const TextLine line = textLineAt(text, at);
        const std::size_t end = line.content.substr(0, 1) == "[" ? findHeaderEnd(line.content, 0) : none;
        if (end != none)
            return iniCommentsOf(line.content.substr(1, end - 1));
        at = line.end;
    }
    return IniComments::AfterValues;
}

std::optional<Statement> scanSingle(std::string_view text, IniComments comments)
{
    IniScanner scanner(text, comments);
    std::optional<Statement> line = scanner.next();
    if (!line || line->text.size() != text.size())
        return std::nullopt;
    return line;
}

IniTrivia operator|(IniTrivia a, IniTrivia b)
{
    return {a.any || b.any, a.blank || b.blank};
}

IniTrivia describeTrivia(std::string_view text)
{
    IniTrivia trivia{!text.empty(), false};
    for (std::size_t at = 0; at < text.size() && !trivia.blank;) {
        const TextLine line = textLineAt(text, at);
        trivia.blank = isBlankLine(line.content);
        at = line.end;
    }
    return trivia;
}

bool wouldSwallow(const Statement& above, const Statement& below, IniTrivia between)
{
    if (!above.isEntry() || !above.isSeparated())
        return false;
    // A statement that was added may begin with the blank line that sets it off.
    const IniTrivia trivia = between | describeTrivia(below.tags());
    return goesOn(lastContent(above), above.indent().size(), trivia, textLineAt(below.lines(), 0).content);
}

} // namespace Repository::Documents
