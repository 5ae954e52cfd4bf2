#include "repository/documents/yaml/YamlBuilder.h"

#include "repository/documents/common/Pipeline.h"
#include "repository/documents/yaml/YamlScalar.h"
#include "repository/documents/yaml/YamlSpelling.h"
#include "repository/documents/yaml/YamlTokens.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

std::uint32_t offset(std::size_t at)
{
    return static_cast<std::uint32_t>(at);
}

} // namespace

YamlBuilder::YamlBuilder(YamlTree& yamlTree, bool fillsGaps, bool readsPart)
    : tree(yamlTree), mayHaveTags(source().find("@type") != std::string_view::npos), fills(fillsGaps),
      isPart(readsPart)
{
}

Outcome YamlBuilder::build()
{
    constexpr std::size_t usualLength = 24; // of a line, which mostly is an entry
    tree.makeRoom(source().size() / usualLength + 2);
    YamlNode stream;
    stream.kind = YamlKind::Sequence;
    stream.style = YamlStyle::Stream;
    frames.emplace_back();
    frames.back().id = tree.read(stream);
    YamlReader reader(source(), fills);
    Outcome outcome;
    Pipeline<YamlEvent> events([&](const YamlEvent& event) {
        outcome = take(event);
        return outcome.ok();
    });
    while (reader.next(events.next()) && events.put()) {
    }
    events.finish();
    if (outcome.ok())
        outcome = reader.getOutcome();
    if (outcome.ok())
        finish();
    return outcome;
}

Outcome YamlBuilder::take(const YamlEvent& event)
{
    if (event.isCollection() && frames.size() + keyDepth > maximumDepth)
        return outcomeAt(
            source(), event.token.begin,
            Reason::tr("more than %1 maps and lists lie within each other", {std::to_string(maximumDepth)}));
    Outcome layout = checkBrackets(event);
    if (layout.ok())
        layout = checkBlock(event);
    if (layout.ok())
        layout = checkColumn(event);
    if (!layout.ok())
        return layout;
    if (event.kind == YamlEvent::Kind::DocumentStart) {
        const std::size_t first = skipYamlTrivia(source(), lastEnd);
        if (!event.token.exists() && source().substr(first, 1) == "%")
            return outcomeAt(source(), first,
                             Reason::tr("directives end with a line \"---\", which is missing"));
        readDirectives(lastEnd, event.token.exists() ? event.token.begin : lastEnd);
        anchors.clear();
    }
    if (event.kind == YamlEvent::Kind::DocumentStart || event.kind == YamlEvent::Kind::DocumentEnd) {
        if (event.token.exists())
            lastEnd = event.token.end;
    } else if (isInKey()) {
        goOnInKey(event);
    } else if (!event.isEnd() && expectsKey()) {
        startKey(event);
    } else if (event.kind == YamlEvent::Kind::Scalar) {
        addScalar(event);
    } else if (event.kind == YamlEvent::Kind::Alias) {
        addAlias(event);
    } else if (event.isCollection()) {
        open(event);
    } else {
        close(event);
    }
    return fault;
}

// What libfyaml lets pass where brackets may close in any column: in them, a line that a tab indents less
// than the block around them demands, and a ":" on such a line.
Outcome YamlBuilder::checkBrackets(const YamlEvent& event) const
{
    const std::string_view text = source();
    const Frame& frame = frames.back();
    if (!tree.node(frame.id).isFlow() || event.isEnd())
        return {};
    const auto isShort = [&](std::size_t at) { // the first of its line
        const std::size_t line = findYamlLine(text, at);
        const auto block = std::find_if(frames.rbegin(), frames.rend(), [this](const Frame& each) {
            return tree.node(each.id).style == YamlStyle::Block;
        });
        return block != frames.rend() && skipYamlBlanks(text, line) == at &&
               text.find_first_not_of(' ', line) - line <= columnOfYaml(text, tree.node(block->id).value);
    };
    const std::size_t begin = event.token.exists() ? std::min(event.begin(), event.token.begin) : 0;
    if (begin > 0 && text[begin - 1] == '\t' && isShort(begin))
        return outcomeAt(text, begin,
                         Reason::tr("a tab indents a line in brackets, where YAML wants blanks"));
    if (!frame.isMap || !frame.hasKey || text[frame.keyEnd] == ':')
        return {};
    const std::size_t colon = skipYamlTrivia(text, frame.keyEnd);
    const std::size_t before = text.find_last_not_of(" \t\r\n", frame.key - 1);
    if (text[colon] == ':' && text[before] != '?' && isShort(colon))
        return outcomeAt(
            text, colon,
            Reason::tr("a \":\" below its key is not indented more than what is around the brackets"));
    return {};
}

