#include "host/FrameworkCore/Values/Utf8.h"
#include "host/FrameworkCore/Values/ValueText.h"
#include "repository/documents/common/KeyText.h"
#include "repository/documents/common/Refusal.h"
#include "repository/documents/json/JsonDocument.h"
#include "repository/documents/json/JsonGap.h"
#include "repository/documents/json/JsonReader.h"
#include "repository/documents/json/JsonText.h"
#include "repository/documents/json/JsonWriter.h"

#include <algorithm>

// The operations that add entries to a json file and take them out.

namespace Repository::Documents {

using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;

Outcome JsonDocument::insert(std::string_view path, const Value& value)
{
    const Place place = resolve(path);
    JsonContent wanted = toContent(value);
    const bool needsMark = !holds(wanted, Type::Group, value);
    if (needsMark)
        wanted = toMarkedContent(value);
    if (!wanted.error.empty())
        return refused(wanted.error);
    Outcome outcome = checkInsertion(path, place, wanted);
    if (outcome.ok() && needsMark)
        outcome = checkMark(value);
    if (outcome.ok() && place.missing.size() == 1 && value.type == Type::String)
        outcome = checkNoTypes(place.node, noNode, std::get<std::string>(value.data));
    if (!outcome.ok())
        return outcome;
    content->types.remove(path); // said of an entry that was not there
    insertAt(place, wanted);
    if (needsMark)
        content->types.add(path, value.type);
    return {};
}

Outcome JsonDocument::insertAll(std::string_view path, const std::vector<Entry>& entries,
                                std::size_t& refused)
{
    const NodeId root = content->tree.getRoot();
    const bool saysTypes = root != noNode && content->members.find(root, typesKey) != noNode;
    if (path.empty() || saysTypes || entries.size() < 2)
        return Document::insertAll(path, entries, refused);
    refused = 0;
    Outcome outcome = insert(path, {Type::Integer, std::int64_t(0)});
    if (!outcome.ok() || graft(path, entries))
        return outcome;
    remove(path);
    return Document::insertAll(path, entries, refused);
}

bool JsonDocument::graft(std::string_view path, const std::vector<Entry>& entries)
{
    constexpr std::size_t fewEntries = 500;
    JsonTree& tree = content->tree;
    const NodeId id = find(path);
    const JsonStyle& fileStyle = content->editor.getStyle();
    JsonTextStyle style{fileStyle.lineEnd + lineIndentation(tree, id), fileStyle.indentation,
                        colonOf(tree, id), JsonGap(tree.text(id, JsonPart::Lead)).hasBreak(), false};
    if (style.colon.empty())
        style.colon = fileStyle.colon;
    const auto written = JsonText::write(entries, style);
    if (!written || (entries.size() < fewEntries && !written->hasArrays) ||
        depthOf(id) + written->depth > JsonReader::maximumDepth)
        return false;
    if (tree.hasRoomFor(written->text.size()) &&
        tree.getOriginal().size() + written->text.size() <= JsonReader::maximumSize)
        return JsonReader(tree, content->members).readInto(id, tree.keep(written->text));
    Span value;
    std::string bytes = JsonWriter(tree).writeLocating(id, value);
    bytes.replace(value.offset, value.length, written->text);
    return parse(std::move(bytes)).ok();
}

Outcome JsonDocument::remove(std::string_view path)
{
    if (path.empty())
        return refused("the whole document cannot be removed");
    const NodeId id = find(path);
    if (id == noNode)
        return refused("there is no entry " + quoted(path));
    if (content->types.isEmpty() && content->types.wouldReadWithout(id))
        return refused("without it, \"" + std::string(typesKey) +
                       "\" would be read as the types of other entries");
    const NodeId parent = content->tree.node(id).parent;
    const bool inArray = content->tree.node(parent).kind == JsonKind::Array;
    content->editor.remove(id);
    if (content->types.isEmpty())
        return {};
    content->types.remove(path);
    content->types.removeBelow(path);
    if (content->tree.node(parent).isList())
        content->types.removeBelow(splitLast(path).parent);
    else
        content->types.moveUp(path, inArray);
    return {};
}

// Whether the file can say the type of a new entry.
Outcome JsonDocument::checkMark(const Value& value) const
{
    const JsonTree& tree = content->tree;
    const NodeId root = tree.getRoot();
    const std::string type(FrameworkCore::Values::describeType(value.type));
    if (root != noNode && tree.node(root).kind != JsonKind::Object)
        return refused("json has no form for " + type + ", and only in a file whose root is an object \"" +
                       std::string(typesKey) + "\" can say what it is");
    if (content->types.getMember() == noNode && root != noNode &&
        content->members.find(root, typesKey) != noNode)
        return refused("json has no form for " + type + ", and \"" + std::string(typesKey) +
                       "\", which could say what it is, holds something else in this file");
    return {};
}

Outcome JsonDocument::checkInsertion(std::string_view path, const Place& place,
                                     const JsonContent& wanted) const
{
    if (!place.valid)
        return refused(quoted(path) + " is no path: its parts between the dots must not be empty");
    const bool isContainer = wanted.kind == JsonKind::Object || wanted.kind == JsonKind::Array;
    if (place.missing.empty() && place.node != noNode) {
        const bool isGroup = holderOf(place.node) == noNode;
        if (!isGroup || wanted.kind == JsonKind::Object)
            return refused("there is already an entry " + quoted(path));
        if (content->tree.node(place.node).kind == JsonKind::Array)
            return refused(quoted(path) + " is an array, which cannot have a value of its own");
    }
    const bool wraps = place.node != noNode && content->tree.node(place.node).isLeaf();
    const std::size_t below = std::max<std::size_t>(place.missing.size(), 1) + (isContainer ? 1 : 0);
    if (depthOf(place.node) + std::max<std::size_t>(below, wraps ? 2 : 0) > JsonReader::maximumDepth)
        return refused(quoted(path) + " lies too deep: more than " +
                       std::to_string(JsonReader::maximumDepth) +
                       " objects and arrays would lie within each other");
    if (place.missing.empty())
        return place.node == noNode ? Outcome() : checkName(place.node, {});
    NodeId container = wraps ? noNode : place.node;
    for (const std::string_view component : place.missing) {
        Outcome outcome = checkName(container, component);
        if (!outcome.ok())
            return outcome;
        container = noNode;
    }
    return {};
}

// Whether a container, or a new object, can get a child of this name; the empty name is that of the own
// value.
Outcome JsonDocument::checkName(NodeId container, std::string_view component) const
{
    const bool inArray = container != noNode && content->tree.node(container).kind == JsonKind::Array;
    if (inArray) {
        const std::string next = std::to_string(content->tree.node(container).count);
        if (component != next)
            return refused(quoted(component) + " cannot be added to an array, whose next element is " + next);
        return {};
    }
    if (component.empty()) {
        if (content->members.find(container, encodeKey(ownValueKey)) != noNode)
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
    if (*key == typesKey && (container == noNode || container == content->tree.getRoot()))
        return refused("the key \"$types\" is kept for the types of entries");
    const std::string before = joinNumber(name.name, name.number - 1);
    if (name.number > 1 && (container == noNode || content->members.find(container, before) == noNode))
        return refused(quoted(component) + " can only be added behind " + quoted(before) +
                       ", which is not there");
    return {};
}

void JsonDocument::insertAt(const Place& place, const JsonContent& wanted)
{
    JsonTree& tree = content->tree;
    JsonEditor& editor = content->editor;
    if (tree.getRoot() == noNode)
        editor.createRoot();
    NodeId container = place.node == noNode ? tree.getRoot() : place.node;
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
