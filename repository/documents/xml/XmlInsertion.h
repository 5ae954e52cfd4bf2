#pragma once

#include "repository/documents/xml/XmlFile.h"

#include <string_view>
#include <vector>

namespace Repository::Documents {

// Adds one entry to an xml file, with the elements that lead to it.
class XmlInsertion
{
public:
    explicit XmlInsertion(XmlFile& xmlFile)
        : file(xmlFile), tree(xmlFile.tree), values(xmlFile.values), editor(xmlFile.editor)
    {
    }

    Outcome insert(std::string_view path, const Value& value);

    // What a node needs beside itself.
    Outcome checkSurroundings(NodeId id) const;

    // Whether the file can hold the name of an element or attribute, and, for the element with it, has its
    // prefix.
    Outcome checkName(std::string_view name) const;
    Outcome checkPrefix(NodeId element, std::string_view name) const;

private:
    Outcome insertValue(NodeId id, std::string_view path, const Value& value);
    Outcome checkWay(const PathMatch& way, const Value& value, std::vector<XmlComponent>& steps) const;
    Outcome checkStep(NodeId parent, std::string_view component, const XmlComponent& step) const;

    XmlFile& file;
    XmlTree& tree;
    XmlValues& values;
    XmlEditor& editor;
};

} // namespace Repository::Documents
