#pragma once

#include "repository/documents/common/PathMatch.h"
#include "repository/documents/xml/XmlEditor.h"
#include "repository/documents/xml/XmlEntities.h"
#include "repository/documents/xml/XmlText.h"
#include "repository/documents/xml/XmlTree.h"
#include "repository/documents/xml/XmlValues.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Repository::Documents {

// An xml text as entries with paths and values. Its parts refer to each other, so that they stay where they
// are.
class XmlFile
{
public:
    explicit XmlFile(std::string text)
        : tree(std::move(text)), values(tree, entities, spelling), editor(tree, values, spelling)
    {
    }

    PathMatch match(std::string_view path);
    NodeId find(std::string_view path);
    NodeId findChild(NodeId parent, std::string_view component);
    void appendComponent(std::string& path, NodeId id) const;

    XmlTree tree;
    XmlEntities entities;
    XmlSpelling spelling;
    XmlValues values;
    XmlEditor editor;

    // While entries come in a run: those that lack something so far.
    struct Lacking
    {
        NodeId node;
        std::string path;
    };
    std::optional<std::vector<Lacking>> run;
};

} // namespace Repository::Documents
