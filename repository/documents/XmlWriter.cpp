#include "repository/documents/XmlWriter.h"

#include <functional>

namespace Repository::Documents {

XmlWriter::XmlWriter(const XmlTree& syntaxTree, XmlNodeId located) : tree(syntaxTree), target(located)
{
}

std::string XmlWriter::write()
{
    written.reserve(tree.getOriginal().size() + tree.getOriginal().size() / 16);
    XmlNodeId id = tree.getRoot();
    while (id != noXmlNode) {
        const XmlNodeId child = open(id);
        id = child == noXmlNode ? close(id) : child;
    }
    append(tree.epilogue());
    flush();
    return std::move(written);
}

// Writes a node up to its children; gives the first of them.
XmlNodeId XmlWriter::open(XmlNodeId id)
{
    if (isCopied(id)) {
        append(tree.originalText(id));
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
        location = written.size() + run.size();
    append(tree.text(id, part));
}

void XmlWriter::append(std::string_view text)
{
    const std::string& original = tree.getOriginal();
    const std::less<const char*> before;
    if (text.empty())
        return;
    if (before(text.data(), original.data()) || !before(text.data(), original.data() + original.size())) {
        flush();
        written.append(text);
        return;
    }
    if (run.data() + run.size() != text.data()) {
        flush();
        run = text.substr(0, 0);
    }
    run = std::string_view(run.data(), run.size() + text.size());
}

void XmlWriter::flush()
{
    written.append(run);
    run = {};
}

} // namespace Repository::Documents