// Whether the key is behind a "?".
bool YamlBuilder::isKeyExplicit(const Frame& frame) const
{
    const std::string_view text = source();
    const std::size_t before = text.substr(0, frame.key).find_last_not_of(" \t\r\n");
    return before != std::string_view::npos && text[before] == '?' &&
           text.find_first_not_of(" -?:", findYamlLine(text, before)) >= before;
}

// libfyaml lets a block begin on the line of its key where the first key in it is empty.
Outcome YamlBuilder::checkBlock(const YamlEvent& event) const
{
    const std::string_view text = source();
    const Frame& frame = frames.back();
    const bool isBlock = event.isCollection() && event.style == YamlStyle::Block;
    if (!isBlock || !frame.isMap || !frame.hasKey || tree.node(frame.id).isFlow())
        return {};
    const std::size_t colon = skipYamlTrivia(text, frame.keyEnd);
    if (isKeyExplicit(frame) || colon >= text.size() || text[colon] != ':')
        return {};
    const std::size_t begin = skipYamlBlanks(text, colon + 1);
    const bool isOnLine =
        begin < text.size() && text.substr(begin, 1).find_first_of("\r\n#&!") == std::string_view::npos;
    return isOnLine ? outcomeAt(text, begin, Reason::tr("a map cannot begin on the line of its key"))
                    : Outcome();
}

// libfyaml lets a value on a line of its own begin in the column of its key or "-".
Outcome YamlBuilder::checkColumn(const YamlEvent& event) const
{
    const std::string_view text = source();
    const Frame& frame = frames.back();
    const YamlNode& around = tree.node(frame.id);
    const bool isValue =
        around.style == YamlStyle::Block && !isInKey() &&
        (frame.isMap ? frame.hasKey && !frame.hasKeyProperties : around.kind == YamlKind::Sequence);
    const bool isBlock = event.style == YamlStyle::Literal || event.style == YamlStyle::Folded ||
                         (event.isCollection() && event.style == YamlStyle::Block);
    if (!isValue || isBlock || event.isEnd() || !event.token.exists())
        return {};
    const std::size_t begin = std::min(event.begin(), event.token.begin);
    const std::size_t before = begin == 0 ? std::string_view::npos : text.find_last_not_of(" \t", begin - 1);
    if (before == std::string_view::npos || !isYamlBreak(text[before]))
        return {};
    const std::size_t column = columnOfYaml(text, frame.isMap ? frame.key : around.value);
    if (begin - before - 1 > column || (frame.isMap && isKeyExplicit(frame)))
        return {};
    return outcomeAt(
        text, begin,
        Reason::tr("this line is not indented more than the entry above, to which it would belong"));
}

std::string YamlBuilder::nameOf(const YamlRange& anchor) const
{
    return anchor.exists() ? std::string(source().substr(anchor.begin + 1, anchor.end - anchor.begin - 1))
                           : std::string();
}

// Where a value begins that has no token: after the "-" or ":" in front of it.
void YamlBuilder::placeEmpty(YamlNode& node)
{
    std::size_t at = lastEnd;
    const Frame& frame = frames.back();
    const std::size_t next = skipYamlTrivia(source(), at);
    const bool isStream = tree.node(frame.id).style == YamlStyle::Stream;
    const std::size_t behind = next + 1;
    const bool isAlone = behind >= source().size() || isYamlBlank(source()[behind]) ||
                         isYamlBreak(source()[behind]) ||
                         (tree.node(frame.id).isFlow() && source().find_first_of(",]}", behind) == behind);
    if (!isStream && next < source().size() && isAlone && source()[next] == (frame.isMap ? ':' : '-'))
        at = next + 1;
    else
        node.lacksColon = frame.isMap;
    node.begin = node.value = node.valueEnd = offset(at);
}

