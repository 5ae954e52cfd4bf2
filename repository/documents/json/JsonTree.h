#pragma once

#include "repository/documents/json/JsonNode.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// Of a value that begins with this character.
JsonKind kindOfJson(char first);

// The syntax tree of a json text: each byte belongs to a part of a node, so that the parts in order are the
// text. It knows neither paths nor layout. The root is the first node.
class JsonTree : public SyntaxTree<JsonNode, JsonPart, jsonPartCount>
{
public:
    explicit JsonTree(std::string bytes);

    // Of all nodes that were ever in the tree; as many numbers are in use or free for use.
    NodeId getSize() const { return static_cast<NodeId>(nodes.size()); }

    // Drops what was read, to begin again.
    void dropNodes();

    // While reading: makes room for so many more nodes.
    void reserveMore(std::size_t count);

    // While reading: turns an array that holds nothing but texts into one node.
    void fold(NodeId array);

    // Whether a text may be kept after the original one; that space is not reclaimed until the whole is
    // reread.
    bool hasRoomFor(std::size_t size) const;

    // Keeps such a text; gives where it begins.
    std::size_t keep(std::string_view text);

    // An edit: turns a new scalar into a container that begins at an offset, to be read from there on.
    void reopen(NodeId id, JsonKind kind, std::size_t value);

    // Gives a folded array a node for each element.
    void unfold(NodeId array);

    // The elements of a list, decoded.
    std::vector<std::string> readList(NodeId array) const;

    // An edit: a node of a kind, linked in its parent after a sibling (noNode: as the first child).
    NodeId insert(NodeId parent, NodeId previous, JsonKind kind);

    // An edit: gives a node another place among its siblings.
    void move(NodeId id, NodeId previous);

    // An edit: takes a node and all below it out of the tree. What the nodes were is forgotten.
    void remove(NodeId id);

    // An edit: takes out all children, after which the node may become of any kind.
    void clear(NodeId id);

    // An edit: makes a node without children one of another kind; a container is empty then.
    void setKind(NodeId id, JsonKind kind);

    // Of the value in the original text; empty for a new node or a former group.
    std::optional<JsonKind> originalKind(NodeId id) const;
    std::string_view originalValue(NodeId id) const;

    // An edit: gives a node its original value again, byte for byte.
    void restore(NodeId id);

    void setTrailingComma(NodeId id, bool comma);

    // An edit: puts an object in the place of a value and the value into it, as its only member.
    NodeId wrap(NodeId id);

    std::string_view text(NodeId id, JsonPart part) const;

    // The literal of a member's key.
    std::string_view keyLiteral(NodeId id) const;

    // True when no edit has changed the text.
    bool isOriginal() const { return !isTouched(); }

    std::string write() const;

private:
    // Gives a node the part again that it was read with.
    void dropText(NodeId id, JsonPart part);

    std::size_t fileSize; // what is after that in the original was kept later
};

} // namespace Repository::Documents
