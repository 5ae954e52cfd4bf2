#pragma once

#include "repository/documents/common/Document.h"
#include "repository/documents/toml/TomlTree.h"

namespace Repository::Documents {

// Makes statements and nodes of a part of the tree's text, which was found to be TOML.
class TomlScanner
{
public:
    explicit TomlScanner(TomlTree& syntaxTree) : tree(syntaxTree) {}

    // How many tables, arrays and dotted keys may lead to an entry.
    static constexpr std::size_t maximumDepth = 1000;

    // Reads the whole text. An entry that lies too deep is refused.
    Outcome readFile();

    // Reads such a part as what follows a statement; keys before its first header belong to a table. The
    // blank lines and comments at its end belong to nothing. Gives its last statement.
    StatementId readInto(std::size_t begin, std::size_t end, StatementId after, NodeId table);

    // Reads such a part as the value of a node, with all below it.
    void reread(NodeId id, std::size_t begin, std::size_t end);

private:
    // Of the tree's text that which may be read, after which other texts are kept.
    std::string_view source() const { return tree.text(0, limit); }

    std::size_t readValue(NodeId id, std::size_t at);
    std::size_t readStatement(std::size_t lead, std::size_t body);
    std::size_t readHeader(StatementId id, std::size_t at);
    std::size_t readPair(StatementId id, std::size_t at);
    std::size_t readArray(NodeId id, std::size_t at);
    std::size_t readInlineTable(NodeId id, std::size_t at);
    NodeId step(NodeId parent, std::string_view part, StatementId statement, std::size_t at, bool isInline);
    NodeId addNode(NodeId parent, std::string_view part, std::size_t at, StatementId statement,
                   TomlKind kind);
    NodeId elementBefore(NodeId tables, StatementId statement) const;
    void readTag(StatementId id, NodeId node);
    void noteDepth(NodeId id, std::size_t at);

    TomlTree& tree;
    std::size_t limit = 0;
    StatementId after = TomlTree::rootStatement;
    StatementId header = TomlTree::rootStatement;
    NodeId table = noNode;
    bool isAppending = true;
    std::size_t tooDeep = std::string_view::npos;
};

} // namespace Repository::Documents
