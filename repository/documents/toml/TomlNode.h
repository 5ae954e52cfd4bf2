#pragma once

#include "repository/documents/common/SyntaxTree.h"
#include "repository/documents/common/Values.h"

#include <cstdint>

namespace Repository::Documents {

using StatementId = std::uint32_t;
constexpr StatementId noStatement = UINT32_MAX;

enum class TomlKind : std::uint8_t {
    Table,       // made by a header, by dotted keys or by the headers of tables in it
    Tables,      // an array of tables, whose elements have headers
    InlineTable, // the value of a key, or part of one, like all that follow
    Array,
    Value // a scalar, or an array that holds nothing but strings
};

enum class TomlPart : std::uint8_t { Value };

// An entry of the tree. Offsets are those of the tree's text.
struct TomlNode : SyntaxNode
{
    TomlKind kind = TomlKind::Table;
    Type tag = Type::Group;   // the type that a comment line above it names
    bool isText : 1;          // a string
    bool mayHoldOwnValue : 1; // a child has or had the key of own values
    std::uint16_t depth = 0;
    StatementId statement = noStatement; // that which holds the value, or the header of a table
    std::uint32_t key = 0;               // decoded
    std::uint32_t keyEnd = 0;
    std::uint32_t value = 0;
    std::uint32_t valueEnd = 0;
    std::uint32_t nonTexts = 0; // children that are not strings

    TomlNode() : isText(false), mayHoldOwnValue(false) {}

    void adopt(const TomlNode& child)
    {
        ++count;
        nonTexts += child.isText ? 0 : 1;
    }

    void disown(const TomlNode& child)
    {
        --count;
        nonTexts -= child.isText ? 0 : 1;
    }

    bool isArray() const { return kind == TomlKind::Array || kind == TomlKind::Tables; }
    bool isTable() const { return kind == TomlKind::Table || kind == TomlKind::InlineTable; }

    // False for a table that only dotted keys make.
    bool hasSpan() const { return valueEnd > 0; }

    // Whether it is a value of a key or part of one, all of whose bytes lie together.
    bool isInline() const { return kind > TomlKind::Tables; }
};

// A line of the file that is a header or a key with its value, which may go on over more lines. The first one
// of a tree has no text: it is the header of the root.
struct TomlStatement
{
    std::uint32_t lead = 0; // blank lines and comments above it
    std::uint32_t leadEnd = 0;
    std::uint32_t begin = 0;   // of its line
    std::uint32_t bodyEnd = 0; // after the value or the closing bracket
    std::uint32_t end = 0;     // after the line end
    StatementId previous = noStatement;
    StatementId next = noStatement;
    StatementId last = noStatement; // of a header: the last statement before the next one, or itself
    std::uint64_t order = 0;        // grows along the file
    NodeId node = noNode;
    bool isHeader = false;
    bool mayHoldEdits = false; // a value of it was edited
};

} // namespace Repository::Documents
