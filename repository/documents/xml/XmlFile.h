#pragma once

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

constexpr std::string_view xmlTextComponent = "#text";

// What a component of a path names: an element by its name, an attribute by "@" and its name, a text between
// elements by "#text"; repeated ones by their number.
struct XmlComponent
{
    XmlKind kind = XmlKind::Element;
    std::string name; // empty for a text
    std::uint32_t number = 1;
};

// Nothing for a component that no file can have.
std::optional<XmlComponent> readXmlComponent(std::string_view component);

// True for the name of an element or attribute as the parser reads them, prefix and all.
bool isXmlName(std::string_view name);

// An xml text as entries with paths and values. Its parts refer to each other, so it is not moved.
class XmlFile
{
public:
    explicit XmlFile(std::string text)
        : tree(std::move(text)), values(tree, entities, spelling), editor(tree, values, spelling)
    {
    }

    PathMatch match(std::string_view path);
    NodeId find(std::string_view path) { return match(path).target(); }
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
