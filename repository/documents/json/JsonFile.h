#pragma once

#include "repository/documents/common/Document.h"
#include "repository/documents/common/PathMatch.h"
#include "repository/documents/json/JsonEditor.h"
#include "repository/documents/json/JsonMembers.h"
#include "repository/documents/json/JsonTree.h"
#include "repository/documents/json/JsonTypes.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace Repository::Documents {

// A json text as entries with paths and values. Its parts refer to each other, so that they stay where they
// are.
class JsonFile
{
public:
    explicit JsonFile(std::string bytes)
        : tree(std::move(bytes)), members(tree), editor(tree, members), types(tree, members, editor)
    {
    }

    PathMatch match(std::string_view path) const;
    NodeId find(std::string_view path) const;

    // The node that holds the value of a node: itself, or its member for that; noNode without a value.
    NodeId valueNodeOf(NodeId id) const;

    // The same for a path; noNode for an unknown one, too.
    NodeId findValueNode(std::string_view path) const;

    FrameworkCore::Values::Value read(NodeId valueNode, std::string_view path) const;

    // How many containers lie around a node.
    std::size_t depthOf(NodeId id) const;

    // Whether a member of an object, or a new one, can get this text.
    Outcome checkNoTypes(NodeId object, NodeId member, std::string_view text) const;

    JsonTree tree;
    JsonMembers members;
    JsonEditor editor;
    JsonTypes types;
};

} // namespace Repository::Documents
