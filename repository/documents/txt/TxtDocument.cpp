#include "repository/documents/txt/TxtDocument.h"

#include "repository/documents/common/ComponentCodec.h"
#include "repository/documents/common/TextLine.h"
#include "repository/documents/common/TypeTag.h"
#include "repository/documents/txt/TxtScanner.h"

#include <algorithm>
#include <unordered_set>

namespace Repository::Documents {

namespace {

std::string_view lastLineEndOf(std::string_view text)
{
    std::size_t begin = text.size();
    if (begin > 0 && isLineEnd(text[begin - 1]))
        --begin;
    if (begin > 0 && text.substr(begin - 1) == "\r\n")
        --begin;
    return text.substr(begin);
}

std::string pathOfKey(const Statement& line, const Dialect& dialect)
{
    return line.plainKey ? std::string(line.key()) : txtKeyPath(line.key(), dialect);
}

// What is before the last component in a sibling's key, its dot included; empty without one.
std::string_view parentText(std::string_view key)
{
    return key.substr(0, key.rfind('.') + 1);
}

} // namespace

SiblingPlace TxtDocument::placeOf(std::string_view path) const
{
    const LineIndex& index = file->index;
    const std::uint32_t id = index.find(path);
    if (id == none || index.node(id).next == none)
        return {SiblingPlace::Kind::Last, {}};
    const LineNode& node = index.node(id);
    if (node.previous == none)
        return {SiblingPlace::Kind::First, {}};
    std::string name;
    LineIndex::appendComponent(name, index.node(node.previous));
    return {SiblingPlace::Kind::After, joinPath(splitLast(path).parent, name)};
}

std::string TxtDocument::spellingOf(const Statement& entry) const
{
    std::string_view text = entry.text;
    text.remove_suffix(lastLineEndOf(text).size());
    return std::string(text.substr(entry.keyEnd));
}

std::optional<std::string> TxtDocument::withSpelling(const Statement& entry, std::string_view spelling) const
{
    std::string text(entry.text.substr(0, entry.keyEnd));
    text.append(spelling).append(lastLineEndOf(entry.text));
    const std::optional<Statement> now = scanTxtEntry(text, dialect);
    const bool hasLineEnd = !dialect.spelling && !lastLineEndOf(spelling).empty();
    if (!now || hasLineEnd || now->key() != entry.key() || now->begin != entry.begin ||
        now->tag != entry.tag || text.find('\0') != std::string::npos)
        return std::nullopt;
    return text;
}

std::string TxtDocument::explainMisspelling(std::string_view spelling) const
{
    return Reason::tr("a txt file would not read %1 as the value of one entry", {quoted(spelling)});
}

std::vector<std::uint32_t> TxtDocument::piecesOf(std::uint32_t node) const
{
    std::vector<std::uint32_t> found;
    for (const std::uint32_t id : file->index.subtree(node)) {
        if (file->index.node(id).entry != none)
            found.push_back(file->index.node(id).entry);
    }
    if (found.size() < 2)
        return found;
    const std::unordered_set<std::uint32_t> wanted(found.begin(), found.end());
    found.clear();
    for (std::uint32_t piece = file->pieces.front(); piece != none; piece = file->pieces[piece].next) {
        if (wanted.count(piece) > 0)
            found.push_back(piece);
    }
    return found;
}

std::optional<LineDocument::NamePlace> TxtDocument::nameIn(std::uint32_t, std::size_t depth,
                                                           std::uint32_t piece) const
{
    return placeInPath(file->pieces[piece].line, depth);
}

std::string TxtDocument::spellKey(std::string_view path, std::string_view separator) const
{
    const std::string name = decodePath(path);
    const std::string sample = std::string(name).append(separator) + 'x';
    const std::optional<Statement> line = scanTxtEntry(sample, dialect);
    return line && pathOfKey(*line, dialect) == path ? name : escapeTxtKey(path, dialect);
}

std::string TxtDocument::spellComponent(std::string_view name, const Statement& line, const NamePlace&) const
{
    return spellKey(name, line.isSeparated() ? line.separator() : std::string_view("="));
}

// With any separator.
std::string TxtDocument::spellPath(std::string_view path, Statement::Kind) const
{
    return spellKey(path, "=");
}

Outcome TxtDocument::insert(std::string_view path, const Value& value)
{
    LineIndex& index = file->index;
    LinePieces& pieces = file->pieces;
    const std::optional<std::vector<std::string_view>> components = splitPath(path);
    if (!components)
        return refused(Reason::tr("%1 is not a path", {quoted(path)}));
    if (components->size() > deepestTxtPath)
        return refused(Reason::tr("the path has more than %1 components", {std::to_string(deepestTxtPath)}));
    if (value.type == Type::Group)
        return refused(contains(path) ? Reason::tr("there is such a group already")
                                      : Reason::tr("a txt file has no place for a group without entries"));
    if (file->findEntry(path) != none)
        return refused(Reason::tr("there is such an entry already"));
    const PathEnds ends = splitLast(path);
    const NumberedComponent last = splitNumber(ends.last);
    const std::string plainPath = joinPath(ends.parent, last.name);
    const std::uint32_t first = index.find(plainPath);
    if (last.number != index.countOfEntries(first) + 1)
        return refused(
            Reason::tr("there is no %1 before it", {quoted(joinNumber(plainPath, last.number - 1))}));

    // After those of the same path, whose order tells them apart, else after its siblings.
    const std::uint32_t before =
        last.number > 1 ? index.findSibling(first, static_cast<std::uint32_t>(last.number - 1)) : none;
    const std::uint32_t above = before == none ? findPlace(plainPath) : index.node(before).entry;
    std::string draftText;
    const std::optional<Statement> draft = draftEntry(plainPath, above, draftText);
    if (!draft)
        return refused(Reason::tr("a txt file cannot hold the path %1", {quoted(plainPath)}));
    const bool belowTag = above != none && endsInTypeTag(pieces[above].line.text);
    std::string text = fillDraft(*draft, value, belowTag);
    const std::optional<Statement> line = scanTxtEntry(text, dialect);
    if (!line)
        return refused(file->getDialect().explainRefusal(*draft, value, file->style));
    std::string reason = file->findRefusal(text);
    if (!reason.empty())
        return refused(std::move(reason));
    if (above == none && !file->encoding.mayBegin(text))
        return refused(Reason::tr("the file would begin like a file of another encoding"));
    if (above != none && pieces[above].line.isEntry() && wouldSwallow(pieces[above].line, text, dialect))
        return refused(Reason::tr("the entry would be read as part of the one above it"));
    const std::uint32_t below = pieces.nextOf(above);
    if (below != none && wouldSwallow(*line, pieces[below].line.text, dialect))
        return refused(Reason::tr("the line below it would be read as part of the value"));

    const bool isBelowEntry = above != none && pieces[above].line.isEntry();
    const std::uint32_t piece =
        file->addOwn(below, isBelowEntry ? above : pieces.chainedLast(), std::move(text));
    pieces[piece].node = index.getOrCreateNext(index.getOrCreate(ends.parent, false), last.name, false);
    index.node(pieces[piece].node).entry = piece;
    if (before != none && index.node(before).firstChild == none)
        index.moveAfter(pieces[piece].node, before);
    else if (before != none)
        file->restoreOrder();
    return {};
}

// After the last entry of the nearest group that has any; at the end of a file without entries.
std::uint32_t TxtDocument::findPlace(std::string_view path) const
{
    const LineIndex& index = file->index;
    std::uint32_t node = none;
    for (std::string_view parent = path; node == none;) {
        parent = splitLast(parent).parent;
        node = index.find(parent);
    }
    while (index.node(node).lastChild != none)
        node = index.node(node).lastChild;
    return node == LineIndex::root ? file->pieces.back() : index.node(node).entry;
}

// The new entry with an empty value; nothing when no form of its key reads as the path.
std::optional<Statement> TxtDocument::draftEntry(std::string_view path, std::uint32_t above,
                                                 std::string& text) const
{
    const LinePieces& pieces = file->pieces;
    const LineStyle& style = file->style;
    const Statement* const sibling =
        above != none && pieces[above].line.isEntry() ? &pieces[above].line : nullptr;
    const PathEnds ends = splitLast(path);
    const std::string_view prefix = sibling ? parentText(sibling->key()) : std::string_view();
    for (const std::string& key :
         {std::string(prefix) + decodePath(ends.last), decodePath(path), escapeTxtKey(path, dialect)}) {
        text = sibling ? sibling->indent() : style.indent;
        text += key;
        text +=
            sibling && !sibling->value().empty() ? file->separatorBelow(above, key.size()) : style.separator;
        text += style.lineEnd;
        const std::optional<Statement> line = scanTxtEntry(text, dialect);
        if (line && pathOfKey(*line, dialect) == path && line->begin == 0)
            return line;
    }
    return std::nullopt;
}

// The text of the new entry, with a tag where it needs one; empty when the file has no form for the value.
std::string TxtDocument::fillDraft(const Statement& draft, const Value& value, bool belowTag) const
{
    const LineDialect& spelling = file->getDialect();
    const LineStyle& style = file->style;
    std::string text(draft.text);
    const auto write = [&](const std::string& emptyEntry) {
        const std::optional<Statement> line = scanTxtEntry(emptyEntry, dialect);
        return line ? spelling.write(*line, value, style).value_or(std::string()) : std::string();
    };
    // Without a value no blank is left at the end of the line, but for that which makes a separator of ":".
    if (toText(value).empty() && trimBlanks(draft.separator()) != ":") {
        text.erase(draft.keyEnd);
        text += draft.separator().substr(0, draft.separator().find('=') + 1);
        text += draft.trailing();
    }
    // Bytes that are no text would spoil the file for other readers.
    std::string plain = belowTag || value.type == Type::ByteArray ? std::string() : write(text);
    if (!plain.empty() && !spelling.runsOn(plain))
        return plain;
    return write(std::string(draft.indent()) + writeTypeTag('#', value.type) + style.lineEnd + text);
}

Outcome TxtDocument::remove(std::string_view path)
{
    LineIndex& index = file->index;
    LinePieces& pieces = file->pieces;
    const std::uint32_t top = index.find(path);
    if (top == none || top == LineIndex::root)
        return refused(top == none ? Reason::tr("no such entry")
                                   : Reason::tr("the root of a file is not removed"));
    std::vector<std::uint32_t> entries;
    for (const std::uint32_t id : index.subtree(top)) {
        if (index.node(id).entry != none)
            entries.push_back(id);
    }
    for (const std::uint32_t id : entries)
        pieces[index.node(id).entry].going = true;
    Outcome outcome = findRemovalFault(entries);
    for (const std::uint32_t id : entries)
        pieces[index.node(id).entry].going = false;
    if (!outcome.ok())
        return outcome;
    const bool othersMove = removalMovesSiblings(path) || removalMovesGroups(path);
    // From the deepest up, since groups go with the last of their entries.
    for (auto id = entries.rbegin(); id != entries.rend(); ++id) {
        if (*id == top) {
            file->takeEntry(top);
            continue;
        }
        file->takePiece(index.node(*id).entry);
        index.node(*id).entry = none;
        index.prune(*id);
    }
    if (othersMove)
        file->restoreOrder();
    return {};
}

Outcome TxtDocument::findRemovalFault(const std::vector<std::uint32_t>& going) const
{
    const LineIndex& index = file->index;
    const LinePieces& pieces = file->pieces;
    for (const std::uint32_t id : going) {
        const LinePiece& piece = pieces[index.node(id).entry];
        if (piece.previous != none && pieces[piece.previous].going)
            continue;
        std::uint32_t below = piece.next;
        while (below != none && pieces[below].going)
            below = pieces[below].next;
        if (below == none)
            continue;
        const std::string_view text = pieces[below].line.text;
        if (piece.previous == none && !file->encoding.mayBegin(text))
            return refused(Reason::tr("without it the file would begin like a file of another encoding"));
        if (piece.previous == none)
            continue;
        const Statement& above = pieces[piece.previous].line;
        if (above.isEntry() && wouldSwallow(above, text, dialect))
            return refused(Reason::tr("without it the line below would be read as part of the value above"));
        if (!above.isEntry() && pieces[below].line.isEntry() && endsInTypeTag(above.text))
            return refused(Reason::tr("without it the mark above would be that of the line below"));
    }
    return {};
}

} // namespace Repository::Documents
