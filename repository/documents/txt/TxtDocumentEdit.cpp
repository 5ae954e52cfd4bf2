#include "host/FrameworkCore/Values/ValueText.h"
#include "repository/documents/common/KeyText.h"
#include "repository/documents/common/Refusal.h"
#include "repository/documents/common/TextLine.h"
#include "repository/documents/common/TypeMark.h"
#include "repository/documents/txt/TxtDocument.h"

#include <algorithm>

// The operations that add entries to a txt file and take them out.

namespace Repository::Documents {

using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;

namespace {

std::string pathOfKey(const TxtLine& line)
{
    return line.plainKey ? std::string(line.key()) : txtKeyPath(line.key());
}

// What stands before the last component in a sibling's key, its dot included; empty without one.
std::string_view parentText(std::string_view key)
{
    return key.substr(0, key.rfind('.') + 1);
}

} // namespace

Outcome TxtDocument::insert(std::string_view path, const Value& value)
{
    const std::optional<std::vector<std::string_view>> components = splitPath(path);
    if (!components)
        return refused(quoted(path) + " is not a path");
    if (components->size() > deepestTxtPath)
        return refused("the path has more than " + std::to_string(deepestTxtPath) + " components");
    if (value.type == Type::Group)
        return refused(contains(path) ? "there is such a group already"
                                      : "a txt file has no place for a group without entries");
    if (findEntry(path))
        return refused("there is such an entry already");
    const PathEnds ends = splitLast(path);
    const NumberedComponent last = splitNumber(ends.last);
    const std::string plainPath = joinPath(ends.parent, last.name);
    const std::uint32_t first = index.find(plainPath);
    if (last.number != (first == none ? 0 : index.node(first).count) + 1)
        return refused("there is no " + quoted(joinNumber(plainPath, last.number - 1)) + " before it");

    // Behind those of the same path, whose order tells them apart, else behind its siblings.
    const std::uint32_t before =
        last.number > 1 ? index.findSibling(first, static_cast<std::uint32_t>(last.number - 1)) : none;
    const std::uint32_t above = before == none ? findPlace(plainPath) : index.node(before).entry;
    std::string draftText;
    const std::optional<TxtLine> draft = draftEntry(plainPath, above, draftText);
    if (!draft)
        return refused("a txt file cannot hold the path " + quoted(plainPath));
    const bool belowMark = above != none && endsInTypeMark(pieces[above].line.text);
    auto own = std::make_unique<std::string>(fillDraft(*draft, value, belowMark));
    const std::optional<TxtLine> line = scanTxtEntry(*own);
    if (!line)
        return refused(explainTxtRefusal(*draft, value));
    std::string reason = encoding.findRefusal(*own);
    if (!reason.empty())
        return refused(std::move(reason));
    if (above == none && !encoding.mayBegin(*own))
        return refused("the file would begin like a file of another encoding");
    if (above != none && pieces[above].line.entry && wouldSwallow(pieces[above].line, *own))
        return refused("the entry would be read as part of the one above it");
    const std::uint32_t below = above == none ? front : pieces[above].below;
    if (below != none && wouldSwallow(*line, pieces[below].line.text))
        return refused("the line below it would be read as part of the value");

    const std::uint32_t piece = addPiece(above, *line);
    pieces[piece].own = std::move(own);
    pieces[piece].node = index.demandNext(index.demand(ends.parent, false), last.name, false);
    index.node(pieces[piece].node).entry = piece;
    if (before != none && index.node(before).firstChild == none)
        index.moveAfter(pieces[piece].node, before);
    else if (before != none)
        restoreOrder();
    return {};
}

// Behind the last entry of the nearest group that has any; at the end of a file without entries.
std::uint32_t TxtDocument::findPlace(std::string_view path) const
{
    std::uint32_t node = none;
    for (std::string_view parent = path; node == none;) {
        parent = splitLast(parent).parent;
        node = index.find(parent);
    }
    while (index.node(node).lastChild != none)
        node = index.node(node).lastChild;
    return node == TxtIndex::root ? back : index.node(node).entry;
}

// The new entry with an empty value; nothing when no form of its key reads as the path.
std::optional<TxtLine> TxtDocument::draftEntry(std::string_view path, std::uint32_t above,
                                               std::string& text) const
{
    const TxtLine* const sibling = above != none && pieces[above].line.entry ? &pieces[above].line : nullptr;
    const PathEnds ends = splitLast(path);
    const std::string_view prefix = sibling ? parentText(sibling->key()) : std::string_view();
    for (const std::string& key :
         {std::string(prefix).append(ends.last), std::string(path), escapeTxtKey(path)}) {
        text = sibling ? sibling->indent() : style.indent;
        text += key;
        text += sibling && !sibling->value().empty()
                    ? alignedSeparator(sibling->separator(), sibling->key().size(), key.size())
                    : style.separator;
        text += style.lineEnd;
        const std::optional<TxtLine> line = scanTxtEntry(text);
        if (line && pathOfKey(*line) == path && line->begin == 0)
            return line;
    }
    return std::nullopt;
}

// The text of the new entry, with a mark where it needs one; empty when the file has no form for the value.
std::string TxtDocument::fillDraft(const TxtLine& draft, const Value& value, bool belowMark) const
{
    std::string text(draft.text);
    const auto write = [&](const std::string& emptyEntry) {
        const std::optional<TxtLine> line = scanTxtEntry(emptyEntry);
        return line ? writeTxtValue(*line, value, style).value_or(std::string()) : std::string();
    };
    // Without a value no blank is left at the end of the line, but for that which makes a separator of ":".
    if (FrameworkCore::Values::toText(value).empty() && trimBlanks(draft.separator()) != ":") {
        text.erase(draft.keyEnd);
        text += draft.separator().substr(0, draft.separator().find('=') + 1);
        text += draft.tail();
    }
    // Bytes that are no text would spoil the file for other readers.
    std::string plain = belowMark || value.type == Type::ByteArray ? std::string() : write(text);
    if (!plain.empty() && !goesOnBelow(plain))
        return plain;
    return write(std::string(draft.indent()) + writeTypeMark('#', value.type) + style.lineEnd + text);
}

bool TxtDocument::removalMovesSiblings(std::string_view path) const
{
    const std::uint32_t id = index.find(path);
    if (id == none || index.node(id).entry == none)
        return false;
    return index.node(id).number < index.node(index.findSibling(id, 1)).count;
}

bool TxtDocument::removalMovesGroups(std::string_view path) const
{
    const std::uint32_t top = index.find(path);
    if (top == none || top == TxtIndex::root)
        return false;
    const std::uint32_t group = index.groupLeftWithout(top);
    const auto isIn = [this](std::uint32_t piece, std::uint32_t node) {
        return piece != none && index.isWithin(pieces[piece].node, node);
    };
    // A group that goes on right above or right below begins where it did, as far as others can tell.
    for (const std::uint32_t id : index.subtree(top)) {
        const std::uint32_t entry = index.node(id).entry;
        const std::uint32_t above = entry == none ? none : nextEntry(entry, &Piece::above);
        if (group == TxtIndex::root || entry == none || isIn(above, top))
            continue;
        std::uint32_t below = nextEntry(entry, &Piece::below);
        while (isIn(below, top))
            below = nextEntry(below, &Piece::below);
        if (!isIn(above, group) && !isIn(below, group))
            return true;
    }
    return false;
}

std::uint32_t TxtDocument::nextEntry(std::uint32_t piece, std::uint32_t Piece::*direction) const
{
    do
        piece = pieces[piece].*direction;
    while (piece != none && pieces[piece].node == none);
    return piece;
}

// Brings the siblings in the index into the order of the file.
void TxtDocument::restoreOrder()
{
    std::vector<std::uint32_t> order;
    walkNodes([&order](std::uint32_t id) { order.push_back(id); });
    for (const std::uint32_t id : order)
        index.moveToEnd(id);
}

Outcome TxtDocument::remove(std::string_view path)
{
    const std::uint32_t top = index.find(path);
    if (top == none || top == TxtIndex::root)
        return refused(top == none ? "there is no such entry" : "the root of a file is not removed");
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
        takePiece(index.node(*id).entry);
        if (*id == top)
            dropNumbered(top);
        else
            index.dropEntry(*id);
    }
    if (othersMove)
        restoreOrder();
    return {};
}

