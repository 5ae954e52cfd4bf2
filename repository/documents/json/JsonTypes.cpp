#include "repository/documents/json/JsonTypes.h"

#include "repository/documents/common/KeyText.h"
#include "repository/documents/common/TypeMark.h"
#include "repository/documents/json/JsonScalar.h"

#include <charconv>
#include <utility>
#include <vector>

namespace Repository::Documents {

using FrameworkCore::Values::Type;

namespace {

// The name of a sibling when the removed one is gone: its own unless it moves up.
std::string nameAfterRemoval(std::string_view component, std::string_view removed, bool inArray)
{
    if (inArray) {
        std::size_t position = 0;
        std::size_t gone = 0;
        const auto end = component.data() + component.size();
        std::from_chars(removed.data(), removed.data() + removed.size(), gone);
        const auto [stop, error] = std::from_chars(component.data(), end, position);
        const bool later = error == std::errc() && stop == end && position > gone;
        return later ? std::to_string(position - 1) : std::string(component);
    }
    const NumberedComponent sibling = splitNumber(component);
    const NumberedComponent gone = splitNumber(removed);
    const bool later = sibling.name == gone.name && sibling.number > gone.number;
    return later ? joinNumber(sibling.name, sibling.number - 1) : std::string(component);
}

} // namespace

JsonTypes::JsonTypes(JsonTree& syntaxTree, JsonMembers& treeMembers, JsonEditor& treeEditor)
    : tree(syntaxTree), members(treeMembers), editor(treeEditor)
{
}

void JsonTypes::read()
{
    const NodeId found = findOrdinary();
    Marks read = found == noNode ? Marks() : readMarks(found);
    if (read.empty())
        return;
    marks = std::move(read);
    member = found;
    editor.keepLast(member);
}

NodeId JsonTypes::findOrdinary() const
{
    const NodeId root = tree.getRoot();
    if (member != noNode || root == noNode || tree.node(root).kind != JsonKind::Object)
        return noNode;
    const bool isOnly = members.find(root, joinNumber(typesKey, 2)) == noNode;
    return isOnly ? members.find(root, typesKey) : noNode;
}

JsonTypes::Marks JsonTypes::readMarks(NodeId object, NodeId without) const
{
    if (tree.node(object).kind != JsonKind::Object)
        return {};
    Marks read;
    for (NodeId id = tree.node(object).first; id != noNode; id = tree.node(id).next) {
        if (id == without)
            continue;
        std::string path = decodeString(tree.keyLiteral(id));
        const auto type = tree.node(id).kind == JsonKind::Text
                              ? typeNamed(decodeString(tree.text(id, JsonPart::Value)))
                              : std::nullopt;
        if (!type || path == ownValueKey || !read.emplace(std::move(path), Mark{*type, id}).second)
            return {};
    }
    return read;
}

bool JsonTypes::wouldReadWith(NodeId object, NodeId node, std::string_view text) const
{
    const bool isOwnValue = node != noNode && members.isOwnValue(node);
    if (!typeNamed(text) || isOwnValue || object == noNode || object != findOrdinary() ||
        tree.node(object).kind != JsonKind::Object)
        return false;
    const bool isAlone = tree.node(object).count == (node == noNode ? 0U : 1U);
    return isAlone || !readMarks(object, node).empty();
}

bool JsonTypes::wouldReadWithout(NodeId node) const
{
    const NodeId root = tree.getRoot();
    const NodeId parent = tree.node(node).parent;
    if (parent != root)
        return tree.node(parent).parent == root && parent == findOrdinary() &&
               !readMarks(parent, node).empty();
    const NodeId first = members.find(root, typesKey);
    if (first == noNode)
        return false;
    const NodeId second = members.find(root, joinNumber(typesKey, 2));
    if ((node != first && node != second) || second == noNode ||
        members.find(root, joinNumber(typesKey, 3)) != noNode)
        return false;
    return !readMarks(node == first ? second : first).empty();
}

Type JsonTypes::find(std::string_view path) const
{
    const auto mark = marks.find(path);
    return mark == marks.end() ? Type::Group : mark->second.type;
}

void JsonTypes::add(std::string_view path, Type type)
{
    if (member == noNode) {
        member = editor.appendMember(tree.getRoot(), typesKey, 1, {});
        editor.keepLast(member);
    }
    const JsonContent name{JsonKind::Text, encodeString(typeName(type)), {}, {}};
    marks.emplace(path, Mark{type, editor.appendMember(member, path, 1, name)});
}

void JsonTypes::remove(std::string_view path)
{
    const auto mark = marks.find(path);
    if (mark == marks.end())
        return;
    take(mark);
    dropEmptyMember();
}

void JsonTypes::removeBelow(std::string_view path)
{
    if (marks.empty())
        return;
    const std::string begin = joinPath(path, {});
    auto mark = path.empty() ? marks.upper_bound(path) : marks.lower_bound(begin);
    while (mark != marks.end() && std::string_view(mark->first).substr(0, begin.size()) == begin)
        mark = take(mark);
    dropEmptyMember();
}

void JsonTypes::moveUp(std::string_view removedPath, bool inArray)
{
    const PathEnds removed = splitLast(removedPath);
    const std::string begin = removed.parent.empty() ? std::string() : joinPath(removed.parent, {});
    std::vector<std::pair<std::string, Type>> moved;
    auto mark = marks.lower_bound(begin);
    while (mark != marks.end() && std::string_view(mark->first).substr(0, begin.size()) == begin) {
        const std::string_view below = std::string_view(mark->first).substr(begin.size());
        const std::string_view component = below.substr(0, below.find('.'));
        const std::string name = nameAfterRemoval(component, removed.last, inArray);
        if (name == component) {
            ++mark;
            continue;
        }
        moved.emplace_back(begin + name + std::string(below.substr(component.size())), mark->second.type);
        mark = take(mark);
    }
    for (const auto& [path, type] : moved)
        add(path, type);
}

JsonTypes::Marks::iterator JsonTypes::take(Marks::iterator mark)
{
    editor.remove(mark->second.node);
    return marks.erase(mark);
}

void JsonTypes::dropEmptyMember()
{
    if (!marks.empty() || member == noNode)
        return;
    editor.remove(member);
    member = noNode;
    editor.keepLast(noNode);
}

} // namespace Repository::Documents
