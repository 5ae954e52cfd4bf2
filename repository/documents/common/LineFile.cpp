#include "repository/documents/common/LineFile.h"

#include "repository/documents/common/ComponentCodec.h"
#include "repository/documents/common/Latin1.h"
#include "repository/documents/common/TextLine.h"
#include "repository/documents/common/TypeTag.h"
#include "repository/documents/common/Values.h"

#include <algorithm>
#include <limits>
#include <unordered_map>
#include <utility>

namespace Repository::Documents {

Outcome LineFile::load(std::string bytes, bool isOwn)
{
    if (bytes.size() > std::numeric_limits<std::uint32_t>::max())
        return refused(Reason::tr("%1 of more than 4 GB is not read", {getDialect().fileNoun()}));
    Outcome decoded = encoding.decode(bytes, {});
    if (!decoded.ok())
        return decoded;
    original = std::move(bytes);
    const std::string_view text = original;
    style.lineEnd = lineEndOf(text);
    style.isLatin1 = !isUtf8(text) && isLatin1(text);
    // An entry takes some bytes; a file of blank lines must not make room for as many.
    const std::size_t lines = countLineEnds(text, style.lineEnd.front());
    const std::size_t entries = std::min(lines, text.size() / 8) + 1;
    pieces.reserve(entries);
    index.reserve(entries + entries / 8);
    return readStatements(isOwn);
}

std::uint32_t LineFile::findEntry(std::string_view path) const
{
    const std::uint32_t node = index.find(path);
    return node == none ? none : index.node(node).entry;
}

void LineFile::walkNodes(const std::function<void(std::uint32_t)>& callback) const
{
    ++visits;
    index.node(LineIndex::root).visit = visits; // it is not an entry
    std::vector<std::uint32_t> unseen;
    for (std::uint32_t piece = pieces.front(); piece != none; piece = pieces[piece].next) {
        std::uint32_t seen = pieces[piece].node;
        for (; seen != none && index.node(seen).visit != visits; seen = index.node(seen).parent) {
            index.node(seen).visit = visits;
            unseen.push_back(seen);
        }
        for (; !unseen.empty(); unseen.pop_back())
            callback(unseen.back());
    }
}

void LineFile::walkPaths(const std::function<void(std::string&, const LineNode&)>& callback) const
{
    std::string path;
    std::uint32_t group = LineIndex::root; // whose path begins that of the entry
    std::size_t groupSize = 0;
    walkNodes([&](std::uint32_t id) {
        const LineNode& node = index.node(id);
        if (node.parent != group) {
            group = node.parent;
            path = index.pathOf(group);
            groupSize = path.size();
        }
        path.resize(groupSize);
        if (groupSize > 0)
            path += '.';
        LineIndex::appendComponent(path, node);
        callback(path, node);
    });
}

void LineFile::visit(const std::function<void(const Entry&)>& visitor) const
{
    Entry entry;
    walkPaths([&](std::string& path, const LineNode& node) {
        entry.path.swap(path);
        entry.value = node.entry == none ? Value() : getDialect().read(pieces[node.entry].line);
        visitor(entry);
        entry.path.swap(path);
    });
}

void LineFile::visitSpans(const Document::SpanVisitor& visitor) const
{
    std::unordered_map<std::uint32_t, std::size_t> offsets;
    walkPieces([&](std::uint32_t piece, std::size_t offset) {
        if (pieces[piece].line.isEntry())
            offsets.emplace(piece, offset);
        return true;
    });
    walkPaths([&](const std::string& path, const LineNode& node) {
        if (node.entry != none)
            visitor(path, valueSpan(node.entry, offsets.at(node.entry)));
    });
}

void LineFile::restoreOrder()
{
    std::vector<std::uint32_t> order;
    walkNodes([&order](std::uint32_t id) { order.push_back(id); });
    for (const std::uint32_t id : order)
        index.moveToEnd(id);
}

// The last line of the file may lack its end until another comes after it, and "\r" and "\n" of two lines are
// no line end together.
bool LineFile::needsLineEnd(std::string_view above, std::string_view next) const
{
    const bool merges = !above.empty() && above.back() == '\r' && next.front() == '\n';
    return !endsLine(above) || merges;
}

std::string LineFile::getBytes() const
{
    std::string bytes;
    bytes.reserve(original.size() + original.size() / 16);
    const auto append = [&bytes, this](std::string_view next, bool sharesLine) {
        if (!next.empty() && !sharesLine && needsLineEnd(bytes, next))
            bytes += style.lineEnd;
        bytes += next;
    };
    if (reshaped) {
        for (std::uint32_t piece = pieces.front(); piece != none; piece = pieces[piece].next)
            append(pieces[piece].line.text, pieces[piece].sharesLine);
        return encoding.encode(std::move(bytes));
    }
    const std::string_view file = original;
    std::size_t copied = 0;
    for (const auto& [at, piece] : edited) {
        append(file.substr(copied, at - copied), false);
        append(pieces[piece].line.text, pieces[piece].sharesLine);
        copied = at + pieces[piece].original().size();
    }
    append(file.substr(copied), false);
    return encoding.encode(std::move(bytes));
}

void LineFile::walkPieces(const std::function<bool(std::uint32_t, std::size_t)>& callback) const
{
    std::size_t offset = encoding.byteOrderMarkSize();
    std::string_view above;
    for (std::uint32_t piece = pieces.front(); piece != none; piece = pieces[piece].next) {
        const Statement& line = pieces[piece].line;
        if (!line.text.empty() && !pieces[piece].sharesLine && needsLineEnd(above, line.text))
            offset += encoding.sizeOf(style.lineEnd);
        if (!callback(piece, offset))
            return;
        offset += encoding.sizeOf(line.text);
        above = line.text.empty() ? above : line.text;
    }
}

Span LineFile::valueSpan(std::uint32_t piece, std::size_t offset) const
{
    const Statement& line = pieces[piece].line;
    return {offset + encoding.sizeOf(line.text.substr(0, line.valueBegin)), encoding.sizeOf(line.value())};
}

Span LineFile::locateValue(std::uint32_t located) const
{
    Span span;
    walkPieces([&](std::uint32_t piece, std::size_t offset) {
        if (piece == located)
            span = valueSpan(piece, offset);
        return piece != located;
    });
    return span;
}

Outcome LineFile::replace(std::uint32_t id, std::string_view newText)
{
    LinePiece& piece = pieces[id];
    const std::string_view before = piece.original();
    const bool asBefore = newText == before;
    auto own = asBefore ? nullptr : std::make_unique<OwnText>(OwnText{std::string(newText), before});
    const std::optional<Statement> line = getDialect().scanEntry(own ? std::string_view(own->text) : before);
    if (!line)
        return refused(Reason::tr("%1 cannot hold the value at this place", {getDialect().fileNoun()}));
    std::string reason = asBefore ? std::string() : findRefusal(line->text);
    const bool losesTag = line->tags().empty() && !piece.line.tags().empty();
    if (losesTag && piece.previous != none && endsInTypeTag(pieces[piece.previous].line.text))
        reason = Reason::tr("without its type tag the entry would get the one above it");
    if (reason.empty())
        reason = findClash(id, *line);
    if (!reason.empty())
        return refused(std::move(reason));
    piece.own = std::move(own);
    piece.line = *line;
    if (!reshaped) {
        const auto at = static_cast<std::size_t>(before.data() - original.data());
        if (asBefore)
            edited.erase(at);
        else
            edited[at] = id;
    }
    return {};
}

std::string LineFile::separatorBelow(std::uint32_t piece, std::size_t keySize) const
{
    const Statement& sibling = pieces[piece].line;
    const std::uint32_t above = pieces[piece].above;
    const auto columnOf = [](const Statement& entry) {
        const std::string_view separator = entry.separator();
        return entry.key().size() + std::min(separator.find_first_not_of(' '), separator.size());
    };
    const bool isInColumn = above != none && pieces[above].line.isEntry() &&
                            columnOf(pieces[above].line) == columnOf(sibling) &&
                            pieces[above].line.key().size() != sibling.key().size();
    return alignedSeparator(sibling.separator(), sibling.key().size(), keySize, isInColumn);
}

void LineFile::overwrite(std::uint32_t id, std::string text)
{
    reshaped = true;
    LinePiece& piece = pieces[id];
    auto own = std::make_unique<OwnText>(OwnText{std::move(text), {}});
    piece.line = scanOwn(own->text);
    piece.line.text = own->text;
    piece.own = std::move(own);
}

std::string LineFile::findRefusal(std::string_view text) const
{
    std::string reason = encoding.findRefusal(text);
    if (reason.empty() && style.isLatin1 && !FrameworkCore::Values::isAscii(text) && !isLatin1(text))
        reason = Reason::tr(
            "the file is ISO-8859-1; in a path, the bytes of a name of it are percent-encoded, as in %F6");
    return reason.empty() ? getDialect().explainLength(text) : reason;
}

std::string LineFile::explainOverwriting(std::uint32_t id, std::string_view text) const
{
    const std::optional<Statement> line = getDialect().scanEntry(text);
    if (!line)
        return Reason::tr("%1 would not read it there", {getDialect().fileNoun()});
    if (id == pieces.front() && !encoding.mayBegin(text))
        return Reason::tr("the file would begin like a file of another encoding");
    std::string reason = findRefusal(text);
    return reason.empty() ? findClash(id, *line) : reason;
}

std::uint32_t LineFile::add(std::uint32_t before, std::uint32_t above, const Statement& line)
{
    return pieces.insert(before, above, line);
}

std::uint32_t LineFile::addOwn(std::uint32_t before, std::uint32_t above, std::string ownText)
{
    reshaped = true;
    auto own = std::make_unique<OwnText>(OwnText{std::move(ownText), {}});
    const std::uint32_t piece = pieces.insert(before, above, scanOwn(own->text));
    pieces[piece].own = std::move(own);
    return piece;
}

void LineFile::takePiece(std::uint32_t piece)
{
    reshaped = true;
    pieces.erase(piece);
}

std::string LineFile::triviaAfter(std::uint32_t piece) const
{
    std::string trivia;
    for (std::uint32_t at = pieces.nextOf(piece); at != pieces.chainedBelow(piece); at = pieces[at].next)
        trivia += pieces[at].line.text;
    return trivia;
}

std::size_t LineFile::sectionEndAfter(std::uint32_t piece) const
{
    const std::uint32_t below = pieces.chainedBelow(piece);
    const bool isLast = below == none || pieces[below].line.isHeader();
    return isLast && piece != none ? getDialect().findSectionEnd(triviaAfter(piece), below != none) : 0;
}

void LineFile::takeTrivia(std::uint32_t piece, std::size_t begin, std::size_t end)
{
    std::uint32_t at = pieces.nextOf(piece);
    for (std::size_t offset = 0; at != pieces.chainedBelow(piece) && offset < end;) {
        const std::uint32_t trivia = at;
        std::string text(pieces[trivia].line.text);
        const std::size_t next = offset + text.size();
        at = pieces[trivia].next;
        const std::size_t from = std::max(begin, offset);
        if (from < std::min(end, next))
            text.erase(from - offset, std::min(end, next) - from);
        if (text.empty())
            takePiece(trivia);
        else if (offset + text.size() < next)
            overwrite(trivia, std::move(text));
        offset = next;
    }
}

void LineFile::takeEntry(std::uint32_t node)
{
    takePiece(index.node(node).entry);
    LineNode& first = index.node(index.findSibling(node, 1));
    std::uint32_t emptied = node;
    for (std::uint32_t number = index.node(node).number + 1; number <= first.count; ++number) {
        const std::uint32_t next = index.findSibling(node, number);
        index.node(emptied).entry = index.node(next).entry;
        pieces[index.node(emptied).entry].node = emptied;
        emptied = next;
    }
    --first.count;
    index.node(emptied).entry = none;
    index.prune(emptied);
}

} // namespace Repository::Documents
