#include "repository/documents/yaml/YamlLayout.h"

#include "repository/documents/common/ExcerptText.h"
#include "repository/documents/yaml/YamlScalar.h"
#include "repository/documents/yaml/YamlTokens.h"

#include <algorithm>

namespace Repository::Documents {

std::size_t YamlLayout::beginOf(NodeId id) const
{
    const YamlNode& node = tree.node(id);
    if (node.parent == noNode || tree.node(node.parent).style == YamlStyle::Stream)
        return node.begin;
    if (node.previous != noNode)
        return skipYamlTrivia(text(), endOf(node.previous));
    return tree.node(node.parent).value;
}

std::size_t YamlLayout::tailOf(NodeId id) const
{
    return skipYamlTail(text(), endOf(id));
}

std::size_t YamlLayout::endWithComments(NodeId id) const
{
    const std::size_t column = columnOfYaml(text(), beginOf(id));
    std::size_t end = tailOf(id);
    for (std::size_t line = skipYamlLine(text(), end); line < text().size();
         line = skipYamlLine(text(), line)) {
        const std::size_t content = skipYamlBlanks(text(), line);
        const bool isComment = content < text().size() && text()[content] == '#' && content - line > column;
        if (isComment)
            end = findYamlLineEnd(text(), content);
        else if (content < text().size() && !isYamlBreak(text()[content]))
            break;
    }
    return end;
}

bool YamlLayout::beginsLine(NodeId id) const
{
    const std::size_t begin = beginOf(id);
    const std::size_t line = findYamlLine(text(), begin);
    return skipYamlBlanks(text(), line) == begin;
}

std::size_t YamlLayout::commentsAbove(NodeId id) const
{
    const std::size_t begin = beginOf(id);
    const std::size_t own = findYamlLine(text(), begin);
    const NodeId previous = tree.node(id).previous;
    const std::size_t least = previous == noNode ? 0 : skipYamlLine(text(), tailOf(previous));
    std::size_t top = own;
    while (top > least) {
        const std::size_t lineEnd = endOfYamlContent(text(), top);
        const std::size_t line = findYamlLine(text(), lineEnd);
        const std::size_t content = skipYamlBlanks(text(), line);
        if (line < least || text()[content] != '#' || content - line != begin - own)
            break;
        top = line;
    }
    return top;
}

bool YamlLayout::isEmptyLine(std::size_t line) const
{
    const std::size_t content = skipYamlBlanks(text(), line);
    return content < text().size() && isYamlBreak(text()[content]);
}

bool YamlLayout::isEmptyAbove(std::size_t line) const
{
    return line > 0 && isEmptyLine(findYamlLine(text(), endOfYamlContent(text(), line)));
}

bool YamlLayout::isApart(NodeId id) const
{
    const NodeId previous = id == noNode ? noNode : tree.node(id).previous;
    return previous != noNode && beginsLine(id) && !endsOpen(previous) && isEmptyAbove(commentsAbove(id));
}

// At the end, as the last entries are mostly.
bool YamlLayout::keepsApart(NodeId collection, NodeId next) const
{
    if (next != noNode)
        return isApart(tree.node(next).previous == noNode ? tree.node(next).next : next);
    constexpr int enough = 4;
    const NodeId last = tree.lastOwn(collection);
    int seen = 0;
    int apart = 0;
    for (NodeId id = last; id != noNode && tree.node(id).previous != noNode && seen < enough;
         id = tree.node(id).previous, ++seen)
        apart += isApart(id) ? 1 : 0;
    return isApart(last) && !endsOpen(last) && 2 * apart > seen;
}

std::size_t YamlLayout::tagAbove(NodeId id) const
{
    const std::size_t line = findYamlLine(text(), beginOf(id));
    for (NodeId each = id; each != noNode && findYamlLine(text(), tree.node(each).begin) == line;
         each = tree.node(each).first) {
        if (tree.node(each).tag != Type::Group)
            return findYamlLine(text(), endOfYamlContent(text(), line));
        if (tree.node(each).isLeaf())
            break;
    }
    return line;
}

std::size_t YamlLayout::endOfBlock(NodeId collection) const
{
    const std::size_t column = columnOf(collection);
    const NodeId last = tree.lastOwn(collection);
    std::size_t at = skipYamlLine(text(), last == noNode ? tailOf(collection) : endWithComments(last));
    while (column > 0 && at < text().size()) {
        const std::size_t content = skipYamlBlanks(text(), at);
        if (content == text().size() || text()[content] != '#' || content - at < column)
            break;
        at = skipYamlLine(text(), content);
    }
    return at;
}

std::size_t YamlLayout::columnOf(NodeId collection) const
{
    return columnOfYaml(text(), tree.node(collection).value);
}

std::size_t YamlLayout::afterIndicator(NodeId id) const
{
    const YamlNode& node = tree.node(id);
    std::size_t at = std::string_view::npos;
    if (node.hasKey) {
        const std::size_t colon = skipYamlTrivia(text(), node.keyEnd);
        at = colon < text().size() && text()[colon] == ':' ? colon + 1 : at;
    } else if (!isDocument(id)) {
        at = beginOf(id) + 1;
    }
    if (at == std::string_view::npos)
        return at;
    for (std::size_t next = skipYamlTrivia(text(), at);
         next < node.value && (text()[next] == '&' || text()[next] == '!'); next = skipYamlTrivia(text(), at))
        at = std::min(text().find_first_of(" \t\r\n", next), text().size());
    return at;
}

std::vector<BracketItems::Item> YamlLayout::itemsOf(NodeId collection) const
{
    const std::size_t from = tree.node(collection).value;
    std::vector<BracketItems::Item> items;
    std::size_t at = skipYamlTrivia(text(), from + 1);
    for (NodeId id = tree.node(collection).first; id != noNode && !tree.node(id).isInherited;
         id = tree.node(id).next) {
        BracketItems::Item item{at - from, tree.node(id).valueEnd - from, std::string_view::npos};
        at = skipYamlTrivia(text(), tree.node(id).valueEnd);
        if (text()[at] == ',') {
            item.comma = at - from;
            at = skipYamlTrivia(text(), at + 1);
        }
        items.push_back(item);
    }
    return items;
}

bool YamlLayout::hasAnchors(NodeId id) const
{
    std::vector<NodeId> pending{id};
    while (!pending.empty()) {
        const YamlNode& node = tree.node(pending.back());
        pending.pop_back();
        if (node.isAnchored || node.hasKeyProperties)
            return true;
        if (node.isAlias)
            continue;
        for (NodeId child = node.first; child != noNode && !tree.node(child).isShared;
             child = tree.node(child).next)
            pending.push_back(child);
    }
    return false;
}

std::optional<char> YamlLayout::chompingAtEnd(NodeId id) const
{
    while (tree.lastOwn(id) != noNode && !tree.node(id).isFlow() && !tree.node(id).isAlias)
        id = tree.lastOwn(id);
    if (!tree.node(id).isBlockScalar())
        return {};
    const std::string_view value = tree.readValueText(id);
    return readYamlBlockHeader(value.substr(tagOfYamlScalar(value).size())).chomping;
}

// Whether it ends with a text that takes up all empty lines after it.
bool YamlLayout::endsOpen(NodeId id) const
{
    return chompingAtEnd(id) == '+';
}

BracketItems YamlLayout::bracketsAround(NodeId item) const
{
    const NodeId collection = tree.node(item).parent;
    const YamlNode& node = tree.node(collection);
    return {tree.text(node.value, node.valueEnd), file.lineEnd, itemsOf(collection), false};
}

bool YamlLayout::hasComments(NodeId id) const
{
    const YamlNode& node = tree.node(id);
    const bool isFlow = node.parent != noNode && tree.node(node.parent).isFlow();
    if (isFlow && !bracketsAround(id).commentBehind(tree.positionOf(id)).empty())
        return true;
    std::size_t at = beginOf(id);
    const auto skipTo = [&](std::size_t begin, std::size_t end) {
        const bool hasComment = begin > at && hasYamlComment(text(), at, begin);
        at = std::max(at, end);
        return hasComment;
    };
    std::vector<NodeId> pending{id}; // the next one last
    while (!pending.empty()) {
        const NodeId next = pending.back();
        const YamlNode& each = tree.node(next);
        pending.pop_back();
        const bool isList = each.kind == YamlKind::List; // the elements of which are no entries
        const bool isWhole = each.isAlias || (each.isLeaf() && !isList);
        if ((each.hasKey && skipTo(each.key, each.keyEnd)) ||
            (isWhole && skipTo(each.value, each.valueEnd)) ||
            (each.isBlockScalar() && !commentOfYamlBlock(tree.text(each.value, each.valueEnd)).empty()))
            return true;
        if (isWhole)
            continue;
        for (NodeId child = tree.lastOwn(next); child != noNode; child = tree.node(child).previous)
            pending.push_back(child);
    }
    const std::size_t end = isFlow ? tailOf(id) : endWithComments(id);
    return skipTo(end, end);
}

std::optional<Excerpt> YamlLayout::excerptOf(NodeId id) const
{
    const YamlNode& node = tree.node(id);
    const bool isFlow = node.parent != noNode && tree.node(node.parent).isFlow();
    const bool isMember = node.hasKey && node.keyStyle <= YamlStyle::Double && !node.lacksColon &&
                          (isFlow || beginOf(id) == node.key);
    const bool isElement = !node.hasKey && !isDocument(id);
    if ((!isMember && !isElement) || node.isShared || hasAnchors(id) || endsOpen(id))
        return {};
    Excerpt found;
    found.lineEnd = file.lineEnd;
    const std::size_t begin = isMember ? node.key : isFlow ? node.begin : beginOf(id);
    const std::size_t tail = tailOf(id);
    const std::size_t below = isFlow ? tail : endWithComments(id);
    (found.text = isElement && isFlow ? "- " : "") +=
        tree.text(begin, below > tail ? below : std::size_t(node.valueEnd));
    found.names.emplace_back(0, isMember ? node.keyEnd - node.key : 1);
    const std::size_t line = findYamlLine(text(), begin);
    findLines(found);
    if (isFlow) {
        const BracketItems brackets = bracketsAround(id);
        const std::size_t position = tree.positionOf(id);
        found.indentation = text().substr(line, skipYamlBlanks(text(), line) - line);
        found.above = brackets.commentsAbove(position);
        found.after = brackets.commentBehind(position);
        return found;
    }
    found.indentation = std::string(begin - line, ' ');
    if (beginsLine(id))
        found.above = text().substr(commentsAbove(id), line - commentsAbove(id));
    if (below == tail)
        found.after = text().substr(node.valueEnd, tail - node.valueEnd);
    found.after.resize(found.after.find_last_not_of(" \t") + 1);
    return found;
}

std::optional<std::string> YamlLayout::itemIndentation(NodeId collection) const
{
    const NodeId last = tree.lastOwn(collection);
    if (last == noNode)
        return {};
    const std::size_t begin = tree.node(last).hasKey ? tree.node(last).key : tree.node(last).begin;
    const std::size_t line = findYamlLine(text(), begin);
    const bool hasLine = line > tree.node(collection).value && skipYamlBlanks(text(), line) == begin;
    return hasLine ? std::optional(std::string(text().substr(line, begin - line))) : std::nullopt;
}

std::string YamlLayout::commentOf(NodeId id) const
{
    const YamlNode& node = tree.node(id);
    if (node.isShared || isDocument(id) || tree.node(node.parent).isFlow())
        return {};
    const std::size_t line = findYamlLine(text(), beginOf(id));
    const std::size_t above = beginsLine(id) ? commentsAbove(id) : line;
    const std::size_t indicator = afterIndicator(id);
    const bool isBlock = !node.isFlow() && node.first != noNode && indicator != std::string_view::npos;
    const std::size_t end = isBlock ? indicator : endOf(id);
    return joinComments(text().substr(above, line - above),
                        text().substr(end, skipYamlTail(text(), end) - end));
}

bool YamlLayout::isDocument(NodeId id) const
{
    const NodeId parent = tree.node(id).parent;
    return parent == noNode || tree.node(parent).style == YamlStyle::Stream;
}

bool YamlLayout::indentsLists() const
{
    constexpr std::size_t enough = 5000;
    std::size_t seen = 0;
    for (NodeId id = tree.getRoot(); id != noNode && seen < enough; id = tree.following(id), ++seen) {
        const YamlNode& node = tree.node(id);
        const bool isBlockList = node.isSequence() && node.style == YamlStyle::Block && node.hasKey &&
                                 !node.isShared && !node.isAlias && node.count > 0;
        if (isBlockList)
            return columnOf(id) > columnOf(node.parent);
    }
    return true;
}

} // namespace Repository::Documents
