#include "repository/documents/yaml/YamlFile.h"

#include "repository/documents/common/ArrayGroups.h"
#include "repository/documents/common/TextLine.h"
#include "repository/documents/common/TypeTag.h"
#include "repository/documents/yaml/YamlBuilder.h"
#include "repository/documents/yaml/YamlLayout.h"
#include "repository/documents/yaml/YamlList.h"
#include "repository/documents/yaml/YamlReader.h"
#include "repository/documents/yaml/YamlTokens.h"
#include "repository/documents/yaml/YamlTypes.h"

#include <algorithm>
#include <array>
#include <vector>

namespace Repository::Documents {

namespace {

// Whether lines follow with nothing but blanks, which a block scalar may take up.
bool hasBlankLines(std::string_view text, std::size_t line)
{
    const std::size_t content = std::min(text.find_first_not_of(" \t\r\n", line), text.size());
    const std::size_t end = content == text.size() ? content : findYamlLine(text, content);
    return text.substr(line, end - line).find(' ') != std::string_view::npos;
}

} // namespace

YamlFile::YamlFile(std::string text, TextEncoding textEncoding)
    : tree(std::move(text)), encoding(std::move(textEncoding)), lineEnd(lineEndOf(tree.getOriginal()))
{
}

Outcome YamlFile::readText(bool isPart)
{
    const Outcome outcome = YamlBuilder(tree, false, isPart).build();
    if (outcome.ok() || !YamlReader::hasGaps(tree.getOriginal()))
        return outcome;
    tree = YamlTree(std::string(tree.getOriginal()));
    return YamlBuilder(tree, true, isPart).build();
}

PathMatch YamlFile::match(std::string_view path) const
{
    if (path.empty()) {
        PathMatch whole;
        whole.isPath = true;
        whole.node = tree.getRoot();
        return whole;
    }
    return matchPath(path, tree.getRoot(), [this](NodeId parent, std::string_view component) {
        return tree.find(parent, component);
    });
}

NodeId YamlFile::findElement(std::string_view path) const
{
    const PathEnds ends = splitLast(path);
    const NodeId known = path.empty() ? noNode : find(path);
    const NodeId list = known != noNode || path.empty() ? noNode : find(ends.parent);
    const auto position = readIndex(ends.last);
    if (list == noNode || !position || tree.node(list).kind != YamlKind::List || tree.isEdited(list))
        return known;
    return tree.elementAt(list, *position);
}

NodeId YamlFile::valueNodeOf(NodeId id) const
{
    return tree.node(id).isLeaf() ? id : tree.findOwnValue(id);
}

NodeId YamlFile::findValueNode(std::string_view path) const
{
    const NodeId id = find(path);
    return id == noNode ? noNode : valueNodeOf(id);
}

std::size_t YamlFile::blockAround(NodeId id) const
{
    for (NodeId above = tree.node(id).parent; above != noNode; above = tree.node(above).parent) {
        if (tree.node(above).style == YamlStyle::Block)
            return columnOfYaml(tree.getOriginal(), tree.node(above).value);
    }
    return 0;
}

Value YamlFile::read(NodeId id) const
{
    const YamlNode& node = tree.node(id);
    if ((node.isAlias || node.isShared) && !tree.isEdited(id) && node.kind != YamlKind::Merge)
        return readShown(id);
    if (node.kind == YamlKind::List && !tree.isEdited(id)) {
        std::vector<std::string> texts;
        texts.reserve(node.count);
        for (NodeId child = node.first; child != noNode; child = tree.node(child).next)
            texts.push_back(textOf(child));
        return {Type::StringList, std::move(texts)};
    }
    return readAs(id, bareText(id), node.tag);
}

std::string_view YamlFile::bareText(NodeId id) const
{
    std::string_view text = tree.valueText(id);
    if (!tree.isEdited(id))
        return text;
    text.remove_prefix(skipYamlBlanks(text, 0));
    if (tree.node(id).lacksColon && startsWith(text, ":"))
        text.remove_prefix(skipYamlBlanks(text, 1));
    return text;
}

Value YamlFile::readShown(NodeId id) const
{
    const YamlTree::Origin origin = tree.originOf(id);
    if (origin.node == noNode)
        return {Type::String, std::string(tree.readValueText(id))};
    if (!origin.isKey)
        return read(origin.node);
    const YamlNode& key = tree.node(origin.node);
    return readYamlScalar(tree.text(key.key, key.keyEnd), 0);
}

std::string YamlFile::textOf(NodeId id) const
{
    const YamlNode& node = tree.node(id);
    if (node.isAlias || node.tag != Type::Group)
        return toText(read(id));
    return decodeYamlScalar(tree.valueText(id), node.isBlockScalar() ? blockAround(id) : 0);
}

Value YamlFile::readAs(NodeId id, std::string_view spelled, Type tag) const
{
    const YamlNode& node = tree.node(id);
    if (node.kind == YamlKind::Merge)
        return {Type::String, std::string(spelled)};
    if (isYamlList(spelled)) {
        auto texts = readYamlTexts(spelled, columnOfYaml(tree.getOriginal(), node.value));
        return texts ? Value{Type::StringList, *std::move(texts)} : Value{Type::String, std::string(spelled)};
    }
    const bool mayBeBlock =
        !spelled.empty() && std::string_view("|>!").find(spelled[0]) != std::string_view::npos;
    const std::size_t around = mayBeBlock ? blockAround(id) : 0;
    if (node.isTagged)
        return {Type::String, decodeYamlScalar(spelled, around)};
    Value plain = readYamlScalar(spelled, around);
    if (tag == Type::Group)
        return plain;
    const std::string text = toText(plain);
    return readTaggedValue(tag, text, std::move(plain));
}

bool YamlFile::isInFlow(NodeId id) const
{
    const NodeId parent = tree.node(id).parent;
    return parent != noNode && tree.node(parent).isFlow();
}

std::string YamlFile::pathOf(NodeId id) const
{
    std::vector<NodeId> nodes;
    if (tree.isOwnValue(id))
        id = tree.node(id).parent;
    for (; tree.node(id).parent != noNode; id = tree.node(id).parent)
        nodes.push_back(id);
    std::string path;
    for (auto each = nodes.rbegin(); each != nodes.rend(); ++each) {
        path += path.empty() ? "" : ".";
        tree.appendName(path, *each,
                        tree.node(tree.node(*each).parent).isSequence() ? tree.positionOf(*each) : 0);
    }
    return path;
}

bool YamlFile::isArray(NodeId id) const
{
    const YamlTree::Origin origin = tree.isEdited(id) ? YamlTree::Origin() : tree.originOf(id);
    if (origin.node != noNode && !origin.isKey)
        id = origin.node;
    if (tree.isEdited(id))
        return isYamlList(bareText(id));
    // Documents that are nothing but texts would be a list elsewhere.
    const bool areTexts = tree.node(id).style == YamlStyle::Stream && tree.node(id).nonTexts == 0;
    return tree.node(id).isSequence() && !areTexts;
}

YamlPlace YamlFile::placeOf(NodeId id) const
{
    const std::string_view text = tree.getOriginal();
    const YamlNode& node = tree.node(id);
    const NodeId parent = node.parent;
    YamlPlace place;
    place.lineEnd = lineEnd;
    place.indentation = blockAround(id);
    place.step = stepOf();
    place.inFlow = isInFlow(id);
    place.endsFile = node.valueEnd == text.size();
    const std::size_t next = skipYamlLine(text, node.valueEnd);
    const std::size_t nextText = skipYamlBlanks(text, next);
    place.isBeforeBlank = next < text.size() && (nextText == text.size() || isYamlBreak(text[nextText]));
    const std::size_t end = node.valueEnd;
    const bool endsLine = end == text.size() || isYamlBreak(text[end]); // else its last line would get blanks
    const std::size_t trivia = std::min(text.find_first_not_of(" \t\r\n", end), text.size());
    const bool isBeforeComment = trivia < text.size() && text[trivia] == '#' &&
                                 (parent == noNode || columnOfYaml(text, trivia) > place.indentation);
    place.mayBreak =
        endsLine && !isBeforeComment && !hasBlankLines(text, next) && sharesLine(id) && !node.lacksColon;
    return place;
}

bool YamlFile::isDelicate(NodeId id) const
{
    const std::string_view text = tree.getOriginal();
    const YamlNode& node = tree.node(id);
    if (node.parent == noNode || tree.node(node.parent).style == YamlStyle::Stream)
        return true;
    const bool isBesideComment = node.valueEnd < text.size() && text[node.valueEnd] == '#';
    if (isBesideComment || tree.isMergeKey(id)) // or that of a value which is nothing to merge
        return true;
    if (isInFlow(id))
        return false;
    const std::size_t around = blockAround(id);
    const std::size_t next = skipYamlLine(text, node.valueEnd);
    const std::size_t content = std::min(text.find_first_not_of(" \t\r\n", next), text.size());
    if (hasBlankLines(text, next) || text.substr(next, content - next).find('\t') != std::string_view::npos)
        return true;
    if (node.isSequence()) { // its end may take up comments, and a type tag above is that of what it becomes
        const bool isBeforeComment =
            content < text.size() && text[content] == '#' && columnOfYaml(text, content) > around;
        const bool isBeforeBlanks = node.valueEnd < text.size() && isYamlBlank(text[node.valueEnd]);
        return isBeforeComment || isBeforeBlanks ||
               endsInTypeTag(text.substr(0, findYamlLine(text, node.hasKey ? node.key : node.begin)));
    }
    const bool isFirst = skipYamlBlanks(text, findYamlLine(text, node.value)) == node.value;
    return isFirst && columnOfYaml(text, node.value) <= around;
}

// Whether it is on the line of its key, "-" or "---". Elsewhere, libfyaml wants the lines of a block scalar
// indented as far as its header.
bool YamlFile::sharesLine(NodeId id) const
{
    const std::string_view text = tree.getOriginal();
    const YamlNode& node = tree.node(id);
    const std::size_t line = findYamlLine(text, node.value);
    if (node.hasKey)
        return node.keyEnd >= line;
    if (node.parent == noNode || tree.node(node.parent).style == YamlStyle::Stream)
        return node.parent != noNode && startsWith(text.substr(line), "---");
    return YamlLayout(*this).beginOf(id) >= line;
}

// By how much the first lines are indented that are so for the first time.
std::size_t YamlFile::stepOf() const
{
    if (step > 0)
        return step;
    constexpr std::size_t enough = 2000;
    std::array<std::size_t, 9> counts{};
    const std::string_view text = tree.getOriginal();
    std::size_t seen = 0;
    for (NodeId id = tree.getRoot(); id != noNode && seen < enough; id = tree.following(id), ++seen) {
        const YamlNode& node = tree.node(id);
        if (node.kind != YamlKind::Map || node.style != YamlStyle::Block || !node.hasKey || node.isShared)
            continue;
        const std::size_t own = columnOfYaml(text, node.value);
        const std::size_t around = blockAround(id);
        if (own > around && own - around < counts.size())
            ++counts[own - around];
    }
    const auto most = std::max_element(counts.begin(), counts.end());
    step = *most == 0 ? 2 : std::size_t(most - counts.begin());
    return step;
}

std::vector<NodeId> YamlFile::editedNodes() const
{
    std::vector<NodeId> edited;
    std::vector<NodeId> pending;
    if (tree.getRoot() != noNode)
        pending.push_back(tree.getRoot());
    while (!pending.empty()) {
        const NodeId id = pending.back();
        pending.pop_back();
        if (tree.isEdited(id))
            edited.push_back(id);
        else if (tree.node(id).touched) {
            for (NodeId child = tree.node(id).first; child != noNode; child = tree.node(child).next)
                pending.push_back(child);
        }
    }
    std::sort(edited.begin(), edited.end(),
              [this](NodeId a, NodeId b) { return tree.node(a).value < tree.node(b).value; });
    return edited;
}

std::string YamlFile::writeText(NodeId located, Span* span) const
{
    std::vector<NodeId> edited = editedNodes();
    if (located != noNode && !tree.isEdited(located))
        edited.insert(
            std::upper_bound(edited.begin(), edited.end(), located,
                             [this](NodeId a, NodeId b) { return tree.node(a).value < tree.node(b).value; }),
            located);
    const std::string& original = tree.getOriginal();
    std::string text;
    std::size_t size = original.size();
    for (const NodeId id : edited)
        size += tree.valueText(id).size();
    text.reserve(size);
    std::size_t at = 0;
    for (const NodeId id : edited) {
        text += tree.text(at, tree.node(id).value);
        const std::string_view value = tree.valueText(id);
        if (id == located)
            *span = {text.size(), value.size()};
        text += value;
        at = tree.node(id).valueEnd;
    }
    return text.append(original, at, std::string::npos);
}

Span YamlFile::locate(NodeId valueNode) const
{
    const YamlNode& node = tree.node(valueNode);
    if (node.isShared) {
        const YamlTree::Origin origin = tree.originOf(valueNode);
        return origin.node == noNode || origin.isKey ? Span() : locate(origin.node);
    }
    Span span;
    const std::string text = writeText(valueNode, &span);
    const std::string_view whole = text;
    const std::string_view value = bareText(valueNode);
    const std::size_t lead = span.length - value.size();
    const bool isEditedList = tree.isEdited(valueNode) && isYamlList(value);
    span = {span.offset + lead, isEditedList
                                    ? endOfYamlTexts(value, columnOfYaml(tree.getOriginal(), node.value))
                                    : value.size()};
    return {encoding.byteOrderMarkSize() + encoding.sizeOf(whole.substr(0, span.offset)),
            encoding.sizeOf(whole.substr(span.offset, span.length))};
}

} // namespace Repository::Documents
