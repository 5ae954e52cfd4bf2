#include "repository/documents/json/JsonDocument.h"

#include "host/FrameworkCore/Values/ValueText.h"
#include "repository/documents/common/KeyText.h"
#include "repository/documents/common/Refusal.h"
#include "repository/documents/common/SameValue.h"
#include "repository/documents/common/TextPosition.h"
#include "repository/documents/json/JsonReader.h"
#include "repository/documents/json/JsonScalar.h"
#include "repository/documents/json/JsonWriter.h"

#include <algorithm>
#include <new>

namespace Repository::Documents {

using FrameworkCore::Values::describeType;
using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;

namespace {

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
        const SyntaxFault fault = JsonReader(fresh->tree, fresh->members).read();
        if (!fault.message.empty()) {
            const TextPosition position = positionOf(fresh->tree.getOriginal(), fault.offset);
            return {fault.message, position.line, position.column};
        }
        fresh->editor.detectStyle();
        fresh->types.read();
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
    NodeId id = tree.getRoot();
    while (id != noNode) {
        const bool isHidden = id == content->types.getMember();
        const bool isOwnValue = isHidden || content->members.isOwnValue(id);
        if (!levels.empty() && !isOwnValue) {
            if (!entry.path.empty())
                entry.path += '.';
            content->members.appendName(entry.path, id, levels.back().position);
        }
        const NodeId holder = isOwnValue ? noNode : holderOf(id);
        if (!isOwnValue && (holder != noNode || !levels.empty())) {
            entry.value = holder == noNode ? Value() : read(holder, entry.path);
            visitor(entry);
        }
        if (!isHidden && !tree.node(id).isLeaf() && tree.node(id).first != noNode) {
            levels.push_back({entry.path.size(), 0});
            id = tree.node(id).first;
            continue;
        }
        while (!levels.empty() && tree.node(id).next == noNode) {
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
    const NodeId id = find(path);
    if (id == noNode)
        return refused("there is no entry " + quoted(path));
    const NodeId holder = holderOf(id);
    if (holder == noNode)
        return refused(quoted(path) + " is a group, which has no value of its own");
    if (value.type == Type::Group)
        return refused(quoted(path) + " has a value and cannot become a group");
    if (isSame(read(holder, path), value))
        return {};
    const Type mark = content->types.find(path);
    JsonContent wanted = mark == Type::Group ? toContent(value) : toMarkedContent(value);
    const bool restores = isOriginal(holder, value, mark);
    if (restores)
        wanted.kind = *content->tree.originalKind(holder);
    else if (value.type == Type::String && isUnheldNumber(content->tree.originalValue(holder)) &&
             isUnheldNumber(std::get<std::string>(value.data)))
        wanted = {JsonKind::Number, std::get<std::string>(value.data), {}, {}};
    else if (wanted.error.empty() && !holds(wanted, mark, value))
        return refused("json would read " + wanted.spelling + " back as " +
                       std::string(describeType(readContent(wanted.kind, wanted.spelling, mark).type)) +
                       ", not as " + std::string(describeType(value.type)));
    if (!wanted.error.empty())
        return refused(wanted.error);
    Outcome outcome = checkKind(path, holder, wanted.kind);
    if (outcome.ok() && value.type == Type::String)
        outcome = checkNoTypes(content->tree.node(holder).parent, holder, std::get<std::string>(value.data));
    if (!outcome.ok())
        return outcome;
    if (restores)
        content->editor.restore(holder);
    else
        content->editor.setContent(holder, wanted);
    return {};
}

// Whether a value can become one of that kind.
Outcome JsonDocument::checkKind(std::string_view path, NodeId holder, JsonKind kind) const
{
    const JsonNode& node = content->tree.node(holder);
    const bool becomesContainer = kind == JsonKind::Array && !node.isContainer();
    if (becomesContainer && depthOf(holder) + 1 > JsonReader::maximumDepth)
        return refused(quoted(path) + " lies too deep to become a list");
    if (kind == JsonKind::Text && node.kind != JsonKind::Text && node.parent != noNode) {
        const JsonNode& parent = content->tree.node(node.parent);
        if (parent.kind == JsonKind::Array && parent.nonTexts == 1)
            return refused(quoted(path) + " cannot become a text: all elements of its array would be texts, "
                                          "which json holds as one list");
    }
    return {};
}

// Whether a member of an object, or a new one, can get this text.
Outcome JsonDocument::checkNoTypes(NodeId object, NodeId member, std::string_view text) const
{
    if (!content->types.wouldReadWith(object, member, text))
        return {};
    return refused("with " + quoted(text) + " in it, \"" + std::string(typesKey) +
                   "\" would be read as the types of other entries");
}

bool JsonDocument::removalMovesSiblings(std::string_view path) const
{
    const NodeId id = path.empty() ? noNode : find(path);
    if (id == noNode)
        return false;
    const JsonNode& node = content->tree.node(id);
    const JsonNode& parent = content->tree.node(node.parent);
    const bool leavesList =
        parent.kind == JsonKind::Array && parent.nonTexts == (node.kind == JsonKind::Text ? 0U : 1U);
    return leavesList || content->members.hasSuccessor(id);
}

SiblingPlace JsonDocument::placeOf(std::string_view path) const
{
    const JsonTree& tree = content->tree;
    const NodeId id = find(path);
    const auto isShown = [&](NodeId other) {
        return other != content->types.getMember() && !content->members.isOwnValue(other);
    };
    NodeId next = id == noNode ? noNode : tree.node(id).next;
    while (next != noNode && !isShown(next))
        next = tree.node(next).next;
    if (next == noNode)
        return {SiblingPlace::Kind::Last, {}};
    NodeId previous = tree.node(id).previous;
    while (previous != noNode && !isShown(previous))
        previous = tree.node(previous).previous;
    if (previous == noNode)
        return {SiblingPlace::Kind::First, {}};
    const PathEnds ends = splitLast(path);
    const bool isElement = tree.node(tree.node(id).parent).kind == JsonKind::Array;
    const std::size_t position = isElement ? std::stoul(std::string(ends.last)) : 1;
    std::string name;
    content->members.appendName(name, previous, position - 1);
    return {SiblingPlace::Kind::After, joinPath(ends.parent, name)};
}

bool JsonDocument::contains(std::string_view path) const
{
    return find(path) != noNode;
}

std::optional<Span> JsonDocument::locate(std::string_view path) const
{
    const NodeId holder = findHolder(path);
    if (holder == noNode)
        return {};
    return JsonWriter(content->tree).locateValue(holder);
}

std::optional<std::string> JsonDocument::spell(std::string_view path) const
{
    const NodeId holder = findHolder(path);
    if (holder == noNode)
        return {};
    return JsonWriter(content->tree).writeValue(holder);
}

Outcome JsonDocument::respell(std::string_view path, std::string_view spelling)
{
    const NodeId holder = findHolder(path);
    if (holder == noNode)
        return refused("there is no value " + quoted(path));
    Content parsed{std::string(spelling)};
    const SyntaxFault fault = JsonReader(parsed.tree, parsed.members).read();
    const NodeId root = parsed.tree.getRoot();
    if (!fault.message.empty() || root == noNode || !parsed.tree.node(root).isLeaf() ||
        JsonWriter(parsed.tree).writeValue(root) != spelling)
        return refused(quoted(spelling) + " is not how json spells a value");
    const JsonKind kind = parsed.tree.node(root).kind;
    Outcome outcome = checkKind(path, holder, kind);
    if (outcome.ok() && kind == JsonKind::Text)
        outcome = checkNoTypes(content->tree.node(holder).parent, holder, decodeString(spelling));
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
    while (place.node != noNode && next != components->end()) {
        const NodeId child = content->members.find(place.node, *next);
        if (child == noNode || child == content->types.getMember())
            break;
        place.node = child;
        ++next;
    }
    place.missing.assign(next, components->end());
    return place;
}

NodeId JsonDocument::find(std::string_view path) const
{
    const Place place = resolve(path);
    return place.valid && place.missing.empty() ? place.node : noNode;
}

NodeId JsonDocument::holderOf(NodeId id) const
{
    return content->tree.node(id).isLeaf() ? id : content->members.findOwnValue(id);
}

NodeId JsonDocument::findHolder(std::string_view path) const
{
    const NodeId id = find(path);
    return id == noNode ? noNode : holderOf(id);
}

Value JsonDocument::read(NodeId holder, std::string_view path) const
{
    const JsonTree& tree = content->tree;
    if (tree.node(holder).kind == JsonKind::Array)
        return {Type::StringList, tree.readList(holder)};
    const Type mark = content->types.isEmpty() ? Type::Group : content->types.find(path);
    return readContent(tree.node(holder).kind, tree.text(holder, JsonPart::Value), mark);
}

bool JsonDocument::isOriginal(NodeId holder, const Value& value, Type mark) const
{
    const auto kind = content->tree.originalKind(holder);
    return kind && isSame(readContent(*kind, content->tree.originalValue(holder), mark), value);
}

// How many containers lie around a node.
std::size_t JsonDocument::depthOf(NodeId id) const
{
    std::size_t depth = 0;
    while (id != noNode && (id = content->tree.node(id).parent) != noNode)
        ++depth;
    return depth;
}

} // namespace Repository::Documents
