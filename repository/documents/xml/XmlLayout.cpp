#include "repository/documents/xml/XmlLayout.h"

#include "repository/documents/xml/XmlText.h"
#include "repository/documents/xml/XmlTypeTag.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

constexpr std::string_view lineEnds = "\r\n";
constexpr std::size_t npos = std::string_view::npos;

bool holdsLineEnd(std::string_view text)
{
    return text.find_first_of(lineEnds) != npos;
}

// Where the blanks at the end of a text begin.
std::size_t trailingBlanks(std::string_view text)
{
    const std::size_t last = text.find_last_not_of(" \t\r\n");
    return last == npos ? 0 : last + 1;
}

// The text up to the line end before its last line, when there is nothing but blanks in that line.
std::string_view withoutLastLine(std::string_view text)
{
    const std::size_t end = text.find_last_of(lineEnds);
    if (end == npos || end < trailingBlanks(text))
        return text;
    const bool isPair = end > 0 && text[end] == '\n' && text[end - 1] == '\r';
    return text.substr(0, isPair ? end - 1 : end);
}

bool endsInBlankLine(std::string_view text)
{
    return withoutLastLine(text).size() < text.size();
}

// Where, in the trivia before an element, the lines of comments and instructions begin that are right above
// it and without a blank line between.
std::size_t findOwnMarkup(std::string_view leading)
{
    const std::vector<XmlTypeTag> tags = readXmlTypeTags(leading);
    const std::size_t end = tags.empty() ? leading.size() : tags.back().begin;
    std::size_t found = npos;
    std::size_t lineStart = npos; // the trivia begins in the line of what is before it
    bool isBlankSoFar = false;
    for (std::size_t at = 0; at < end;) {
        if (leading[at] == '<') {
            const bool isComment = leading.compare(at, 4, "<!--") == 0;
            const bool isOwn = isComment || leading.compare(at, 2, "<?") == 0;
            const bool isHead = leading.compare(at, 5, "<?xml") == 0 && isXmlBlank(leading[at + 5]);
            const std::size_t close = leading.find(isComment ? "-->" : isOwn ? "?>" : ">", at + 2);
            at = close == npos ? end : close + (isComment ? 3 : isOwn ? 2 : 1);
            if (!isOwn || isHead)
                found = lineStart = npos; // a declaration belongs to the file
            else if (lineStart != npos)
                found = std::min(found, lineStart);
            isBlankSoFar = false;
            continue;
        }
        if (leading[at] == '\r' || leading[at] == '\n') {
            found = isBlankSoFar ? npos : found;
            at += leading[at] == '\r' && at + 1 < end && leading[at + 1] == '\n' ? 1 : 0;
            lineStart = at + 1;
            isBlankSoFar = true;
        }
        ++at;
    }
    return std::min({found, end, leading.size()});
}

// How much trivia belongs to the line of the node before it: blanks, and comments that end in that line.
std::size_t restOfLine(std::string_view trivia)
{
    std::size_t at = 0;
    while (true) {
        at = std::min(trivia.find_first_not_of(" \t", at), trivia.size());
        if (trivia.compare(at, 4, "<!--") != 0)
            return at;
        const std::size_t end = trivia.find("-->", at + 4);
        const std::size_t line = trivia.find_first_of(lineEnds, at);
        if (end == npos || line < end)
            return at;
        at = end + 3;
    }
}

} // namespace

void XmlLayout::placeAfter(NodeId id, NodeId sibling)
{
    const bool inLine = tree.node(id).kind == XmlKind::Element && !isMixed(tree.node(id).parent) &&
                        endsInBlankLine(tree.text(sibling, XmlPart::Leading));
    if (!inLine)
        return;
    std::string leading;
    const std::string trivia(triviaAfter(id));
    const std::size_t rest = restOfLine(trivia);
    if (!isXmlBlank(trivia.substr(0, rest))) {
        leading = trivia.substr(0, rest);
        setTriviaAfter(id, trivia.substr(rest));
    }
    tree.setText(id, XmlPart::Leading, leading + lineEnd + indentOf(sibling));
}

