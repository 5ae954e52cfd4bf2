#include "repository/documents/ini/IniFile.h"

#include "repository/documents/common/ComponentCodec.h"
#include "repository/documents/ini/IniSections.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

// What begins the first comment of a run of blank and comment lines; 0 without one.
char commentOf(std::string_view trivia)
{
    const std::size_t comment = trivia.find_first_of(";#");
    return comment == std::string_view::npos ? '\0' : trivia[comment];
}

// A stray NUL is text; two side by side, or around one character as in UTF-16, or many, are not. Edits add
// none, so that what was read once can be read again.
bool isBinary(std::string_view text)
{
    constexpr int mostOfText = 64;
    int count = 0;
    for (std::size_t at = text.find('\0'); at != std::string_view::npos;) {
        const std::size_t next = text.find('\0', at + 1);
        const bool isBesideNext = next - at == 1 || (next - at == 2 && !endsLine(text.substr(0, next)));
        if (isBesideNext || ++count > mostOfText)
            return true;
        at = next;
    }
    return false;
}

// A section has a path that names all around it, so that a crafted file could take a thousand times its size.
std::size_t mostSectionBytes(std::size_t fileSize)
{
    constexpr std::size_t always = std::size_t(64) << 20;
    return always + 8 * fileSize;
}

} // namespace

bool isIniTooDeep(std::string_view sectionName)
{
    return std::count(sectionName.begin(), sectionName.end(), '.') >= deepestIniSection;
}

IniFile::IniFile(const Dialect& fileDialect) : dialect(fileDialect), lineDialect(fileDialect)
{
    style.separator = dialect.separator;
    style.indent = dialect.indent;
    if (dialect.continuation == Dialect::Continuation::Indentation)
        style.continuation = "    ";
    index.becomeSection(LineIndex::root);
}

Outcome IniFile::readStatements(bool isOwn)
{
    const std::string_view text = getText();
    if (!isOwn && isBinary(text))
        return failAt(
            text.data() + text.find('\0'),
            Reason::tr("there are NUL characters: it is a binary file, or UTF-16 without its mark"));
    IniScanner scanner(text, dialect);
    std::uint32_t section = LineIndex::root;
    while (const std::optional<Statement> line = scanner.next()) {
        Outcome outcome;
        const std::uint32_t piece = add(none, pieces.chainedLast(), *line);
        pieces[piece].sharesLine = line->text.data() > text.data() && !isLineEnd(line->text.data()[-1]);
        if (line->isHeader())
            outcome = takeUpHeader(piece, section);
        else if (line->isEntry())
            takeUpEntry(piece, section);
        else if (line->kind != Statement::Kind::Trivia)
            outcome = takeUpBrace(piece, section);
        else if (style.comment == '\0')
            style.comment = commentOf(line->text);
        if (!outcome.ok())
            return outcome;
    }
    if (!scanner.getError().empty())
        return failAt(text.data() + scanner.getErrorOffset(), scanner.getError());
    return {};
}

Outcome IniFile::takeUpHeader(std::uint32_t piece, std::uint32_t& section)
{
    const Statement& header = pieces[piece].line;
    const std::string path = sectionPath(header.key(), dialect);
    if (isIniTooDeep(path))
        return failAt(header.key().data(), Reason::tr("sections lie in each other more than %1 deep",
                                                      {std::to_string(deepestIniSection)}));
    const bool isPlain = path == header.key();
    section = index.getOrCreateSection(isPlain ? header.key() : std::string_view(path), isPlain);
    if (index.getSectionBytes() > mostSectionBytes(getText().size()))
        return failAt(header.key().data(),
                      Reason::tr("the sections up to here, lying deep in each other, take too much memory"));
    pieces[piece].node = section;
    LineSection& found = *index.node(section).section;
    found.header = found.last = piece;
    groups.clear();
    return {};
}

Outcome IniFile::takeUpBrace(std::uint32_t piece, std::uint32_t section)
{
    const Statement& line = pieces[piece].line;
    if (section == LineIndex::root)
        return failAt(line.lines().data(),
                      Reason::tr("a group in braces is in a section, and none has begun yet"));
    index.node(section).section->last = piece;
    const std::uint32_t around = groups.empty() ? section : groups.back();
    if (line.kind == Statement::Kind::Close) {
        pieces[piece].node = around;
        if (!groups.empty())
            groups.pop_back();
        return {};
    }
    if (groups.size() == deepestIniSection)
        return failAt(line.key().data(), Reason::tr("groups lie in each other more than %1 deep",
                                                    {std::to_string(deepestIniSection)}));
    groups.push_back(index.getOrCreateGroup(around, encodeKey(line.key())));
    pieces[piece].node = groups.back();
    return {};
}

std::string IniFile::findSameKey(std::uint32_t section, std::string_view key, std::uint32_t except) const
{
    if (dialect.keys == Dialect::Keys::Exact)
        return {};
    const std::string folded = foldedKey(key, dialect.keys);
    for (std::uint32_t id = index.node(section).firstChild; id != none; id = index.node(id).next) {
        const std::uint32_t entry = index.node(id).entry;
        if (id != except && entry != none && foldedKey(pieces[entry].line.key(), dialect.keys) == folded)
            return std::string(pieces[entry].line.key());
    }
    return {};
}

