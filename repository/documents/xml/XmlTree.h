#pragma once

#include "repository/documents/common/HashIndex.h"
#include "repository/documents/xml/XmlNames.h"
#include "repository/documents/xml/XmlNode.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Repository::Documents {

// Identifies a child of its parent.
struct XmlKey
{
    XmlKind kind = XmlKind::Element;
    std::uint32_t name = XmlNames::none;
    std::uint32_t number = 1;
};

// The syntax tree of an xml text: each byte up to the end of the root element belongs to a part of a node, so
// that the parts in order and the epilogue are the text. It knows neither paths nor layout. Linking also
// costs the later siblings of one name, which are renumbered.
class XmlTree : public SyntaxTree<XmlNode, XmlPart, xmlPartCount>
{
public:
    explicit XmlTree(std::string text) : SyntaxTree(std::move(text)) {}

    const XmlNames& getNames() const { return names; }
    XmlNames& getNames() { return names; }

    // While reading: drops all nodes that have been read.
    void clear();

    // While reading: makes room for so many nodes.
    void reserve(std::size_t count) { nodes.reserve(count); }

    // While reading: numbers the children of an element that is complete.
    void complete(NodeId element);

    // noNode without one. The first search in a large element indexes its children.
    NodeId find(NodeId parent, const XmlKey& key);

    // The first child that is not an attribute, and the last attribute.
    NodeId firstInside(NodeId element) const;
    NodeId lastAttribute(NodeId element) const;

    // An edit: a node with the next number of its name, after a sibling or (noNode) as the first child.
    NodeId insert(NodeId parent, NodeId previous, const XmlKey& key);

    // An edit: takes a node and all below it out of the tree; siblings with its name move up.
    void remove(NodeId id);

    // An edit: gives a node another name, which no sibling has; siblings with the former one move up. Whoever
    // calls it sets the text of the label before, since what was read is found by the name.
    void rename(NodeId id, std::uint32_t name);

    std::string_view text(NodeId id, XmlPart part) const;

    // What the part was in the file; nothing for a node, or a part of it, that was not there.
    std::optional<std::string_view> originalText(NodeId id, XmlPart part) const;

    // All of a node and what is below it, as it was read.
    std::string_view originalText(NodeId id) const { return span(nodes[id].leading, nodes[id].end); }

    // What follows the root element.
    std::string_view epilogue() const;
    void setEpilogue(std::string text) { ownEpilogue = std::move(text); }

    // True when no edit has changed the text.
    bool isOriginal() const;

private:
    // The children of one name of the parent that was numbered last.
    struct Count
    {
        NodeId parent = noNode;
        std::uint32_t number = 0;
    };

    static constexpr std::uint32_t searchedCount = 12; // up to this many children are found without an index

    std::string_view readText(const XmlNode& node, XmlPart part) const;
    void buildIndex(NodeId element);
    void leaveIndex(NodeId id);
    void moveUp(NodeId parent, XmlKey key);

    XmlNames names;
    std::vector<Count> counts; // by name, while the children of an element are numbered
    HashIndex index;           // of the children of large elements
    std::size_t indexed = 0;   // how many there have been in it
    std::optional<std::string> ownEpilogue;
};

} // namespace Repository::Documents
