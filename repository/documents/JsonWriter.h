#pragma once

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

private:
    bool open(JsonNodeId id);
    JsonNodeId close(JsonNodeId id);
    void append(std::string_view text);
    void append(char c);
    void flush();

    const JsonTree& tree;
    std::string_view run; // of the original, not yet in `written`
    std::string written;
};

} // namespace Repository::Documents
