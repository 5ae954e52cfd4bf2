#include "repository/documents/json/JsonWriter.h"

namespace Repository::Documents {

std::string JsonWriter::write()
{
    text.reserve();
    NodeId id = tree.getRoot();
    while (id != noNode)
        id = open(id) ? tree.node(id).first : close(id);
    return text.take();
}

std::string JsonWriter::writeValue(NodeId id)
{
    NodeId within = openValue(id) ? tree.node(id).first : noNode;
    while (within != noNode)
        within = open(within) ? tree.node(within).first : close(within, id);
    return text.take();
}

Span JsonWriter::locateValue(NodeId id)
{
    Span value;
    writeLocating(id, value);
    return value;
}

std::string JsonWriter::writeLocating(NodeId id, Span& value)
{
    // What nothing has edited is written in one go.
    located = id;
    for (NodeId above = id; above != noNode && !tree.node(above).touched; above = tree.node(above).parent)
        located = above;
    std::string whole = write();
    const JsonNode& node = tree.node(id);
    value = span;
    if (located != id)
        value = {span.offset + node.value - tree.node(located).value, node.valueEnd - node.value};
    return whole;
}

// Writes a node up to its children; true when there are some to go on with.
bool JsonWriter::open(NodeId id)
{
    text.append(tree.text(id, JsonPart::Leading));
    text.append(tree.text(id, JsonPart::Label));
    return openValue(id);
}

bool JsonWriter::openValue(NodeId id)
{
    if (id == located)
        span.offset = text.length();
    const JsonNode& node = tree.node(id);
    if (!node.isContainer() || node.folded || !node.touched) {
        text.append(tree.text(id, JsonPart::Value));
    } else {
        text.append(node.kind == JsonKind::Object ? '{' : '[');
        if (node.first != noNode)
            return true;
        appendClosing(id);
    }
    noteEnd(id);
    return false;
}

void JsonWriter::appendClosing(NodeId id)
{
    text.append(tree.text(id, JsonPart::Closing));
    text.append(tree.node(id).kind == JsonKind::Object ? '}' : ']');
}

void JsonWriter::noteEnd(NodeId id)
{
    if (id == located)
        span.length = text.length() - span.offset;
}

// Ends a node, and its parents after their last child; gives the next node, none after the end of `until`.
NodeId JsonWriter::close(NodeId id, NodeId until)
{
    while (true) {
        text.append(tree.text(id, JsonPart::Trailing));
        const JsonNode& node = tree.node(id);
        if (node.next != noNode) {
            text.append(',');
            return node.next;
        }
        if (node.parent == noNode)
            return noNode;
        id = node.parent;
        if (tree.node(id).trailingComma)
            text.append(',');
        appendClosing(id);
        noteEnd(id);
        if (id == until)
            return noNode;
    }
}

} // namespace Repository::Documents
