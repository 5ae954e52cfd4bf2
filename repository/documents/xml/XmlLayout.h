#pragma once

#include "repository/documents/xml/XmlTree.h"
#include "repository/documents/xml/XmlTypeTag.h"

#include <string>
#include <string_view>

namespace Repository::Documents {

// Lays out nodes that come or go: a new one looks like its siblings, a removed one takes its line along, with
// its type tags and a comment on that line only.
class XmlLayout
{
public:
    XmlLayout(XmlTree& syntaxTree, const std::string& fileLineEnd) : tree(syntaxTree), lineEnd(fileLineEnd) {}

    // Place a newly linked node: after a sibling, or as the only child in place of the element's content.
    void placeAfter(NodeId id, NodeId sibling);
    void placeOnly(NodeId id, std::string_view content);

    // Places a type tag in front of the element; it is in a line of its own if the element begins one.
    void addTypeTag(NodeId element, const std::string& tag);

    // Puts a type tag in the place of the one for an attribute of the element, or for itself.
    void rewriteTypeTag(NodeId element, std::string_view attribute, XmlTypeTag tag);

    // Takes out the type tags for an attribute of the element, or for itself; there may be several.
    void dropTypeTags(NodeId element, std::string_view attribute);

    // To be called before a node is unlinked; what stays of the text around it comes together after it.
    void takeOut(NodeId id);

    // What is after a node, up to the next one or to the end tag of its parent.
    std::string_view triviaAfter(NodeId id) const;
    void setTriviaAfter(NodeId id, std::string trivia);

    // Without the end tag of the element.
    std::string_view closingTrivia(NodeId element) const;
    void setClosingTrivia(NodeId element, std::string trivia);

    bool isMixed(NodeId element) const;

    // The blanks at the beginning of the line in which the element begins; whether it begins it.
    std::string indentOf(NodeId element) const;
    bool beginsLine(NodeId element) const;

    // What is written of an element beside itself: the lines of comments and type tags right above it, and a
    // comment after it on its line.
    std::string linesAbove(NodeId element) const;
    std::string commentAfter(NodeId element) const;
    void dropLinesAbove(NodeId element);

    // Gives the type tags of an attribute its new name.
    void renameTypeTags(NodeId element, std::string_view attribute, std::string_view name);

private:
    std::string unitOfIndent() const;
    bool breaksLines(NodeId element, std::string_view content) const;

    XmlTree& tree;
    const std::string& lineEnd;
};

} // namespace Repository::Documents
