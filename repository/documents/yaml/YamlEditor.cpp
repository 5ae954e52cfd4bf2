#include "repository/documents/yaml/YamlEditor.h"

#include "repository/documents/common/BracketItems.h"
#include "repository/documents/common/TextLine.h"
#include "repository/documents/yaml/YamlDocuments.h"
#include "repository/documents/yaml/YamlTokens.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

constexpr auto npos = std::string_view::npos;

} // namespace

void YamlEditor::edit(std::size_t begin, std::size_t end, std::string text)
{
    if (begin < end || !text.empty())
        edits.push_back({begin, end, std::move(text)});
}

YamlBlockStyle YamlEditor::style() const
{
    return {file.lineEnd, file.stepOf(), layout.indentsLists()};
}

std::vector<YamlEditor::Edit> YamlEditor::getSortedEdits() const
{
    std::vector<Edit> sorted = edits;
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const Edit& a, const Edit& b) { return a.begin < b.begin; });
    return sorted;
}

std::string YamlEditor::apply(std::size_t begin, std::size_t end) const
{
    std::string result;
    std::size_t at = begin;
    for (const Edit& each : getSortedEdits()) {
        (result += text().substr(at, each.begin - at)) += each.text;
        at = each.end;
    }
    return result += text().substr(at, end - at);
}

void YamlEditor::replaceText(NodeId value, std::string text)
{
    place = value;
    edit(tree.node(value).value, tree.node(value).valueEnd, std::move(text));
}

void YamlEditor::replaceKey(NodeId member, const std::string& key)
{
    const YamlNode& node = tree.node(member);
    place = member;
    edit(node.key, node.keyEnd,
         spellYamlKey(key, tree.text(node.key, node.keyEnd), tree.node(node.parent).isFlow()));
}

Outcome YamlEditor::insertMember(NodeId map, const YamlBranch& branch)
{
    if (mayBecomeBlock(map))
        return becomeBlock(map, branch);
    YamlWriter writer(style());
    const bool inFlow = tree.node(map).isFlow();
    if (inFlow)
        writer.writeFlowMember(branch);
    else
        writer.writeMember(branch, tree.node(map).count == 0 ? 0 : layout.columnOf(map));
    if (!writer.error.empty())
        return refused(writer.error);
    return inFlow ? insertFlow(map, tree.node(map).count, {writer.text}) : insertLines(map, writer.text);
}

Outcome YamlEditor::insertElement(NodeId sequence, std::size_t position, const YamlBranch& branch)
{
    if (mayBecomeBlock(sequence))
        return becomeBlock(sequence, branch);
    YamlWriter writer(style());
    const bool isFlow = tree.node(sequence).isFlow();
    const bool isStream = tree.node(sequence).style == YamlStyle::Stream;
    if (isStream)
        writer.writeWhole(branch, true);
    else if (isFlow)
        writer.writeFlow(branch);
    else
        writer.writeElement(branch, layout.columnOf(sequence));
    if (!writer.error.empty())
        return refused(writer.error);
    if (isStream)
        return YamlDocuments(file).insert(*this, position, writer.text);
    return isFlow ? insertFlow(sequence, position, {writer.text})
                  : insertLinesAt(sequence, position, writer.text);
}

// Empty brackets, as a collection has whose last entry went.
bool YamlEditor::mayBecomeBlock(NodeId collection) const
{
    const YamlNode& node = tree.node(collection);
    const bool isEmpty = node.count == 0 && node.style == YamlStyle::Flow && !file.isInFlow(collection);
    const bool isAlone = columnOfYaml(text(), node.begin) == 0 && node.begin == node.value &&
                         layout.tailOf(collection) == skipYamlBlanks(text(), node.valueEnd);
    return isEmpty && !hasYamlComment(text(), node.value, node.valueEnd) &&
           (!layout.isDocument(collection) || isAlone);
}

Outcome YamlEditor::becomeBlock(NodeId collection, const YamlBranch& branch)
{
    YamlBranch whole;
    whole.isArray = tree.node(collection).isSequence();
    whole.children.push_back(branch);
    return replaceValue(collection, whole);
}

Outcome YamlEditor::insertTexts(NodeId sequence, std::size_t position, const std::vector<std::string>& texts)
{
    const bool isFlow = tree.node(sequence).isFlow();
    std::vector<std::string> items;
    YamlWriter lines(style());
    for (const std::string& each : texts) {
        const Value value{Type::String, each};
        YamlBranch branch;
        branch.value = &value;
        YamlWriter item(style());
        if (isFlow)
            item.writeFlow(branch);
        else
            lines.writeElement(branch, layout.columnOf(sequence));
        items.push_back(std::move(item.text));
    }
    return isFlow ? insertFlow(sequence, position, items) : insertLinesAt(sequence, position, lines.text);
}

