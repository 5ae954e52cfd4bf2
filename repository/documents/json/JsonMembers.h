#pragma once

#include "repository/documents/common/HashIndex.h"
#include "repository/documents/json/JsonTree.h"

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Repository::Documents {

static_assert(noNode == HashIndex::none);

// The key of the member that holds the own value of a node which has children too.
constexpr std::string_view ownValueKey = "#value";

// The position that a component spells; empty when it is none or not in its plain form.
std::optional<std::uint32_t> readPosition(std::string_view text);

// Finds children by name: the encoded key in an object, with "[2]" and up for repeated keys, the position in
// an array. Only large containers are indexed.
class JsonMembers
{
public:
    explicit JsonMembers(JsonTree& syntaxTree) : tree(syntaxTree) {}

    // Drops everything, to begin again.
    void dropAll();

    // Takes up the children of a container that was read.
    void addAll(NodeId container);

    // Takes up an element of an array, or in an object a member, the only one of its key.
    void add(NodeId child);

    // To be called after elements of an array have changed places.
    void reorder(NodeId array);

    // To be called before a child is taken out of the tree; siblings of the same key move up.
    void remove(NodeId child);

    // The same for a member that stays, with all below it, and gets another key.
    void removeMember(NodeId member);

    // To be called before the children are removed, or become elements of a list, which have no names.
    void removeAll(NodeId container);

    // The element by its position, also of a list that is not folded; noNode without one.
    NodeId elementAt(NodeId array, std::uint32_t position) const;

    // The child by its name; noNode without one. A node's own value is not a child.
    NodeId find(NodeId container, std::string_view name) const;

    // Appends the name of a child, of which `position` counts the children before it.
    void appendName(std::string& path, NodeId child, std::size_t position) const;

    // The member that holds the object's own value; noNode without one.
    NodeId findOwnValue(NodeId object) const;
    bool isOwnValue(NodeId child) const;

    // True when a later child takes over the name of this one once it is gone.
    bool hasSuccessor(NodeId child) const;

private:
    std::string_view keyOf(NodeId member, std::string& buffer) const;
    std::uint32_t ordinalOf(NodeId member) const;
    void setOrdinal(NodeId member, std::uint32_t ordinal);
    bool hasName(NodeId member, std::string_view key, std::uint32_t ordinal) const;
    NodeId findMember(NodeId object, std::string_view key, std::uint32_t ordinal) const;
    NodeId findElement(NodeId array, std::string_view name) const;
    void addElement(std::vector<NodeId>& children, NodeId child) const;
    HashIndex numberMembers(NodeId object);
    void buildIndex(NodeId container);
    void forgetIndex(NodeId container);

    JsonTree& tree;
    std::unordered_map<NodeId, HashIndex> indexes;            // of large objects
    std::unordered_map<NodeId, std::vector<NodeId>> elements; // of large arrays
    std::unordered_map<NodeId, std::uint32_t> ordinals;       // of repeated members, from 2
};

} // namespace Repository::Documents