// From the header of a block scalar to the end of its last line.
void YamlBuilder::placeBlock(const YamlEvent& event, std::size_t& begin, std::size_t& end)
{
    const std::string_view text = source();
    begin = skipYamlTrivia(text, lastEnd);
    while (begin < text.size() && text[begin] != '|' && text[begin] != '>')
        begin = skipYamlTrivia(text, begin + 1);
    const YamlBlockHeader header = readYamlBlockHeader(text.substr(begin));
    const std::size_t headerEnd = begin + header.end;
    const std::size_t lines = begin + header.lines;
    end = std::min(event.token.end, text.size());
    const std::size_t own =
        header.digit > 0 ? 0
                         : indentationOfYamlBlock(text.substr(begin, end - std::min(begin, end)), header, 0);
    // Whether a line of nothing but blanks is no part of the text.
    const auto isBetween = [&](std::size_t line, std::size_t lineEnd) {
        const std::string_view content = text.substr(line, lineEnd - line);
        return line >= lines && content.find_first_not_of(' ') == std::string_view::npos &&
               (own == 0 || content.size() <= own);
    };
    const std::size_t last = findYamlLine(text, end);
    if (isBetween(last, end) || (end < text.size() && last >= lines && skipYamlBlanks(text, last) == end))
        end = std::max(last, std::min(lines, end));
    while (header.chomping != '+' && end > lines) {
        const std::size_t contentEnd = endOfYamlContent(text, end);
        const std::size_t line = findYamlLine(text, contentEnd);
        if (contentEnd == end || !isBetween(line, contentEnd))
            break;
        end = line;
    }
    const bool hasLines = end > lines;
    // Blanks and a comment after it go on with the header.
    end = hasLines ? endOfYamlContent(text, end) : skipYamlTail(text, headerEnd);
}

NodeId YamlBuilder::add(YamlNode node, const YamlEvent& event)
{
    Frame& frame = frames.back();
    node.parent = frame.id;
    node.isAnchored = event.anchor.exists();
    if (frame.isMap) {
        node.hasKey = true;
        node.keyStyle = frame.keyStyle;
        node.hasKeyProperties = frame.hasKeyProperties;
        node.key = offset(frame.key);
        node.keyEnd = offset(frame.keyEnd);
    }
    const NodeId id = tree.read(node);
    if (frame.isMap) {
        if (!frame.keyText.empty())
            tree.setKeyText(id, frame.keyText);
        if (!frame.keyAnchor.empty())
            anchors[frame.keyAnchor] = {id, true, false};
        frame.hasKey = false;
        tree.numberLast(frame.id);
    }
    if (event.anchor.exists())
        anchors[nameOf(event.anchor)] = {id, false, event.isCollection()};
    return id;
}

void YamlBuilder::addScalar(const YamlEvent& event)
{
    const bool inMap = frames.back().isMap;
    const bool inFlow = tree.node(frames.back().id).isFlow();
    YamlNode node;
    node.style = event.style;
    std::size_t begin = event.begin();
    node.tag = inMap ? frames.back().tag : begin == YamlRange::npos || inFlow ? Type::Group : readTag(begin);
    const std::size_t end = event.propertiesEnd(YamlRange::npos);
    if (end != YamlRange::npos)
        lastEnd = end;
    if (event.token.exists()) {
        std::size_t value = event.token.begin;
        std::size_t valueEnd = event.token.end;
        if (node.isBlockScalar())
            placeBlock(event, value, valueEnd);
        node.value = offset(value);
        node.valueEnd = offset(valueEnd);
        node.begin = offset(std::min(begin, value));
    } else if (end != YamlRange::npos) {
        node.begin = offset(begin);
        node.value = node.valueEnd = offset(end);
    } else {
        placeEmpty(node);
    }
    if (event.tag.exists()) {
        const bool isLast = !event.anchor.exists() || event.anchor.begin < event.tag.begin;
        node.isTagged = typeOf(event.tag) == Type::Group || !isLast;
        if (node.isTagged)
            node.tag = Type::Group; // a comment says nothing beside it
        else
            node.value = offset(event.tag.begin);
    }
    lastEnd = node.valueEnd;
    if (!inMap && node.tag == Type::Group)
        node.isText =
            node.isTagged || readYamlScalar(tree.text(node.value, node.valueEnd), 0).type == Type::String;
    add(node, event);
}

