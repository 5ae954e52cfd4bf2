#include "repository/documents/ini/IniInsertion.h"

#include "repository/documents/common/ComponentCodec.h"
#include "repository/documents/common/KeyRefusal.h"
#include "repository/documents/common/TypeTag.h"
#include "repository/documents/ini/IniSections.h"

namespace Repository::Documents {

namespace {

// After the last blank line of trivia; what follows there is said of the section below.
std::size_t afterLastBlank(std::string_view trivia)
{
    std::size_t after = 0;
    for (std::size_t at = 0; at < trivia.size();) {
        const TextLine line = textLineAt(trivia, at);
        at = line.end;
        if (trimBlanks(line.content).empty())
            after = at;
    }
    return after;
}

} // namespace

bool IniInsertion::endsBlank() const
{
    if (pieces.back() == none)
        return true;
    const std::string_view end = pieces[pieces.back()].line.text;
    return afterLastBlank(end) == end.size();
}

Outcome IniInsertion::insert(std::string_view path, const Value& value)
{
    if (!splitPath(path))
        return refused(Reason::tr("%1 is not a path", {quoted(path)}));
    return value.type == Type::Group ? insertSection(path) : insertEntry(path, value);
}

Outcome IniInsertion::insertSection(std::string_view path)
{
    const std::uint32_t node = index.find(path);
    if (node != none && index.node(node).section)
        return refused(Reason::tr("there is such a section already"));
    std::string reason;
    const std::string header = headerText(path, reason);
    if (header.empty())
        return refused(std::move(reason));
    placeSection(path, header);
    return {};
}

Outcome IniInsertion::insertEntry(std::string_view path, const Value& value)
{
    const PathEnds ends = splitLast(path);
    const NumberedPath numbered = numberedPath(path);
    if (file.findEntry(path) != none)
        return refused(Reason::tr("there is such an entry already"));
    if (numbered.number != index.countOfEntries(index.find(numbered.first)) + 1)
        return refused(Reason::tr("there is no %1 before it",
                                  {quoted(joinNumber(numbered.first, numbered.number - 1))}));
    const std::optional<std::string> key = decodeKey(splitNumber(ends.last).name);
    if (!key)
        return refused(explainNoKey(ends.last));

    std::uint32_t group = index.find(ends.parent);
    const std::string same = group == none ? std::string() : file.findSameKey(group, *key);
    if (!same.empty() && numbered.number == 1)
        return refused(Reason::tr("%1 has %2 there, which its program takes for the same key",
                                  {file.getDialect().fileNoun(), quoted(same)}));
    if (group == LineIndex::root && dialect.needsSections)
        return refused(Reason::tr("%1 has no keys outside of a section", {file.getDialect().fileNoun()}));
    std::string reason;
    std::string header;
    if (group != LineIndex::root && (group == none || !index.node(group).hasHeader())) {
        header = headerText(ends.parent, reason);
        if (header.empty())
            return refused(std::move(reason));
        group = none;
    }
    const std::uint32_t above = group == none ? none : index.node(group).section->last;
    std::string text = entryText(*key, value, above, reason);
    const std::optional<Statement> line = scanSingle(text, dialect);
    if (!line)
        return refused(std::move(reason));
    reason = file.findRefusal(text);
    if (reason.empty())
        reason = group == none ? file.findClosing(*line) : findClash(above, *line);
    if (!reason.empty())
        return refused(std::move(reason));

    if (group == none)
        group = placeSection(ends.parent, header);
    const std::uint32_t last = index.node(group).section->last;
    const std::uint32_t piece = last == none ? placeFirstAtRoot(std::move(text))
                                             : file.addOwn(pieces[last].next, last, std::move(text));
    pieces[piece].node = index.getOrCreateNext(group, splitNumber(ends.last).name, false);
    index.node(pieces[piece].node).entry = index.node(group).section->last = piece;
    return {};
}

// Why an entry cannot come below a piece, none being the front; empty when it can.
std::string IniInsertion::findClash(std::uint32_t above, const Statement& line) const
{
    if (above == none && !file.encoding.mayBegin(line.text))
        return Reason::tr("the file would begin like a file of another encoding");
    if (above != none && wouldSwallow(pieces[above].line, line, {}, dialect))
        return Reason::tr("the entry would be read as part of the one above it");
    const std::uint32_t below = pieces.chainedBelow(above);
    const IniTrivia trivia = above == none ? IniTrivia{true, false} : file.triviaBelow(above);
    if (below != none && wouldSwallow(line, pieces[below].line, trivia, dialect))
        return Reason::tr("the line below it would be read as part of the value");
    return file.findClosing(line);
}

std::string IniInsertion::headerText(std::string_view path, std::string& reason) const
{
    const NumberedPath siblings = numberedPath(path);
    const std::size_t count = index.countOfSections(index.find(siblings.first));
    if (siblings.number != count + 1) {
        reason =
            Reason::tr("there is no section %1 before it", {quoted(joinNumber(siblings.first, count + 1))});
        return {};
    }
    const std::optional<std::string> name = sectionName(siblings.first, dialect);
    std::string text = '[' + name.value_or(std::string()) + ']' + file.style.lineEnd;
    const std::optional<Statement> line = scanSingle(text, dialect);
    if (!name || !line || !line->isHeader() || line->key() != *name || isIniTooDeep(path) ||
        sectionPath(line->key(), dialect) != siblings.first) {
        reason = Reason::tr("%1 cannot hold a section of the path %2",
                            {file.getDialect().fileNoun(), quoted(siblings.first)});
        return {};
    }
    reason = file.findClosing(*line);
    if (reason.empty())
        reason = file.findRefusal(text);
    if (reason.empty())
        reason = file.explainName(text);
    const std::uint32_t last = pieces.chainedLast();
    IniTrivia after;
    for (std::uint32_t at = last == none ? none : pieces[last].next; at != none; at = pieces[at].next)
        after = after | describeTrivia(pieces[at].line.text);
    const bool goesOnFromThere = !after.any || (dialect.commentsBetweenLines && !after.blank);
    if (goesOnFromThere && last != none && pieces[last].line.isEntry() &&
        takesInBlankLine(pieces[last].line, dialect))
        reason = Reason::tr(
            "the last value of the file ends in a backslash, by which it would go on in what is added");
    return reason.empty() ? text : std::string();
}

std::string IniInsertion::entryText(std::string_view given, const Value& value, std::uint32_t above,
                                    std::string& reason) const
{
    const LineDialect& spelling = file.getDialect();
    const bool hasSpelling = dialect.spelling && dialect.spelling->writeKey;
    const std::string key = hasSpelling ? dialect.spelling->writeKey(given) : std::string(given);
    const bool hasSibling = above != none && pieces[above].line.isEntry();
    const Statement sibling = hasSibling ? pieces[above].line : Statement();
    const bool follow =
        sibling.isSeparated() && !sibling.value().empty() && !trimBlanks(sibling.separator()).empty();
    const bool isBelow = above != none && !pieces[above].line.isHeader();
    const std::string indent(isBelow ? pieces[above].line.indent() : std::string_view(file.style.indent));
    std::string draft = indent;
    draft += key;
    draft += follow ? file.separatorBelow(above, key.size()) : file.style.separator;
    while (toText(value).empty() && isBlank(draft.back()))
        draft.pop_back();
    draft += file.style.lineEnd;
    const std::optional<Statement> line = scanSingle(draft, dialect);
    if (!line || !line->isEntry() || !line->isSeparated() || line->keyBegin != indent.size() ||
        line->key() != key || line->valueEnd < line->valueBegin || key.find('\0') != std::string::npos) {
        reason = Reason::tr("%1 cannot hold the key %2", {file.getDialect().fileNoun(), quoted(given)});
        return {};
    }
    reason = file.explainName(draft);
    if (!reason.empty()) {
        reason = Reason::tr("%1 cannot hold the key %2: %3",
                            {file.getDialect().fileNoun(), quoted(given), reason});
        return {};
    }
    // Bytes without a tag would make the file binary.
    std::optional<std::string> text;
    if (value.type != Type::ByteArray)
        text = spelling.write(*line, value, file.style);
    if (!text) {
        const char comment = file.style.comment == '\0' ? dialect.comments.front() : file.style.comment;
        const std::string tagged = indent + writeTypeTag(comment, value.type) + file.style.lineEnd + draft;
        const std::optional<Statement> taggedLine = scanSingle(tagged, dialect);
        text = taggedLine ? spelling.write(*taggedLine, value, file.style) : std::nullopt;
    }
    if (!text)
        reason = spelling.explainRefusal(*line, value, file.style);
    return std::move(text).value_or(std::string());
}

std::uint32_t IniInsertion::placeSection(std::string_view path, const std::string& header)
{
    const std::string blank = endsBlank() ? std::string() : file.style.lineEnd;
    const std::uint32_t id = file.addOwn(none, pieces.chainedLast(), header);
    // The blank line goes when the section goes, so it is part of the piece.
    LinePiece& piece = pieces[id];
    piece.own->text = blank + header;
    piece.line.text = piece.own->text;
    piece.line.shift(blank.size());
    piece.node = index.getOrCreateSection(numberedPath(path).first, false);
    LineSection& section = *index.node(piece.node).section;
    section.header = section.last = id;
    return piece.node;
}

std::uint32_t IniInsertion::placeFirstAtRoot(std::string text)
{
    if (pieces.chainedLast() == none) {
        // What the last line of comments says is not said of the new entry.
        if (pieces.back() != none && endsInTypeTag(pieces[pieces.back()].line.text))
            file.addOwn(none, none, file.style.lineEnd);
        return file.addOwn(none, none, std::move(text));
    }
    // After what is said of the whole file, and set off from what is said of the first section.
    std::uint32_t before = pieces.front();
    if (before != pieces.chainedBelow(none)) {
        const std::size_t cut = afterLastBlank(pieces[before].line.text);
        if (cut > 0 && cut < pieces[before].line.text.size())
            split(before, cut);
        if (cut > 0)
            before = pieces[before].next;
    }
    const std::uint32_t blank = file.addOwn(before, none, file.style.lineEnd);
    return file.addOwn(blank, none, std::move(text));
}

// Makes two pieces of one of trivia.
void IniInsertion::split(std::uint32_t trivia, std::size_t cut)
{
    Statement lower;
    lower.text = pieces[trivia].line.text.substr(cut);
    const std::uint32_t rest = file.add(pieces[trivia].next, none, lower);
    LinePiece& upper = pieces[trivia];
    if (upper.own) {
        pieces[rest].own = std::make_unique<OwnText>(OwnText{std::string(lower.text), {}});
        pieces[rest].line.text = pieces[rest].own->text;
    }
    upper.line.text = upper.line.text.substr(0, cut);
}

} // namespace Repository::Documents
