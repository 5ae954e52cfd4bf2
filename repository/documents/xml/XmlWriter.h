#pragma once

#include "repository/documents/common/SpanWriter.h"
#include "repository/documents/xml/XmlTree.h"

#include <cstddef>
#include <string>

namespace Repository::Documents {

// Writes a tree. What nothing has edited is copied in long spans.
class XmlWriter
{
public:
    // Takes note of where the value of one node goes.
    explicit XmlWriter(const XmlTree& syntaxTree, NodeId located = noNode)
        : tree(syntaxTree), target(located), text(syntaxTree.getOriginal())
    {
    }

    std::string write();

    // After writing.
    std::size_t getLocation() const { return location; }

private:
    NodeId open(NodeId id);
    NodeId close(NodeId id);
    bool isCopied(NodeId id) const;
    void append(NodeId id, XmlPart part);

    const XmlTree& tree;
    const NodeId target;
    std::size_t location = 0;
    SpanWriter text;
};

} // namespace Repository::Documents
