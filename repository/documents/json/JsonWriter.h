#pragma once

#include "repository/documents/common/Document.h"
#include "repository/documents/common/SpanWriter.h"
#include "repository/documents/json/JsonTree.h"

#include <string>

namespace Repository::Documents {

// Writes a tree, all of it or one value.
class JsonWriter
{
public:
    explicit JsonWriter(const JsonTree& syntaxTree) : tree(syntaxTree), text(syntaxTree.getOriginal()) {}

    std::string write();

    // Only the value of a scalar or a list.
    std::string writeValue(NodeId id);

    // Where the value of a scalar or a list is in the whole text.
    Span locateValue(NodeId id);

    // Both at once.
    std::string writeLocating(NodeId id, Span& value);

private:
    bool open(NodeId id);
    bool openValue(NodeId id);
    NodeId close(NodeId id, NodeId until = noNode);
    void appendClosing(NodeId id);
    void noteEnd(NodeId id);

    const JsonTree& tree;
    NodeId located = noNode; // whose value's place goes into span
    Span span;
    SpanWriter text;
};

} // namespace Repository::Documents
