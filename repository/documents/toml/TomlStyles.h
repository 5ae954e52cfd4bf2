#pragma once

#include "repository/documents/toml/TomlBranch.h"
#include "repository/documents/toml/TomlFile.h"

#include <string>

namespace Repository::Documents {

// How new lines of a file look: as those beside them.
class TomlStyles
{
public:
    explicit TomlStyles(TomlFile& tomlFile) : file(tomlFile), tree(tomlFile.tree) {}

    // Lines beside this statement.
    TomlStyle at(StatementId neighbour) const;
    std::string indentationOf(StatementId statement) const;

    // A new inline table at a place: as this one is, or the last one in this array.
    TomlStyle inBraces(NodeId place) const;

    // Whether a new header has a blank line above it, as the ones before have, or those of elements the last
    // one.
    bool areSpaced(StatementId after, bool isElement) const;

private:
    std::string lineSeparator(StatementId neighbour) const;
    NodeId bracesAt(NodeId place) const;

    TomlFile& file; // not owned
    const TomlTree& tree;
};

} // namespace Repository::Documents