Outcome TxtDocument::findRemovalFault(const std::vector<std::uint32_t>& going) const
{
    for (const std::uint32_t id : going) {
        const Piece& piece = pieces[index.node(id).entry];
        if (piece.above != none && pieces[piece.above].going)
            continue;
        std::uint32_t below = piece.below;
        while (below != none && pieces[below].going)
            below = pieces[below].below;
        if (below == none)
            continue;
        const std::string_view text = pieces[below].line.text;
        if (piece.above == none && !encoding.mayBegin(text))
            return refused("without it the file would begin like a file of another encoding");
        if (piece.above == none)
            continue;
        const TxtLine& above = pieces[piece.above].line;
        if (above.entry && wouldSwallow(above, text))
            return refused("without it the line below would be read as part of the value above");
        if (!above.entry && pieces[below].line.entry && endsInTypeMark(above.text))
            return refused("without it the mark above would be that of the line below");
    }
    return {};
}

// The later entries of the same path move up by one.
void TxtDocument::dropNumbered(std::uint32_t node)
{
    TxtNode& first = index.node(index.findSibling(node, 1));
    std::uint32_t emptied = node;
    for (std::uint32_t number = index.node(node).number + 1; number <= first.count; ++number) {
        const std::uint32_t next = index.findSibling(node, number);
        index.node(emptied).entry = index.node(next).entry;
        pieces[index.node(emptied).entry].node = emptied;
        emptied = next;
    }
    --first.count;
    index.dropEntry(emptied);
}

} // namespace Repository::Documents
