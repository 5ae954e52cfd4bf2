#include "repository/documents/common/BracketItems.h"
#include "repository/documents/common/TextLine.h"
#include "repository/documents/yaml/YamlDocuments.h"
#include "repository/documents/yaml/YamlEditor.h"
#include "repository/documents/yaml/YamlTokens.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

constexpr auto npos = std::string_view::npos;

} // namespace

void YamlEditor::remove(NodeId id, Comments comments)
{
    const NodeId parent = tree.node(id).parent;
    if (tree.node(parent).style == YamlStyle::Stream)
        YamlDocuments(file).remove(*this, id, comments == Comments::All);
    else if (tree.node(parent).isFlow())
        removeFlow(parent, tree.positionOf(id), 1, comments == Comments::All);
    else if (tree.node(parent).count == 1)
        empty(parent, comments);
    else
        removeBlock(id, comments);
}

void YamlEditor::removeElements(NodeId sequence, std::size_t from, std::size_t count)
{
    if (count == 0)
        return;
    if (tree.node(sequence).isFlow())
        return removeFlow(sequence, from, count, false);
    if (count == tree.node(sequence).count) {
        const YamlNode& node = tree.node(sequence);
        changed = sequence;
        return edit(node.value, node.valueEnd, "[]");
    }
    for (std::size_t i = from; i < from + count; ++i)
        removeBlock(tree.elementAt(sequence, i), Comments::Behind);
    // A file whose last line had no end gets none.
    const std::size_t tail = from == 0 ? npos : layout.tailOf(tree.elementAt(sequence, from - 1));
    const std::size_t end = layout.tailOf(tree.elementAt(sequence, from + count - 1));
    if (tail != npos && end == text().size() && !layout.chompingAtEnd(tree.elementAt(sequence, from - 1)) &&
        skipYamlLine(text(), tail) == findYamlLine(text(), layout.beginOf(tree.elementAt(sequence, from))))
        edit(tail, skipYamlLine(text(), tail), {});
}

void YamlEditor::removeFlow(NodeId collection, std::size_t from, std::size_t count, bool withComments)
{
    const YamlNode& node = tree.node(collection);
    BracketItems brackets(tree.text(node.value, node.valueEnd), file.lineEnd, layout.itemsOf(collection),
                          false);
    brackets.remove(from, count, withComments);
    take(collection, brackets);
}

void YamlEditor::removeBlock(NodeId id, Comments comments)
{
    place = id;
    if (layout.beginsLine(id))
        removeLines(id, comments);
    else if (tree.node(id).next != noNode)
        removeCompact(id, comments);
}

// Where what goes with an entry begins, which has a line of its own, and where that of any ends.
std::size_t YamlEditor::beginWith(NodeId id, Comments comments) const
{
    return comments == Comments::All ? layout.commentsAbove(id) : layout.tagAbove(id);
}

std::size_t YamlEditor::endWith(NodeId id, Comments comments) const
{
    return comments == Comments::Behind ? layout.tailOf(id) : layout.endWithComments(id);
}

// Of the empty lines that would meet where an entry was, those on one side go with it.
YamlEditor::Edit YamlEditor::linesOf(NodeId id, Comments comments) const
{
    Edit lines{beginWith(id, comments), skipYamlLine(text(), endWith(id, comments)), {}};
    const NodeId previous = tree.node(id).previous;
    if (comments == Comments::Behind || (previous != noNode && layout.endsOpen(previous)))
        return lines;
    const bool isAboveNothing = lines.end == text().size() || layout.isEmptyLine(lines.end);
    const bool isBelowText = lines.begin > 0 && !layout.isEmptyAbove(lines.begin);
    while (isAboveNothing && layout.isEmptyAbove(lines.begin))
        lines.begin = findYamlLine(text(), endOfYamlContent(text(), lines.begin));
    const std::size_t above = isBelowText ? findYamlLine(text(), endOfYamlContent(text(), lines.begin)) : 0;
    const bool isBelowComment = isBelowText && text()[skipYamlBlanks(text(), above)] == '#';
    const bool isFirst = previous == noNode && tree.node(id).next != noNode;
    while (isFirst && (isBelowText || lines.begin == 0) && !isBelowComment && layout.isEmptyLine(lines.end))
        lines.end = skipYamlLine(text(), lines.end);
    return lines;
}

