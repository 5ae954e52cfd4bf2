#include "repository/documents/yaml/YamlReread.h"

#include "repository/documents/common/TextLine.h"
#include "repository/documents/yaml/YamlBuilder.h"
#include "repository/documents/yaml/YamlTokens.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

constexpr std::string_view keyAbove = "k:\n";
constexpr int mostTries = 3;        // before all is read, which is not much more
constexpr std::size_t markSize = 8; // of which a text in another encoding may be told

bool isIn(std::string_view text, std::string_view piece)
{
    return text.find(piece) != std::string_view::npos;
}

// Whether a line may be something else at the beginning of a text, or end it.
bool hasMarker(std::string_view text)
{
    for (std::size_t at = 0; at < text.size(); at = skipYamlLine(text, at)) {
        const std::string_view line = text.substr(at);
        if (line[0] == '%' || startsWith(line, "---") || startsWith(line, "..."))
            return true;
    }
    return isIn(text, utf8ByteOrderMark);
}

// Whether it begins with a ":", whose key what is before it may become.
bool hasNoKeyText(const YamlNode& node)
{
    return node.hasKey && node.key == node.keyEnd;
}

// Whether nothing at or below siblings refers to something or is referred to, or lies deeper.
bool standAlone(const YamlTree& tree, const YamlTree::Run& run, std::size_t depth)
{
    std::vector<std::pair<NodeId, std::size_t>> pending;
    for (NodeId id = run.first; id != run.end; id = tree.node(id).next)
        pending.emplace_back(id, depth + 1);
    while (!pending.empty()) {
        const auto [id, around] = pending.back();
        pending.pop_back();
        const YamlNode& node = tree.node(id);
        const bool hasComplexKey = hasNoKeyText(node) || (node.hasKey && node.keyStyle > YamlStyle::Double);
        if (node.isAlias || node.isShared || node.isAnchored || node.hasKeyProperties || hasComplexKey ||
            node.kind == YamlKind::Merge || node.isMerged || around > YamlBuilder::maximumDepth)
            return false;
        for (NodeId child = node.first; child != noNode; child = tree.node(child).next)
            pending.emplace_back(child, around + 1);
    }
    return true;
}

} // namespace

YamlReread::YamlReread(YamlFile& yamlFile, const YamlEditor& yamlEditor)
    : file(yamlFile), tree(yamlFile.tree), editor(yamlEditor), layout(yamlFile), near(yamlEditor.getPlace())
{
    const auto edits = editor.getSortedEdits();
    if (edits.empty() || edits.front().begin < markSize || tree.hasDirectives() || tree.hasRepeatedKeys())
        near = noNode;
    if (near == noNode)
        return;
    editBegin = edits.front().begin;
    for (const YamlEditor::Edit& each : edits)
        editEnd = std::max(editEnd, each.end);
}

bool YamlReread::read()
{
    bool isRead = false;
    for (; !isRead && near != noNode && tree.node(near).parent != noNode && tries < mostTries;
         near = tree.node(near).parent) {
        const bool mayBeRead = isInBlock(near) && findRun();
        tries += mayBeRead ? 1 : 0;
        isRead = mayBeRead && readPart();
    }
    return isRead;
}

// Whether nothing but blanks and brackets of blocks is around it.
bool YamlReread::isInBlock(NodeId id) const
{
    const YamlNode& collection = tree.node(tree.node(id).parent);
    return collection.style == YamlStyle::Block && collection.kind != YamlKind::Merge &&
           collection.begin == collection.value && !collection.isAlias && !collection.isShared;
}

// Where the line of an entry begins, or the entry itself after an indicator.
std::size_t YamlReread::beginOf(NodeId id) const
{
    const std::size_t begin = layout.beginOf(id);
    return layout.beginsLine(id) ? findYamlLine(tree.getOriginal(), begin) : begin;
}

// Whether what follows an entry cannot become part of it.
bool YamlReread::isClosed(NodeId id) const
{
    if (tree.node(id).hasKey && layout.beginOf(id) != tree.node(id).key)
        return false;
    while (tree.lastOwn(id) != noNode && !tree.node(id).isFlow() && !tree.node(id).isAlias)
        id = tree.lastOwn(id);
    return !tree.node(id).isBlockScalar() && !tree.node(id).lacksColon;
}

bool YamlReread::tagsNext(std::size_t from, std::size_t to) const
{
    return isIn(tree.text(from, std::max(from, to)), "@type");
}

// Where the lines begin of what follows a run.
std::size_t YamlReread::endBefore(NodeId next, NodeId last) const
{
    const std::string_view text = tree.getOriginal();
    const std::size_t at = next == noNode ? skipYamlTrivia(text, layout.endOf(last)) : layout.beginOf(next);
    return at == text.size() ? at : findYamlLine(text, at);
}

