#pragma once

#include "repository/documents/common/HashIndex.h"
#include "repository/documents/toml/TomlNode.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Repository::Documents {

static_assert(noNode == HashIndex::none);

// The key of the member that holds the own value of a node which has children too.
constexpr std::string_view tomlOwnValueKey = "#value";

// The statements of a file, and the tree of entries that they make. The text of the file stays as it was
// read, and what edits write is appended to it.
class TomlTree : public SyntaxTree<TomlNode, TomlPart, 1>
{
public:
    explicit TomlTree(std::string text);

    static constexpr StatementId rootStatement = 0;

    std::string_view text(std::size_t begin, std::size_t end) const
    {
        return std::string_view(original).substr(begin, end - begin);
    }
    std::string_view getFileText() const { return text(0, fileSize); }
    std::string_view valueText(NodeId id) const;
    std::string_view keyText(NodeId id) const { return text(nodes[id].key, nodes[id].keyEnd); }

    // The span that a value was read with.
    std::string_view readValueText(NodeId id) const { return text(nodes[id].value, nodes[id].valueEnd); }
    void restoreValue(NodeId id);
    void setReadValue(NodeId id, std::size_t begin, std::size_t end);
    void setValue(NodeId id, std::string spelling, bool isText);

    // Keeps a text; gives where it begins. It is not reclaimed until the whole is read anew, which is due
    // when there is not enough room.
    std::uint32_t keep(std::string_view text);
    bool hasRoom() const;

    // The child by its component of a path; noNode without one. An own value is not a child.
    NodeId find(NodeId parent, std::string_view component) const;
    NodeId findKey(NodeId parent, std::string_view key) const;
    NodeId elementAt(NodeId array, std::size_t position) const;
    std::size_t positionOf(NodeId element) const;
    void appendName(std::string& path, NodeId id, std::size_t position) const;
    NodeId findOwnValue(NodeId id) const;
    bool isOwnValue(NodeId id) const;

    // The inline table or array around a part of it, and the names that lead from there to the part: more
    // than its own where dotted keys make the tables between.
    NodeId bracketsAround(NodeId id, std::vector<std::string>& path) const;

    // A new node, as the last child or at the place that its statement gives it.
    NodeId add(NodeId parent, const TomlNode& node, bool isLast);

    // Takes a node and all below it out of the tree, and the nodes above that are nothing without it.
    void drop(NodeId id);
    void dropChildren(NodeId id);
    void pruneFrom(NodeId id);

    // Moves a node and those above it among their siblings to where the file has them first.
    void settle(NodeId id);
    void renameKey(NodeId id, std::string_view key);
    void moveChild(NodeId id, NodeId previous);

    const TomlStatement& statement(StatementId id) const { return statements[id]; }
    TomlStatement& statement(StatementId id) { return statements[id]; }
    StatementId addStatement(const TomlStatement& statement, StatementId after);
    void unlinkStatement(StatementId id);
    void freeStatement(StatementId id) { freeStatements.push_back(id); }
    void linkStatement(StatementId id, StatementId after);
    StatementId getLastStatement() const { return lastStatement; }

    // Whether the statements are those that were read, in that order, and with the same leads.
    bool isArrangedAsRead() const { return original.size() == fileSize && !isRearranged; }
    const std::vector<StatementId>& getStatementsWithEdits() const { return statementsWithEdits; }

    // The first statement that is about a node or something in it.
    StatementId firstStatementOf(NodeId id) const;
    std::uint64_t orderOf(NodeId id) const;

    std::string_view leadOf(StatementId id) const
    {
        return text(statements[id].lead, statements[id].leadEnd);
    }
    void setLead(StatementId id, std::string_view lead);
    std::string_view getTail() const { return text(tail, tailEnd); }
    void setTail(std::size_t begin, std::size_t end);
    void setTailText(std::string_view text);

private:
    static constexpr std::uint32_t fewChildren = 8; // are looked through

    void place(NodeId id);
    HashIndex& indexOf(NodeId parent) const;
    void takeUp(NodeId id);
    void forget(NodeId id);
    void number(StatementId id);

    std::vector<TomlStatement> statements;
    std::vector<StatementId> freeStatements;
    std::vector<StatementId> statementsWithEdits; // of values; in any order
    bool isRearranged = false;
    StatementId lastStatement = rootStatement;
    std::uint32_t tail = 0;
    std::uint32_t tailEnd = 0;
    std::size_t fileSize;
    mutable std::unordered_map<NodeId, HashIndex> indexes;            // of large tables that were searched
    mutable std::unordered_map<NodeId, std::vector<NodeId>> elements; // of arrays that were
};

} // namespace Repository::Documents