Outcome YamlEditor::insertFlow(NodeId collection, std::size_t position, const std::vector<std::string>& items,
                               std::string_view comment)
{
    const YamlNode& node = tree.node(collection);
    if (node.style == YamlStyle::Pair)
        return refused(
            Reason::tr("an entry between brackets without braces of its own can have no other beside it"));
    BracketItems brackets(tree.text(node.value, node.valueEnd), file.lineEnd, layout.itemsOf(collection),
                          false);
    if (!comment.empty() && !brackets.insertsLines(position))
        return refused(Reason::tr("a comment has no place there"));
    brackets.insert(position, items, comment);
    changed = node.count == 0 ? collection : changed;
    take(collection, brackets);
    return {};
}

void YamlEditor::take(NodeId collection, const BracketItems& brackets)
{
    place = collection;
    for (const BracketItems::Edit& each : brackets.getEdits())
        edit(each.begin + tree.node(collection).value, each.end + tree.node(collection).value, each.text);
}

// What follows is still behind the line end that was before it, which in a mixed file may be another.
Outcome YamlEditor::insertLines(NodeId collection, std::string lines)
{
    const YamlNode& node = tree.node(collection);
    if (node.count == 0)
        return mayBecomeBlock(collection) ? replaceByBlock(collection, lines) : fillEmpty(collection, lines);
    place = tree.lastOwn(collection);
    const std::size_t at = layout.endOfBlock(collection);
    const bool isBehindLine = endsLine(text().substr(0, at));
    if (isBehindLine && endsLine(lines))
        lines.replace(endOfYamlContent(lines, lines.size()), std::string::npos,
                      text().substr(endOfYamlContent(text(), at), at - endOfYamlContent(text(), at)));
    edit(at, at, (isBehindLine ? "" : file.lineEnd) + lines);
    return {};
}

Outcome YamlEditor::fill(NodeId root, const YamlBranch& branch)
{
    YamlWriter writer(style());
    writer.writeContent(branch, 0);
    return writer.error.empty() ? fillEmpty(root, writer.text) : refused(writer.error);
}

bool YamlEditor::isEmptyDocument(NodeId id) const
{
    const YamlNode& node = tree.node(id);
    return layout.isDocument(id) && node.value == node.valueEnd && !node.isAlias &&
           (node.style == YamlStyle::Block || node.style == YamlStyle::Plain);
}

// A document that has nothing yet, but maybe comments, which stay in front, and a "..." or "---" after it.
Outcome YamlEditor::fillEmpty(NodeId root, const std::string& lines)
{
    if (!isEmptyDocument(root))
        return refused(Reason::tr("nothing can be added there"));
    changed = root;
    const std::size_t at = skipYamlTrivia(text(), tree.node(root).valueEnd);
    edit(at, at, (endsLine(text().substr(0, at)) ? "" : file.lineEnd) + lines);
    return {};
}

Outcome YamlEditor::insertLinesAt(NodeId collection, std::size_t position, std::string lines)
{
    const YamlNode& node = tree.node(collection);
    if (position == node.count)
        return insertLines(collection, lines);
    const NodeId next = tree.elementAt(collection, position);
    place = next;
    if (layout.beginsLine(next)) {
        const std::size_t at = layout.commentsAbove(next);
        edit(at, at, std::move(lines));
        return {};
    }
    const std::size_t column = layout.columnOf(collection);
    const std::size_t at = layout.beginOf(next);
    edit(at, at, lines.substr(column) + std::string(column, ' '));
    return {};
}

Outcome YamlEditor::wrap(NodeId leaf, const YamlBranch& branch)
{
    const YamlNode& node = tree.node(leaf);
    const bool inFlow = file.isInFlow(leaf);
    const std::string own = spellYamlKey(yamlOwnValueKey, {}, inFlow) + ": ";
    const std::string value(tree.text(node.begin, node.valueEnd));
    changed = place = leaf;
    YamlWriter writer(style());
    if (inFlow) {
        writer.writeFlowMember(branch);
        edit(node.begin, node.valueEnd,
             (node.lacksColon ? ": {" : "{") + own + value + ", " + writer.text + '}');
        return refused(writer.error);
    }
    if (node.lacksColon)
        return refused(Reason::tr("its key has no \":\", after which its entries would come"));
    if (node.kind == YamlKind::List && node.style == YamlStyle::Block && node.hasKey)
        return wrapList(leaf, branch);
    const bool isOneLine = value.find_first_of("\r\n") == npos;
    const std::size_t column = layout.columnOf(node.parent == noNode ? leaf : node.parent);
    const bool isElement = !node.hasKey && !layout.isDocument(leaf);
    const bool isOwnLine = skipYamlBlanks(text(), findYamlLine(text(), node.begin)) == node.begin;
    if (!isOneLine)
        return refused(Reason::tr("its value is written over several lines, below which no entry can go"));
    if (layout.isDocument(leaf) && !isOwnLine)
        return refused(Reason::tr("its value is on the line of \"---\", below which no entry can go"));
    if (node.tag != Type::Group && (!node.hasKey || isOwnLine))
        return refused(Reason::tr("a comment above it tags its type, so that no entry can go below it"));
    if (isElement || layout.isDocument(leaf)) {
        const std::size_t indentation = value.empty() ? column + 2 : columnOfYaml(text(), node.begin);
        writer.writeMember(branch, indentation);
        edit(node.begin, node.begin,
             (value.empty() && isElement ? " " : "") + own.substr(0, own.size() - (value.empty() ? 1 : 0)));
    } else {
        const std::size_t indentation = isOwnLine ? columnOfYaml(text(), node.begin) : column + file.stepOf();
        writer.writeMember(branch, indentation);
        if (isOwnLine) {
            edit(node.begin, node.begin, own);
        } else {
            const std::size_t colon = text().find_last_not_of(" \t", node.begin - 1) + 1;
            const std::string blanks(indentation, ' ');
            const std::size_t line = findYamlLine(text(), layout.beginOf(leaf));
            const std::size_t above = layout.tagAbove(leaf); // it goes along
            const std::string tag(text().substr(above, line - above));
            edit(above, line, {});
            edit(colon, node.begin,
                 file.lineEnd + (tag.empty() ? tag : blanks + tag.substr(skipYamlBlanks(tag, 0))) + blanks +
                     own.substr(0, own.size() - (value.empty() ? 1 : 0)));
        }
    }
    const std::size_t tail = skipYamlLine(text(), layout.tailOf(leaf));
    edit(tail, tail, (endsLine(text().substr(0, tail)) ? "" : file.lineEnd) + writer.text);
    return refused(writer.error);
}

