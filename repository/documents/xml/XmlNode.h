#pragma once

#include "repository/documents/common/SyntaxTree.h"

#include <cstddef>
#include <cstdint>

namespace Repository::Documents {

enum class XmlKind : std::uint8_t { Element, Attribute, Text };

// The parts of a node in the order of the file. Attributes come after the label, other children in place of
// front and value.
enum class XmlPart : std::uint8_t {
    Leading, // what is between the node before, or the parent's tag, and this node
    Label,   // of an element "<" and its name; of an attribute all up to and with the opening quote
    TagEnd,  // of an element the rest of its start tag
    Front,   // of an element without children: what is before its value
    Value,   // of an element without children, an attribute or a text
    Closing  // of an element: what is after its value or last child, and its end tag; the closing quote
};
constexpr std::size_t xmlPartCount = 6;

// An element, an attribute, or a text between elements. The numbers up to `end` are offsets in the original
// text where parts begin; a part that the kind lacks is empty.
struct XmlNode : SyntaxNode
{
    XmlKind kind = XmlKind::Element;
    bool isTagged : 1;       // a type tag may decide the type of its value
    bool isIndexed : 1;      // its children are found through an index
    bool keepsBlanks : 1;    // blanks around texts in it belong to them
    bool isPreformatted : 1; // xml:space says so, and nothing is laid out in it

    std::uint32_t leading = 0;
    std::uint32_t label = 0;
    std::uint32_t tagEnd = 0;
    std::uint32_t front = 0;
    std::uint32_t value = 0;
    std::uint32_t closing = 0;
    std::uint32_t end = 0;
    std::uint32_t name = 0;   // XmlNames; the empty name for a text
    std::uint32_t number = 1; // among siblings of the same kind and name

    XmlNode() : isTagged(false), isIndexed(false), keepsBlanks(false), isPreformatted(false) {}

    void inheritBlanks(const XmlNode& from)
    {
        keepsBlanks = from.keepsBlanks;
        isPreformatted = from.isPreformatted;
    }

    void setPreformatted(bool isSo) { keepsBlanks = isPreformatted = isSo; }

    // Attributes come before all other children and are not counted.
    void adopt(const XmlNode& child) { count += child.kind == XmlKind::Attribute ? 0 : 1; }
    void disown(const XmlNode& child) { count -= child.kind == XmlKind::Attribute ? 0 : 1; }

    // An element with children has no value of its own.
    bool isContainer() const { return count > 0; }
};

} // namespace Repository::Documents
