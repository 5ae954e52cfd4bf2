#include "repository/documents/xml/XmlWriter.h"

namespace Repository::Documents {

XmlWriter::XmlWriter(const XmlTree& syntaxTree, XmlNodeId located)
    : tree(syntaxTree), target(located), text(syntaxTree.getOriginal())
{
}

std::string XmlWriter::write()
{
    text.reserve();
    XmlNodeId id = tree.getRoot();
    while (id != noXmlNode) {
        const XmlNodeId child = open(id);
        id = child == noXmlNode ? close(id) : child;
    }
    text.append(tree.epilogue());
    return text.take();
}

// Writes a node up to its children; gives the first of them.
XmlNodeId XmlWriter::open(XmlNodeId id)
{
    if (isCopied(id)) {
        text.append(tree.originalText(id));
        return noXmlNode;
    }
    append(id, XmlPart::Lead);
    append(id, XmlPart::Label);
    const XmlNode& node = tree.node(id);
    if (node.kind == XmlKind::Element) {
        XmlNodeId child = node.first;
        for (; child != noXmlNode && tree.node(child).kind == XmlKind::Attribute;
             child = tree.node(child).next) {
            open(child);
            append(child, XmlPart::Closing);
        }
        append(id, XmlPart::TagEnd);
        if (child != noXmlNode)
            return child;
    }
    append(id, XmlPart::Front);
    append(id, XmlPart::Value);
    return noXmlNode;
}

// Writes what ends a node, and its parents when it is their last child; gives the node to go on with.
XmlNodeId XmlWriter::close(XmlNodeId id)
{
    while (true) {
        if (!isCopied(id))
            append(id, XmlPart::Closing);
        const XmlNode& node = tree.node(id);
        if (node.parent == noXmlNode || node.next != noXmlNode)
            return node.next;
        id = node.parent;
    }
}

// What nothing has edited is copied with all below it, unless a place in it is looked for.
bool XmlWriter::isCopied(XmlNodeId id) const
{
    const XmlNode& node = tree.node(id);
    return target == noXmlNode && !node.touched && node.kind != XmlKind::Attribute;
}

void XmlWriter::append(XmlNodeId id, XmlPart part)
{
    if (id == target && part == XmlPart::Value)
        location = text.length();
    text.append(tree.text(id, part));
}

} // namespace Repository::Documents
