#pragma once

#include "repository/documents/xml/XmlTree.h"

#include <string>
#include <string_view>

namespace Repository::Documents {

// Distributes blanks, line breaks, comments and type tags when a node comes or goes: what is new looks like
// its siblings, and what goes takes its line along, with its type tags and a comment on that line, and no
// others.
class XmlLayout
{
public:
    XmlLayout(XmlTree& syntaxTree, const std::string& fileLineEnd) : tree(syntaxTree), lineEnd(fileLineEnd) {}

    // Place a node that was just linked: after a sibling, or as the only child of an element that was
    // prepared for it, in the place of its content (what stood between its tags).
    void placeAfter(NodeId id, NodeId sibling);
    void placeOnly(NodeId id, std::string_view content);

    // Places a type tag in front of the element; it is in a line of its own if the element begins one.
    void addTypeTag(NodeId element, const std::string& tag);

    // Takes out the type tag for an attribute of the element.
    void dropTypeTag(NodeId element, std::string_view attribute);

    // To be called before a node is unlinked; what stays of the text around it comes together after it.
    void takeOut(NodeId id);

    // What is after a node, up to the next one or to the end tag of its parent.
    std::string_view triviaAfter(NodeId id) const;
    void setTriviaAfter(NodeId id, std::string trivia);

    // Without the end tag of the element.
    std::string_view closingTrivia(NodeId element) const;
    void setClosingTrivia(NodeId element, std::string trivia);

    bool isMixed(NodeId element) const;

private:
    std::string indentOf(NodeId element) const;
    std::string unitOfIndent() const;
    bool breaksLines(NodeId element, std::string_view content) const;

    XmlTree& tree;
    const std::string& lineEnd;
};

} // namespace Repository::Documents
