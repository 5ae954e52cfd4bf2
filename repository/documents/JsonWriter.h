#pragma once

#include "repository/documents/Document.h"
#include "repository/documents/JsonTree.h"

#include <string>
#include <string_view>

namespace Repository::Documents {

// Writes a tree. Neighbouring pieces of the original text are copied in one go, so that the few edits of a
// large file cost little more than copying it.
class JsonWriter
{
public:
    explicit JsonWriter(const JsonTree& syntaxTree);

    std::string write();

    // Only the value of a scalar or a list.
    std::string writeValue(JsonNodeId id);

    // Where the value of a scalar or a list stands in the whole text.
    Span locateValue(JsonNodeId id);

private:
    std::size_t length() const { return written.size() + run.size(); }
    bool open(JsonNodeId id);
    bool openValue(JsonNodeId id);
    JsonNodeId close(JsonNodeId id, JsonNodeId until = noJsonNode);
    void appendClosing(JsonNodeId id);
    void noteEnd(JsonNodeId id);
    void append(std::string_view text);
    void append(char c);
    void flush();

    const JsonTree& tree;
    JsonNodeId located = noJsonNode; // whose value's place goes into span
    Span span;
    std::string_view run; // of the original, not yet in `written`
    std::string written;
};

} // namespace Repository::Documents
