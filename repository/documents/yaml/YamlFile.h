#pragma once

#include "repository/documents/common/Document.h"
#include "repository/documents/common/TextEncoding.h"
#include "repository/documents/yaml/YamlSpelling.h"
#include "repository/documents/yaml/YamlTree.h"

#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// A text of YAML as entries with paths and values.
class YamlFile
{
public:
    YamlFile(std::string text, TextEncoding textEncoding);

    // Once, before anything else. In a part of a file, an alias may have its anchor elsewhere.
    Outcome readText(bool isPart = false);

    PathMatch match(std::string_view path) const;
    NodeId find(std::string_view path) const { return match(path).target(); }

    // The same, or an element of a list.
    NodeId findElement(std::string_view path) const;

    // The node that holds the value of a node: itself, or its member for that; noNode without a value.
    NodeId valueNodeOf(NodeId id) const;

    // The same for a path; noNode for an unknown one, too.
    NodeId findValueNode(std::string_view path) const;

    Value read(NodeId valueNode) const;

    // What visitEntries asks.
    Value read(NodeId valueNode, std::string_view) const { return read(valueNode); }
    bool isShown(NodeId id) const { return !tree.isOwnValue(id); }
    bool mayHoldEntries(NodeId id) const { return !tree.node(id).isLeaf(); }
    void appendName(std::string& path, NodeId id, std::size_t position) const
    {
        tree.appendName(path, id, position);
    }

    Value readShown(NodeId alias) const; // what an alias or a copy was read with
    Value readAs(NodeId valueNode, std::string_view spelled, Type tag) const;

    // Of the value without what sets it off from its key.
    std::string_view bareText(NodeId valueNode) const;

    // Of a value in the file, for its spelling.
    YamlPlace placeOf(NodeId id) const;

    // Whether what is around a value may not let it be any other one.
    bool isDelicate(NodeId id) const;

    // How far the block is indented in which a node lies.
    std::size_t blockAround(NodeId id) const;

    // The commonest step of its indentation.
    std::size_t stepOf() const;

    std::string writeText() const { return writeText(noNode, nullptr); }
    std::string write() const { return encoding.encode(writeText()); }
    Span locate(NodeId valueNode) const;

    // The nodes with other values than were read, in the order of the text.
    std::vector<NodeId> editedNodes() const;

    bool isEdited() const { return tree.node(tree.getRoot()).touched; }
    std::string pathOf(NodeId id) const;
    bool isInFlow(NodeId id) const;
    bool isArray(NodeId id) const;

    YamlTree tree;
    TextEncoding encoding;
    std::string lineEnd;

private:
    std::string writeText(NodeId located, Span* span) const;
    std::string textOf(NodeId id) const;
    bool sharesLine(NodeId id) const;
    mutable std::size_t step = 0;
};

} // namespace Repository::Documents
