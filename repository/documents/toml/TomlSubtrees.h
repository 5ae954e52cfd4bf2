#pragma once

#include "repository/documents/toml/TomlFile.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// Reads and writes subtrees of a file as their author has written them: a key with its value, lines of dotted
// keys, or headers with their lines, that of an element of an array of tables as the header of a table.
class TomlSubtrees
{
public:
    explicit TomlSubtrees(TomlFile& tomlFile) : file(tomlFile), tree(tomlFile.tree) {}

    // See Document.
    std::optional<Excerpt> excerpt(NodeId id) const;
    bool hasComments(NodeId id) const;

    // Of an element of a list of texts, by its path.
    std::optional<Excerpt> excerptOfText(std::string_view path) const;

    bool insert(std::string_view path, const Excerpt& excerpt);

private:
    std::optional<Excerpt> ofItem(NodeId id) const;
    Excerpt ofElement(NodeId array, std::size_t position) const;
    Excerpt ofValue(std::string_view value) const;
    std::string commentBehind(NodeId item) const;
    std::optional<Excerpt> ofStatements(NodeId id, NodeId named) const;
    bool appendStatement(Excerpt& target, StatementId statement, NodeId named, bool inHeaders) const;
    bool appendShortened(Excerpt& target, StatementId statement, NodeId named) const;
    bool insertElement(NodeId array, std::size_t position, const Excerpt& excerpt);
    bool insertTable(NodeId tables, std::size_t position, const Excerpt& excerpt);
    bool insertLines(NodeId parent, const std::string& key, const Excerpt& excerpt);
    bool insertHeaders(NodeId parent, const std::string& key, const Excerpt& excerpt);
    bool insertItem(NodeId container, std::size_t position, const std::string& item, const Excerpt& excerpt);
    std::string adapted(const std::string& text, const Excerpt& excerpt) const;
    std::string linesOf(const std::string& text, const Excerpt& excerpt,
                        const std::string& indentation) const;

    TomlFile& file;
    TomlTree& tree;
};

} // namespace Repository::Documents
