#include "repository/documents/json/JsonLayout.h"

#include "repository/documents/common/ExcerptText.h"
#include "repository/documents/common/TextLine.h"
#include "repository/documents/json/JsonTrivia.h"

#include <utility>

namespace Repository::Documents {

namespace {

constexpr NodeId examinedNodes = 64;

// The step by which a node is indented more than its parent; empty when it does not begin a line of its own.
std::string indentationStep(const JsonTree& tree, NodeId id)
{
    if (!JsonTrivia(tree.text(id, JsonPart::Leading)).hasBreak())
        return {};
    const std::string inner = lineIndentation(tree, id);
    const std::string outer = lineIndentation(tree, tree.node(id).parent);
    const bool deeper = inner.size() > outer.size() && inner.compare(0, outer.size(), outer) == 0;
    return deeper ? inner.substr(outer.size()) : std::string();
}

bool beginsWithBreak(std::string_view text)
{
    return !text.empty() && (text[0] == '\n' || text[0] == '\r');
}

// The last line break of a text that has one, and the blanks after it.
std::string lastBreakWithBlanks(std::string_view text, const JsonTrivia& trivia)
{
    return std::string(text.substr(trivia.lastBreak, trivia.indentation - trivia.lastBreak));
}

} // namespace

std::string lineIndentation(const JsonTree& tree, NodeId id)
{
    while (true) {
        const std::string_view leading = tree.text(id, JsonPart::Leading);
        const JsonTrivia trivia(leading);
        if (trivia.hasBreak()) {
            const std::size_t from = skipBreak(leading, trivia.lastBreak);
            return std::string(leading.substr(from, trivia.indentation - from));
        }
        if (tree.node(id).parent == noNode)
            return std::string(leadingBlanks(leading));
        id = tree.node(id).parent;
    }
}

std::string colonOf(const JsonTree& tree, NodeId member)
{
    const std::string_view label = tree.text(member, JsonPart::Label);
    if (label.empty())
        return {};
    const std::string_view between = label.substr(tree.keyLiteral(member).size());
    for (const std::string_view usual : {":", ": ", " :", " : "}) {
        if (between == usual)
            return std::string(between);
    }
    return {};
}

void JsonLayout::detectStyle()
{
    style.lineEnd = lineEndOf(tree.getOriginal());
    std::string step;
    std::string colon;
    for (NodeId id = 1; id < std::min(tree.getSize(), examinedNodes) && (step.empty() || colon.empty());
         ++id) {
        step = step.empty() ? indentationStep(tree, id) : step;
        colon = colon.empty() ? colonOf(tree, id) : colon;
    }
    style.indentation = step.empty() ? style.indentation : step;
    style.colon = colon.empty() ? style.colon : colon;
    const NodeId first = tree.getSize() > 1 ? tree.node(tree.getRoot()).first : noNode;
    style.oneLine = first != noNode && !JsonTrivia(tree.text(first, JsonPart::Leading)).hasBreak();
}

void JsonLayout::placeOnly(NodeId id, bool inLines)
{
    const NodeId container = tree.node(id).parent;
    const std::string inside(tree.text(container, JsonPart::Closing));
    const JsonTrivia trivia(inside);
    std::string leading = trivia.hasComment ? inside : std::string();
    std::string trailing;
    if (inLines || trivia.hasBreak()) {
        const std::string outer = style.lineEnd + lineIndentation(tree, container);
        leading.resize(trivia.hasComment && trivia.hasBreak() ? trivia.lastBreak : leading.size());
        leading += outer + style.indentation;
        trailing = trivia.hasBreak() ? inside.substr(trivia.lastBreak) : outer;
    }
    tree.setText(id, JsonPart::Leading, std::move(leading));
    tree.setText(id, JsonPart::Trailing, std::move(trailing));
    tree.setText(container, JsonPart::Closing, {});
}

void JsonLayout::placeFirst(NodeId id, bool isAboveComments)
{
    const NodeId second = tree.node(id).next;
    const NodeId third = tree.node(second).next;
    const std::string leading(tree.text(second, JsonPart::Leading));
    const JsonTrivia trivia(leading);
    std::string between(blankAfterComma());
    if (trivia.hasBreak())
        between = lastBreakWithBlanks(leading, trivia);
    else if (third != noNode)
        between = leadingBlanks(tree.text(third, JsonPart::Leading));
    const std::size_t own = findOwnComments(leading);
    if (!isAboveComments || own == JsonTrivia::npos || own > trivia.lastBreak) {
        tree.setText(id, JsonPart::Leading, leading);
        tree.setText(second, JsonPart::Leading, std::move(between));
        return;
    }
    const std::size_t line = skipBreak(leading, trivia.lastBreak);
    tree.setText(id, JsonPart::Leading, leading.substr(0, own) + leading.substr(line));
    tree.setText(second, JsonPart::Leading,
                 leading.substr(trivia.lastBreak, line - trivia.lastBreak) + leading.substr(own));
}

void JsonLayout::placeAfter(NodeId id)
{
    const NodeId sibling = tree.node(id).previous;
    const Following place = followingOf(id);
    const bool afterComma = place.afterComma;
    const NodeId textNode = afterComma ? place.textNode : sibling;
    const std::string following(tree.text(textNode, place.part));
    const JsonTrivia trivia(following);

    std::string kept;   // stays with the sibling, before the comma
    std::string before; // stays in the sibling's line, after the comma
    std::string rest = following;
    const std::string sameLine = following.substr(0, trivia.firstLineEnd);
    const bool lineComment = JsonTrivia(sameLine).endsInLineComment;
    if (beginsWithBreak(std::string_view(following).substr(trivia.firstLineEnd))) {
        (afterComma || lineComment || !trivia.firstLineHasComment ? before : kept) = sameLine;
        rest = following.substr(trivia.firstLineEnd);
    } else if (!afterComma && trivia.firstLineEnd == following.size() && trivia.hasComment) {
        rest = trailingBlanks(following);
        kept = following.substr(0, following.size() - rest.size());
    }

    // Where commas begin the lines, the sibling's own line ends before its comma.
    const NodeId above = tree.node(sibling).previous;
    const std::string_view aboveComma = above == noNode ? "" : tree.text(above, JsonPart::Trailing);
    if (!afterComma && kept.empty() && isBlank(aboveComma) && JsonTrivia(aboveComma).hasBreak())
        kept = aboveComma;

    std::string leading = leadingLike(sibling);
    if (lineComment && !beginsWithBreak(leading))
        leading = style.lineEnd + lineIndentation(tree, sibling);
    tree.setText(id, JsonPart::Leading, before + leading);
    if (afterComma) {
        tree.setText(textNode, place.part, std::move(rest));
    } else {
        tree.setText(sibling, JsonPart::Trailing, std::move(kept));
        tree.setText(id, JsonPart::Trailing, std::move(rest));
    }
}

void JsonLayout::takeOut(NodeId id)
{
    const JsonNode& node = tree.node(id);
    const NodeId container = node.parent;
    const Following place = followingOf(id);
    std::string text = join(keptBefore(id), keptAfter(id, textAfter(id)), container);
    const bool onlyChild = node.next == noNode && node.previous == noNode;
    if (onlyChild && isBlank(text))
        text.clear();
    if (!place.afterComma && !onlyChild) {
        const std::string_view trailing = tree.text(node.previous, JsonPart::Trailing);
        text.insert(0, isBlank(trailing) ? std::string_view() : trailing);
    }
    text = join(std::move(text), "]", container);
    text.pop_back();
    if (onlyChild) {
        tree.setTrailingComma(container, false);
        tree.setText(container, JsonPart::Closing, std::move(text));
    } else if (place.afterComma) {
        tree.setText(place.textNode, place.part, std::move(text));
    } else {
        tree.setText(node.previous, JsonPart::Trailing, std::move(text));
    }
}

// The text after a node but for its comma.
std::string JsonLayout::textAfter(NodeId id) const
{
    const Following place = followingOf(id);
    std::string following(tree.text(place.textNode, place.part));
    if (place.afterComma) {
        const std::string_view trailing = tree.text(id, JsonPart::Trailing);
        following.insert(0, isBlank(trailing) ? std::string_view() : trailing);
    }
    return following;
}

JsonLayout::Comments JsonLayout::commentsOf(NodeId id) const
{
    Comments comments;
    const std::string_view leading = tree.text(id, JsonPart::Leading);
    const JsonTrivia before(leading);
    const std::size_t own = findOwnComments(leading);
    if (own != JsonTrivia::npos) {
        comments.above = leading.substr(own);
        comments.above.resize(comments.above.size() - trailingBlanks(comments.above).size());
        if (!comments.above.empty() && !endsLine(comments.above))
            comments.above += style.lineEnd;
    } else if (before.hasComment && !before.hasBreak() && tree.node(id).previous != noNode) {
        comments.above = leading.substr(leadingBlanks(leading).size());
        comments.above.resize(comments.above.size() - trailingBlanks(comments.above).size());
        comments.above += style.lineEnd;
    }
    const std::string after = textAfter(id);
    const JsonTrivia following(after);
    const bool endsItsLine = following.firstLineEnd < after.size() || tree.node(id).next == noNode;
    if (before.hasBreak() && endsItsLine && following.firstLineHasComment)
        comments.after = after.substr(0, following.firstLineEnd);
    comments.after.resize(comments.after.size() - trailingBlanks(comments.after).size());
    return comments;
}

void JsonLayout::addComments(NodeId id, const Comments& comments, std::string_view indentation)
{
    if (!comments.above.empty())
        addAbove(id, comments.above, indentation);
    if (!comments.after.empty()) {
        const NodeId container = tree.node(id).parent;
        const Following place = followingOf(id);
        std::string text = join(comments.after, tree.text(place.textNode, place.part), container);
        text = join(std::move(text), "]", container);
        text.pop_back();
        tree.setText(place.textNode, place.part, std::move(text));
    }
}

// In a line with others, one that may be there stays there.
void JsonLayout::addAbove(NodeId id, std::string_view lines, std::string_view indentation)
{
    std::string leading(tree.text(id, JsonPart::Leading));
    std::string indent = lineIndentation(tree, id);
    if (!JsonTrivia(leading).hasBreak()) {
        const TextLine first = textLineAt(lines, 0);
        if (first.end == lines.size() && !JsonTrivia(first.content).endsInLineComment) {
            leading += first.content.substr(leadingBlanks(first.content).size());
            tree.setText(id, JsonPart::Leading, leading + ' ');
            return;
        }
        leading.resize(leading.size() - trailingBlanks(leading).size());
        indent = lineIndentation(tree, tree.node(id).parent) + style.indentation;
        leading += style.lineEnd + indent;
    }
    leading.resize(leading.size() - trailingBlanks(leading).size());
    leading += indentedLines(lines, indentation, indent) + indent;
    tree.setText(id, JsonPart::Leading, std::move(leading));
}

void JsonLayout::dropCommentsAbove(NodeId id)
{
    const std::string leading(tree.text(id, JsonPart::Leading));
    const std::size_t own = findOwnComments(leading);
    const JsonTrivia trivia(leading);
    if (own == JsonTrivia::npos && !trivia.hasBreak() && tree.node(id).previous != noNode)
        tree.setText(id, JsonPart::Leading, std::string(leadingBlanks(leading)));
    else if (own != JsonTrivia::npos && own > trivia.lastBreak)
        tree.setText(id, JsonPart::Leading, leading.substr(0, own));
    else if (own != JsonTrivia::npos)
        tree.setText(id, JsonPart::Leading,
                     leading.substr(0, own) + leading.substr(skipBreak(leading, trivia.lastBreak)));
}

// What stays of the text before a node: all but its own line.
std::string JsonLayout::keptBefore(NodeId id) const
{
    const std::string_view leading = tree.text(id, JsonPart::Leading);
    const JsonTrivia trivia(leading);
    if (trivia.hasBreak() || trivia.lastLineStart > 0)
        return std::string(leading.substr(0, trivia.lastLineStart));
    const bool besideBracket = tree.node(id).previous == noNode && trivia.hasComment;
    return std::string(
        leading.substr(0, besideBracket ? leading.size() - trailingBlanks(leading).size() : 0));
}

// What stays of the text after a node: without the comments of its line if it has the line to itself, in
// which case what follows on that line moves to its beginning.
std::string JsonLayout::keptAfter(NodeId id, const std::string& following) const
{
    const std::string_view leading = tree.text(id, JsonPart::Leading);
    const JsonTrivia leadingTrivia(leading);
    const JsonTrivia trivia(following);
    const bool startsLine = leadingTrivia.hasBreak() || leadingTrivia.lastLineStart > 0;
    const bool endsLine = trivia.firstLineEnd < following.size();
    const bool isLast = tree.node(id).next == noNode;
    if (startsLine && endsLine)
        return following.substr(trivia.firstLineEnd);
    if (startsLine && isLast)
        return std::string(trailingBlanks(following));
    if (endsLine || isLast || (!startsLine && tree.node(id).previous != noNode))
        return following;
    const std::string begin = leadingTrivia.hasBreak()
                                  ? lastBreakWithBlanks(leading, leadingTrivia)
                                  : std::string(leadingBlanks(leading.substr(leadingTrivia.lastLineStart)));
    return begin + following.substr(leadingBlanks(following).size());
}

// Puts a line break between two texts when the second would become part of a comment.
std::string JsonLayout::join(std::string first, std::string_view second, NodeId container) const
{
    if (!second.empty() && !beginsWithBreak(second) && JsonTrivia(first).endsInLineComment)
        first += style.lineEnd + lineIndentation(tree, container);
    return first.append(second);
}

bool JsonLayout::opensLines(NodeId container) const
{
    if (container == tree.getRoot())
        return !style.oneLine;
    return JsonTrivia(tree.text(container, JsonPart::Leading)).hasBreak();
}

std::string JsonLayout::colonFor(NodeId object) const
{
    const NodeId last = tree.node(object).last;
    std::string colon = last == noNode ? std::string() : colonOf(tree, last);
    for (NodeId id = object; id != noNode && colon.empty(); id = tree.node(id).parent)
        colon = colonOf(tree, id);
    return colon.empty() ? style.colon : colon;
}

std::string_view JsonLayout::blankAfterComma() const
{
    return style.colon.back() == ' ' ? " " : "";
}

JsonLayout::Following JsonLayout::followingOf(NodeId id) const
{
    const JsonNode& node = tree.node(id);
    if (node.next != noNode)
        return {node.next, JsonPart::Leading, true};
    if (tree.node(node.parent).trailingComma)
        return {node.parent, JsonPart::Closing, true};
    return {id, JsonPart::Trailing, false};
}

// The leading trivia of a new node after a sibling.
std::string JsonLayout::leadingLike(NodeId sibling) const
{
    const std::string_view leading = tree.text(sibling, JsonPart::Leading);
    const JsonTrivia trivia(leading);
    if (trivia.hasBreak())
        return lastBreakWithBlanks(leading, trivia);
    if (tree.node(sibling).previous != noNode)
        return std::string(leadingBlanks(leading));
    const std::string_view label = tree.text(sibling, JsonPart::Label);
    return std::string(label.empty() ? blankAfterComma() : trailingBlanks(label));
}

} // namespace Repository::Documents
