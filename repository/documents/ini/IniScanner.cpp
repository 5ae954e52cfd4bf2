#include "repository/documents/ini/IniScanner.h"

#include "repository/documents/common/TypeTag.h"
#include "repository/documents/ini/IniSections.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

constexpr std::size_t none = std::string_view::npos;

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

// Where the comment after a value of an unknown program begins; the end of the content when there is none.
std::size_t inlineComment(std::string_view content, std::size_t from)
{
    // One search for both would look at each character apart.
    const bool mayHold = content.find(';', from) != none || content.find('#', from) != none;
    if (!mayHold)
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

bool isHeader(std::string_view content, const Dialect& dialect)
{
    const std::size_t open = indentOf(content);
    return open < content.size() && content[open] == '[' && findSectionEnd(content, open, dialect) != none;
}

bool goesOnAfterBackslash(std::string_view content, std::string_view next, const Dialect& dialect)
{
    if (indentOf(next) > 0)
        return true;
    if (isHeader(next, dialect))
        return false;
    const bool blankBefore = content.size() < 2 || isBlank(content[content.size() - 2]);
    return blankBefore || findSeparator(next) == none;
}

// Whether a value goes on in the next line, by its indentation or by a guess.
bool goesOn(std::string_view content, std::size_t indent, IniTrivia trivia, std::string_view next,
            const Dialect& dialect)
{
    const bool isDeeper = indentOf(next) > indent;
    if (dialect.continuation == Dialect::Continuation::Indentation)
        return isDeeper;
    if (isDeeper && next.find('=') == none)
        return true;
    if (!endsInBackslash(content) || trivia.blank)
        return false;
    return trivia.any ? indentOf(next) > 0 : goesOnAfterBackslash(content, next, dialect);
}

bool goesOnByLines(const Dialect& dialect)
{
    return dialect.continuation == Dialect::Continuation::Guessed ||
           dialect.continuation == Dialect::Continuation::Indentation;
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
        const bool isComment = isSkipped(content, dialect);
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
    const std::string_view content = physical.content;
    const std::size_t open = indentOf(content);
    const std::size_t close = findSectionEnd(content, open + 1, dialect);
    if (close == none) {
        const std::size_t bracket = content.find(']', open);
        errorOffset = position + (bracket == none ? open : bracket + 1);
        error = bracket == none ? Reason::tr("the name of a section is not closed by \"]\"")
                                : Reason::tr("only a comment may follow the \"]\" of a section");
        return std::nullopt;
    }
    Statement line;
    line.kind = Statement::Kind::Header;
    line.keyBegin = std::uint32_t(open + 1);
    line.keyEnd = line.valueBegin = line.valueEnd = std::uint32_t(close);
    std::size_t end = physical.end;
    if (dialect.sections == Dialect::Sections::Subsection) {
        const std::size_t next = close + 1 + indentOf(content.substr(close + 1));
        if (next < content.size() && !isSkipped(content.substr(next), dialect))
            end = position + next;
    }
    line.text = text.substr(position, end - position);
    position = end;
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
    if (goesOnByLines(dialect))
        takeByLines(line, first, indent);
    else
        takeMeasured(line, first, indent);
    line.shift(lineBegin - begin);
    line.text = text.substr(begin, position - begin);
    if (dialect.hasBraces && first.content[indent] == '}')
        line.kind = Statement::Kind::Close;
    else if (dialect.hasBraces && line.isSeparated() && line.value() == "{")
        line.kind = Statement::Kind::Open;
    return line;
}

void IniScanner::placeKey(Statement& line, std::string_view content, std::size_t end) const
{
    while (end > line.keyBegin && isBlank(content[end - 1]))
        --end;
    std::string_view key = content.substr(line.keyBegin, end - line.keyBegin);
    if (dialect.hasBraces && !key.empty() && key.back() == '*')
        key = trimBlanks(key.substr(0, key.size() - 1));
    while (dialect.hasKeyMarks && !key.empty() && key.back() == ']' && key.rfind("[$") != none &&
           key.find(']', key.rfind("[$")) == key.size() - 1)
        key = key.substr(0, key.rfind("[$"));
    line.keyEnd = line.valueBegin = line.valueEnd = std::uint32_t(line.keyBegin + key.size());
    line.markSize = std::uint16_t(end - line.keyEnd);
}

void IniScanner::takeByLines(Statement& line, const TextLine& first, std::size_t indent)
{
    const std::string_view content = first.content;
    const bool isGuessed = dialect.continuation == Dialect::Continuation::Guessed;
    const std::size_t lineBegin = position;
    position = first.end;
    const auto commentAfter = [&](std::size_t from) {
        return isGuessed ? inlineComment(content, from)
                         : findCommentAfterBlank(content, from, dialect.commentsAfter);
    };
    const std::size_t comment = commentAfter(indent);
    const std::size_t separator = isGuessed ? findSeparator(content.substr(0, comment))
                                            : content.find_first_of(dialect.separators, indent);
    placeKey(line, content, std::min(separator, comment));
    if (separator == none || (!isGuessed && comment < separator))
        return;
    const std::size_t furtherEnd = takeFurtherLines(content, indent);
    line.continued = furtherEnd > 0;
    placeValue(line, content, separator + 1, line.continued ? content.size() : commentAfter(separator + 1));
    if (line.continued)
        line.valueEnd = std::uint32_t(furtherEnd - lineBegin);
}

void IniScanner::takeMeasured(Statement& line, const TextLine& first, std::size_t indent)
{
    const std::string_view content = first.content;
    const std::size_t lineBegin = position;
    position = first.end;
    const std::size_t separator = content.find_first_of(dialect.separators, indent);
    const std::size_t mark = content.find_first_of(dialect.commentsAfter, indent);
    placeKey(line, content, std::min({separator, mark, content.size()}));
    if (separator == none || mark < separator)
        return;
    const std::size_t after = separator + 1;
    const ValueExtent extent = measureValue(text.substr(lineBegin + after), dialect);
    line.continued = extent.continued;
    placeValue(line, content, after, std::min(after + extent.end, content.size()));
    if (!line.continued)
        return;
    std::size_t end = lineBegin + after + extent.end;
    while (isBlank(text[end - 1]) && !dialect.keepsTrailingBlanks)
        --end;
    line.valueEnd = std::uint32_t(end - lineBegin);
    position = lineBegin + after + extent.linesEnd;
}

// The value in the first line of an entry. An empty one gets one of the blanks before it, so that a value put
// there looks like the others.
void IniScanner::placeValue(Statement& line, std::string_view content, std::size_t after,
                            std::size_t comment) const
{
    std::size_t begin = after;
    while (begin < comment && isBlank(content[begin]))
        ++begin;
    std::size_t end = comment;
    while (end > begin && isBlank(content[end - 1]) && !dialect.keepsTrailingBlanks)
        --end;
    if (begin == end) {
        const bool blank = after < comment && (comment == content.size() || after + 1 < comment);
        begin = end = after + (blank ? 1 : 0);
    }
    line.valueBegin = std::uint32_t(begin);
    line.valueEnd = std::uint32_t(end);
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
        if (isBlankLine(further.content) || isSkipped(further.content, dialect)) {
            trivia.any = true;
            trivia.blank = trivia.blank || isBlankLine(further.content);
            continue;
        }
        if (!goesOn(content, indent, trivia, further.content, dialect))
            break;
        content = further.content;
        trivia = IniTrivia();
        const std::string_view trimmed = trimBlanks(content);
        end = static_cast<std::size_t>(trimmed.data() - text.data()) + trimmed.size();
        position = further.end;
    }
    return end;
}

