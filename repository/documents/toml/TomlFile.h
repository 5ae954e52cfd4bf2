#pragma once

#include "repository/documents/common/Document.h"
#include "repository/documents/common/TextEncoding.h"
#include "repository/documents/toml/TomlString.h"
#include "repository/documents/toml/TomlTree.h"

#include <string>
#include <string_view>

namespace Repository::Documents {

// A TOML text as entries with paths and values. Its parts refer to each other, so it is not moved.
class TomlFile
{
public:
    TomlFile(std::string text, TextEncoding textEncoding);

    PathMatch match(std::string_view path) const;
    NodeId find(std::string_view path) const { return match(path).target(); }

    // The node that holds the value of a node: itself, or its member for that; noNode without a value.
    NodeId valueNodeOf(NodeId id) const;

    // The same for a path; noNode for an unknown one, too.
    NodeId findValueNode(std::string_view path) const;

    Value read(NodeId valueNode) const;

    // What visitEntries asks.
    Value read(NodeId valueNode, std::string_view) const { return read(valueNode); }
    bool isShown(NodeId id) const { return !tree.isOwnValue(id); }
    bool mayHoldEntries(NodeId) const { return true; }
    bool isArray(NodeId id) const { return tree.node(id).isArray(); }
    void appendName(std::string& path, NodeId id, std::size_t position) const
    {
        tree.appendName(path, id, position);
    }

    bool isList(NodeId id) const;
    bool isInInlineTable(NodeId id) const;
    TomlStringPlace placeOf(NodeId id) const { return {lineEnd, !isInInlineTable(id)}; }

    // Names another type in the tag above a value that has one, or takes it out for Group.
    void setTag(NodeId valueNode, Type type);

    // The text of a value or inline group as it is now.
    std::string textOf(NodeId id) const;

    // The line or lines of a statement, without what is above it.
    std::string statementText(StatementId id) const;

    std::string write() const;
    Span locate(NodeId valueNode) const { return locate(valueNode, {0, tree.valueText(valueNode).size()}); }
    Span locate(NodeId valueNode, Span part) const; // of its text

    TomlTree tree;
    TextEncoding encoding;
    std::string lineEnd;

private:
    // Appends a part of the text of the value at or above some edits; notes where a node has come to lie.
    void appendEdited(std::string& target, NodeId top, std::size_t begin, std::size_t end, NodeId located,
                      Span* span) const;
    void appendStatement(std::string& target, StatementId id, NodeId located = noNode,
                         Span* span = nullptr) const;
    std::string write(NodeId located, Span* span) const;
    std::string writeValues(NodeId located, Span* span) const;
};

} // namespace Repository::Documents
