// Renaming and copying of subtrees, which LineDocument does for all formats of lines.

#include "repository/documents/common/ComponentCodec.h"
#include "repository/documents/common/ExcerptText.h"
#include "repository/documents/common/KeyRefusal.h"
#include "repository/documents/common/LineDocument.h"
#include "repository/documents/common/TextLine.h"
#include "repository/documents/common/ValueLines.h"

#include <algorithm>
#include <utility>

namespace Repository::Documents {

namespace {

// Where in trivia the comments begin that are right above what follows it.
std::size_t ownCommentsIn(std::string_view trivia, const LineDialect& dialect)
{
    std::size_t begin = trivia.size();
    for (std::size_t at = 0; at < trivia.size();) {
        const TextLine line = textLineAt(trivia, at);
        begin = !dialect.isComment(line.content) ? trivia.size() : begin == trivia.size() ? at : begin;
        at = line.end;
    }
    return begin;
}

bool hasProse(std::string_view trivia, const LineDialect& dialect)
{
    for (std::size_t at = 0; at < trivia.size(); at = textLineAt(trivia, at).end) {
        const std::string_view content = textLineAt(trivia, at).content;
        if (!dialect.isComment(content) && !isBlankLine(content))
            return true;
    }
    return false;
}

bool hasComment(std::string_view trivia, const LineDialect& dialect)
{
    for (std::size_t at = 0; at < trivia.size(); at = textLineAt(trivia, at).end) {
        if (dialect.isComment(textLineAt(trivia, at).content))
            return true;
    }
    return false;
}

bool isAtOrBelow(std::string_view path, std::string_view top)
{
    return startsWith(path, top) && (path.size() == top.size() || path[top.size()] == '.');
}

// With a dot after each name, which goes with it, and without the header that has nothing after it; a comment
// above that comes to stand for itself. Nothing where the name is written in another way.
std::optional<Excerpt> withoutName(Excerpt excerpt)
{
    const std::string_view text = excerpt.text;
    for (auto& [begin, end] : excerpt.names) {
        const bool isInBrackets = begin > 0 && text[begin - 1] == '[' && text[end] == ']';
        if (!isInBrackets && text[end] != '.')
            return std::nullopt;
        ++end;
        if (isInBrackets)
            --begin;
        if (!isInBrackets || (end < text.size() && text[end] == '['))
            continue;
        while (begin > 0 && !isLineEnd(text[begin - 1]))
            --begin;
        const TextLine line = textLineAt(text, begin);
        end = begin == 0 ? line.end : begin + line.content.size();
        const auto isInside = [begin = begin, end = end](std::size_t at) { return at >= begin && at < end; };
        excerpt.lines.erase(std::remove_if(excerpt.lines.begin(), excerpt.lines.end(), isInside),
                            excerpt.lines.end());
    }
    return excerpt;
}

std::size_t depthOf(std::string_view path)
{
    return std::size_t(std::count(path.begin(), path.end(), '.'));
}

} // namespace

std::optional<LineDocument::NamePlace> LineDocument::placeInPath(const Statement& line, std::size_t depth)
{
    std::size_t begin = line.keyBegin;
    for (std::size_t i = 0;; ++i) {
        const std::size_t dot = std::min<std::size_t>(line.text.find('.', begin), line.keyEnd);
        if (i == depth)
            return NamePlace{line.keyBegin, begin, dot};
        if (dot == line.keyEnd)
            return std::nullopt;
        begin = dot + 1;
    }
}

std::uint64_t LineDocument::hashOf(const std::function<std::string(std::string_view)>& change) const
{
    std::uint64_t sum = 0;
    const std::hash<std::string> hash;
    visit([&](const Entry& entry) {
        const std::string path = entry.value.type == Type::Group ? std::string() : change(entry.path);
        if (!path.empty())
            sum += (hash(path) * 31 + hash(toText(entry.value))) * 31 + std::uint64_t(entry.value.type);
    });
    return sum;
}

std::vector<LineDocument::Part> LineDocument::partsOf(std::uint32_t node) const
{
    const LinePieces& pieces = file->pieces;
    const LineDialect& dialect = file->getDialect();
    std::vector<Part> parts;
    bool isApart = false;
    const auto add = [&](std::uint32_t piece, std::size_t begin, std::size_t end) {
        if (begin < end)
            parts.push_back({piece, true, begin, end, std::exchange(isApart, false)});
    };
    bool isInSection = false;
    std::uint32_t former = none; // own piece that is not trivia
    for (const std::uint32_t piece : piecesOf(node)) {
        const Statement& line = pieces[piece].line;
        if (line.kind == Statement::Kind::Trivia) {
            parts.push_back({piece});
            continue;
        }
        const std::uint32_t above = pieces[piece].above;
        const bool isListed = !parts.empty() && parts.back().piece == pieces[piece].previous;
        const std::string trivia = isListed ? std::string() : file->triviaAfter(above);
        const std::size_t ofSection = line.isHeader() && !isListed ? file->sectionEndAfter(above) : 0;
        if (!parts.empty() && above == former && !hasProse(trivia, dialect)) {
            add(above, 0, trivia.size());
        } else {
            if (isInSection && !isListed)
                add(former, 0, file->sectionEndAfter(former));
            isApart = !parts.empty() && !isListed;
            add(above, std::max(ownCommentsIn(trivia, dialect), ofSection), trivia.size());
        }
        parts.push_back({piece, false, 0, 0, std::exchange(isApart, false)});
        isInSection = isInSection || line.isHeader();
        former = piece;
    }
    if (isInSection)
        add(former, 0, file->sectionEndAfter(former));
    return parts;
}

std::string_view LineDocument::textOf(const Part& part, std::string& trivia) const
{
    if (!part.isTrivia)
        return file->pieces[part.piece].line.text;
    trivia = file->triviaAfter(part.piece);
    return std::string_view(trivia).substr(part.begin, part.end - part.begin);
}

std::string LineDocument::pathWithout(std::string_view gone, std::string_view path)
{
    const NumberedPath numbered = numberedPath(gone);
    const std::size_t end = std::min(path.find('.', numbered.first.size()), path.size());
    const NumberedPath other = numberedPath(path.substr(0, end));
    const bool movesUp = other.first == numbered.first && other.number > numbered.number;
    return movesUp ? joinNumber(other.first, other.number - 1) + std::string(path.substr(end))
                   : std::string(path);
}

std::optional<Outcome> LineDocument::rename(std::string_view path, std::string_view name)
{
    const LineIndex& index = file->index;
    const std::uint32_t id = index.find(path);
    if (id == none || id == LineIndex::root || splitNumber(name).number > 1)
        return std::nullopt;
    if (!decodeKey(name))
        return refused(explainNoKey(name));
    const std::string renamed = joinPath(splitLast(path).parent, name);
    if (index.find(renamed) != none)
        return refused(Reason::tr("there is already an entry %1", {quoted(renamed)}));
    const std::uint32_t first = index.findSibling(id, 1);
    const bool isNumbered = index.countOfEntries(first) > 1 || index.countOfSections(first) > 1;
    if (index.node(id).entry != none && !index.node(id).section && !isNumbered)
        return renameAll(id, path, name);
    // What begins a group may decide how all of the file is read, and later siblings of the same name move
    // up.
    const auto afterwards = [&](std::string_view entry) {
        return isAtOrBelow(entry, path) ? renamed + std::string(entry.substr(path.size()))
                                        : pathWithout(path, entry);
    };
    const std::string before = getBytes();
    const std::uint64_t wanted = hashOf(afterwards);
    Outcome outcome = renameAll(id, path, name);
    if (outcome.ok())
        outcome = reload(getBytes(), true);
    if (outcome.ok() && hashOf([](std::string_view entry) { return std::string(entry); }) == wanted)
        return outcome;
    reload(before, true);
    return isNumbered ? std::nullopt
                      : std::optional(refused(Reason::tr("%1 cannot hold %2 of the path %3 there",
                                                         {file->getDialect().fileNoun(),
                                                          file->getDialect().groupNoun(), quoted(renamed)})));
}

// In the text; in the index only for a node without numbered siblings.
Outcome LineDocument::renameAll(std::uint32_t node, std::string_view path, std::string_view name)
{
    const LinePieces& pieces = file->pieces;
    const std::size_t depth = depthOf(path);
    std::vector<std::pair<std::uint32_t, std::string>> changed;
    for (const std::uint32_t piece : piecesOf(node)) {
        const Statement& line = pieces[piece].line;
        const std::optional<NamePlace> place = nameIn(node, depth, piece);
        if (!place)
            continue;
        const std::string spelled = spellComponent(name, line, *place);
        std::string text(line.text);
        text.replace(place->last, place->end - place->last, spelled);
        std::string reason = file->findRefusal(text);
        if (reason.empty())
            reason = file->explainName(text);
        if (reason.empty() && line.isEntry()) {
            const auto now = file->getDialect().scanEntry(text);
            const bool isSame = now && now->value() == line.value() && now->tag == line.tag &&
                                now->separator() == line.separator() && now->continued == line.continued &&
                                now->keyBegin == line.keyBegin &&
                                now->keyEnd == line.keyEnd + spelled.size() - (place->end - place->last);
            reason =
                isSame ? file->explainOverwriting(piece, text) : Reason::tr("it would be read otherwise");
        }
        if (!reason.empty())
            return refused(Reason::tr("%1 cannot hold the name %2 there: %3",
                                      {file->getDialect().fileNoun(), quoted(name), reason}));
        changed.emplace_back(piece, std::move(text));
    }
    for (auto& [piece, text] : changed)
        file->overwrite(piece, std::move(text));
    if (file->index.countOfEntries(node) < 2 && file->index.node(node).number == 1)
        file->index.rename(node, name);
    return {};
}

std::optional<Excerpt> LineDocument::excerpt(std::string_view path) const
{
    const std::uint32_t node = file->index.find(path);
    if (node == none || node == LineIndex::root ||
        (file->index.node(node).section && file->index.node(node).entry != none))
        return std::nullopt;
    Excerpt found;
    found.lineEnd = file->style.lineEnd;
    const std::size_t depth = depthOf(path);
    bool isFirst = true;
    std::string trivia;
    for (const Part& part : partsOf(node)) {
        const std::string_view text = textOf(part, trivia);
        if (!found.text.empty() && !endsLine(found.text))
            found.text += file->style.lineEnd;
        if (part.isApart)
            found.text += file->style.lineEnd;
        const std::size_t at = found.text.size();
        found.text += text;
        const Statement& line = part.isTrivia ? Statement() : file->pieces[part.piece].line;
        const bool isTrivia = line.kind == Statement::Kind::Trivia;
        // A further line of a value without indentation must not get any.
        const std::size_t own = isTrivia ? text.size() : line.begin;
        for (std::size_t from = 0; from < text.size();) {
            if (from <= own || isBlank(text[from]))
                found.lines.push_back(at + from);
            from = textLineAt(text, from).end;
        }
        if (isTrivia)
            continue;
        if (std::exchange(isFirst, false))
            found.indentation = line.indent();
        if (const std::optional<NamePlace> place = nameIn(node, depth, part.piece))
            found.names.emplace_back(at + place->begin, at + place->end);
    }
    if (!endsLine(found.text))
        found.text += file->style.lineEnd;
    return found;
}

// Those in a section go with its lines, and others stay.
bool LineDocument::hasComments(std::string_view path) const
{
    const std::uint32_t node = file->index.find(path);
    if (node == none || node == LineIndex::root)
        return false;
    const LineDialect& dialect = file->getDialect();
    bool isInSection = false;
    std::string trivia;
    for (const Part& part : partsOf(node)) {
        const Statement& line = file->pieces[part.piece].line;
        if (part.isTrivia || line.kind == Statement::Kind::Trivia) {
            if (isInSection && hasComment(textOf(part, trivia), dialect))
                return true;
            continue;
        }
        if (!dialect.commentAfter(line).empty())
            return true;
        if (line.isEntry() && !ownComments(line, dialect).empty())
            return true;
        isInSection = isInSection || line.isHeader();
    }
    return false;
}

std::string LineDocument::comment(std::string_view path) const
{
    const std::uint32_t node = file->index.find(path);
    if (node == none || node == LineIndex::root)
        return {};
    const LineDialect& dialect = file->getDialect();
    std::string trivia;
    std::string_view above;
    for (const Part& part : partsOf(node)) {
        const Statement& line = file->pieces[part.piece].line;
        if (part.isTrivia || line.kind == Statement::Kind::Trivia) {
            above = textOf(part, trivia);
            continue;
        }
        const std::string_view moved =
            line.text.substr(0, line.text.size() - withoutCommentsAbove(line).text.size());
        return joinComments(std::string(above).append(moved), dialect.commentAfter(line));
    }
    return {};
}

// Of an empty document, which has no name for what is around its entries.
bool LineDocument::becomeExcerpt(const Excerpt& excerpt)
{
    const auto whole = withoutName(excerpt);
    return whole && reload(excerptText(*whole, {}, {}), true).ok();
}

bool LineDocument::insertExcerpt(std::string_view path, const Excerpt& excerpt)
{
    if (path.empty())
        return getBytes().empty() && becomeExcerpt(excerpt);
    const auto ofOthers = [path](std::string_view entry) {
        return isAtOrBelow(entry, path) ? std::string() : std::string(entry);
    };
    const std::string before = getBytes();
    const std::uint64_t others = hashOf(ofOthers);
    const Value placeholder = placeholderOf(excerpt);
    if (!insert(path, placeholder).ok())
        return false;
    const std::uint32_t piece = pieceOf(path, placeholder);
    const Statement& line = file->pieces[piece].line;
    const std::string name = spellPath(numberedPath(path).first, line.kind);
    std::string text(line.tags());
    text += withLineEnds(excerptText(excerpt, name, line.indent()), excerpt, file->style.lineEnd);
    const bool canHold = file->findRefusal(text).empty();
    const std::string lines = text.substr(line.tags().size());
    file->overwrite(piece, std::move(text));
    if (canHold && reload(getBytes(), true).ok() && hashOf(ofOthers) == others) {
        // A line below may go on what its last one says.
        const auto written = this->excerpt(path);
        if (written && written->text.size() >= lines.size() &&
            written->text.compare(written->text.size() - lines.size(), lines.size(), lines) == 0)
            return true;
    }
    reload(before, true);
    return false;
}

Outcome LineDocument::removeExcerpt(std::string_view path)
{
    const std::uint32_t node = file->index.find(path);
    if (node == none || node == LineIndex::root)
        return remove(path);
    const std::string before = getBytes();
    std::vector<Part> parts = partsOf(node);
    std::reverse(parts.begin(), parts.end()); // so that the places of those above stay
    for (const Part& part : parts) {
        if (part.isTrivia)
            file->takeTrivia(part.piece, part.begin, part.end);
    }
    Outcome outcome = remove(path);
    if (!outcome.ok())
        reload(before, true);
    return outcome;
}

} // namespace Repository::Documents