std::optional<Statement> scanSingle(std::string_view text, const Dialect& dialect)
{
    IniScanner scanner(text, dialect);
    std::optional<Statement> line = scanner.next();
    if (!line || line->text.size() != text.size())
        return std::nullopt;
    return line;
}

std::optional<Statement> scanCommented(std::string_view text, const Dialect& dialect)
{
    std::size_t begin = 0;
    for (std::size_t at = 0; at < text.size();) {
        const TextLine line = textLineAt(text, at);
        at = line.end;
        if (!isSkipped(line.content, dialect))
            break;
        begin = readTypeTag(line.content) ? begin : at;
    }
    std::optional<Statement> line = scanSingle(text.substr(begin), dialect);
    if (line && line->isEntry()) {
        line->shift(begin);
        line->text = text;
    }
    return begin > 0 && line && !line->isEntry() ? std::nullopt : line;
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

bool takesInBlankLine(const Statement& entry, const Dialect& dialect)
{
    if (goesOnByLines(dialect) || lastContent(entry).find('\\') == none)
        return false;
    const std::string lines = endedByLineFeed(entry.lines()) + '\n';
    const std::optional<Statement> line = IniScanner(lines, dialect).next();
    return line && line->text.size() == lines.size();
}

bool wouldSwallow(const Statement& above, const Statement& below, IniTrivia between, const Dialect& dialect)
{
    if (!above.isEntry() || !above.isSeparated())
        return false;
    const std::string_view next = textLineAt(below.lines(), 0).content;
    // A statement that was added may begin with the blank line that sets it off.
    if (goesOnByLines(dialect))
        return goesOn(lastContent(above), above.indent().size(), between | describeTrivia(below.tags()), next,
                      dialect);
    const bool mayQuote = dialect.quotesRunOn && above.value().find_first_of(dialect.quotes) != none;
    if (!mayQuote && lastContent(above).find('\\') == none)
        return false;
    std::string lines = endedByLineFeed(above.lines());
    const std::size_t size = lines.size();
    if (between.any)
        lines += between.blank ? "\n" : std::string(1, dialect.comments.front()) + '\n';
    lines.append(below.tags()).append(next);
    const std::optional<Statement> line = IniScanner(lines, dialect).next();
    return line && line->text.find_first_not_of(" \t\v\f\r\n", size) != none;
}

} // namespace Repository::Documents
