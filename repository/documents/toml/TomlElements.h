#pragma once

#include "repository/documents/toml/TomlFile.h"

#include <optional>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// Adds, removes and moves elements of arrays, as values and as tables. Nothing for what is not in an array.
class TomlElements
{
public:
    explicit TomlElements(TomlFile& tomlFile) : file(tomlFile), tree(tomlFile.tree) {}

    std::optional<Outcome> insert(std::string_view path, const std::vector<Entry>& entries);
    std::optional<Outcome> remove(std::string_view path, bool withComments); // of a list
    std::optional<Outcome> move(std::string_view path, std::string_view newPath);

    // Of an element of a list.
    std::optional<Span> locate(std::string_view path) const;

    // The array around a path; noNode for what is not in one.
    NodeId arrayAround(std::string_view path) const;

private:
    std::size_t countOf(NodeId array) const;
    void moveItem(NodeId array, std::size_t from, std::size_t to);
    void moveTable(NodeId array, std::size_t from, std::size_t to);

    TomlFile& file;
    TomlTree& tree;
};

} // namespace Repository::Documents
