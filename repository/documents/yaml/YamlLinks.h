#pragma once

#include "repository/documents/yaml/YamlFile.h"

#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// Which entries of a file show what is written elsewhere in it, by aliases and merges.
class YamlLinks
{
public:
    explicit YamlLinks(const YamlFile& yamlFile) : file(yamlFile), tree(yamlFile.tree) {}

    // See Document.
    Document::Origin originOf(std::string_view path) const;
    std::string sourceOf(std::string_view path) const;
    std::vector<std::string> followersOf(std::string_view path) const;
    bool isLinked(std::string_view path) const;

    // Why a copy cannot be edited; an outcome with the place of what makes it one.
    Outcome explainCopy(std::string_view path, NodeId id) const;

    // Whether it is an alias in what others show, which would show what it led to after it has another value.
    bool isShownThrough(NodeId id) const;

    // Whether the value would make a list of texts of a list in which an alias shows it, or the other way
    // round.
    bool reshapesLists(NodeId id, std::string_view spelling) const;

private:
    NodeId shownBy(NodeId id) const;

    const YamlFile& file;
    const YamlTree& tree;
};

} // namespace Repository::Documents
