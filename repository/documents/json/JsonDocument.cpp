#include "repository/documents/json/JsonDocument.h"

#include "repository/documents/common/NumberStyle.h"
#include "repository/documents/common/SyntaxVisit.h"
#include "repository/documents/json/JsonElements.h"
#include "repository/documents/json/JsonInsertion.h"
#include "repository/documents/json/JsonReader.h"
#include "repository/documents/json/JsonScalar.h"
#include "repository/documents/json/JsonSubtrees.h"
#include "repository/documents/json/JsonText.h"
#include "repository/documents/json/JsonTrivia.h"
#include "repository/documents/json/JsonWriter.h"

#include <algorithm>
#include <new>

namespace Repository::Documents {

namespace {

bool isUnheldNumber(std::string_view spelling)
{
    return isNumber(spelling) && readNumber(spelling).type == Type::String;
}

// The type tag of an entry with this value instead of one of the present type; Group for none.
Type tagWith(const Value& value, Type present, Type former)
{
    if (former == Type::Group || present == Type::Null || present == value.type)
        return former;
    return holds(toContent(value), Type::Group, value) ? Type::Group : value.type;
}

} // namespace

Outcome JsonDocument::parse(std::string bytes)
{
    try {
        auto fresh = std::make_unique<JsonFile>(std::move(bytes));
        Outcome outcome = JsonReader(fresh->tree, fresh->members).read();
        if (!outcome.ok())
            return outcome;
        fresh->editor.detectStyle();
        fresh->types.read();
        file = std::move(fresh);
    } catch (const std::bad_alloc&) {
        return refused(Reason::tr("there is not enough memory for a file of this size"));
    }
    return {};
}

void JsonDocument::visit(const std::function<void(const Entry&)>& visitor) const
{
    visitEntries(*file, visitor);
}

Outcome JsonDocument::set(std::string_view path, const Value& value)
{
    NodeId valueNode = noNode;
    Outcome outcome = findSettable(*file, path, value, valueNode);
    if (!outcome.ok())
        return outcome;
    const Value present = file->read(valueNode, path);
    if (isSame(present, value))
        return {};
    const Type former = file->types.find(path);
    const Type tag = tagWith(value, present.type, former);
    JsonContent wanted = tag == Type::Group ? toContent(value) : toTaggedContent(value);
    const auto alike =
        value.type == Type::Double && wanted.kind == JsonKind::Number && wanted.error.empty()
            ? spellLike(std::get<double>(value.data), file->tree.text(valueNode, JsonPart::Value))
            : std::nullopt;
    wanted.spelling = alike.value_or(wanted.spelling);
    const bool restores = isOriginal(valueNode, value, tag);
    if (restores)
        wanted.kind = *file->tree.originalKind(valueNode);
    else if (value.type == Type::String && isUnheldNumber(file->tree.originalValue(valueNode)) &&
             isUnheldNumber(std::get<std::string>(value.data)))
        wanted = {JsonKind::Number, std::get<std::string>(value.data), {}, {}};
    else if (wanted.error.empty() && !holds(wanted, tag, value))
        return refused(
            Reason::tr("json would read %1 back as %2, not as %3",
                       {wanted.spelling, describeType(readContent(wanted.kind, wanted.spelling, tag).type),
                        describeType(value.type)}));
    if (!wanted.error.empty())
        return refused(wanted.error);
    if (present.type == Type::StringList && wanted.kind != JsonKind::Array &&
        hasListComment(JsonWriter(file->tree).writeValue(valueNode)))
        return refused(Reason::tr("%1 is a list with comments, which would be lost", {quoted(path)}));
    outcome = checkKind(path, valueNode, wanted.kind);
    if (outcome.ok() && value.type == Type::String)
        outcome = file->checkNoTypes(file->tree.node(valueNode).parent, valueNode,
                                     std::get<std::string>(value.data));
    if (!outcome.ok())
        return outcome;
    if (restores)
        file->editor.restore(valueNode);
    else
        file->editor.setContent(valueNode, wanted);
    if (tag != former)
        file->types.set(path, tag);
    return {};
}

// Whether a value can become one of that kind.
Outcome JsonDocument::checkKind(std::string_view path, NodeId valueNode, JsonKind kind) const
{
    const JsonNode& node = file->tree.node(valueNode);
    const bool becomesContainer = kind == JsonKind::Array && !node.isContainer();
    if (becomesContainer && file->tree.depthOf(valueNode) + 1 > JsonReader::maximumDepth)
        return refused(Reason::tr("%1 lies too deep to become a list", {quoted(path)}));
    if (kind == JsonKind::Text && node.kind != JsonKind::Text && node.parent != noNode) {
        const JsonNode& parent = file->tree.node(node.parent);
        if (parent.kind == JsonKind::Array && parent.nonTexts == 1)
            return refused(Reason::tr("%1 cannot become a text: all elements of its array would be texts, "
                                      "which json holds as one list",
                                      {quoted(path)}));
    }
    return {};
}

bool JsonDocument::removalMovesSiblings(std::string_view path) const
{
    const NodeId id = path.empty() ? noNode : file->find(path);
    if (id == noNode)
        return false;
    const JsonNode& node = file->tree.node(id);
    const JsonNode& parent = file->tree.node(node.parent);
    const bool leavesList =
        parent.kind == JsonKind::Array && parent.nonTexts == (node.kind == JsonKind::Text ? 0U : 1U);
    return leavesList || file->members.hasSuccessor(id);
}

SiblingPlace JsonDocument::placeOf(std::string_view path) const
{
    const JsonTree& tree = file->tree;
    const NodeId id = file->find(path);
    NodeId next = id == noNode ? noNode : tree.node(id).next;
    while (next != noNode && !file->isShown(next))
        next = tree.node(next).next;
    if (next == noNode)
        return {SiblingPlace::Kind::Last, {}};
    NodeId previous = tree.node(id).previous;
    while (previous != noNode && !file->isShown(previous))
        previous = tree.node(previous).previous;
    if (previous == noNode)
        return {SiblingPlace::Kind::First, {}};
    const PathEnds ends = splitLast(path);
    const bool isElement = tree.node(tree.node(id).parent).kind == JsonKind::Array;
    const std::size_t position = isElement ? std::stoul(std::string(ends.last)) : 1;
    std::string name;
    file->members.appendName(name, previous, position - 1);
    return {SiblingPlace::Kind::After, joinPath(ends.parent, name)};
}

std::optional<bool> JsonDocument::isArray(std::string_view path) const
{
    const NodeId id = file->find(path);
    return id != noNode && file->tree.node(id).kind == JsonKind::Array;
}

std::optional<Value> JsonDocument::valueAt(std::string_view path) const
{
    const NodeId valueNode = file->findValueNode(path);
    return valueNode == noNode ? std::nullopt : std::optional(file->read(valueNode, path));
}

std::optional<Span> JsonDocument::locate(std::string_view path) const
{
    const NodeId entry = file->find(path);
    const NodeId valueNode = entry == noNode ? JsonElements(*file).find(path) : file->valueNodeOf(entry);
    return valueNode == noNode ? std::nullopt : std::optional(JsonWriter(file->tree).locateValue(valueNode));
}

void JsonDocument::visitSpans(const SpanVisitor& visitor) const
{
    const JsonTree& tree = file->tree;
    if (!tree.isOriginal()) {
        Document::visitSpans(visitor);
        return;
    }
    walkEntries(*file, [&](const std::string& path, NodeId, NodeId valueNode) {
        if (valueNode == noNode)
            return;
        const JsonNode& node = tree.node(valueNode);
        visitor(path, {node.value, node.valueEnd - node.value});
    });
}

std::optional<std::string> JsonDocument::spell(std::string_view path) const
{
    const NodeId valueNode = file->findValueNode(path);
    return valueNode == noNode ? std::nullopt : std::optional(JsonWriter(file->tree).writeValue(valueNode));
}

Outcome JsonDocument::respell(std::string_view path, std::string_view spelling)
{
    const NodeId valueNode = file->findValueNode(path);
    if (valueNode == noNode)
        return refused(Reason::tr("there is no value %1", {quoted(path)}));
    JsonFile parsed{std::string(spelling)};
    Outcome outcome = JsonReader(parsed.tree, parsed.members).read();
    const NodeId root = parsed.tree.getRoot();
    if (!outcome.ok() || root == noNode || !parsed.tree.node(root).isLeaf() ||
        JsonWriter(parsed.tree).writeValue(root) != spelling)
        return refused(Reason::tr("%1 is not how json spells a value", {quoted(spelling)}));
    const JsonKind kind = parsed.tree.node(root).kind;
    outcome = checkKind(path, valueNode, kind);
    if (outcome.ok() && kind == JsonKind::Text)
        outcome = file->checkNoTypes(file->tree.node(valueNode).parent, valueNode, decodeString(spelling));
    if (!outcome.ok())
        return outcome;
    if (file->tree.originalKind(valueNode) && file->tree.originalValue(valueNode) == spelling)
        file->editor.restore(valueNode);
    else
        file->editor.copyValue(valueNode, parsed.tree, root);
    return {};
}

bool JsonDocument::isOriginal(NodeId valueNode, const Value& value, Type tag) const
{
    const auto kind = file->tree.originalKind(valueNode);
    return kind && isSame(readContent(*kind, file->tree.originalValue(valueNode), tag), value);
}

Outcome JsonDocument::insert(std::string_view path, const Value& value)
{
    return JsonInsertion(*file).insert(path, value);
}

Outcome JsonDocument::insertAll(std::string_view path, const std::vector<Entry>& entries,
                                std::size_t& refused)
{
    const NodeId root = file->tree.getRoot();
    const bool hasOtherTypes =
        root != noNode && file->types.getMember() == noNode && file->members.find(root, typesKey) != noNode;
    const bool isValue = entries.size() == 1 && entries.front().path.empty();
    if (path.empty() || hasOtherTypes || isValue)
        return Document::insertAll(path, entries, refused);
    refused = 0;
    std::string before = getBytes();
    Outcome outcome = insert(path, {Type::Integer, std::int64_t(0)});
    if (!outcome.ok() || graft(path, entries))
        return outcome;
    parseAgain(std::move(before)); // since a value above may have become an object
    outcome.error = JsonText::explainRefusal(entries);
    return outcome.ok() ? Document::insertAll(path, entries, refused) : outcome;
}

Outcome JsonDocument::replaceAll(std::string_view path, const std::vector<Entry>& entries, std::size_t& index)
{
    const NodeId id = file->find(path);
    if (path.empty()) {
        const auto written = JsonText::write(entries, {});
        if (written)
            return parse(written->text + '\n');
        const std::string reason = JsonText::explainRefusal(entries);
        return refused(
            reason.empty()
                ? Reason::tr("an object in the array would have a name twice, or one that json cannot hold")
                : reason);
    }
    if (id == noNode)
        return Document::replaceAll(path, entries, index);
    std::string before = getBytes();
    for (const JsonPart part : {JsonPart::Leading, JsonPart::Label, JsonPart::Trailing})
        file->tree.setText(id, part, std::string(file->tree.text(id, part)));
    file->types.remove(path);
    file->types.removeBelow(path);
    file->editor.setContent(id, {JsonKind::Number, "0", {}, {}});
    const bool isValue = entries.size() == 1 && entries.front().path.empty();
    if (isValue ? set(path, entries.front().value).ok() : graft(path, entries))
        return {};
    parseAgain(before);
    const std::string reason = JsonText::explainRefusal(entries);
    return reason.empty() ? Document::replaceAll(path, entries, index) : refused(reason);
}

bool JsonDocument::canTag(const std::vector<std::pair<std::string, Type>>& types) const
{
    return std::all_of(types.begin(), types.end(),
                       [&](const auto& tag) { return JsonInsertion(*file).checkTag(tag.second).ok(); });
}

bool JsonDocument::graft(std::string_view path, const std::vector<Entry>& entries)
{
    constexpr std::size_t fewEntries = 500;
    JsonTree& tree = file->tree;
    const NodeId id = file->find(path);
    const JsonStyle& fileStyle = file->editor.getStyle();
    JsonTextStyle style{fileStyle.lineEnd + lineIndentation(tree, id), fileStyle.indentation,
                        colonOf(tree, id), JsonTrivia(tree.text(id, JsonPart::Leading)).hasBreak(), false};
    if (style.colon.empty())
        style.colon = fileStyle.colon;
    const auto written = JsonText::write(entries, style);
    if (!written || (entries.size() < fewEntries && !written->hasArrays) ||
        file->tree.depthOf(id) + written->depth > JsonReader::maximumDepth || !canTag(written->types))
        return false;
    if (!graftText(id, written->text))
        return false;
    for (const auto& [below, type] : written->types)
        file->types.add(below.empty() ? std::string(path) : joinPath(path, below), type);
    return true;
}

bool JsonDocument::graftText(NodeId id, const std::string& text)
{
    JsonTree& tree = file->tree;
    if (tree.hasRoomFor(text.size()) && tree.getOriginal().size() + text.size() <= JsonReader::maximumSize)
        return JsonReader(tree, file->members).readInto(id, tree.keep(text));
    Span value;
    std::string bytes = JsonWriter(tree).writeLocating(id, value);
    bytes.replace(value.offset, value.length, text);
    return parse(std::move(bytes)).ok();
}

std::optional<Outcome> JsonDocument::insertElement(std::string_view path, const std::vector<Entry>& entries)
{
    const bool isValue = entries.size() == 1 && entries.front().path.empty();
    std::string before = isValue ? std::string() : getBytes();
    auto outcome = JsonElements(*file).insert(path, isValue ? entries.front().value
                                                            : Value{Type::Integer, std::int64_t(0)});
    if (!outcome || !outcome->ok() || isValue || graft(path, entries))
        return outcome;
    parseAgain(before);
    outcome->error = JsonText::explainRefusal(entries);
    if (!outcome->ok())
        return outcome;
    std::size_t refusedEntry = 0;
    outcome = JsonElements(*file).insert(path, Value());
    if (outcome->ok())
        outcome = Document::insertAll(path, entries, refusedEntry);
    if (!outcome->ok())
        parseAgain(std::move(before));
    return outcome;
}

std::optional<Outcome> JsonDocument::moveElement(std::string_view path, std::string_view newPath)
{
    return JsonElements(*file).move(path, newPath);
}

std::optional<Outcome> JsonDocument::rename(std::string_view path, std::string_view name)
{
    return JsonSubtrees(*file).rename(path, name);
}

std::optional<Excerpt> JsonDocument::excerpt(std::string_view path) const
{
    return JsonSubtrees(*file).excerpt(path);
}

bool JsonDocument::hasComments(std::string_view path) const
{
    return JsonSubtrees(*file).hasComments(path);
}

bool JsonDocument::insertExcerpt(std::string_view path, const Excerpt& excerpt)
{
    if (path.empty())
        return file->tree.getRoot() == noNode && becomeExcerpt(excerpt);
    std::string before = getBytes();
    const auto text = JsonSubtrees(*file).insertPlaceholder(path, excerpt);
    if (!text)
        return false;
    const NodeId element = JsonElements(*file).find(path);
    const NodeId id = element == noNode ? file->findValueNode(path) : element;
    if (text->front() != '{' && text->front() != '[') {
        file->editor.setContent(id, {kindOfJson(text->front()), *text, {}, {}});
        return true;
    }
    if (graftText(id, *text))
        return true;
    parseAgain(std::move(before));
    return false;
}

// Of an empty document.
bool JsonDocument::becomeExcerpt(const Excerpt& excerpt)
{
    if (!parse(JsonSubtrees(*file).textOfWhole(excerpt)).ok())
        return false;
    const bool isObject = file->tree.node(file->tree.getRoot()).kind == JsonKind::Object;
    if (!excerpt.types.empty() && !isObject) {
        parseAgain({});
        return false;
    }
    for (const auto& [below, type] : excerpt.types)
        file->types.add(below, type);
    return true;
}

Outcome JsonDocument::removeExcerpt(std::string_view path)
{
    const NodeId known = path.empty() ? noNode : file->find(path);
    const NodeId id = known == noNode ? JsonElements(*file).find(path) : known;
    if (id == noNode)
        return remove(path);
    const std::string leading(file->tree.text(id, JsonPart::Leading));
    file->editor.getLayout().dropCommentsAbove(id);
    Outcome outcome = remove(path);
    if (!outcome.ok())
        file->tree.setText(id, JsonPart::Leading, leading);
    return outcome;
}

Outcome JsonDocument::remove(std::string_view path)
{
    if (path.empty())
        return refused(Reason::tr("the whole document cannot be removed"));
    const NodeId known = file->find(path);
    const NodeId id = known == noNode ? JsonElements(*file).find(path) : known;
    if (id == noNode)
        return refused(Reason::tr("there is no entry %1", {quoted(path)}));
    if (file->types.isEmpty() && file->types.wouldReadWithout(id))
        return refused(
            Reason::tr("without it, \"%1\" would be read as the types of other entries", {typesKey}));
    const NodeId parent = file->tree.node(id).parent;
    const bool inArray = file->tree.node(parent).kind == JsonKind::Array;
    file->editor.remove(id);
    if (file->types.isEmpty())
        return {};
    file->types.remove(path);
    file->types.removeBelow(path);
    if (file->tree.node(parent).isList())
        file->types.removeBelow(splitLast(path).parent);
    else
        file->types.moveUp(path, inArray);
    return {};
}

} // namespace Repository::Documents
