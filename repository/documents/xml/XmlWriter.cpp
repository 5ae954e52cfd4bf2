#include "repository/documents/xml/XmlWriter.h"

namespace Repository::Documents {

std::string XmlWriter::write()
{
    text.reserve();
    NodeId id = tree.getRoot();
    while (id != noNode) {
        const NodeId child = open(id);
        id = child == noNode ? close(id) : child;
    }
    text.append(tree.epilogue());
    return text.take();
}

// Writes a node up to its children; gives the first of them.
NodeId XmlWriter::open(NodeId id)
{
    if (isCopied(id)) {
        text.append(tree.originalText(id));
        return noNode;
    }
    append(id, XmlPart::Leading);
    append(id, XmlPart::Label);
    const XmlNode& node = tree.node(id);
    if (node.kind == XmlKind::Element) {
        NodeId child = node.first;
        for (; child != noNode && tree.node(child).kind == XmlKind::Attribute;
             child = tree.node(child).next) {
            open(child);
            append(child, XmlPart::Closing);
        }
        append(id, XmlPart::TagEnd);
        if (child != noNode)
            return child;
    }
    append(id, XmlPart::Front);
    append(id, XmlPart::Value);
    return noNode;
}

// Writes what ends a node, and its parents when it is their last child; gives the node to go on with.
NodeId XmlWriter::close(NodeId id)
{
    while (true) {
        if (!isCopied(id))
            append(id, XmlPart::Closing);
        const XmlNode& node = tree.node(id);
        if (node.parent == noNode || node.next != noNode)
            return node.next;
        id = node.parent;
    }
}

// What nothing has edited is copied with all below it, unless a place in it is looked for.
bool XmlWriter::isCopied(NodeId id) const
{
    const XmlNode& node = tree.node(id);
    return target == noNode && !node.touched && node.kind != XmlKind::Attribute;
}

void XmlWriter::append(NodeId id, XmlPart part)
{
    if (id == target && part == XmlPart::Value)
        location = text.length();
    text.append(tree.text(id, part));
}

} // namespace Repository::Documents
