#include "repository/documents/json/JsonStyle.h"

#include "repository/documents/json/JsonTrivia.h"

#include <algorithm>
#include <string_view>

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

} // namespace

JsonStyle detectStyle(const JsonTree& tree)
{
    JsonStyle style;
    const std::string_view text = tree.getOriginal();
    const std::size_t lineEnd = text.find_first_of("\r\n");
    if (lineEnd != std::string_view::npos)
        style.lineEnd = text.substr(lineEnd, skipBreak(text, lineEnd) - lineEnd);

    const NodeId examined = std::min(tree.getSize(), examinedNodes);
    bool hasIndentation = false;
    bool hasColon = false;
    for (NodeId id = 1; id < examined && !(hasIndentation && hasColon); ++id) {
        const std::string step = hasIndentation ? std::string() : indentationStep(tree, id);
        if (!step.empty())
            style.indentation = step;
        hasIndentation = hasIndentation || !step.empty();
        const std::string colon = hasColon ? std::string() : colonOf(tree, id);
        if (!colon.empty())
            style.colon = colon;
        hasColon = hasColon || !colon.empty();
    }
    const NodeId first = tree.getSize() > 1 ? tree.node(tree.getRoot()).first : noNode;
    style.oneLine = first != noNode && !JsonTrivia(tree.text(first, JsonPart::Leading)).hasBreak();
    return style;
}

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

} // namespace Repository::Documents
