#pragma once

#include "repository/documents/common/StretchWriter.h"
#include "repository/documents/xml/XmlTree.h"

#include <cstddef>
#include <string>

namespace Repository::Documents {

// Writes a tree. What nothing has edited is copied in long stretches.
class XmlWriter
{
public:
    // Takes note of where the value of one node goes.
    explicit XmlWriter(const XmlTree& syntaxTree, XmlNodeId located = noXmlNode);

    std::string write();

    // After writing.
    std::size_t getLocation() const { return location; }

private:
    XmlNodeId open(XmlNodeId id);
    XmlNodeId close(XmlNodeId id);
    bool isCopied(XmlNodeId id) const;
    void append(XmlNodeId id, XmlPart part);

    const XmlTree& tree;
    const XmlNodeId target;
    std::size_t location = 0;
    StretchWriter text;
};

} // namespace Repository::Documents
