#pragma once

#include "repository/documents/yaml/YamlEditor.h"
#include "repository/documents/yaml/YamlFile.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace Repository::Documents {

// Adds subtrees as their author has written them elsewhere, a member or an element with its comments, in the
// form and the column of its new place.
class YamlSubtrees
{
public:
    explicit YamlSubtrees(const YamlFile& yamlFile) : file(yamlFile), tree(yamlFile.tree), layout(yamlFile) {}

    // What has no place as it is written is refused.
    Outcome insertMember(YamlEditor& editor, NodeId map, const std::string& key,
                         const Excerpt& excerpt) const;
    Outcome insertElement(YamlEditor& editor, NodeId sequence, std::size_t position,
                          const Excerpt& excerpt) const;
    Outcome insertDocument(YamlEditor& editor, std::size_t position, const Excerpt& excerpt) const;

private:
    // What an excerpt holds, by offsets in its text.
    struct Piece
    {
        bool isElement = false;
        bool isCollection = false; // its value is a block of entries
        bool isBlock = false;      // or a text that has no place between brackets either
        bool hasBelow = false;     // comments below it
        std::size_t value = 0;     // after the ":" or "-"
        std::size_t content = 0;   // where the first token of the value begins
    };

    std::optional<Piece> read(const Excerpt& excerpt) const;
    std::string entryText(const Excerpt& excerpt, const Piece& piece, const std::string& key,
                          const std::string& indentation) const;
    std::string linesOf(const Excerpt& excerpt, const Piece& piece, const std::string& key,
                        std::size_t column) const;
    Outcome insertItem(YamlEditor& editor, NodeId flow, std::size_t position, const std::string& key,
                       const Excerpt& excerpt, const Piece& piece) const;

    const YamlFile& file;
    const YamlTree& tree;
    YamlLayout layout;
};

} // namespace Repository::Documents