// The key of its own value goes above a list, in the column of its elements.
Outcome YamlEditor::wrapList(NodeId list, const YamlBranch& branch)
{
    const YamlNode& node = tree.node(list);
    const std::size_t column = layout.columnOf(list);
    if (column <= layout.columnOf(node.parent) || node.begin != node.value)
        return refused(
            Reason::tr("its elements are not further in than it is, so that no entry can go below it"));
    YamlWriter writer(style());
    writer.writeMember(branch, column);
    const std::size_t line = findYamlLine(text(), node.value);
    edit(line, line,
         std::string(column, ' ') + spellYamlKey(yamlOwnValueKey, {}, false) + ':' + file.lineEnd);
    const std::size_t tail = skipYamlLine(text(), layout.tailOf(list));
    edit(tail, tail, (endsLine(text().substr(0, tail)) ? "" : file.lineEnd) + writer.text);
    return refused(writer.error);
}

Outcome YamlEditor::replaceValue(NodeId id, const YamlBranch& branch)
{
    if (!branch.children.empty() && isEmptyDocument(id))
        return fill(id, branch);
    const YamlNode& node = tree.node(id);
    const std::size_t after = layout.afterIndicator(id);
    const bool isBlock = !branch.children.empty() && (!node.isFlow() || node.count == 0) &&
                         !file.isInFlow(id) && (after != npos || mayBecomeBlock(id));
    YamlWriter writer(style());
    if (isBlock)
        writer.writeContent(branch, newColumnOf(id, branch.isArray));
    else
        writer.writeFlow(branch);
    if (!writer.error.empty())
        return refused(writer.error);
    if (isBlock)
        return replaceByBlock(id, std::move(writer.text));
    changed = place = id;
    const bool isInLine = after == npos || findYamlLineEnd(text(), after) > node.value;
    if (node.lacksColon)
        edit(node.value, node.valueEnd, ": " + writer.text);
    else if (isInLine)
        edit(node.value, node.valueEnd, (after == node.value ? " " : "") + writer.text);
    else
        edit(after, node.valueEnd, ' ' + writer.text);
    return {};
}

std::size_t YamlEditor::newColumnOf(NodeId id, bool isArray) const
{
    if (layout.isDocument(id))
        return 0;
    const bool isInKeyColumn = isArray && !layout.indentsLists() && tree.node(id).hasKey;
    return layout.columnOf(tree.node(id).parent) + (isInKeyColumn ? 0 : file.stepOf());
}

std::optional<std::size_t> YamlEditor::blockColumnOf(NodeId collection) const
{
    const YamlNode& node = tree.node(collection);
    if (mayBecomeBlock(collection))
        return newColumnOf(collection, node.isSequence());
    if (node.isFlow())
        return {};
    return node.count == 0 ? 0 : layout.columnOf(collection);
}

// Puts lines in the place of a value. A comment behind one of one line stays on that line.
Outcome YamlEditor::replaceByBlock(NodeId id, std::string lines)
{
    const YamlNode& node = tree.node(id);
    const bool isDocument = layout.isDocument(id);
    const std::size_t after = layout.afterIndicator(id);
    changed = place = id;
    const bool isOneLine = findYamlLineEnd(text(), after == npos ? node.value : after) >= node.valueEnd;
    if (isOneLine && !isDocument) {
        const std::size_t line = skipYamlLine(text(), layout.tailOf(id));
        edit(after, node.valueEnd, {});
        edit(line, line, (endsLine(text().substr(0, line)) ? "" : file.lineEnd) + lines);
        return {};
    }
    lines.resize(lines.find_last_not_of("\r\n") + 1);
    edit(isDocument ? node.value : after, node.valueEnd, (isDocument ? "" : file.lineEnd) + lines);
    return {};
}

} // namespace Repository::Documents
