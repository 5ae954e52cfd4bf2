#pragma once

#include "repository/documents/common/Document.h"
#include "repository/documents/json/JsonEditor.h"
#include "repository/documents/json/JsonMembers.h"
#include "repository/documents/json/JsonTree.h"
#include "repository/documents/json/JsonTypes.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace Repository::Documents {

// A json text as entries with paths and values. Its parts refer to each other, so it is not moved.
class JsonFile
{
public:
    explicit JsonFile(std::string bytes)
        : tree(std::move(bytes)), members(tree), editor(tree, members), types(tree, members, editor)
    {
    }

    PathMatch match(std::string_view path) const;
    NodeId find(std::string_view path) const { return match(path).target(); }

    // The node that holds the value of a node: itself, or its member for that; noNode without a value.
    NodeId valueNodeOf(NodeId id) const { return tree.node(id).isLeaf() ? id : members.findOwnValue(id); }

    // The same for a path; noNode for an unknown one, too.
    NodeId findValueNode(std::string_view path) const;

    Value read(NodeId valueNode, std::string_view path) const;

    // What visitEntries asks.
    bool isShown(NodeId id) const { return id != types.getMember() && !members.isOwnValue(id); }
    bool mayHoldEntries(NodeId id) const { return !tree.node(id).isLeaf(); }
    bool isArray(NodeId id) const { return tree.node(id).kind == JsonKind::Array; }
    void appendName(std::string& path, NodeId id, std::size_t position) const
    {
        members.appendName(path, id, position);
    }

    // Whether a member of an object, or a new one, can get this text.
    Outcome checkNoTypes(NodeId object, NodeId member, std::string_view text) const;

    JsonTree tree;
    JsonMembers members;
    JsonEditor editor;
    JsonTypes types;
};

} // namespace Repository::Documents
