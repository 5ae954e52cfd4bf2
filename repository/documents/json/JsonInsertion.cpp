#include "repository/documents/json/JsonInsertion.h"

#include "repository/documents/common/KeyRefusal.h"
#include "repository/documents/json/JsonReader.h"

#include <algorithm>

namespace Repository::Documents {

Outcome JsonInsertion::insert(std::string_view path, const Value& value)
{
    const PathMatch place = file.match(path);
    bool needsTag = false;
    const JsonContent wanted = contentOf(value, needsTag);
    if (!wanted.error.empty())
        return refused(wanted.error);
    Outcome outcome = check(path, place, wanted);
    if (outcome.ok() && place.missing.size() == 1 && value.type == Type::String)
        outcome = file.checkNoTypes(place.node, noNode, std::get<std::string>(value.data));
    if (!outcome.ok())
        return outcome;
    types.remove(path); // said of an entry that was not there
    insertAt(place, wanted);
    if (needsTag)
        types.add(path, value.type);
    return {};
}

JsonContent JsonInsertion::contentOf(const Value& value, bool& needsTag) const
{
    JsonContent content = toContent(value);
    needsTag = !holds(content, Type::Group, value);
    if (!needsTag)
        return content;
    content = toTaggedContent(value);
    if (content.error.empty())
        content.error = checkTag(value.type).error;
    return content;
}

Outcome JsonInsertion::checkTag(Type tagged) const
{
    const NodeId root = tree.getRoot();
    const std::string type(describeType(tagged));
    if (root != noNode && tree.node(root).kind != JsonKind::Object)
        return refused(Reason::tr(
            "json has no form for %1, and only in a file whose root is an object \"%2\" can say what it is",
            {type, typesKey}));
    if (types.getMember() == noNode && root != noNode && members.find(root, typesKey) != noNode)
        return refused(Reason::tr("json has no form for %1, and \"%2\", which could say what it is, holds "
                                  "something else in this file",
                                  {type, typesKey}));
    return {};
}

Outcome JsonInsertion::check(std::string_view path, const PathMatch& place, const JsonContent& wanted) const
{
    if (!place.isPath)
        return refused(
            Reason::tr("%1 is not a path: its parts between the dots must not be empty", {quoted(path)}));
    const bool isContainer = wanted.kind == JsonKind::Object || wanted.kind == JsonKind::Array;
    if (place.missing.empty() && place.node != noNode) {
        const bool isGroup = file.valueNodeOf(place.node) == noNode;
        if (!isGroup || wanted.kind == JsonKind::Object)
            return refused(Reason::tr("there is already an entry %1", {quoted(path)}));
        if (tree.node(place.node).kind == JsonKind::Array)
            return refused(
                Reason::tr("%1 is an array, which cannot have a value of its own", {quoted(path)}));
    }
    const bool wraps = place.node != noNode && tree.node(place.node).isLeaf();
    const std::size_t below = std::max<std::size_t>(place.missing.size(), 1) + (isContainer ? 1 : 0);
    if (tree.depthOf(place.node) + std::max<std::size_t>(below, wraps ? 2 : 0) > JsonReader::maximumDepth)
        return refused(
            Reason::tr("%1 lies too deep: more than %2 objects and arrays would lie within each other",
                       {quoted(path), std::to_string(JsonReader::maximumDepth)}));
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

Outcome JsonInsertion::checkName(NodeId container, std::string_view component) const
{
    const bool inArray = container != noNode && tree.node(container).kind == JsonKind::Array;
    if (inArray) {
        const std::string next = std::to_string(tree.node(container).count);
        if (component != next)
            return refused(Reason::tr("%1 cannot be added to an array, whose next element is %2",
                                      {quoted(component), next}));
        return {};
    }
    if (component.empty()) {
        if (members.find(container, encodeKey(ownValueKey)) != noNode)
            return refused(
                Reason::tr("a group is in the member \"#value\", where the value of its own would go"));
        return {};
    }
    const NumberedComponent name = splitNumber(component);
    const auto key = decodeKey(name.name);
    if (!key)
        return refused(explainNoKey(component));
    if (!isUtf8(*key))
        return refused(Reason::tr("the key %1 is not valid UTF-8, which json demands", {quoted(component)}));
    if (*key == ownValueKey)
        return refused(Reason::tr("the key \"#value\" is kept for values of groups"));
    if (*key == typesKey && (container == noNode || container == tree.getRoot()))
        return refused(Reason::tr("the key \"$types\" is kept for the types of entries"));
    if (name.number > 1)
        return refused(Reason::tr("the key %1 would be in one object twice, of which other readers see one",
                                  {quoted(*key)}));
    return {};
}

void JsonInsertion::insertAt(const PathMatch& place, const JsonContent& wanted)
{
    if (tree.getRoot() == noNode)
        editor.createRoot();
    NodeId container = place.node == noNode ? tree.getRoot() : place.node;
    if (place.missing.empty()) {
        if (wanted.kind != JsonKind::Object)
            editor.appendMember(container, ownValueKey, wanted);
        return;
    }
    if (tree.node(container).isLeaf())
        editor.wrap(container);
    for (std::size_t i = 0; i < place.missing.size(); ++i) {
        const JsonContent inserted = i + 1 < place.missing.size() ? JsonContent() : wanted;
        if (tree.node(container).kind == JsonKind::Array) {
            container = editor.insertElement(container, tree.node(container).last, inserted);
            continue;
        }
        container = editor.appendMember(container, *decodeKey(place.missing[i]), inserted);
    }
}

} // namespace Repository::Documents
