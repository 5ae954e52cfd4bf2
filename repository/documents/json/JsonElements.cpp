#include "repository/documents/json/JsonElements.h"

#include "repository/documents/common/ArrayGroups.h"
#include "repository/documents/json/JsonInsertion.h"
#include "repository/documents/json/JsonReader.h"

namespace Repository::Documents {

NodeId JsonElements::arrayAt(std::string_view path)
{
    const NodeId id = file.find(path);
    if (id == noNode || file.tree.node(id).kind != JsonKind::Array)
        return noNode;
    file.tree.unfold(id);
    return id;
}

NodeId JsonElements::find(std::string_view path)
{
    const PathEnds ends = splitLast(path);
    const NodeId array = path.empty() ? noNode : arrayAt(ends.parent);
    const auto position = readPosition(ends.last);
    return array == noNode || !position ? noNode : file.members.elementAt(array, *position);
}

std::optional<Outcome> JsonElements::insert(std::string_view path, const Value& value)
{
    const PathEnds ends = splitLast(path);
    const NodeId array = arrayAt(ends.parent);
    return path.empty() || array == noNode || !readPosition(ends.last)
               ? std::nullopt
               : std::optional(insertInto(array, path, value));
}

Outcome JsonElements::insertInto(NodeId array, std::string_view path, const Value& value)
{
    JsonInsertion insertion(file);
    bool needsTag = false;
    const JsonContent wanted = insertion.contentOf(value, needsTag);
    if (needsTag && wanted.error.empty() && file.tree.node(array).isList())
        return refused(Reason::tr("%1 would be a list of texts, in which json cannot say that %2 is %3",
                                  {quoted(splitLast(path).parent), quoted(path), describeType(value.type)}));
    const std::uint32_t position = *readPosition(splitLast(path).last);
    const std::uint32_t count = file.tree.node(array).count;
    const bool isContainer = wanted.kind == JsonKind::Object || wanted.kind == JsonKind::Array;
    if (!wanted.error.empty())
        return refused(wanted.error);
    if (position > count)
        return beyondEnd(path, count);
    if (file.tree.depthOf(array) + (isContainer ? 2 : 1) > JsonReader::maximumDepth)
        return refused(Reason::tr("%1 lies too deep", {quoted(path)}));
    const NodeId next = position == count ? noNode : file.members.elementAt(array, position);
    if (position < count)
        file.types.moveDown(path);
    file.editor.insertElement(
        array, next == noNode ? file.tree.node(array).last : file.tree.node(next).previous, wanted);
    if (needsTag)
        file.types.add(path, value.type);
    return {};
}

std::optional<Outcome> JsonElements::move(std::string_view path, std::string_view newPath)
{
    const PathEnds from = splitLast(path);
    const PathEnds to = splitLast(newPath);
    const auto oldPosition = readPosition(from.last);
    const auto newPosition = readPosition(to.last);
    const NodeId array = from.parent == to.parent && !path.empty() ? arrayAt(from.parent) : noNode;
    if (array == noNode || !oldPosition || !newPosition)
        return {};
    const NodeId id = file.members.elementAt(array, *oldPosition);
    const NodeId there = file.members.elementAt(array, *newPosition);
    if (id == noNode)
        return {};
    if (there == noNode)
        return beyondEnd(newPath, file.tree.node(array).count - 1);
    if (id == there)
        return Outcome();
    const auto types = file.types.findBelow(path);
    file.types.remove(path);
    file.types.removeBelow(path);
    file.types.moveUp(path, true);
    file.types.moveDown(newPath);
    file.editor.moveElement(id, *newPosition > *oldPosition ? there : file.tree.node(there).previous);
    for (const auto& [below, type] : types)
        file.types.add(below.empty() ? std::string(newPath) : joinPath(newPath, below), type);
    return Outcome();
}

} // namespace Repository::Documents
