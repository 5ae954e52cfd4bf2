#pragma once

#include "repository/documents/common/Document.h"
#include "repository/documents/common/StretchWriter.h"
#include "repository/documents/json/JsonTree.h"

#include <string>

namespace Repository::Documents {

// Writes a tree, all of it or one value.
class JsonWriter
{
public:
    explicit JsonWriter(const JsonTree& syntaxTree);

    std::string write();

    // Only the value of a scalar or a list.
    std::string writeValue(JsonNodeId id);

    // Where the value of a scalar or a list stands in the whole text.
    Span locateValue(JsonNodeId id);

    // Both at once.
    std::string writeLocating(JsonNodeId id, Span& value);

private:
    bool open(JsonNodeId id);
    bool openValue(JsonNodeId id);
    JsonNodeId close(JsonNodeId id, JsonNodeId until = noJsonNode);
    void appendClosing(JsonNodeId id);
    void noteEnd(JsonNodeId id);

    const JsonTree& tree;
    JsonNodeId located = noJsonNode; // whose value's place goes into span
    Span span;
    StretchWriter text;
};

} // namespace Repository::Documents
