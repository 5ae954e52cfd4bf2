#include "repository/documents/xml/XmlFile.h"

#include "repository/documents/xml/XmlReader.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool isPlainPart(char c)
{
    return isLetter(c) || (c >= '0' && c <= '9') || c == '-' || c == '.';
}

} // namespace

std::optional<XmlComponent> readXmlComponent(std::string_view component)
{
    XmlComponent read;
    const NumberedComponent numbered = splitNumber(component);
    if (numbered.number > UINT32_MAX)
        return std::nullopt;
    read.number = static_cast<std::uint32_t>(numbered.number);
    if (numbered.name == xmlTextComponent) {
        read.kind = XmlKind::Text;
        return read;
    }
    const bool isAttribute = !component.empty() && component[0] == '@';
    if (isAttribute && read.number > 1)
        return std::nullopt;
    const auto name = decodeKey(numbered.name.substr(isAttribute ? 1 : 0));
    if (!name || name->empty())
        return std::nullopt;
    read.kind = isAttribute ? XmlKind::Attribute : XmlKind::Element;
    read.name = *name;
    return read;
}

bool isXmlName(std::string_view name)
{
    const std::size_t colon = name.find(':');
    if (colon != std::string_view::npos)
        return name.find(':', colon + 1) == std::string_view::npos && isXmlName(name.substr(0, colon)) &&
               isXmlName(name.substr(colon + 1));
    if (!name.empty() && isLetter(name[0]) && std::all_of(name.begin(), name.end(), isPlainPart))
        return true;
    if (name.find_first_of(std::string_view(" \t\r\n/><=\"'&\0", 12)) != std::string_view::npos)
        return false;
    // Which letters of the world's scripts may be in a name, the parser knows.
    XmlTree sample('<' + std::string(name) + "/>");
    XmlEntities none;
    return XmlReader(sample, none).read().ok() && sample.getRoot() != noNode;
}

PathMatch XmlFile::match(std::string_view path)
{
    return matchPath(path, noNode, [this](NodeId parent, std::string_view component) {
        return findChild(parent, component);
    });
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
    appendNumber(path, node.number);
}

} // namespace Repository::Documents
