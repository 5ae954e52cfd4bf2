#include "repository/documents/txt/TxtDocument.h"

#include "repository/documents/common/KeyText.h"
#include "repository/documents/common/Refusal.h"
#include "repository/documents/common/SameValue.h"
#include "repository/documents/common/TextLine.h"
#include "repository/documents/common/TextPosition.h"

#include <algorithm>
#include <limits>

namespace Repository::Documents {

using FrameworkCore::Values::Value;

namespace {

// The line end of the text's last line.
std::string_view lineEndOf(std::string_view text)
{
    std::size_t begin = text.size();
    while (begin > 0 && (text[begin - 1] == '\n' || text[begin - 1] == '\r') && text.size() - begin < 2)
        --begin;
    return text.substr(begin);
}

} // namespace

Outcome TxtDocument::parse(std::string bytes)
{
    TxtDocument fresh;
    Outcome outcome = fresh.load(std::move(bytes));
    if (outcome.ok())
        *this = std::move(fresh);
    return outcome;
}

Outcome TxtDocument::load(std::string bytes)
{
    if (bytes.size() > std::numeric_limits<std::uint32_t>::max())
        return refused("a txt file of more than 4 GB is not read");
    Outcome outcome = encoding.decode(bytes, {});
    if (!outcome.ok())
        return outcome;
    fileText = std::make_unique<const std::string>(std::move(bytes));
    const std::string_view text = *fileText;
    const std::size_t nul = text.find('\0');
    if (nul != std::string_view::npos) {
        const TextPosition position = positionOf(text, nul);
        return {"there is a NUL character: it is a binary file, or UTF-16 without its mark", position.line,
                position.column};
    }
    const TextLine first = textLineAt(text, 0);
    if (first.content.size() < first.end)
        style.lineEnd = text.substr(first.content.size(), first.end - first.content.size());
    // An entry takes some bytes; a file of blank lines must not make room for as many.
    const std::size_t lines = countLineEnds(text, style.lineEnd.front());
    const std::size_t entries = std::min(lines, text.size() / 8) + 1;
    pieces.reserve(entries);
    index.reserve(entries + entries / 8);
    Group latest;
    TxtScanner scanner(text);
    while (const std::optional<TxtLine> line = scanner.next()) {
        const std::uint32_t piece = addPiece(back, *line);
        pieces[piece].original = line->text;
        if (line->entry)
            outcome = takeUp(*line, piece, latest);
        if (!outcome.ok())
            return outcome;
    }
    return {};
}

Outcome TxtDocument::takeUp(const TxtLine& line, std::uint32_t piece, Group& latest)
{
    const std::string encoded = line.plainKey ? std::string() : txtKeyPath(line.key());
    const std::string_view path = line.plainKey ? line.key() : std::string_view(encoded);
    if (std::size_t(std::count(path.begin(), path.end(), '.')) >= deepestTxtPath) {
        const TextPosition position =
            positionOf(*fileText, std::size_t(line.key().data() - fileText->data()));
        return {"the path has more than " + std::to_string(deepestTxtPath) + " components", position.line,
                position.column};
    }
    const PathEnds ends = splitLast(path);
    // Mostly the entries of a group stand together.
    if (line.plainKey && ends.parent != latest.path)
        latest = {ends.parent, index.demand(ends.parent, true)};
    const std::uint32_t group = line.plainKey ? latest.id : index.demand(ends.parent, false);
    pieces[piece].node = index.demandNext(group, ends.last, line.plainKey);
    index.node(pieces[piece].node).entry = piece;
    learnStyle(line);
    return {};
}

void TxtDocument::learnStyle(const TxtLine& entry)
{
    if (!styleKnown && !entry.value().empty()) {
        styleKnown = true;
        style.separator = plainSeparator(entry.separator());
        style.indent = entry.indent();
    }
    if (style.quote == '\0' && !entry.continued)
        style.quote = quoteAround(entry.value());
}

std::uint32_t TxtDocument::addPiece(std::uint32_t above, const TxtLine& line)
{
    auto id = static_cast<std::uint32_t>(pieces.size());
    if (unused.empty()) {
        pieces.emplace_back();
    } else {
        id = unused.back();
        unused.pop_back();
    }
    Piece& piece = pieces[id];
    piece.line = line;
    piece.above = above;
    std::uint32_t& place = above == none ? front : pieces[above].below;
    piece.below = place;
    (piece.below == none ? back : pieces[piece.below].above) = id;
    place = id;
    return id;
}

void TxtDocument::takePiece(std::uint32_t id)
{
    Piece& piece = pieces[id];
    (piece.above == none ? front : pieces[piece.above].below) = piece.below;
    (piece.below == none ? back : pieces[piece.below].above) = piece.above;
    piece = Piece();
    unused.push_back(id);
}

TxtDocument::Piece* TxtDocument::findEntry(std::string_view path)
{
    const std::uint32_t node = index.find(path);
    const std::uint32_t entry = node == none ? none : index.node(node).entry;
    return entry == none ? nullptr : &pieces[entry];
}

const TxtDocument::Piece* TxtDocument::findEntry(std::string_view path) const
{
    return const_cast<TxtDocument*>(this)->findEntry(path);
}

template <typename Callback>
void TxtDocument::walkTexts(const Callback& callback) const
{
    std::string_view above;
    for (std::uint32_t id = front; id != none; id = pieces[id].below) {
        const std::string_view text = pieces[id].line.text;
        // The last line of the file may lack its end until another comes behind it; and where lines end in
        // different ways, two ends may not become one when what was between them goes.
        const bool merged = !above.empty() && above.back() == '\r' && text.front() == '\n';
        if (!endsLine(above) || merged)
            callback(style.lineEnd, none);
        if (!callback(text, id))
            return;
        above = text;
    }
}

void TxtDocument::walkNodes(const std::function<void(std::uint32_t)>& callback) const
{
    ++visits;
    index.node(TxtIndex::root).visit = visits; // it is no entry
    std::vector<std::uint32_t> unseen;
    for (std::uint32_t id = front; id != none; id = pieces[id].below) {
        std::uint32_t seen = pieces[id].node;
        for (; seen != none && index.node(seen).visit != visits; seen = index.node(seen).parent) {
            index.node(seen).visit = visits;
            unseen.push_back(seen);
        }
        for (; !unseen.empty(); unseen.pop_back())
            callback(unseen.back());
    }
}

void TxtDocument::visit(const std::function<void(const Entry&)>& visitor) const
{
    Entry entry;
    std::uint32_t group = TxtIndex::root; // whose path begins that of the entry
    std::size_t groupSize = 0;
    walkNodes([&](std::uint32_t id) {
        const TxtNode& node = index.node(id);
        if (node.parent != group) {
            group = node.parent;
            entry.path = index.pathOf(group);
            groupSize = entry.path.size();
        }
        entry.path.resize(groupSize);
        if (groupSize > 0)
            entry.path += '.';
        TxtIndex::appendComponent(entry.path, node);
        entry.value = node.entry == none ? Value() : readTxtValue(pieces[node.entry].line);
        visitor(entry);
    });
}

SiblingPlace TxtDocument::placeOf(std::string_view path) const
{
    const std::uint32_t id = index.find(path);
    if (id == none || index.node(id).next == none)
        return {SiblingPlace::Kind::Last, {}};
    const TxtNode& node = index.node(id);
    if (node.previous == none)
        return {SiblingPlace::Kind::First, {}};
    std::string name;
    TxtIndex::appendComponent(name, index.node(node.previous));
    return {SiblingPlace::Kind::After, joinPath(splitLast(path).parent, name)};
}

bool TxtDocument::contains(std::string_view path) const
{
    return index.find(path) != none;
}

std::string TxtDocument::getBytes() const
{
    std::string text;
    text.reserve(fileText->size() + fileText->size() / 16);
    walkTexts([&text](std::string_view part, std::uint32_t) {
        text += part;
        return true;
    });
    return encoding.encode(std::move(text));
}

std::optional<Span> TxtDocument::locate(std::string_view path) const
{
    const Piece* const entry = findEntry(path);
    if (!entry)
        return std::nullopt;
    std::size_t offset = encoding.markSize();
    walkTexts([&](std::string_view part, std::uint32_t id) {
        const bool found = id != none && &pieces[id] == entry;
        offset += encoding.sizeOf(found ? part.substr(0, entry->line.valueBegin) : part);
        return !found;
    });
    return Span{offset, encoding.sizeOf(entry->line.value())};
}

std::optional<std::string> TxtDocument::spell(std::string_view path) const
{
    const Piece* const piece = findEntry(path);
    if (!piece)
        return std::nullopt;
    std::string_view text = piece->line.text;
    text.remove_suffix(lineEndOf(text).size());
    return std::string(text.substr(piece->line.keyEnd));
}

Outcome TxtDocument::respell(std::string_view path, std::string_view spelling)
{
    Piece* const piece = findEntry(path);
    if (!piece)
        return refused(contains(path) ? "it is a group and has no value" : "there is no such entry");
    const TxtLine& line = piece->line;
    std::string text(line.text.substr(0, line.keyEnd));
    text.append(spelling).append(lineEndOf(line.text));
    const std::optional<TxtLine> now = scanTxtEntry(text);
    if (!now || !lineEndOf(spelling).empty() || now->key() != line.key() || now->begin != line.begin ||
        now->mark != line.mark || text.find('\0') != std::string::npos)
        return refused("a txt file would not read " + quoted(spelling) + " as the value of one entry");
    return replace(*piece, std::move(text));
}

Outcome TxtDocument::set(std::string_view path, const Value& value)
{
    Piece* const piece = findEntry(path);
    if (!piece)
        return refused(contains(path) ? "it is a group and has no value" : "there is no such entry");
    if (isSame(readTxtValue(piece->line), value))
        return {};
    const TxtLine original =
        piece->original.empty() ? piece->line : scanTxtEntry(piece->original).value_or(piece->line);
    if (!piece->original.empty() && isSame(readTxtValue(original), value))
        return replace(*piece, std::string(piece->original));
    std::optional<std::string> text = writeTxtValue(original, value, style);
    if (!text)
        return refused(explainTxtRefusal(original, value));
    return replace(*piece, *std::move(text));
}

Outcome TxtDocument::replace(Piece& piece, std::string text)
{
    const bool asBefore = text == piece.original;
    auto own = asBefore ? nullptr : std::make_unique<std::string>(std::move(text));
    const std::optional<TxtLine> line = scanTxtEntry(asBefore ? piece.original : std::string_view(*own));
    if (!line)
        return refused("a txt file cannot hold the value at this place");
    std::string reason = encoding.findRefusal(line->text);
    if (!reason.empty())
        return refused(std::move(reason));
    if (piece.below != none && wouldSwallow(*line, pieces[piece.below].line.text))
        return refused("the line below it would be read as part of the value");
    piece.own = std::move(own);
    piece.line = *line;
    return {};
}

} // namespace Repository::Documents