void XmlLayout::placeOnly(NodeId id, std::string_view content)
{
    const NodeId parent = tree.node(id).parent;
    const bool lines = breaksLines(parent, content);
    const std::string indent = lines ? lineEnd + indentOf(parent) : std::string();
    const std::string innerIndent = lines ? indent + unitOfIndent() : std::string();
    // An instruction that is there must not come to be before the node: it might be a type tag.
    const bool goesFirst = content.find("<?") != npos;
    std::string leading;
    std::string trivia;
    if (goesFirst) {
        trivia = std::string(content);
    } else {
        leading = content.substr(0, trailingBlanks(content));
        trivia = endsInBlankLine(content) ? std::string(content.substr(leading.size())) : indent;
    }
    tree.setText(id, XmlPart::Leading, leading + innerIndent);
    setClosingTrivia(parent, std::move(trivia));
}

bool XmlLayout::breaksLines(NodeId element, std::string_view content) const
{
    return !tree.node(element).isPreformatted && (holdsLineEnd(content) || element == tree.getRoot() ||
                                                  endsInBlankLine(tree.text(element, XmlPart::Leading)));
}

void XmlLayout::addTypeTag(NodeId element, const std::string& tag)
{
    std::string leading(tree.text(element, XmlPart::Leading));
    const bool beginsLine = element == tree.getRoot() || endsInBlankLine(leading);
    leading += tag;
    if (beginsLine)
        leading += lineEnd + indentOf(element);
    tree.setText(element, XmlPart::Leading, std::move(leading));
}

void XmlLayout::rewriteTypeTag(NodeId element, std::string_view attribute, XmlTypeTag tag)
{
    const std::string leading(tree.text(element, XmlPart::Leading));
    for (const XmlTypeTag& former : readXmlTypeTags(leading)) { // of several the nearest counts
        if (former.attribute != attribute)
            continue;
        tag.attribute = attribute;
        if (former.type != tag.type || former.escapes != tag.escapes)
            tree.setText(element, XmlPart::Leading,
                         leading.substr(0, former.begin) + tag.write() + leading.substr(former.end));
        return;
    }
}

void XmlLayout::dropTypeTags(NodeId element, std::string_view attribute)
{
    std::string leading(tree.text(element, XmlPart::Leading));
    for (const XmlTypeTag& tag : readXmlTypeTags(leading)) { // from the last, so that places before it stay
        if (tag.attribute != attribute)
            continue;
        const std::string_view before = std::string_view(leading).substr(0, tag.begin);
        const std::string_view after = std::string_view(leading).substr(tag.end);
        const bool hasLine = endsInBlankLine(before) && holdsLineEnd(after);
        leading = std::string(hasLine ? withoutLastLine(before) : before) + std::string(after);
        tree.setText(element, XmlPart::Leading, leading);
    }
}

void XmlLayout::takeOut(NodeId id)
{
    std::string_view leading = tree.text(id, XmlPart::Leading);
    const std::vector<XmlTypeTag> tags = readXmlTypeTags(leading);
    if (!tags.empty())
        leading = leading.substr(0, tags.back().begin);
    const std::string_view trivia = triviaAfter(id);
    const std::size_t rest = restOfLine(trivia);
    const bool endsLine = rest < trivia.size() && (trivia[rest] == '\r' || trivia[rest] == '\n');
    const bool hasLine = endsInBlankLine(leading) && endsLine && tree.node(id).kind == XmlKind::Element &&
                         !tree.node(tree.node(id).parent).isPreformatted;
    const std::string_view kept = hasLine ? withoutLastLine(leading) : leading;
    setTriviaAfter(id, std::string(kept) + std::string(trivia.substr(hasLine ? rest : 0)));
}

std::string_view XmlLayout::triviaAfter(NodeId id) const
{
    const XmlNode& node = tree.node(id);
    return node.next == noNode ? closingTrivia(node.parent) : tree.text(node.next, XmlPart::Leading);
}

void XmlLayout::setTriviaAfter(NodeId id, std::string trivia)
{
    const XmlNode& node = tree.node(id);
    if (node.next == noNode)
        setClosingTrivia(node.parent, std::move(trivia));
    else
        tree.setText(node.next, XmlPart::Leading, std::move(trivia));
}

std::string_view XmlLayout::closingTrivia(NodeId element) const
{
    const std::string_view closing = tree.text(element, XmlPart::Closing);
    return closing.substr(0, std::min(closing.rfind("</"), closing.size()));
}