void IniFile::takeUpEntry(std::uint32_t piece, std::uint32_t section)
{
    std::string_view key = pieces[piece].line.key();
    std::string meant;
    if (dialect.spelling && dialect.spelling->readKey && key.find('\\') != std::string_view::npos)
        key = meant = dialect.spelling->readKey(key);
    const std::uint32_t group = groups.empty() ? section : groups.back();
    const std::uint32_t node = isPlainKey(key) && meant.empty()
                                   ? index.getOrCreateNext(group, key, true)
                                   : index.getOrCreateNext(group, encodeKey(key), false);
    pieces[piece].node = node;
    index.node(node).entry = index.node(section).section->last = piece;
    learnStyle(pieces[piece].line);
    if (const char quote = openQuoteOf(pieces[piece].line))
        openQuotes += quote;
}

char IniFile::openQuoteOf(const Statement& entry) const
{
    return dialect.quotesRunOn && entry.isSeparated()
               ? measureValue(entry.text.substr(entry.valueBegin), dialect).openQuote
               : '\0';
}

std::string IniFile::findClosing(const Statement& line) const
{
    const bool hasQuote = line.lines().find_first_of(openQuotes) != std::string_view::npos;
    if (!hasQuote || openQuoteOf(line) != '\0') // which is the open one itself
        return {};
    return Reason::tr("it would close the quote that another value of the file leaves open");
}

std::string IniFile::explainName(std::string_view text) const
{
    if (!dialect.spelling)
        return {};
    const Statement line = scanOwn(text);
    const auto explain = line.isHeader() ? dialect.spelling->explainSection : dialect.spelling->explainKey;
    return explain && line.kind != Statement::Kind::Trivia ? explain(line.key()) : std::string();
}

void IniFile::learnStyle(const Statement& entry)
{
    style.learn(entry);
    const bool isByIndentation = dialect.continuation == Dialect::Continuation::Indentation;
    if (!entry.continued || knowsContinuation ||
        (dialect.continuation != Dialect::Continuation::Guessed && !isByIndentation))
        return;
    TextLine line = textLineAt(entry.lines(), 0);
    if (!isByIndentation && endsInBackslash(line.content))
        return;
    while (line.end < entry.lines().size()) {
        line = textLineAt(entry.lines(), line.end);
        if (isBlankLine(line.content) || isSkipped(line.content, dialect))
            continue;
        const std::size_t indent = indentOf(line.content);
        const std::size_t own = std::min(isByIndentation ? entry.indent().size() : 0, indent);
        style.continuation = line.content.substr(own, indent - own);
        knowsContinuation = !style.continuation.empty();
        return;
    }
}

Statement IniFile::scanOwn(std::string_view text) const
{
    Statement trivia;
    trivia.text = text;
    return scanCommented(text, dialect).value_or(trivia);
}

std::string IniFile::findClash(std::uint32_t piece, const Statement& line) const
{
    const std::uint32_t above = pieces[piece].above;
    const std::uint32_t below = pieces[piece].below;
    const bool turned = line.isSeparated() != pieces[piece].line.isSeparated();
    const bool losesTag = line.tags().empty() && !pieces[piece].line.tags().empty();
    const bool mayBelongAbove = above != none && (turned || losesTag || !line.indent().empty());
    if (mayBelongAbove && wouldSwallow(pieces[above].line, line, triviaBelow(above), dialect))
        return losesTag ? Reason::tr("without its type tag the line would belong to the one above it")
               : turned ? Reason::tr("without a separator the line would belong to the one above it")
                        : Reason::tr("with this value the line would belong to the one above it");
    const bool swallows =
        below != none && wouldSwallow(line, pieces[below].line, triviaBelow(piece), dialect);
    if (swallows || takesWhatFollows(piece, line))
        return Reason::tr("the line below it would be read as part of the value");
    return line.text == pieces[piece].original() ? std::string() : findClosing(line);
}

// Whether blank lines and comments below a piece would be read as part of an entry in its place.
bool IniFile::takesWhatFollows(std::uint32_t piece, const Statement& line) const
{
    if (!takesInBlankLine(line, dialect))
        return false;
    std::string lines = endedByLineFeed(line.lines());
    const std::size_t size = lines.size();
    bool isTrivia = true;
    for (std::uint32_t at = pieces[piece].next; at != none && isTrivia; at = pieces[at].next) {
        lines += pieces[at].line.text;
        isTrivia = pieces[at].line.kind == Statement::Kind::Trivia;
    }
    const std::optional<Statement> read = IniScanner(lines, dialect).next();
    return read && read->text.size() > size;
}

IniTrivia IniFile::triviaBelow(std::uint32_t piece) const
{
    IniTrivia trivia;
    const std::uint32_t below = pieces[piece].below;
    for (std::uint32_t at = pieces[piece].next; below != none && at != below; at = pieces[at].next)
        trivia = trivia | describeTrivia(pieces[at].line.text);
    return trivia;
}

bool IniFile::goes(std::uint32_t piece) const
{
    const LineNode& node = index.node(pieces[piece].node);
    return (pieces[piece].line.isHeader() ? node : index.node(node.parent)).section->going;
}

} // namespace Repository::Documents
