#pragma once

#include "repository/documents/toml/TomlFile.h"
#include "repository/documents/toml/TomlTokens.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// Adds and takes out statements of a file, and keeps the tree right. Whether that is allowed was decided
// before.
class TomlEditor
{
public:
    explicit TomlEditor(TomlFile& tomlFile) : file(tomlFile), tree(tomlFile.tree) {}

    // Reads a text as the statements after another, whose keys before a header belong to a table. Comments at
    // its end are those of its last table.
    StatementId insert(StatementId after, NodeId table, std::string_view text);

    // Takes out the statements that are about a node or something in it, with the comments at the end of each
    // table. Comments above stay, or go as well.
    void remove(NodeId id, bool withComments);

    // Brings statements to the place after another one, with the comments at the end of each table.
    void moveStatements(const std::vector<StatementId>& moved, StatementId after);

    // Those statements in the order of the file.
    std::vector<StatementId> statementsOf(NodeId id) const;

    // Gives the value of a node, or the group that it is, another text.
    void rewrite(NodeId id, std::string text);

    // Gives a statement another text with as many parts of a key and the same nodes.
    void replaceLine(StatementId id, const std::string& text);

    // Puts other lines in the place of a statement and of its nodes; gives the last one.
    StatementId replace(StatementId id, const std::string& text);

    // The table in whose block a statement lies, which has a header or is the root.
    NodeId blockOf(NodeId id) const;

    // The comments below a statement which belong to its table, as of the last one in a table.
    std::string_view endCommentsOf(StatementId id) const;
    std::string takeEndComments(StatementId id);

    // Where those above a statement begin that belong to it, in its lead.
    std::size_t findOwnComments(StatementId id) const;

    // Where the text of a statement that is about a node, or about something in it, names the node; nothing
    // where only the header of its block does.
    std::optional<TomlKeyPart> findName(StatementId statement, NodeId id) const;

private:
    std::string_view triviaBelow(StatementId id) const;
    void setTriviaBelow(StatementId id, const std::string& text);
    std::string takeComments(StatementId above);
    void giveEndComments(StatementId id, const std::string& comments);
    void removeStatement(StatementId id);
    void giveLead(StatementId next, std::string lead);

    TomlFile& file;
    TomlTree& tree;
};

// Where the key of a statement begins.
std::size_t keyBegin(std::string_view text, bool isHeader);

// Whether blank lines begin a text.
bool beginsWithBlankLine(std::string_view text);

} // namespace Repository::Documents
