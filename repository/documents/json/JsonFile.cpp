#include "repository/documents/json/JsonFile.h"

#include "repository/documents/json/JsonContent.h"

namespace Repository::Documents {

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

Outcome JsonFile::checkNoTypes(NodeId object, NodeId member, std::string_view text) const
{
    if (!types.wouldReadWith(object, member, text))
        return {};
    return refused(Reason::tr("with %1 in it, \"%2\" would be read as the types of other entries",
                              {quoted(text), typesKey}));
}

} // namespace Repository::Documents
