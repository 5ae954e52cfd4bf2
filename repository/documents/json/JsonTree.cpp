#include "repository/documents/json/JsonTree.h"

#include "repository/documents/json/JsonScalar.h"
#include "repository/documents/json/JsonWriter.h"

#include <algorithm>
#include <utility>

namespace Repository::Documents {

namespace {

constexpr std::size_t readAhead = 64; // bytes after the end that the parser may read

} // namespace

JsonKind kindOfJson(char first)
{
    switch (first) {
    case '{':
        return JsonKind::Object;
    case '[':
        return JsonKind::Array;
    case '"':
        return JsonKind::Text;
    case 't':
        return JsonKind::True;
    case 'f':
        return JsonKind::False;
    case 'n':
        return JsonKind::Null;
    default:
        return JsonKind::Number;
    }
}

JsonTree::JsonTree(std::string bytes) : SyntaxTree(std::move(bytes)), fileSize(original.size())
{
    original.reserve(original.size() + readAhead);
}

void JsonTree::dropNodes()
{
    nodes.clear();
    root = noNode;
}

void JsonTree::reserveMore(std::size_t count)
{
    nodes.reserve(nodes.size() + count - std::min(count, released.size()));
}

void JsonTree::fold(NodeId array)
{
    JsonNode& node = nodes[array];
    for (NodeId id = node.last; id != noNode;) {
        const NodeId previous = nodes[id].previous;
        if (id + 1 == nodes.size())
            nodes.pop_back();
        else
            released.push_back(id);
        id = previous;
    }
    node.folded = node.wasFolded = true;
    node.first = node.last = noNode;
    node.count = 0;
}

bool JsonTree::hasRoomFor(std::size_t size) const
{
    constexpr std::size_t mostTimesTheFile = 3;
    return original.size() + size <= mostTimesTheFile * fileSize;
}

std::size_t JsonTree::keep(std::string_view text)
{
    // A string that grows by itself takes up to twice its length.
    const std::size_t begin = original.size();
    std::string longer;
    longer.reserve(begin + text.size() + readAhead);
    original = std::move(longer.append(original).append(text));
    return begin;
}

void JsonTree::reopen(NodeId id, JsonKind kind, std::size_t value)
{
    setKind(id, kind);
    JsonNode& node = nodes[id];
    node.leading = node.label = node.value = static_cast<std::uint32_t>(value);
    for (const JsonPart part : {JsonPart::Value, JsonPart::Closing})
        dropText(id, part);
}

void JsonTree::unfold(NodeId array)
{
    if (!nodes[array].folded)
        return;
    nodes[array].folded = false;
    nodes[array].trailingComma = false;
    std::size_t at = nodes[array].value + 1;
    for (JsonListElement element = readElement(original, at); element.exists();) {
        const NodeId id = allocate();
        JsonNode& node = nodes[id];
        node.kind = JsonKind::Text;
        node.parent = array;
        node.leading = static_cast<std::uint32_t>(element.leading);
        node.label = node.value = static_cast<std::uint32_t>(element.value);
        node.valueEnd = static_cast<std::uint32_t>(element.valueEnd);
        node.end = static_cast<std::uint32_t>(element.end);
        link(id, nodes[array].last);
        const bool comma = original[element.end] == ',';
        at = element.end + (comma ? 1 : 0);
        element = readElement(original, at);
        nodes[array].trailingComma = comma && !element.exists();
    }
    nodes[array].closing = static_cast<std::uint32_t>(at);
}

std::vector<std::string> JsonTree::readList(NodeId array) const
{
    if (nodes[array].folded)
        return decodeList(text(array, JsonPart::Value));
    std::vector<std::string> list;
    list.reserve(nodes[array].count);
    for (NodeId id = nodes[array].first; id != noNode; id = nodes[id].next)
        list.push_back(decodeString(text(id, JsonPart::Value)));
    return list;
}

std::optional<JsonKind> JsonTree::originalKind(NodeId id) const
{
    const JsonNode& node = nodes[id];
    if (node.valueEnd == 0)
        return std::nullopt;
    const JsonKind kind = kindOfJson(original[node.value]);
    const bool group = kind == JsonKind::Object || (kind == JsonKind::Array && !node.wasFolded);
    return group ? std::nullopt : std::optional(kind);
}

std::string_view JsonTree::originalValue(NodeId id) const
{
    return span(nodes[id].value, nodes[id].valueEnd);
}

void JsonTree::restore(NodeId id)
{
    const std::optional<JsonKind> kind = originalKind(id);
    if (!kind)
        return;
    clear(id);
    setKind(id, *kind);
    nodes[id].folded = nodes[id].wasFolded;
    for (const JsonPart part : {JsonPart::Value, JsonPart::Closing})
        dropText(id, part);
}

void JsonTree::dropText(NodeId id, JsonPart part)
{
    if (nodes[id].hasOwnTexts)
        ownTexts[id][std::size_t(part)].reset();
}

NodeId JsonTree::insert(NodeId parent, NodeId previous, JsonKind kind)
{
    const NodeId id = allocate();
    nodes[id].parent = parent;
    nodes[id].kind = kind;
    attach(id, previous);
    touch(id);
    return id;
}

void JsonTree::move(NodeId id, NodeId previous)
{
    touch(id);
    unlink(id);
    link(id, previous);
}

void JsonTree::remove(NodeId id)
{
    touch(nodes[id].parent);
    unlink(id);
    release(id, [](NodeId) {});
}

void JsonTree::clear(NodeId id)
{
    touch(id);
    while (nodes[id].first != noNode)
        remove(nodes[id].first);
    nodes[id].folded = nodes[id].trailingComma = false;
}

void JsonTree::setKind(NodeId id, JsonKind kind)
{
    JsonNode& node = nodes[id];
    touch(id);
    if (node.parent != noNode) {
        std::uint32_t& nonTexts = nodes[node.parent].nonTexts;
        nonTexts -= node.kind == JsonKind::Text ? 0 : 1;
        nonTexts += kind == JsonKind::Text ? 0 : 1;
    }
    node.kind = kind;
    if (node.isContainer())
        setText(id, JsonPart::Closing, {});
}

void JsonTree::setTrailingComma(NodeId id, bool comma)
{
    nodes[id].trailingComma = comma;
    touch(id);
}

NodeId JsonTree::wrap(NodeId id)
{
    unfold(id);
    const NodeId inner = allocate();
    touch(id);
    touch(inner);
    JsonNode& node = nodes[inner];
    node = nodes[id];
    node.parent = id;
    node.next = node.previous = noNode;
    node.leading = node.label = node.value;
    node.end = node.valueEnd;
    node.repeated = false;
    for (NodeId child = node.first; child != noNode; child = nodes[child].next)
        nodes[child].parent = inner;
    if (node.hasOwnTexts) {
        OwnTexts& inside = ownTexts[inner] = ownTexts[id];
        for (const JsonPart part : {JsonPart::Leading, JsonPart::Label, JsonPart::Trailing})
            inside[std::size_t(part)].reset();
    }
    setKind(id, JsonKind::Object);
    JsonNode& outer = nodes[id];
    outer.first = outer.last = noNode;
    outer.count = outer.nonTexts = 0;
    outer.trailingComma = false;
    link(inner, noNode);
    return inner;
}

std::string_view JsonTree::text(NodeId id, JsonPart part) const
{
    const JsonNode& node = nodes[id];
    if (const std::string* const own = ownText(id, part))
        return *own;
    switch (part) {
    case JsonPart::Leading:
        return span(node.leading, node.label);
    case JsonPart::Label:
        return span(node.label, node.value);
    case JsonPart::Value:
        return span(node.value, node.valueEnd);
    case JsonPart::Closing:
        return node.valueEnd == 0 ? std::string_view() : span(node.closing, node.valueEnd - 1);
    case JsonPart::Trailing:
        break;
    }
    return span(node.valueEnd, node.end);
}

std::string_view JsonTree::keyLiteral(NodeId id) const
{
    const std::string_view label = text(id, JsonPart::Label);
    // Mostly nothing but a colon and a blank is after the key, and a comment does not end in these.
    for (const std::string_view usual : {"\": ", "\":"}) {
        if (label.size() > usual.size() && label.substr(label.size() - usual.size()) == usual)
            return label.substr(0, label.size() - usual.size() + 1);
    }
    return label.substr(0, findStringEnd(label, 0));
}

std::string JsonTree::write() const
{
    if (isOriginal())
        return original;
    JsonWriter writer(*this);
    return writer.write();
}

} // namespace Repository::Documents
