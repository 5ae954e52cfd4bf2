#include "repository/documents/JsonWriter.h"

#include <functional>

namespace Repository::Documents {

JsonWriter::JsonWriter(const JsonTree& syntaxTree) : tree(syntaxTree)
{
}

std::string JsonWriter::write()
{
    written.reserve(tree.getOriginal().size() + tree.getOriginal().size() / 16);
    JsonNodeId id = tree.getRoot();
    while (id != noJsonNode)
        id = open(id) ? tree.node(id).first : close(id);
    flush();
    return std::move(written);
}

std::string JsonWriter::writeValue(JsonNodeId id)
{
    JsonNodeId within = openValue(id) ? tree.node(id).first : noJsonNode;
    while (within != noJsonNode)
        within = open(within) ? tree.node(within).first : close(within, id);
    flush();
    return std::move(written);
}

Span JsonWriter::locateValue(JsonNodeId id)
{
    // What nothing has edited is written in one go.
    located = id;
    for (JsonNodeId above = id; above != noJsonNode && !tree.node(above).touched;
         above = tree.node(above).parent)
        located = above;
    write();
    if (located == id)
        return span;
    const JsonNode& node = tree.node(id);
    return {span.offset + node.value - tree.node(located).value, node.valueEnd - node.value};
}

// Writes a node up to its children; true when there are some to go on with.
bool JsonWriter::open(JsonNodeId id)
{
    append(tree.text(id, JsonPart::Lead));
    append(tree.text(id, JsonPart::Label));
    return openValue(id);
}

bool JsonWriter::openValue(JsonNodeId id)
{
    if (id == located)
        span.offset = length();
    const JsonNode& node = tree.node(id);
    if (!node.isContainer() || node.folded || !node.touched) {
        append(tree.text(id, JsonPart::Value));
    } else {
        append(node.kind == JsonKind::Object ? '{' : '[');
        if (node.first != noJsonNode)
            return true;
        appendClosing(id);
    }
    noteEnd(id);
    return false;
}

void JsonWriter::appendClosing(JsonNodeId id)
{
    append(tree.text(id, JsonPart::Closing));
    append(tree.node(id).kind == JsonKind::Object ? '}' : ']');
}

void JsonWriter::noteEnd(JsonNodeId id)
{
    if (id == located)
        span.length = length() - span.offset;
}

// Writes what follows a node, and its parents' ends when it is their last child; gives the node to go on
// with, none behind the end of the node `until`.
JsonNodeId JsonWriter::close(JsonNodeId id, JsonNodeId until)
{
    while (true) {
        append(tree.text(id, JsonPart::Tail));
        const JsonNode& node = tree.node(id);
        if (node.next != noJsonNode) {
            append(',');
            return node.next;
        }
        if (node.parent == noJsonNode)
            return noJsonNode;
        id = node.parent;
        if (tree.node(id).trailingComma)
            append(',');
        appendClosing(id);
        noteEnd(id);
        if (id == until)
            return noJsonNode;
    }
}

void JsonWriter::append(std::string_view text)
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

// A comma or bracket: it continues the run when the original has the same there.
void JsonWriter::append(char c)
{
    const std::string& original = tree.getOriginal();
    const char* const next = run.data() + run.size();
    if (!run.empty() && next != original.data() + original.size() && *next == c) {
        run = std::string_view(run.data(), run.size() + 1);
        return;
    }
    flush();
    written += c;
}

void JsonWriter::flush()
{
    written.append(run);
    run = {};
}

} // namespace Repository::Documents