// The fewest entries of a block, that in which an edit is among them, in whose lines all edits are.
bool YamlReread::findRun()
{
    const std::string_view text = tree.getOriginal();
    const NodeId collection = tree.node(near).parent;
    const auto endsAt = [&](NodeId id) { return endBefore(tree.node(id).next, id); };
    NodeId first = near;
    NodeId last = near;
    for (NodeId before = tree.node(first).previous; before != noNode; before = tree.node(first).previous) {
        if (editBegin >= beginOf(first) && isClosed(before) &&
            !tagsNext(layout.endOf(before), beginOf(first)))
            break;
        first = before;
    }
    while (tree.node(last).next != noNode &&
           (editEnd > endsAt(last) || tagsNext(layout.endOf(last), endsAt(last))))
        last = tree.node(last).next;
    std::size_t begin = beginOf(first);
    if (tree.node(first).previous == noNode && layout.beginsLine(first)) {
        while (begin > 0) {
            const std::size_t above = findYamlLine(text, endOfYamlContent(text, begin));
            const std::size_t content = skipYamlBlanks(text, above);
            if (!isYamlBreak(text[content]) && text[content] != '#')
                break;
            begin = above;
        }
    }
    run = {collection, first, tree.node(last).next, begin, endsAt(last)};
    return editBegin >= run.begin && editEnd <= run.textEnd && mayBeRead(collection);
}

// Whether the run means the same by itself, as far as it can be seen before.
bool YamlReread::mayBeRead(NodeId collection) const
{
    const bool isLast = run.end == noNode;
    if (!isLast && hasNoKeyText(tree.node(run.end)))
        return false;
    if (isLast && layout.isDocument(collection) && run.textEnd < tree.getOriginal().size())
        return false;
    if (isLast && tagsNext(layout.endOf(collection), run.textEnd))
        return false;
    if (tree.findKey(collection, "<<") != noNode)
        return false;
    for (NodeId above = collection; above != noNode; above = tree.node(above).parent) {
        if (tree.node(above).isAnchored || tree.node(above).isShared || tree.node(above).isMerged)
            return false;
    }
    return standAlone(tree, run, 0);
}

bool YamlReread::readPart()
{
    const NodeId collection = run.collection;
    const bool isDocument = layout.isDocument(collection);
    const std::size_t column = layout.columnOf(collection);
    const bool isSequence = tree.node(collection).isSequence();
    const bool isInLine = findYamlLine(tree.getOriginal(), run.begin) != run.begin;
    std::string lines = editor.apply(run.begin, run.textEnd);
    const bool isAtEnd = run.textEnd == tree.getOriginal().size();
    if (hasMarker(lines) || (!isAtEnd && !lines.empty() && !endsLine(lines)))
        return false;
    std::string text = isDocument ? std::string() : std::string(keyAbove);
    text.append(isInLine ? column : 0, ' ');
    part = {noNode, noNode, noNode, text.size(), text.size() + lines.size()};
    text += lines;
    if (!isAtEnd && isDocument)
        text.append(column, ' ') += isSequence ? "- z\n" : "z: 0\n";
    else if (!isAtEnd)
        text += "z: 0\n";
    partFile = std::make_unique<YamlFile>(std::move(text), TextEncoding());
    if (!partFile->readText().ok())
        return false;
    const YamlTree& read = partFile->tree;
    const NodeId root = read.getRoot();
    part.collection = isDocument ? root : read.node(root).first;
    const NodeId after = isAtEnd || read.node(root).style != YamlStyle::Block ? noNode : read.node(root).last;
    if (part.collection == noNode || read.node(root).style != YamlStyle::Block ||
        (!isDocument && read.node(root).count != (isAtEnd ? 1U : 2U)) ||
        (after != noNode && read.node(after).tag != Type::Group))
        return false;
    const bool isEmpty = skipYamlTrivia(lines, 0) == lines.size();
    if (isEmpty)
        return run.first != tree.node(collection).first || run.end != noNode;
    part.first = read.node(part.collection).first;
    part.end = isDocument ? after : noNode;
    return fits(part.collection, after) && (isSequence || hasNewKeys());
}

// Whether what was read has the place, the kind and nothing of what depends on the rest of the file.
bool YamlReread::fits(NodeId collection, NodeId after) const
{
    const YamlTree& read = partFile->tree;
    const YamlNode& now = read.node(collection);
    const YamlNode& former = tree.node(run.collection);
    const bool isAlike = former.isSequence() ? now.isSequence() : now.kind == YamlKind::Map;
    const bool isInLine = findYamlLine(tree.getOriginal(), run.begin) != run.begin;
    if (!isAlike || now.style != YamlStyle::Block || now.begin != now.value || read.hasRepeatedKeys() ||
        columnOfYaml(read.getOriginal(), now.value) != layout.columnOf(run.collection) ||
        (isInLine && now.value != part.begin) || part.first == noNode || part.first == after)
        return false;
    return standAlone(read, part, tree.depthOf(run.collection) + 1);
}

// Whether a map has none of the keys beside the run.
bool YamlReread::hasNewKeys() const
{
    std::string buffer;
    for (NodeId id = part.first; id != part.end; id = partFile->tree.node(id).next) {
        const NodeId known = tree.findKey(run.collection, partFile->tree.keyText(id, buffer));
        const std::size_t at = known == noNode ? 0 : tree.node(known).key;
        if (known != noNode && (at < run.begin || at >= run.textEnd))
            return false;
    }
    return true;
}

void YamlReread::install()
{
    replaced = tree.text(run.begin, run.textEnd);
    file.tree.replace(run, partFile->tree, part);
}

std::string YamlReread::formerText() const
{
    std::string text = tree.getOriginal();
    return text.replace(run.begin, part.textEnd - part.begin, replaced);
}

} // namespace Repository::Documents
