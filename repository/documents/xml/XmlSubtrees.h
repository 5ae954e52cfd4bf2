#pragma once

#include "repository/documents/xml/XmlFile.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// Renames, reads and writes subtrees of an xml file as their author has written them.
class XmlSubtrees
{
public:
    explicit XmlSubtrees(XmlFile& xmlFile) : file(xmlFile), tree(xmlFile.tree) {}

    // See Document.
    std::optional<Outcome> rename(std::string_view path, std::string_view name);
    std::optional<Excerpt> excerpt(std::string_view path) const;

    // Inserts an attribute, or an empty element in the text where the excerpt's is to be; gives the whole
    // text with it. Nothing when it cannot be.
    std::optional<std::string> insertInText(std::string_view path, const Excerpt& excerpt);

    // Why an attribute declares a prefix that names in its element have, and must stay; empty where it does
    // not.
    std::string explainUse(std::string_view path, NodeId attribute) const;

    // Whether all names in a subtree have their prefix declared around.
    std::vector<NodeId> withoutPrefix(NodeId id) const;

private:
    bool insertAttribute(NodeId id, std::string_view written);
    bool declaresUsedPrefix(NodeId attribute) const;

    XmlFile& file;
    XmlTree& tree;
};

} // namespace Repository::Documents
