#include "repository/documents/common/LineDocument.h"

#include "repository/documents/common/ValueLines.h"

#include <utility>

namespace Repository::Documents {

Outcome LineDocument::parse(std::string bytes)
{
    return reload(std::move(bytes), false);
}

Outcome LineDocument::reload(std::string bytes, bool isOwn)
{
    std::unique_ptr<LineFile> fresh = makeFile();
    Outcome outcome = fresh->load(std::move(bytes), isOwn);
    if (outcome.ok())
        file = std::move(fresh);
    return outcome;
}

Outcome LineDocument::refuseWithoutValue(std::string_view path) const
{
    return refused(contains(path) ? Reason::tr("it is %1 and has no value", {file->getDialect().groupNoun()})
                                  : Reason::tr("no such entry"));
}

Outcome LineDocument::set(std::string_view path, const Value& value)
{
    const std::uint32_t entry = file->findEntry(path);
    if (entry == none)
        return refuseWithoutValue(path);
    const LineDialect& dialect = file->getDialect();
    const LinePiece& piece = file->pieces[entry];
    const Value present = dialect.read(piece.line);
    if (isSame(present, value))
        return {};
    const std::string_view inFile = piece.original();
    const Statement line = withoutCommentsAbove(piece.line);
    const Statement original = inFile.empty() ? line : dialect.scanEntry(inFile).value_or(line);
    if (!inFile.empty() && isSame(dialect.read(original), value))
        return file->replace(entry, inFile);
    const Statement& model = original.tag == line.tag ? original : line;
    const bool isRetyped =
        model.tag != Type::Group && present.type != Type::Null && present.type != value.type;
    std::vector<std::string> texts;
    if (isRetyped)
        texts = dialect.writeRetyped(model, value, file->style);
    else if (auto text = dialect.write(model, value, file->style))
        texts.push_back(*std::move(text));
    Outcome outcome = texts.empty() ? refused(dialect.explainRefusal(model, value, file->style)) : Outcome();
    for (const std::string& text : texts) {
        const auto whole = withFormerLines(dialect, piece.line, text);
        outcome = whole ? file->replace(entry, *whole)
                        : refused(Reason::tr("it has comments between its lines, which would be lost"));
        if (outcome.ok())
            break;
    }
    return outcome;
}

bool LineDocument::namesType(std::string_view path) const
{
    const std::uint32_t entry = file->findEntry(path);
    return entry != none && LineDialect::namesType(file->pieces[entry].line);
}

std::optional<Span> LineDocument::locate(std::string_view path) const
{
    const std::uint32_t entry = file->findEntry(path);
    return entry == none ? std::nullopt : std::optional(file->locateValue(entry));
}

std::optional<Value> LineDocument::valueAt(std::string_view path) const
{
    const std::uint32_t entry = file->findEntry(path);
    return entry == none ? std::nullopt : std::optional(file->getDialect().read(file->pieces[entry].line));
}

std::optional<std::string> LineDocument::spell(std::string_view path) const
{
    const std::uint32_t entry = file->findEntry(path);
    return entry == none ? std::nullopt : std::optional(spellingOf(file->pieces[entry].line));
}

Outcome LineDocument::respell(std::string_view path, std::string_view spelling)
{
    const std::uint32_t entry = file->findEntry(path);
    if (entry == none)
        return refuseWithoutValue(path);
    const Statement& line = file->pieces[entry].line;
    const auto text = withSpelling(withoutCommentsAbove(line), spelling);
    const auto whole = text ? withFormerComments(file->getDialect(), line, *text) : std::nullopt;
    return whole ? file->replace(entry, *whole) : refused(explainMisspelling(spelling));
}

bool LineDocument::removalMovesSiblings(std::string_view path) const
{
    const LineIndex& index = file->index;
    const std::uint32_t id = index.find(path);
    if (id == none || id == LineIndex::root)
        return false;
    const LineNode& node = index.node(id);
    const std::uint32_t first = index.findSibling(id, 1);
    return (node.entry != none && node.number < index.countOfEntries(first)) ||
           (node.hasHeader() && node.number < index.countOfSections(first));
}

bool LineDocument::removalMovesGroups(std::string_view path) const
{
    const LineIndex& index = file->index;
    const LinePieces& pieces = file->pieces;
    const std::uint32_t top = index.find(path);
    const std::uint32_t group =
        top == none || top == LineIndex::root ? LineIndex::root : index.groupLeftWithout(top);
    if (group == LineIndex::root)
        return false;
    const auto isIn = [&](std::uint32_t piece, std::uint32_t node) {
        return piece != none && index.isWithin(pieces[piece].node, node);
    };
    // A group that goes on right above or right below begins where it did, as far as others can tell.
    const auto moves = [&](std::uint32_t begin) {
        if (begin == none || isIn(pieces[begin].above, top))
            return false;
        std::uint32_t below = pieces[begin].below;
        while (isIn(below, top))
            below = pieces[below].below;
        return !isIn(pieces[begin].above, group) && !isIn(below, group);
    };
    for (const std::uint32_t id : index.subtree(top)) {
        const LineNode& node = index.node(id);
        if (moves(node.entry) || (node.hasHeader() && moves(node.section->header)))
            return true;
    }
    return false;
}

} // namespace Repository::Documents
