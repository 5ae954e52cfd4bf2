#pragma once

#include "repository/documents/json/JsonNode.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Repository::Documents {

// The concrete syntax tree of a json text: every byte of the text belongs to a part of a node, so that
// writing the parts in order gives the text. The tree knows nothing of paths and layout; linking and changing
// parts costs the depth of the node at most.
class JsonTree
{
public:
    explicit JsonTree(std::string bytes);

    const std::string& getOriginal() const { return original; }

    // Of all nodes that were ever in the tree; as many numbers are in use or free for use.
    JsonNodeId getSize() const { return static_cast<JsonNodeId>(nodes.size()); }

    // The root is the first node; noJsonNode in a text without a value.
    JsonNodeId getRoot() const { return root; }
    const JsonNode& node(JsonNodeId id) const { return nodes[id]; }
    JsonNode& node(JsonNodeId id) { return nodes[id]; }

    // Drops what was read, to begin again.
    void dropNodes();

    // While reading: makes room for so many more nodes.
    void reserveMore(std::size_t count);

    // While reading: appends a node as the last child of its parent, or as the root.
    JsonNodeId read(const JsonNode& node);

    // While reading: turns an array that holds nothing but texts into one node.
    void fold(JsonNodeId array);

    // A text that is about to be read may be kept behind the original one. Since none of that is given back
    // before the whole is read anew, there is an end to it; false then.
    bool hasRoomFor(std::size_t size) const;

    // Keeps such a text; gives where it begins.
    std::size_t keep(std::string_view text);

    // An edit: turns a new scalar into a container that begins at an offset, to be read from there on.
    void reopen(JsonNodeId id, JsonKind kind, std::size_t value);

    // Gives a folded array a node for each element.
    void unfold(JsonNodeId array);

    // The elements of a list, decoded.
    std::vector<std::string> readList(JsonNodeId array) const;

    // An edit: a node of a kind, linked in its parent behind a sibling (noJsonNode: as the first child).
    JsonNodeId insert(JsonNodeId parent, JsonNodeId previous, JsonKind kind);

    // An edit: takes a node and all below it out of the tree. What the nodes were is forgotten.
    void remove(JsonNodeId id);

    // An edit: takes out all children, after which the node may become of any kind.
    void clear(JsonNodeId id);

    // An edit: makes a node without children one of another kind; a container is empty then.
    void setKind(JsonNodeId id, JsonKind kind);

    // The kind and the text of the value in the original text; empty when the node is new or was a group
    // there.
    std::optional<JsonKind> originalKind(JsonNodeId id) const;
    std::string_view originalValue(JsonNodeId id) const;

    // An edit: gives a node its original value again, byte for byte.
    void restore(JsonNodeId id);

    void setTrailingComma(JsonNodeId id, bool comma);

    // An edit: puts an object in the place of a value and the value into it, as its only member.
    JsonNodeId wrap(JsonNodeId id);

    std::string_view text(JsonNodeId id, JsonPart part) const;
    void setText(JsonNodeId id, JsonPart part, std::string text);

    // The literal of a member's key.
    std::string_view keyLiteral(JsonNodeId id) const;

    // True when no edit has changed the text.
    bool isOriginal() const { return root == noJsonNode || !nodes[root].touched; }

    std::string write() const;

private:
    struct OwnTexts
    {
        std::array<std::optional<std::string>, 5> parts;
    };

    JsonNodeId allocate();
    void link(JsonNodeId id, JsonNodeId previous);
    void unlink(JsonNodeId id);
    void release(JsonNodeId id);
    void touch(JsonNodeId id);

    std::string original;
    std::size_t fileSize; // what stands behind that in the original was kept later
    std::vector<JsonNode> nodes;
    std::vector<JsonNodeId> released;
    std::unordered_map<JsonNodeId, OwnTexts> ownTexts;
    JsonNodeId root = noJsonNode;
};

} // namespace Repository::Documents
