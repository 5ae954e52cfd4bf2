#pragma once

#include "repository/documents/json/JsonFile.h"

#include <optional>
#include <string>
#include <string_view>

namespace Repository::Documents {

// Renames, reads and writes subtrees of a json file as their author has written them.
class JsonSubtrees
{
public:
    explicit JsonSubtrees(JsonFile& jsonFile) : file(jsonFile), tree(jsonFile.tree) {}

    // See Document.
    std::optional<Outcome> rename(std::string_view path, std::string_view name);
    std::optional<Excerpt> excerpt(std::string_view path) const;
    bool hasComments(std::string_view path) const;

    // The text of a file that holds an excerpt and nothing else.
    std::string textOfWhole(const Excerpt& excerpt) const;

    // Inserts a placeholder with the excerpt's key and comments; gives the value to put there, or nothing.
    std::optional<std::string> insertPlaceholder(std::string_view path, const Excerpt& excerpt);

private:
    JsonFile& file;
    JsonTree& tree;
};

// How many objects and arrays lie within each other in a json text.
std::size_t depthOfJson(std::string_view text);

} // namespace Repository::Documents
