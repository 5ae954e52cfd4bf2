#pragma once

#include "repository/documents/common/SyntaxTree.h"

#include <cstddef>
#include <cstdint>

namespace Repository::Documents {

enum class JsonKind : std::uint8_t { Object, Array, Text, Number, True, False, Null };

// The parts of a node in the order of the file. A comma separates siblings.
enum class JsonPart : std::uint8_t {
    Leading, // blanks and comments after the comma or bracket before
    Label,   // in an object the key, the colon and what is around it, up to the value
    Value,   // of a scalar or a folded array; of any other container the opening bracket
    Closing, // of a container: what is before its closing bracket after the last comma or its opening
    Trailing // blanks and comments up to the next comma or bracket
};
constexpr std::size_t jsonPartCount = 5;

// A value with its key. The numbers up to `end` are offsets in the original text where parts begin.
struct JsonNode : SyntaxNode
{
    JsonKind kind = JsonKind::Null;
    bool folded : 1;          // an array of texts whose elements have no nodes until they are edited
    bool wasFolded : 1;       // it is a folded array in the original text
    bool trailingComma : 1;   // after the last child
    bool indexed : 1;         // its children are found through an index
    bool repeated : 1;        // a member whose key is before it in the same object
    bool mayHoldOwnValue : 1; // an object that has or had a member with the key of own values

    std::uint32_t leading = 0;
    std::uint32_t label = 0;
    std::uint32_t value = 0;
    std::uint32_t closing = 0;
    std::uint32_t valueEnd = 0;
    std::uint32_t end = 0;
    std::uint32_t nonTexts = 0; // children that are not a text

    JsonNode()
        : folded(false), wasFolded(false), trailingComma(false), indexed(false), repeated(false),
          mayHoldOwnValue(false)
    {
    }

    void adopt(const JsonNode& child)
    {
        ++count;
        nonTexts += child.kind == JsonKind::Text ? 0 : 1;
    }

    void disown(const JsonNode& child)
    {
        --count;
        nonTexts -= child.kind == JsonKind::Text ? 0 : 1;
    }

    bool isContainer() const { return kind == JsonKind::Object || kind == JsonKind::Array; }
    bool isList() const { return kind == JsonKind::Array && nonTexts == 0; }

    // A value of the tree, as opposed to a group.
    bool isLeaf() const { return !isContainer() || isList(); }
};

} // namespace Repository::Documents
