#include "repository/documents/toml/TomlStyles.h"

#include "repository/documents/toml/TomlEditor.h"
#include "repository/documents/toml/TomlTokens.h"

namespace Repository::Documents {

namespace {

// That between the key at the beginning of a text and its value.
std::string separatorIn(std::string_view text)
{
    TomlKeyPart part = readTomlKeyPart(text, skipTomlBlanks(text, 0));
    while (!part.isLast)
        part = readTomlKeyPart(text, part.next);
    return part.next == part.end && skipTomlBlanks(text, part.next + 1) == part.next + 1 ? "=" : " = ";
}

} // namespace

TomlStyle TomlStyles::at(StatementId neighbour) const
{
    TomlStyle style;
    style.place.lineEnd = file.lineEnd;
    style.separator = lineSeparator(neighbour);
    style.indentation = style.headerIndentation = indentationOf(neighbour);
    StatementId header = neighbour;
    constexpr int enough = 100;
    for (int i = 0; i < enough && header != TomlTree::rootStatement && !tree.statement(header).isHeader; ++i)
        header = tree.statement(header).previous;
    const bool isFirst = tree.statement(header).previous == noStatement ||
                         tree.statement(header).previous == TomlTree::rootStatement;
    const std::string_view above = tree.leadOf(header);
    style.hasBlankLines = isFirst || beginsWithBlankLine(above);
    return style;
}

std::string TomlStyles::lineSeparator(StatementId neighbour) const
{
    constexpr int enough = 100;
    StatementId id = neighbour;
    for (int i = 0; id != noStatement && tree.statement(id).isHeader && i < enough; ++i)
        id = tree.statement(id).previous;
    if (id == noStatement)
        id = tree.statement(TomlTree::rootStatement).next;
    for (int i = 0; id != noStatement && tree.statement(id).isHeader && i < enough; ++i)
        id = tree.statement(id).next;
    if (id == noStatement || tree.statement(id).isHeader)
        return " = ";
    const std::string_view line = tree.text(tree.statement(id).begin, tree.statement(id).bodyEnd);
    return separatorIn(line);
}

std::string TomlStyles::indentationOf(StatementId statement) const
{
    const std::string_view text =
        tree.text(tree.statement(statement).begin, tree.statement(statement).bodyEnd);
    return std::string(text.substr(0, skipTomlBlanks(text, 0)));
}

TomlStyle TomlStyles::inBraces(NodeId place) const
{
    TomlStyle style;
    style.place.lineEnd = file.lineEnd;
    if (const NodeId braces = bracesAt(place); braces != noNode) {
        const std::string text = file.textOf(braces);
        const std::size_t first = skipTomlBlanks(text, 1);
        style.isPadded = first > 1;
        style.separator = separatorIn(std::string_view(text).substr(first));
    }
    return style;
}

// An inline table that is not empty, as which a new one there is spaced: itself, or the last one in it.
NodeId TomlStyles::bracesAt(NodeId place) const
{
    NodeId id = tree.node(place).kind == TomlKind::Array ? tree.node(place).last : place;
    while (id != noNode && tree.node(id).kind == TomlKind::InlineTable && !tree.node(id).hasSpan())
        id = tree.node(id).parent;
    const bool isModel =
        id != noNode && tree.node(id).kind == TomlKind::InlineTable && tree.node(id).count > 0;
    return isModel ? id : noNode;
}

bool TomlStyles::areSpaced(StatementId after, bool isElement) const
{
    constexpr int enough = 1000;
    bool areNone = true;
    StatementId id = after;
    for (int i = 0; i < enough && id != TomlTree::rootStatement; ++i, id = tree.statement(id).previous) {
        const bool isFirst = tree.statement(id).previous == TomlTree::rootStatement;
        if (!tree.statement(id).isHeader || isFirst)
            continue;
        areNone = false;
        const std::size_t ends = TomlEditor(file).endCommentsOf(tree.statement(id).previous).size();
        if (beginsWithBlankLine(tree.leadOf(id).substr(ends)))
            return true;
        if (isElement)
            return false;
    }
    return areNone;
}

} // namespace Repository::Documents
