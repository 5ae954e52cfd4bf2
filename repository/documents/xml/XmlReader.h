#pragma once

#include "repository/documents/common/Document.h"
#include "repository/documents/xml/XmlEntities.h"
#include "repository/documents/xml/XmlTree.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace Repository::Documents {

// Reads UTF-8 xml. XmlScanner finds the tags of plain files and checks them; Expat, which guards against
// entity bombs, those of all others. What is in and between tags is read from the text.
class XmlReader
{
public:
    // Elements in elements; a limit for whoever walks the tree, not for this reader.
    static constexpr std::size_t maximumDepth = 1000;
    static constexpr std::size_t maximumSize = 0x7FFFFFFF; // what the parser takes at once
    // The parser calls itself for an entity in an entity.
    static constexpr std::size_t maximumNestedEntities = 1000;

    XmlReader(XmlTree& emptyTree, XmlEntities& noEntities)
        : tree(emptyTree), entities(noEntities), text(emptyTree.getOriginal())
    {
    }

    Outcome read();

private:
    friend struct XmlHandlers;

    bool scan();
    void startAgain();
    Outcome parse();
    bool open(std::size_t at);
    bool close(std::size_t at);
    bool declare(std::string_view name, std::string_view text);
    bool declareTokens(std::string_view element, std::string_view attribute);
    std::size_t addAttributes(NodeId element, std::size_t at);
    void readSpace(NodeId attribute);
    void addText(std::size_t end);
    std::size_t afterBlanks(std::size_t at) const;
    void tagAll(NodeId element, std::string_view leading);
    void finish(NodeId element, std::size_t closing, std::size_t end);

    bool fail(std::size_t at, std::string message);
    std::string explain(int error, std::size_t at) const;
    std::string explainToken(std::size_t at) const;
    std::optional<std::size_t> openComment(std::size_t at) const;
    std::string currentTag() const;

    XmlTree& tree;
    XmlEntities& entities;
    const std::string& text;
    std::string fault; // and where it is
    std::size_t faultOffset = 0;
    NodeId current = noNode; // the element that is being read
    std::size_t depth = 0;
    std::size_t depthInEntity = 0; // elements that an entity brings along are none of the file
    std::size_t nestedEntities = 0;
    std::size_t cursor = 0; // where the parts of the next node begin
};

} // namespace Repository::Documents
