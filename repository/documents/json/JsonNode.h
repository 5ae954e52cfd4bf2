#pragma once

#include <cstdint>

namespace Repository::Documents {

using JsonNodeId = std::uint32_t;
constexpr JsonNodeId noJsonNode = UINT32_MAX;

enum class JsonKind : std::uint8_t { Object, Array, Text, Number, True, False, Null };

// The pieces of text that a node consists of, in their order in the file. Between two siblings stands a
// comma.
enum class JsonPart : std::uint8_t {
    Lead,    // blanks and comments behind the comma or bracket before
    Label,   // in an object the key, the colon and what is around it, up to the value
    Value,   // of a scalar or a folded array; of any other container the opening bracket
    Closing, // of a container: what stands before its closing bracket behind the last comma or its opening
    Tail     // blanks and comments up to the next comma or bracket
};

// A value of json with its key. The numbers up to `end` are offsets in the original text; each is where a
// part begins. Texts that an edit has put in place of a part are kept beside the node (JsonTree).
struct JsonNode
{
    std::uint32_t lead = 0;
    std::uint32_t label = 0;
    std::uint32_t value = 0;
    std::uint32_t closing = 0;
    std::uint32_t valueEnd = 0;
    std::uint32_t end = 0;

    JsonNodeId parent = noJsonNode;
    JsonNodeId first = noJsonNode;
    JsonNodeId last = noJsonNode;
    JsonNodeId next = noJsonNode;
    JsonNodeId previous = noJsonNode;
    std::uint32_t count = 0;    // of children
    std::uint32_t nonTexts = 0; // children that are no text

    JsonKind kind = JsonKind::Null;
    bool folded : 1;          // an array of texts whose elements have no nodes until they are edited
    bool wasFolded : 1;       // it is a folded array in the original text
    bool trailingComma : 1;   // behind the last child
    bool hasOwnTexts : 1;     // some part was edited
    bool touched : 1;         // something in it or below was edited
    bool indexed : 1;         // its children are found through an index
    bool repeated : 1;        // a member whose key stands before it in the same object
    bool mayHoldOwnValue : 1; // an object that has or had a member with the key of own values

    JsonNode()
        : folded(false), wasFolded(false), trailingComma(false), hasOwnTexts(false), touched(false),
          indexed(false), repeated(false), mayHoldOwnValue(false)
    {
    }

    bool isContainer() const { return kind == JsonKind::Object || kind == JsonKind::Array; }
    bool isList() const { return kind == JsonKind::Array && nonTexts == 0; }

    // A value of the tree, as opposed to a group.
    bool isLeaf() const { return !isContainer() || isList(); }
};

} // namespace Repository::Documents
