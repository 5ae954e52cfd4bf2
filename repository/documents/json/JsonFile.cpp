#include "repository/documents/json/JsonFile.h"

#include "repository/documents/common/Refusal.h"
#include "repository/documents/json/JsonContent.h"

namespace Repository::Documents {

using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;

PathMatch JsonFile::match(std::string_view path) const
{
    if (path.empty()) {
        PathMatch whole;
        whole.isPath = true;
        whole.node = tree.getRoot();
        return whole;
    }
    return matchPath(path, tree.getRoot(), [this](NodeId container, std::string_view component) {
        const NodeId child = container == noNode ? noNode : members.find(container, component);
        return child == types.getMember() ? noNode : child;
    });
}

NodeId JsonFile::find(std::string_view path) const
{
    const PathMatch found = match(path);
    return found.isWhole() ? found.node : noNode;
}

NodeId JsonFile::valueNodeOf(NodeId id) const
{
    return tree.node(id).isLeaf() ? id : members.findOwnValue(id);
}

NodeId JsonFile::findValueNode(std::string_view path) const
{
    const NodeId id = find(path);
    return id == noNode ? noNode : valueNodeOf(id);
}

Value JsonFile::read(NodeId valueNode, std::string_view path) const
{
    if (tree.node(valueNode).kind == JsonKind::Array)
        return {Type::StringList, tree.readList(valueNode)};
    const Type tag = types.isEmpty() ? Type::Group : types.find(path);
    return readContent(tree.node(valueNode).kind, tree.text(valueNode, JsonPart::Value), tag);
}

std::size_t JsonFile::depthOf(NodeId id) const
{
    std::size_t depth = 0;
    while (id != noNode && (id = tree.node(id).parent) != noNode)
        ++depth;
    return depth;
}

Outcome JsonFile::checkNoTypes(NodeId object, NodeId member, std::string_view text) const
{
    if (!types.wouldReadWith(object, member, text))
        return {};
    return refused("with " + quoted(text) + " in it, \"" + std::string(typesKey) +
                   "\" would be read as the types of other entries");
}

} // namespace Repository::Documents
