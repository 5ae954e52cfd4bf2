#pragma once

#include "repository/documents/toml/TomlBranch.h"
#include "repository/documents/toml/TomlEditor.h"
#include "repository/documents/toml/TomlFile.h"
#include "repository/documents/toml/TomlStyles.h"

#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// Adds an entry and all below it to a file, with the tables that lead to it, where a person would: values
// after the last one of their table, and tables after the last of their siblings.
class TomlInsertion
{
public:
    explicit TomlInsertion(TomlFile& tomlFile)
        : file(tomlFile), tree(tomlFile.tree), editor(tomlFile), styles(tomlFile)
    {
    }

    // In the order of a tree with paths relative to it.
    Outcome insert(std::string_view path, const std::vector<Entry>& entries);
    Outcome insert(std::string_view path, TomlBranch branch);

    // Into an array, before the element of that index or after the last one.
    Outcome insertElement(NodeId array, std::size_t position, TomlBranch branch);

    // In the place of a value or of an inline group.
    Outcome replace(NodeId id, const TomlBranch& branch);

    // The key of a table as a header spells it, empty for the root; from a table above it, as dotted keys do.
    std::string keyPathOf(NodeId id, NodeId from) const;

    // Where a new header of a table in this one goes: after this statement.
    StatementId endOf(NodeId table) const;

    // How a new table in this one looks: as the last one there, or as this one.
    TomlStyle tableStyleIn(NodeId table) const;

    // Where a new line of a table goes, which part of its key comes first and in which block it is; with a
    // new header where the table has none.
    struct PairPlace
    {
        StatementId after = noStatement;
        NodeId block = noNode;
        std::string prefix;
        bool needsHeader = false;
    };
    PairPlace pairPlaceOf(NodeId table) const;

    // Reads new lines there, of which the first may need something above it or below it.
    void insertLines(StatementId after, NodeId block, std::string text);

private:
    Outcome insertInto(NodeId parent, TomlBranch branch);
    Outcome insertIntoTable(NodeId table, const TomlBranch& branch);
    Outcome insertMember(NodeId parent, const TomlBranch& branch);
    Outcome write(StatementId after, NodeId block, const TomlBranchWriter& writer);
    Outcome wrap(NodeId id, TomlBranch branch);
    NodeId modelOf(NodeId table, const TomlBranch& branch) const;
    std::string bracedText(const TomlBranch& branch, NodeId model) const;
    bool isDottedTable(NodeId id) const;
    std::string inlineText(const TomlBranch& branch, NodeId place, std::string& error) const;
    StatementId lastDottedOf(NodeId table) const;

    TomlFile& file;
    TomlTree& tree;
    TomlEditor editor;
    TomlStyles styles;
};

} // namespace Repository::Documents