void YamlEditor::removeLines(NodeId id, Comments comments)
{
    const Edit lines = linesOf(id, comments);
    edit(lines.begin, lines.end, {});
}

// An entry after the "-" of the element that it is in: the next one comes up to there.
void YamlEditor::removeCompact(NodeId id, Comments comments)
{
    const std::size_t begin = layout.beginOf(id);
    const std::size_t line = findYamlLine(text(), begin);
    const std::size_t tail = endWith(id, comments);
    edit(layout.tagAbove(id), line, {});
    const std::size_t next = layout.beginOf(tree.node(id).next);
    if (hasYamlComment(text(), tail, next))
        edit(text().find_last_not_of(" \t", begin - 1) + 1, tail, {});
    else
        edit(begin, next, {});
}

// The last entry goes, and the collection stays.
void YamlEditor::empty(NodeId collection, Comments comments)
{
    const YamlNode& node = tree.node(collection);
    const NodeId id = node.first;
    const std::string brackets = node.kind == YamlKind::Map ? "{}" : "[]";
    const std::size_t end = endWith(id, comments);
    changed = place = collection;
    if (!layout.beginsLine(id)) {
        edit(layout.tagAbove(id), findYamlLine(text(), layout.beginOf(id)), {});
        edit(layout.beginOf(id), end, brackets);
    } else if (layout.isDocument(collection)) {
        edit(beginWith(id, comments), findYamlLine(text(), layout.beginOf(id)), {});
        edit(layout.beginOf(id), end, brackets);
    } else {
        const std::size_t after = layout.afterIndicator(collection);
        edit(after, after, ' ' + brackets);
        removeLines(id, comments);
    }
}

Outcome YamlEditor::moveElement(NodeId sequence, std::size_t from, std::size_t to)
{
    const NodeId element = tree.elementAt(sequence, from);
    const NodeId there = tree.elementAt(sequence, to);
    const YamlNode& node = tree.node(sequence);
    if (node.style == YamlStyle::Stream)
        return YamlDocuments(file).move(*this, from, to);
    if (node.isFlow()) {
        const std::string_view whole = tree.text(node.value, node.valueEnd);
        BracketItems brackets(whole, file.lineEnd, layout.itemsOf(sequence), false);
        brackets.move(from, to);
        take(sequence, brackets);
        return {};
    }
    if (!layout.beginsLine(element) || !layout.beginsLine(there))
        return refused(Reason::tr("the first element is on the line of another one, behind its \"-\""));
    place = element;
    const std::size_t begin = layout.commentsAbove(element);
    std::string lines(tree.text(begin, skipYamlLine(text(), layout.endWithComments(element))));
    lines += endsLine(lines) ? "" : file.lineEnd;
    const bool isApart = layout.keepsApart(sequence, from < to ? tree.node(there).next : there) &&
                         !layout.endsOpen(element) && !layout.endsOpen(there);
    const std::size_t at =
        from < to ? skipYamlLine(text(), layout.endWithComments(there)) : layout.commentsAbove(there);
    if (isApart)
        lines.insert(from < to ? 0 : lines.size(), file.lineEnd);
    if (!endsLine(text().substr(0, at))) {
        lines.insert(0, file.lineEnd);
        if (layout.chompingAtEnd(element).value_or('-') == '-') // which needs no line end
            lines.resize(lines.find_last_not_of("\r\n") + 1);
    }
    edit(at, at, std::move(lines));
    removeLines(element, Comments::All);
    return {};
}

} // namespace Repository::Documents
