#include "repository/documents/json/JsonTree.h"

#include "repository/documents/json/JsonList.h"
#include "repository/documents/json/JsonScalar.h"
#include "repository/documents/json/JsonWriter.h"

#include <algorithm>
#include <utility>

namespace Repository::Documents {

namespace {

constexpr std::size_t readAhead = 64; // bytes behind the end that the parser may read

JsonKind kindOf(char first)
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

} // namespace

JsonTree::JsonTree(std::string bytes) : original(std::move(bytes)), fileSize(original.size())
{
    original.reserve(original.size() + readAhead);
}

void JsonTree::dropNodes()
{
    nodes.clear();
    root = noJsonNode;
}

void JsonTree::reserveMore(std::size_t count)
{
    nodes.reserve(nodes.size() + count - std::min(count, released.size()));
}

JsonNodeId JsonTree::read(const JsonNode& node)
{
    const JsonNodeId id = allocate();
    nodes[id] = node;
    if (node.parent == noJsonNode)
        root = id;
    else
        link(id, nodes[node.parent].last);
    return id;
}

void JsonTree::fold(JsonNodeId array)
{
    JsonNode& node = nodes[array];
    for (JsonNodeId id = node.last; id != noJsonNode;) {
        const JsonNodeId previous = nodes[id].previous;
        if (id + 1 == nodes.size())
            nodes.pop_back();
        else
            released.push_back(id);
        id = previous;
    }
    node.folded = node.wasFolded = true;
    node.first = node.last = noJsonNode;
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

void JsonTree::reopen(JsonNodeId id, JsonKind kind, std::size_t value)
{
    setKind(id, kind);
    JsonNode& node = nodes[id];
    node.lead = node.label = node.value = static_cast<std::uint32_t>(value);
    for (const JsonPart part : {JsonPart::Value, JsonPart::Closing})
        ownTexts[id].parts[std::size_t(part)].reset();
}

void JsonTree::unfold(JsonNodeId array)
{
    if (!nodes[array].folded)
        return;
    nodes[array].folded = false;
    nodes[array].trailingComma = false;
    std::size_t at = nodes[array].value + 1;
    for (JsonListElement element = readElement(original, at); element.exists();) {
        const JsonNodeId id = allocate();
        JsonNode& node = nodes[id];
        node.kind = JsonKind::Text;
        node.parent = array;
        node.lead = static_cast<std::uint32_t>(element.lead);
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

std::vector<std::string> JsonTree::readList(JsonNodeId array) const
{
    if (nodes[array].folded)
        return decodeList(text(array, JsonPart::Value));
    std::vector<std::string> list;
    list.reserve(nodes[array].count);
    for (JsonNodeId id = nodes[array].first; id != noJsonNode; id = nodes[id].next)
        list.push_back(decodeString(text(id, JsonPart::Value)));
    return list;
}

std::optional<JsonKind> JsonTree::originalKind(JsonNodeId id) const
{
    const JsonNode& node = nodes[id];
    if (node.valueEnd == 0)
        return std::nullopt;
    const JsonKind kind = kindOf(original[node.value]);
    const bool group = kind == JsonKind::Object || (kind == JsonKind::Array && !node.wasFolded);
    return group ? std::nullopt : std::optional(kind);
}

std::string_view JsonTree::originalValue(JsonNodeId id) const
{
    return std::string_view(original).substr(nodes[id].value, nodes[id].valueEnd - nodes[id].value);
}

void JsonTree::restore(JsonNodeId id)
{
    const std::optional<JsonKind> kind = originalKind(id);
    if (!kind)
        return;
    clear(id);
    setKind(id, *kind);
    nodes[id].folded = nodes[id].wasFolded;
    if (!nodes[id].hasOwnTexts)
        return;
    for (const JsonPart part : {JsonPart::Value, JsonPart::Closing})
        ownTexts[id].parts[std::size_t(part)].reset();
}

JsonNodeId JsonTree::insert(JsonNodeId parent, JsonNodeId previous, JsonKind kind)
{
    const JsonNodeId id = allocate();
    nodes[id].parent = parent;
    nodes[id].kind = kind;
    if (parent == noJsonNode)
        root = id;
    else
        link(id, previous);
    touch(id);
    return id;
}

void JsonTree::remove(JsonNodeId id)
{
    touch(nodes[id].parent);
    unlink(id);
    release(id);
}

void JsonTree::clear(JsonNodeId id)
{
    touch(id);
    while (nodes[id].first != noJsonNode)
        remove(nodes[id].first);
    nodes[id].folded = nodes[id].trailingComma = false;
}

void JsonTree::setKind(JsonNodeId id, JsonKind kind)
{
    JsonNode& node = nodes[id];
    touch(id);
    if (node.parent != noJsonNode) {
        std::uint32_t& nonTexts = nodes[node.parent].nonTexts;
        nonTexts -= node.kind == JsonKind::Text ? 0 : 1;
        nonTexts += kind == JsonKind::Text ? 0 : 1;
    }
    node.kind = kind;
    if (node.isContainer())
        setText(id, JsonPart::Closing, {});
}

void JsonTree::setTrailingComma(JsonNodeId id, bool comma)
{
    nodes[id].trailingComma = comma;
    touch(id);
}

JsonNodeId JsonTree::wrap(JsonNodeId id)
{
    unfold(id);
    const JsonNodeId inner = allocate();
    touch(id);
    touch(inner);
    JsonNode& node = nodes[inner];
    node = nodes[id];
    node.parent = id;
    node.next = node.previous = noJsonNode;
    node.lead = node.label = node.value;
    node.end = node.valueEnd;
    node.repeated = false;
    for (JsonNodeId child = node.first; child != noJsonNode; child = nodes[child].next)
        nodes[child].parent = inner;
    if (node.hasOwnTexts) {
        OwnTexts& inside = ownTexts[inner] = ownTexts[id];
        for (const JsonPart part : {JsonPart::Lead, JsonPart::Label, JsonPart::Tail})
            inside.parts[std::size_t(part)].reset();
    }
    setKind(id, JsonKind::Object);
    JsonNode& outer = nodes[id];
    outer.first = outer.last = noJsonNode;
    outer.count = outer.nonTexts = 0;
    outer.trailingComma = false;
    link(inner, noJsonNode);
    return inner;
}

std::string_view JsonTree::text(JsonNodeId id, JsonPart part) const
{
    const JsonNode& node = nodes[id];
    if (node.hasOwnTexts) {
        const auto& own = ownTexts.at(id).parts[std::size_t(part)];
        if (own)
            return *own;
    }
    const auto span = [this](std::uint32_t from, std::uint32_t to) {
        return std::string_view(original).substr(from, to - from);
    };
    switch (part) {
    case JsonPart::Lead:
        return span(node.lead, node.label);
    case JsonPart::Label:
        return span(node.label, node.value);
    case JsonPart::Value:
        return span(node.value, node.valueEnd);
    case JsonPart::Closing:
        return node.valueEnd == 0 ? std::string_view() : span(node.closing, node.valueEnd - 1);
    case JsonPart::Tail:
        break;
    }
    return span(node.valueEnd, node.end);
}

void JsonTree::setText(JsonNodeId id, JsonPart part, std::string text)
{
    ownTexts[id].parts[std::size_t(part)] = std::move(text);
    nodes[id].hasOwnTexts = true;
    touch(id);
}

std::string_view JsonTree::keyLiteral(JsonNodeId id) const
{
    const std::string_view label = text(id, JsonPart::Label);
    // Mostly nothing but a colon and a blank is behind the key, and a comment does not end in these.
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

JsonNodeId JsonTree::allocate()
{
    if (released.empty()) {
        nodes.emplace_back();
        return static_cast<JsonNodeId>(nodes.size() - 1);
    }
    const JsonNodeId id = released.back();
    released.pop_back();
    nodes[id] = JsonNode();
    return id;
}

void JsonTree::link(JsonNodeId id, JsonNodeId previous)
{
    JsonNode& node = nodes[id];
    JsonNode& parent = nodes[node.parent];
    node.previous = previous;
    node.next = previous == noJsonNode ? parent.first : nodes[previous].next;
    (previous == noJsonNode ? parent.first : nodes[previous].next) = id;
    (node.next == noJsonNode ? parent.last : nodes[node.next].previous) = id;
    ++parent.count;
    parent.nonTexts += node.kind == JsonKind::Text ? 0 : 1;
}

void JsonTree::unlink(JsonNodeId id)
{
    const JsonNode& node = nodes[id];
    JsonNode& parent = nodes[node.parent];
    (node.previous == noJsonNode ? parent.first : nodes[node.previous].next) = node.next;
    (node.next == noJsonNode ? parent.last : nodes[node.next].previous) = node.previous;
    --parent.count;
    parent.nonTexts -= node.kind == JsonKind::Text ? 0 : 1;
}

void JsonTree::release(JsonNodeId id)
{
    std::vector<JsonNodeId> pending{id};
    while (!pending.empty()) {
        const JsonNodeId next = pending.back();
        pending.pop_back();
        for (JsonNodeId child = nodes[next].first; child != noJsonNode; child = nodes[child].next)
            pending.push_back(child);
        if (nodes[next].hasOwnTexts)
            ownTexts.erase(next);
        released.push_back(next);
    }
}

void JsonTree::touch(JsonNodeId id)
{
    for (; id != noJsonNode && !nodes[id].touched; id = nodes[id].parent)
        nodes[id].touched = true;
}

} // namespace Repository::Documents
