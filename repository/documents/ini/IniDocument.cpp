#include "repository/documents/ini/IniDocument.h"

#include "repository/documents/ini/IniInsertion.h"
#include "repository/documents/ini/IniRemoval.h"

namespace Repository::Documents {

namespace {

// The piece with which a node begins, if it is in one place of the file only.
std::uint32_t onlyBeginOf(const LineNode& node)
{
    if (!node.section)
        return node.entry;
    const bool isOnce = node.entry == HashIndex::none && node.section->deeper == 0;
    return isOnce ? node.section->header : HashIndex::none;
}

} // namespace

Outcome IniDocument::insert(std::string_view path, const Value& value)
{
    return IniInsertion(getFile()).insert(path, value);
}

Outcome IniDocument::remove(std::string_view path)
{
    const std::uint32_t node = file->index.find(path);
    if (node == none || node == LineIndex::root)
        return refused(node == none ? "no such entry" : "the root of a file is not removed");
    const LineNode& removed = file->index.node(node);
    const bool sectionsMove =
        removed.hasHeader() && removed.number < file->index.countOfSections(file->index.findSibling(node, 1));
    Outcome outcome = IniRemoval(getFile(), node).run();
    // Other sections get new paths, with all that they hold.
    return outcome.ok() && sectionsMove ? reload(getBytes(), true) : outcome;
}

SiblingPlace IniDocument::placeOf(std::string_view path) const
{
    using Kind = SiblingPlace::Kind;
    const LineIndex& index = file->index;
    const LinePieces& pieces = file->pieces;
    const std::uint32_t id = index.find(path);
    if (id == none || id == LineIndex::root)
        return {Kind::Last, {}};
    const LineNode& node = index.node(id);
    const std::uint32_t begin = onlyBeginOf(node);
    if (begin == none)
        return {};
    if (pieces.chainedLast() == (node.section ? node.section->last : begin))
        return {Kind::Last, {}};
    const std::uint32_t above = pieces[begin].above;
    if (above == none)
        return {Kind::First, {}};
    const LineSection& group = *index.node(node.parent).section;
    if (above == group.header) {
        const bool isFirst = group.deeper == (node.section ? 1 : 0);
        return {isFirst ? Kind::First : Kind::Unknown, {}};
    }
    std::uint32_t sibling = pieces[above].node;
    while (sibling != none && index.node(sibling).parent != node.parent)
        sibling = index.node(sibling).parent;
    if (sibling == none || onlyBeginOf(index.node(sibling)) == none)
        return {};
    return {Kind::After, index.pathOf(sibling)};
}

std::optional<std::string> IniDocument::withSpelling(const Statement& entry, std::string_view spelling) const
{
    const std::optional<Statement> line = file->getDialect().scanEntry(spelling);
    if (!line || line->tag != Type::Group || line->key() != entry.key())
        return std::nullopt;
    return std::string(entry.tags()).append(spelling);
}

std::string IniDocument::explainMisspelling(std::string_view spelling) const
{
    return quoted(spelling) + " is not a line of this entry";
}

} // namespace Repository::Documents