void XmlLayout::setClosingTrivia(NodeId element, std::string trivia)
{
    trivia += tree.text(element, XmlPart::Closing).substr(closingTrivia(element).size());
    tree.setText(element, XmlPart::Closing, std::move(trivia));
}

bool XmlLayout::beginsLine(NodeId element) const
{
    return endsInBlankLine(tree.text(element, XmlPart::Leading));
}

std::string XmlLayout::linesAbove(NodeId element) const
{
    const std::string_view leading = tree.text(element, XmlPart::Leading);
    std::string lines(leading.substr(findOwnMarkup(leading)));
    lines.resize(trailingBlanks(lines));
    return lines.empty() ? lines : lines + lineEnd;
}

std::string XmlLayout::commentAfter(NodeId element) const
{
    const std::string_view leading = tree.text(element, XmlPart::Leading);
    const bool hasLine = beginsLine(element) || findOwnMarkup(leading) < leading.size();
    if (tree.node(element).parent == noNode || !hasLine)
        return {};
    const std::string_view trivia = triviaAfter(element);
    const std::size_t rest = restOfLine(trivia);
    const std::string_view comment = trivia.substr(0, rest);
    const bool endsLine = rest < trivia.size() && (trivia[rest] == '\r' || trivia[rest] == '\n');
    return endsLine ? std::string(comment.substr(0, trailingBlanks(comment))) : std::string();
}

void XmlLayout::dropLinesAbove(NodeId element)
{
    std::string leading(tree.text(element, XmlPart::Leading));
    const std::vector<XmlTypeTag> tags = readXmlTypeTags(leading);
    const std::size_t end = tags.empty() ? leading.size() : tags.back().begin;
    const std::size_t own = findOwnMarkup(leading);
    if (own >= end)
        return;
    const std::size_t lastBreak = leading.find_last_of(lineEnds, end - 1);
    const std::size_t line = lastBreak == npos || lastBreak < own ? own : lastBreak + 1;
    const std::size_t markup = std::min(leading.find_first_not_of(" \t", line), end);
    leading.erase(markup, end - markup);
    tree.setText(element, XmlPart::Leading, leading.erase(own, line - own));
}

void XmlLayout::renameTypeTags(NodeId element, std::string_view attribute, std::string_view name)
{
    dropTypeTags(element, name);
    std::string leading(tree.text(element, XmlPart::Leading));
    for (const XmlTypeTag& tag : readXmlTypeTags(leading)) { // from the last, so that places before it stay
        if (tag.attribute != attribute)
            continue;
        const auto at = std::size_t(tag.attribute.data() - leading.data());
        std::string renamed = leading.substr(0, at);
        renamed.append(name).append(leading, at + attribute.size(), std::string::npos);
        tree.setText(element, XmlPart::Leading, renamed);
        return;
    }
}

bool XmlLayout::isMixed(NodeId element) const
{
    return tree.node(element).isPreformatted ||
           tree.find(element, {XmlKind::Text, XmlNames::none, 1}) != noNode;
}

std::string XmlLayout::indentOf(NodeId element) const
{
    std::string_view leading = tree.text(element, XmlPart::Leading);
    while (!holdsLineEnd(leading) && tree.node(element).parent != noNode) {
        element = tree.node(element).parent;
        leading = tree.text(element, XmlPart::Leading);
    }
    const std::size_t end = leading.find_last_of(lineEnds);
    const std::string_view line = leading.substr(end == npos ? 0 : end + 1);
    return std::string(line.substr(0, std::min(line.find_first_not_of(" \t"), line.size())));
}

// By how much the first element that is in a line of its own is indented.
std::string XmlLayout::unitOfIndent() const
{
    const std::string usual = "  ";
    bool anyLine = false;
    NodeId element = tree.getRoot();
    while (element != noNode && tree.node(element).isContainer()) {
        const NodeId child = tree.firstInside(element);
        if (tree.node(child).end != 0 && endsInBlankLine(tree.text(child, XmlPart::Leading))) {
            const std::string outer = indentOf(element);
            const std::string inner = indentOf(child);
            if (inner.size() > outer.size() && inner.compare(0, outer.size(), outer) == 0)
                return inner.substr(outer.size());
            anyLine = true;
        }
        element = tree.node(child).kind == XmlKind::Element ? child : noNode;
    }
    return anyLine ? std::string() : usual;
}

} // namespace Repository::Documents
