#include "repository/documents/json/JsonLayout.h"

#include "repository/documents/json/JsonGap.h"

#include <utility>

namespace Repository::Documents {

namespace {

bool beginsWithBreak(std::string_view text)
{
    return !text.empty() && (text[0] == '\n' || text[0] == '\r');
}

// The last line break of a text that has one, and the blanks behind it.
std::string lastBreakWithBlanks(std::string_view text, const JsonGap& gap)
{
    return std::string(text.substr(gap.lastBreak, gap.indentation - gap.lastBreak));
}

} // namespace

JsonLayout::JsonLayout(JsonTree& syntaxTree) : tree(syntaxTree)
{
}

void JsonLayout::detect()
{
    style = detectStyle(tree);
}

void JsonLayout::placeOnly(NodeId id, bool inLines)
{
    const NodeId container = tree.node(id).parent;
    const std::string inside(tree.text(container, JsonPart::Closing));
    const JsonGap gap(inside);
    std::string lead = gap.hasComment ? inside : std::string();
    std::string tail;
    if (inLines || gap.hasBreak()) {
        const std::string outer = style.lineEnd + lineIndentation(tree, container);
        lead.resize(gap.hasComment && gap.hasBreak() ? gap.lastBreak : lead.size());
        lead += outer + style.indentation;
        tail = gap.hasBreak() ? inside.substr(gap.lastBreak) : outer;
    }
    tree.setText(id, JsonPart::Lead, std::move(lead));
    tree.setText(id, JsonPart::Tail, std::move(tail));
    tree.setText(container, JsonPart::Closing, {});
}

void JsonLayout::placeFirst(NodeId id)
{
    const NodeId second = tree.node(id).next;
    const NodeId third = tree.node(second).next;
    const std::string lead(tree.text(second, JsonPart::Lead));
    const JsonGap gap(lead);
    std::string between(blankBehindComma());
    if (gap.hasBreak())
        between = lastBreakWithBlanks(lead, gap);
    else if (third != noNode)
        between = leadingBlanks(tree.text(third, JsonPart::Lead));
    tree.setText(id, JsonPart::Lead, lead);
    tree.setText(second, JsonPart::Lead, std::move(between));
}

void JsonLayout::placeBehind(NodeId id)
{
    const NodeId sibling = tree.node(id).previous;
    const Following place = followingOf(id);
    const bool behindComma = place.behindComma;
    const NodeId holder = behindComma ? place.holder : sibling;
    const std::string following(tree.text(holder, place.part));
    const JsonGap gap(following);

    std::string kept;   // stays with the sibling, before the comma
    std::string before; // stays in the sibling's line, behind the comma
    std::string rest = following;
    const std::string sameLine = following.substr(0, gap.firstLineEnd);
    const bool lineComment = JsonGap(sameLine).endsInLineComment;
    if (beginsWithBreak(std::string_view(following).substr(gap.firstLineEnd))) {
        (behindComma || lineComment || !gap.firstLineHasComment ? before : kept) = sameLine;
        rest = following.substr(gap.firstLineEnd);
    } else if (!behindComma && gap.firstLineEnd == following.size() && gap.hasComment) {
        rest = trailingBlanks(following);
        kept = following.substr(0, following.size() - rest.size());
    }

    std::string lead = leadLike(sibling);
    if (lineComment && !beginsWithBreak(lead))
        lead = style.lineEnd + lineIndentation(tree, sibling);
    tree.setText(id, JsonPart::Lead, before + lead);
    if (behindComma) {
        tree.setText(holder, place.part, std::move(rest));
    } else {
        tree.setText(sibling, JsonPart::Tail, std::move(kept));
        tree.setText(id, JsonPart::Tail, std::move(rest));
    }
}

void JsonLayout::takeOut(NodeId id)
{
    const JsonNode& node = tree.node(id);
    const NodeId container = node.parent;
    const Following place = followingOf(id);
    std::string following(tree.text(place.holder, place.part));
    if (place.behindComma) {
        const std::string_view tail = tree.text(id, JsonPart::Tail);
        following.insert(0, isBlank(tail) ? std::string_view() : tail);
    }
    std::string text = join(keptBefore(id), keptBehind(id, following), container);
    const bool onlyChild = node.next == noNode && node.previous == noNode;
    if (onlyChild && isBlank(text))
        text.clear();
    if (!place.behindComma && !onlyChild) {
        const std::string_view tail = tree.text(node.previous, JsonPart::Tail);
        text.insert(0, isBlank(tail) ? std::string_view() : tail);
    }
    text = join(std::move(text), "]", container);
    text.pop_back();
    if (onlyChild) {
        tree.setTrailingComma(container, false);
        tree.setText(container, JsonPart::Closing, std::move(text));
    } else if (place.behindComma) {
        tree.setText(place.holder, place.part, std::move(text));
    } else {
        tree.setText(node.previous, JsonPart::Tail, std::move(text));
    }
}

// What stays of the text before a node: all but its own line.
std::string JsonLayout::keptBefore(NodeId id) const
{
    const std::string_view lead = tree.text(id, JsonPart::Lead);
    const JsonGap gap(lead);
    if (gap.hasBreak() || gap.lastLineStart > 0)
        return std::string(lead.substr(0, gap.lastLineStart));
    const bool besideBracket = tree.node(id).previous == noNode && gap.hasComment;
    return std::string(lead.substr(0, besideBracket ? lead.size() - trailingBlanks(lead).size() : 0));
}

// What stays of the text behind a node: all but the comments on its line, when it has that line for itself.
// What follows in the same line takes the place at its beginning.
std::string JsonLayout::keptBehind(NodeId id, const std::string& following) const
{
    const std::string_view lead = tree.text(id, JsonPart::Lead);
    const JsonGap leadGap(lead);
    const JsonGap gap(following);
    const bool startsLine = leadGap.hasBreak() || leadGap.lastLineStart > 0;
    const bool endsLine = gap.firstLineEnd < following.size();
    const bool isLast = tree.node(id).next == noNode;
    if (startsLine && endsLine)
        return following.substr(gap.firstLineEnd);
    if (startsLine && isLast)
        return std::string(trailingBlanks(following));
    if (endsLine || isLast || (!startsLine && tree.node(id).previous != noNode))
        return following;
    const std::string begin = leadGap.hasBreak()
                                  ? lastBreakWithBlanks(lead, leadGap)
                                  : std::string(leadingBlanks(lead.substr(leadGap.lastLineStart)));
    return begin + following.substr(leadingBlanks(following).size());
}

// Puts a line break between two texts when the second would become part of a comment.
std::string JsonLayout::join(std::string first, std::string_view second, NodeId container) const
{
    if (!second.empty() && !beginsWithBreak(second) && JsonGap(first).endsInLineComment)
        first += style.lineEnd + lineIndentation(tree, container);
    return first.append(second);
}

bool JsonLayout::opensLines(NodeId container) const
{
    if (container == tree.getRoot())
        return !style.oneLine;
    return JsonGap(tree.text(container, JsonPart::Lead)).hasBreak();
}

std::string JsonLayout::colonFor(NodeId object) const
{
    const NodeId last = tree.node(object).last;
    std::string colon = last == noNode ? std::string() : colonOf(tree, last);
    for (NodeId id = object; id != noNode && colon.empty(); id = tree.node(id).parent)
        colon = colonOf(tree, id);
    return colon.empty() ? style.colon : colon;
}

std::string_view JsonLayout::blankBehindComma() const
{
    return style.colon.back() == ' ' ? " " : "";
}

JsonLayout::Following JsonLayout::followingOf(NodeId id) const
{
    const JsonNode& node = tree.node(id);
    if (node.next != noNode)
        return {node.next, JsonPart::Lead, true};
    if (tree.node(node.parent).trailingComma)
        return {node.parent, JsonPart::Closing, true};
    return {id, JsonPart::Tail, false};
}

// The lead of a new node behind a sibling.
std::string JsonLayout::leadLike(NodeId sibling) const
{
    const std::string_view lead = tree.text(sibling, JsonPart::Lead);
    const JsonGap gap(lead);
    if (gap.hasBreak())
        return lastBreakWithBlanks(lead, gap);
    if (tree.node(sibling).previous != noNode)
        return std::string(leadingBlanks(lead));
    const std::string_view label = tree.text(sibling, JsonPart::Label);
    return std::string(label.empty() ? blankBehindComma() : trailingBlanks(label));
}

} // namespace Repository::Documents
