#include "repository/documents/xml/XmlFile.h"

#include "repository/documents/xml/XmlComponent.h"

namespace Repository::Documents {

PathMatch XmlFile::match(std::string_view path)
{
    return matchPath(path, noNode, [this](NodeId parent, std::string_view component) {
        return findChild(parent, component);
    });
}

NodeId XmlFile::find(std::string_view path)
{
    const PathMatch found = match(path);
    return found.isWhole() ? found.node : noNode;
}

NodeId XmlFile::findChild(NodeId parent, std::string_view component)
{
    const auto step = readXmlComponent(component);
    const auto name = step ? tree.getNames().find(step->name) : std::nullopt;
    return name ? tree.find(parent, {step->kind, *name, step->number}) : noNode;
}

void XmlFile::appendComponent(std::string& path, NodeId id) const
{
    const XmlNode& node = tree.node(id);
    if (!path.empty())
        path += '.';
    if (node.kind == XmlKind::Attribute)
        path += '@';
    path += node.kind == XmlKind::Text ? xmlTextComponent : tree.getNames().componentOf(node.name);
    if (node.number > 1)
        path += '[' + std::to_string(node.number) + ']';
}

} // namespace Repository::Documents