void YamlBuilder::open(const YamlEvent& event)
{
    YamlNode node;
    const bool isMap = event.kind == YamlEvent::Kind::MapStart;
    const bool inFlow = tree.node(frames.back().id).isFlow();
    node.kind = isMap ? YamlKind::Map : YamlKind::Sequence;
    node.style = event.style;
    node.isTagged = event.tag.exists();
    const bool hasBracket =
        event.token.end > event.token.begin && source()[event.token.begin] == (isMap ? '{' : '[');
    if (!hasBracket && inFlow)
        node.style = YamlStyle::Pair;
    node.begin = offset(std::min(event.begin(), event.token.begin));
    node.value = offset(event.token.begin);
    const std::size_t before = lastEnd;
    lastEnd = event.propertiesEnd(lastEnd);
    if (hasBracket)
        lastEnd = event.token.end;
    else if (!inFlow && !isMap)
        lastEnd = std::max(lastEnd, event.token.begin);
    const NodeId id = add(node, event);
    Frame frame;
    frame.id = id;
    frame.isMap = isMap;
    frame.before = before;
    frame.anchor = nameOf(event.anchor);
    frames.push_back(std::move(frame));
}

void YamlBuilder::close(const YamlEvent& event)
{
    const NodeId id = frames.back().id;
    const std::string name = std::move(frames.back().anchor);
    const bool hasMerge = frames.back().hasMerge;
    frames.pop_back();
    YamlNode& node = tree.node(id);
    if (node.style == YamlStyle::Flow)
        lastEnd = event.token.end;
    node.valueEnd = offset(std::max<std::size_t>(lastEnd, node.value));
    if (node.style != YamlStyle::Flow && node.first != noNode) {
        const YamlNode& first = tree.node(node.first);
        const std::uint32_t begin = first.hasKey && !first.hasKeyProperties ? first.key : first.begin;
        const bool movesKeys = begin < node.value && node.kind == YamlKind::Map;
        node.value = std::min(node.value, begin);
        node.begin = std::min(node.begin, node.value);
        if (movesKeys) // of which some are blocks, whose indentation is counted from there
            tree.numberMembers(id);
    }
    const auto anchor = anchors.find(name);
    if (anchor != anchors.end() && anchor->second.node == id)
        anchor->second.isOpen = false;
    if (node.kind != YamlKind::Map)
        closeSequence(id);
    if (hasMerge)
        inherit(id);
}

void YamlBuilder::closeSequence(NodeId id)
{
    YamlNode& node = tree.node(id);
    if (tree.isMergeKey(id) && node.count > 0) {
        node.kind = YamlKind::Merge;
    } else if (node.nonTexts == 0) {
        node.kind = YamlKind::List;
        if (node.style == YamlStyle::Block)
            lastEnd = node.valueEnd = offset(endOfYamlList(source(), node.valueEnd));
    }
}

void YamlBuilder::finish()
{
    const NodeId stream = frames.front().id;
    YamlNode& node = tree.node(stream);
    if (node.count == 0) {
        node.kind = YamlKind::Map;
        node.style = YamlStyle::Block;
        return;
    }
    node.valueEnd = offset(source().size());
    if (node.count > 1)
        return;
    const NodeId id = node.first;
    YamlNode& only = tree.node(id);
    const bool isEmpty = only.kind == YamlKind::Scalar && only.style == YamlStyle::Plain && !only.isAlias &&
                         only.value == only.valueEnd && only.begin == only.value;
    if (isEmpty) {
        only.kind = YamlKind::Map;
        only.style = YamlStyle::Block;
    }
    tree.setRoot(id);
}

} // namespace Repository::Documents
