#include "repository/documents/JsonDocument.h"

#include "host/FrameworkCore/Values/Utf8.h"
#include "repository/documents/JsonList.h"
#include "repository/documents/JsonReader.h"
#include "repository/documents/JsonScalar.h"
#include "repository/documents/JsonWriter.h"
#include "repository/documents/KeyText.h"
#include "repository/documents/Refusal.h"
#include "repository/documents/TextPosition.h"

#include <algorithm>
#include <new>

namespace Repository::Documents {

using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;

namespace {

Value readLeaf(JsonKind kind, std::string_view spelling)
{
    switch (kind) {
    case JsonKind::Array:
        return {Type::StringList, decodeList(spelling)};
    case JsonKind::Text:
        return {Type::String, decodeString(spelling)};
    case JsonKind::Number:
        return readNumber(spelling);
    case JsonKind::True:
        return {Type::Bool, true};
    case JsonKind::False:
        return {Type::Bool, false};
    case JsonKind::Object:
    case JsonKind::Null:
        break;
    }
    return {Type::Null, {}};
}

bool isUnheldNumber(std::string_view spelling)
{
    return isNumber(spelling) && readNumber(spelling).type == Type::String;
}

} // namespace

JsonDocument::JsonDocument() : content(std::make_unique<Content>(std::string()))
{
}

Outcome JsonDocument::parse(std::string bytes)
{
    try {
        auto fresh = std::make_unique<Content>(std::move(bytes));
        const JsonFault fault = JsonReader(fresh->tree, fresh->members).read();
        if (!fault.message.empty()) {
            const TextPosition position = positionOf(fresh->tree.getOriginal(), fault.offset);
            return {fault.message, position.line, position.column};
        }
        fresh->editor.detectStyle();
        content = std::move(fresh);
    } catch (const std::bad_alloc&) {
        return refused("there is not enough memory for a file of this size");
    }
    return {};
}

void JsonDocument::visit(const std::function<void(const Entry&)>& visitor) const
{
    struct Level
    {
        std::size_t pathLength;
        std::size_t position;
    };
    const JsonTree& tree = content->tree;
    Entry entry;
    std::vector<Level> levels;
    JsonNodeId id = tree.getRoot();
    while (id != noJsonNode) {
        const bool isOwnValue = content->members.isOwnValue(id);
        if (!levels.empty() && !isOwnValue) {
            if (!entry.path.empty())
                entry.path += '.';
            content->members.appendName(entry.path, id, levels.back().position);
        }
        const JsonNodeId holder = holderOf(id);
        if (!isOwnValue && (holder != noJsonNode || !levels.empty())) {
            entry.value = holder == noJsonNode ? Value() : read(holder);
            visitor(entry);
        }
        if (!tree.node(id).isLeaf() && tree.node(id).first != noJsonNode) {
            levels.push_back({entry.path.size(), 0});
            id = tree.node(id).first;
            continue;
        }
        while (!levels.empty() && tree.node(id).next == noJsonNode) {
            levels.pop_back();
            id = tree.node(id).parent;
        }
        if (levels.empty())
            return;
        ++levels.back().position;
        entry.path.resize(levels.back().pathLength);
        id = tree.node(id).next;
    }
}

Outcome JsonDocument::set(std::string_view path, const Value& value)
{
    const JsonNodeId id = find(path);
    if (id == noJsonNode)
        return refused("there is no entry " + quoted(path));
    const JsonNodeId holder = holderOf(id);
    if (holder == noJsonNode)
        return refused(quoted(path) + " is a group, which has no value of its own");
    if (value.type == Type::Group)
        return refused(quoted(path) + " has a value and cannot become a group");
    if (isSame(read(holder), value))
        return {};
    JsonContent wanted = toContent(value);
    const bool restores = isOriginal(holder, value);
    if (restores)
        wanted.kind = *content->tree.originalKind(holder);
    else if (value.type == Type::String && isUnheldNumber(content->tree.originalValue(holder)) &&
             isUnheldNumber(std::get<std::string>(value.data)))
        wanted = {JsonKind::Number, std::get<std::string>(value.data), {}, {}};
    if (!wanted.error.empty())
        return refused(wanted.error);
    Outcome outcome = checkKind(path, holder, wanted.kind);
    if (!outcome.ok())
        return outcome;
    if (restores)
        content->editor.restore(holder);
    else
        content->editor.setContent(holder, wanted);
    return {};
}

// Whether a value can become one of that kind.
Outcome JsonDocument::checkKind(std::string_view path, JsonNodeId holder, JsonKind kind) const
{
    const JsonNode& node = content->tree.node(holder);
    const bool becomesContainer = kind == JsonKind::Array && !node.isContainer();
    if (becomesContainer && depthOf(holder) + 1 > JsonReader::maximumDepth)
        return refused(quoted(path) + " lies too deep to become a list");
    if (kind == JsonKind::Text && node.kind != JsonKind::Text && node.parent != noJsonNode) {
        const JsonNode& parent = content->tree.node(node.parent);
        if (parent.kind == JsonKind::Array && parent.nonTexts == 1)
            return refused(quoted(path) + " cannot become a text: all elements of its array would be texts, "
                                          "which json holds as one list");
    }
    return {};
}

Outcome JsonDocument::insert(std::string_view path, const Value& value)
{
    const Place place = resolve(path);
    const JsonContent wanted = toContent(value);
    Outcome outcome = wanted.error.empty() ? checkInsertion(path, place, wanted) : refused(wanted.error);
    if (outcome.ok())
        insertAt(place, wanted);
    return outcome;
}

Outcome JsonDocument::remove(std::string_view path)
{
    if (path.empty())
        return refused("the whole document cannot be removed");
    const JsonNodeId id = find(path);
    if (id == noJsonNode)
        return refused("there is no entry " + quoted(path));
    content->editor.remove(id);
    return {};
}

bool JsonDocument::removalMovesSiblings(std::string_view path) const
{
    const JsonNodeId id = path.empty() ? noJsonNode : find(path);
    if (id == noJsonNode)
        return false;
    const JsonNode& node = content->tree.node(id);
    const JsonNode& parent = content->tree.node(node.parent);
    const bool leavesList =
        parent.kind == JsonKind::Array && parent.nonTexts == (node.kind == JsonKind::Text ? 0U : 1U);
    return leavesList || content->members.hasSuccessor(id);
}

bool JsonDocument::contains(std::string_view path) const
{
    return find(path) != noJsonNode;
}

std::optional<Span> JsonDocument::locate(std::string_view path) const
{
    const JsonNodeId holder = findHolder(path);
    if (holder == noJsonNode)
        return {};
    return JsonWriter(content->tree).locateValue(holder);
}

std::optional<std::string> JsonDocument::spell(std::string_view path) const
{
    const JsonNodeId holder = findHolder(path);
    if (holder == noJsonNode)
        return {};
    return JsonWriter(content->tree).writeValue(holder);
}

Outcome JsonDocument::respell(std::string_view path, std::string_view spelling)
{
    const JsonNodeId holder = findHolder(path);
    if (holder == noJsonNode)
        return refused("there is no value " + quoted(path));
    Content parsed{std::string(spelling)};
    const JsonFault fault = JsonReader(parsed.tree, parsed.members).read();
    const JsonNodeId root = parsed.tree.getRoot();
    if (!fault.message.empty() || root == noJsonNode || !parsed.tree.node(root).isLeaf() ||
        JsonWriter(parsed.tree).writeValue(root) != spelling)
        return refused(quoted(spelling) + " is not how json spells a value");
    Outcome outcome = checkKind(path, holder, parsed.tree.node(root).kind);
    if (!outcome.ok())
        return outcome;
    if (content->tree.originalKind(holder) && content->tree.originalValue(holder) == spelling)
        content->editor.restore(holder);
    else
        content->editor.copyValue(holder, parsed.tree, root);
    return {};
}

std::string JsonDocument::getBytes() const
{
    return content->tree.write();
}

JsonDocument::Place JsonDocument::resolve(std::string_view path) const
{
    Place place;
    place.node = content->tree.getRoot();
    const auto components = path.empty() ? std::vector<std::string_view>() : splitPath(path);
    if (!components)
        return place;
    place.valid = true;
    auto next = components->begin();
    while (place.node != noJsonNode && next != components->end()) {
        const JsonNodeId child = content->members.find(place.node, *next);
        if (child == noJsonNode)
            break;
        place.node = child;
        ++next;
    }
    place.missing.assign(next, components->end());
    return place;
}

JsonNodeId JsonDocument::find(std::string_view path) const
{
    const Place place = resolve(path);
    return place.valid && place.missing.empty() ? place.node : noJsonNode;
}

JsonNodeId JsonDocument::holderOf(JsonNodeId id) const
{
    return content->tree.node(id).isLeaf() ? id : content->members.findOwnValue(id);
}

JsonNodeId JsonDocument::findHolder(std::string_view path) const
{
    const JsonNodeId id = find(path);
    return id == noJsonNode ? noJsonNode : holderOf(id);
}

Value JsonDocument::read(JsonNodeId holder) const
{
    const JsonTree& tree = content->tree;
    if (tree.node(holder).kind == JsonKind::Array)
        return {Type::StringList, tree.readList(holder)};
    return readLeaf(tree.node(holder).kind, tree.text(holder, JsonPart::Value));
}

bool JsonDocument::isOriginal(JsonNodeId holder, const Value& value) const
{
    const auto kind = content->tree.originalKind(holder);
    return kind && isSame(readLeaf(*kind, content->tree.originalValue(holder)), value);
}

// How many containers lie around a node.
std::size_t JsonDocument::depthOf(JsonNodeId id) const
{
    std::size_t depth = 0;
    while (id != noJsonNode && (id = content->tree.node(id).parent) != noJsonNode)
        ++depth;
    return depth;
}

Outcome JsonDocument::checkInsertion(std::string_view path, const Place& place,
                                     const JsonContent& wanted) const
{
    if (!place.valid)
        return refused(quoted(path) + " is no path: its parts between the dots must not be empty");
    const bool isContainer = wanted.kind == JsonKind::Object || wanted.kind == JsonKind::Array;
    if (place.missing.empty() && place.node != noJsonNode) {
        const bool isGroup = holderOf(place.node) == noJsonNode;
        if (!isGroup || wanted.kind == JsonKind::Object)
            return refused("there is already an entry " + quoted(path));
        if (content->tree.node(place.node).kind == JsonKind::Array)
            return refused(quoted(path) + " is an array, which cannot have a value of its own");
    }
    const bool wraps = place.node != noJsonNode && content->tree.node(place.node).isLeaf();
    const std::size_t below = std::max<std::size_t>(place.missing.size(), 1) + (isContainer ? 1 : 0);
    if (depthOf(place.node) + std::max<std::size_t>(below, wraps ? 2 : 0) > JsonReader::maximumDepth)
        return refused(quoted(path) + " lies too deep: more than " +
                       std::to_string(JsonReader::maximumDepth) +
                       " objects and arrays would lie within each other");
    if (place.missing.empty())
        return place.node == noJsonNode ? Outcome() : checkName(place.node, {});
    JsonNodeId container = wraps ? noJsonNode : place.node;
    for (const std::string_view component : place.missing) {
        Outcome outcome = checkName(container, component);
        if (!outcome.ok())
            return outcome;
        container = noJsonNode;
    }
    return {};
}

// Whether a container, or a new object, can get a child of this name; the empty name is that of the own
// value.
Outcome JsonDocument::checkName(JsonNodeId container, std::string_view component) const
{
    const bool inArray = container != noJsonNode && content->tree.node(container).kind == JsonKind::Array;
    if (inArray) {
        const std::string next = std::to_string(content->tree.node(container).count);
        if (component != next)
            return refused(quoted(component) + " cannot be added to an array, whose next element is " + next);
        return {};
    }
    if (component.empty()) {
        if (content->members.find(container, encodeKey(ownValueKey)) != noJsonNode)
            return refused("a group stands in the member \"#value\", where the value of its own would go");
        return {};
    }
    const NumberedComponent name = splitNumber(component);
    const auto key = decodeKey(name.name);
    if (!key)
        return refused(quoted(component) + " is not how a key is written in a path");
    if (!FrameworkCore::Values::isUtf8(*key))
        return refused("the key " + quoted(component) + " is no valid UTF-8, which json demands");
    if (*key == ownValueKey)
        return refused("the key \"#value\" is kept for values of groups");
    const std::string before = joinNumber(name.name, name.number - 1);
    if (name.number > 1 &&
        (container == noJsonNode || content->members.find(container, before) == noJsonNode))
        return refused(quoted(component) + " can only be added behind " + quoted(before) +
                       ", which is not there");
    return {};
}

void JsonDocument::insertAt(const Place& place, const JsonContent& wanted)
{
    JsonTree& tree = content->tree;
    JsonEditor& editor = content->editor;
    if (tree.getRoot() == noJsonNode)
        editor.createRoot();
    JsonNodeId container = place.node == noJsonNode ? tree.getRoot() : place.node;
    if (place.missing.empty()) {
        if (wanted.kind != JsonKind::Object)
            editor.appendMember(container, ownValueKey, 1, wanted);
        return;
    }
    if (tree.node(container).isLeaf())
        editor.wrap(container);
    for (std::size_t i = 0; i < place.missing.size(); ++i) {
        const JsonContent inserted = i + 1 < place.missing.size() ? JsonContent() : wanted;
        if (tree.node(container).kind == JsonKind::Array) {
            container = editor.appendElement(container, inserted);
            continue;
        }
        const NumberedComponent name = splitNumber(place.missing[i]);
        container = editor.appendMember(container, *decodeKey(name.name),
                                        static_cast<std::uint32_t>(name.number), inserted);
    }
}

} // namespace Repository::Documents
