#pragma once

#include "repository/documents/XmlTree.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace Repository::Documents {

// Writes a tree. Neighbouring pieces of the original text are copied in one go, so that the few edits of a
// large file cost little more than copying it.
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
    void append(std::string_view text);
    bool isCopied(XmlNodeId id) const;
    void append(XmlNodeId id, XmlPart part);
    void flush();

    const XmlTree& tree;
    const XmlNodeId target;
    std::size_t location = 0;
    std::string_view run; // of the original, not yet in `written`
    std::string written;
};

} // namespace Repository::Documents
