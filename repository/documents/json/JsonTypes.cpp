#include "repository/documents/json/JsonTypes.h"

#include "repository/documents/common/TypeTag.h"
#include "repository/documents/json/JsonScalar.h"

#include <utility>
#include <vector>

namespace Repository::Documents {

namespace {

// The name of a sibling when the removed one is gone: its own unless it moves up.
std::string nameAfterRemoval(std::string_view component, std::string_view removed, bool inArray)
{
    if (inArray) {
        const auto position = readPosition(component);
        const bool later = position && *position > readPosition(removed).value_or(0);
        return later ? std::to_string(*position - 1) : std::string(component);
    }
    const NumberedComponent sibling = splitNumber(component);
    const NumberedComponent gone = splitNumber(removed);
    const bool later = sibling.name == gone.name && sibling.number > gone.number;
    return later ? joinNumber(sibling.name, sibling.number - 1) : std::string(component);
}

JsonContent nameOf(Type type)
{
    return {JsonKind::Text, encodeString(rowOf(type).name), {}, {}};
}

} // namespace

void JsonTypes::read()
{
    const NodeId found = findOrdinary();
    Tags read = found == noNode ? Tags() : readTags(found);
    if (read.empty())
        return;
    tags = std::move(read);
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

JsonTypes::Tags JsonTypes::readTags(NodeId object, NodeId without) const
{
    if (tree.node(object).kind != JsonKind::Object)
        return {};
    Tags read;
    for (NodeId id = tree.node(object).first; id != noNode; id = tree.node(id).next) {
        if (id == without)
            continue;
        std::string path = decodeString(tree.keyLiteral(id));
        const auto type = tree.node(id).kind == JsonKind::Text
                              ? typeNamed(decodeString(tree.text(id, JsonPart::Value)))
                              : std::nullopt;
        if (!type || path == ownValueKey || !read.emplace(std::move(path), Tag{*type, id}).second)
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
    const Tags others = readTags(object, node);
    const bool isOnly = node == noNode || others.count(decodeString(tree.keyLiteral(node))) == 0;
    return isAlone || (!others.empty() && isOnly);
}

bool JsonTypes::wouldReadWithout(NodeId node) const
{
    const NodeId root = tree.getRoot();
    const NodeId parent = tree.node(node).parent;
    if (parent != root)
        return tree.node(parent).parent == root && parent == findOrdinary() &&
               !readTags(parent, node).empty();
    const NodeId first = members.find(root, typesKey);
    if (first == noNode)
        return false;
    const NodeId second = members.find(root, joinNumber(typesKey, 2));
    if ((node != first && node != second) || second == noNode ||
        members.find(root, joinNumber(typesKey, 3)) != noNode)
        return false;
    return !readTags(node == first ? second : first).empty();
}

Type JsonTypes::find(std::string_view path) const
{
    const auto tag = tags.find(path);
    return tag == tags.end() ? Type::Group : tag->second.type;
}

void JsonTypes::add(std::string_view path, Type type)
{
    if (member == noNode) {
        member = editor.appendMember(tree.getRoot(), typesKey, {});
        editor.keepLast(member);
    }
    tags.emplace(path, Tag{type, editor.appendMember(member, path, nameOf(type))});
}

void JsonTypes::set(std::string_view path, Type type)
{
    if (type == Type::Group)
        return remove(path);
    Tag& tag = tags.find(path)->second;
    tag.type = type;
    editor.setContent(tag.node, nameOf(type));
}

void JsonTypes::remove(std::string_view path)
{
    const auto tag = tags.find(path);
    if (tag == tags.end())
        return;
    take(tag);
    dropEmptyMember();
}

void JsonTypes::removeBelow(std::string_view path)
{
    if (tags.empty())
        return;
    const std::string begin = joinPath(path, {});
    auto tag = path.empty() ? tags.upper_bound(path) : tags.lower_bound(begin);
    while (tag != tags.end() && std::string_view(tag->first).substr(0, begin.size()) == begin)
        tag = take(tag);
    dropEmptyMember();
}

std::vector<std::pair<std::string, Type>> JsonTypes::findBelow(std::string_view path) const
{
    std::vector<std::pair<std::string, Type>> found;
    const std::string begin = joinPath(path, {});
    for (auto tag = tags.lower_bound(path); tag != tags.end() && startsWith(tag->first, path); ++tag) {
        if (tag->first == path)
            found.emplace_back(std::string(), tag->second.type);
        else if (startsWith(tag->first, begin))
            found.emplace_back(tag->first.substr(begin.size()), tag->second.type);
    }
    return found;
}

void JsonTypes::rename(std::string_view path, std::string_view newPath)
{
    for (const auto& [below, type] : findBelow(path)) {
        const auto tag = tags.find(below.empty() ? std::string(path) : joinPath(path, below));
        std::string renamed = below.empty() ? std::string(newPath) : joinPath(newPath, below);
        const Tag found = tag->second;
        tags.erase(tag);
        if (const auto old = tags.find(renamed); old != tags.end()) // said of an entry that was not there
            take(old);
        editor.rename(found.node, renamed);
        tags.emplace(std::move(renamed), found);
    }
}

void JsonTypes::moveUp(std::string_view removedPath, bool inArray)
{
    const std::string_view removed = splitLast(removedPath).last;
    renameSiblings(removedPath,
                   [&](std::string_view component) { return nameAfterRemoval(component, removed, inArray); });
}

void JsonTypes::moveDown(std::string_view insertedPath)
{
    const auto inserted = readPosition(splitLast(insertedPath).last);
    renameSiblings(insertedPath, [&](std::string_view component) {
        const auto position = readPosition(component);
        const bool later = position && *position >= inserted.value_or(0);
        return later ? std::to_string(*position + 1) : std::string(component);
    });
}

void JsonTypes::renameSiblings(std::string_view path,
                               const std::function<std::string(std::string_view component)>& rename)
{
    const std::string_view parent = splitLast(path).parent;
    const std::string begin = parent.empty() ? std::string() : joinPath(parent, {});
    std::vector<std::pair<std::string, Type>> moved;
    auto tag = tags.lower_bound(begin);
    while (tag != tags.end() && std::string_view(tag->first).substr(0, begin.size()) == begin) {
        const std::string_view below = std::string_view(tag->first).substr(begin.size());
        const std::string_view component = below.substr(0, below.find('.'));
        const std::string name = rename(component);
        if (name == component) {
            ++tag;
            continue;
        }
        moved.emplace_back(begin + name + std::string(below.substr(component.size())), tag->second.type);
        tag = take(tag);
    }
    for (const auto& [renamed, type] : moved)
        add(renamed, type);
}

JsonTypes::Tags::iterator JsonTypes::take(Tags::iterator tag)
{
    editor.remove(tag->second.node);
    return tags.erase(tag);
}

void JsonTypes::dropEmptyMember()
{
    if (!tags.empty() || member == noNode)
        return;
    editor.remove(member);
    member = noNode;
    editor.keepLast(noNode);
}

} // namespace Repository::Documents
