#pragma once

#include "repository/documents/common/HashIndex.h"
#include "repository/documents/xml/XmlNames.h"
#include "repository/documents/xml/XmlNode.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace Repository::Documents {

// What tells a child from all others of its parent.
struct XmlKey
{
    XmlKind kind = XmlKind::Element;
    std::uint32_t name = XmlNames::none;
    std::uint32_t number = 1;
};

// The concrete syntax tree of an xml text: every byte up to the end of the root element belongs to a part of
// a node, so that writing the parts in order, and what follows the root, gives the text. The tree knows
// nothing of paths and layout. Linking and changing parts costs the depth of the node at most, but for the
// numbers of later siblings of the same name.
class XmlTree
{
public:
    explicit XmlTree(std::string text) : original(std::move(text)) {}

    const std::string& getOriginal() const { return original; }
    const XmlNames& getNames() const { return names; }
    XmlNames& getNames() { return names; }

    // noXmlNode in a text without elements.
    XmlNodeId getRoot() const { return root; }
    const XmlNode& node(XmlNodeId id) const { return nodes[id]; }
    XmlNode& node(XmlNodeId id) { return nodes[id]; }

    // While reading: drops all nodes that have been read.
    void clear();

    // While reading: makes room for so many nodes.
    void reserve(std::size_t count) { nodes.reserve(count); }

    // While reading: appends a node as the last child of its parent, or as the root.
    XmlNodeId read(const XmlNode& node);

    // While reading: numbers the children of an element that is complete.
    void complete(XmlNodeId element);

    // The child by its kind, name and number; noXmlNode without one. The first search in an element of many
    // children makes an index of them.
    XmlNodeId find(XmlNodeId parent, const XmlKey& key);

    // The first child that is no attribute, and the last attribute.
    XmlNodeId firstInside(XmlNodeId element) const;
    XmlNodeId lastAttribute(XmlNodeId element) const;

    // An edit: a node with the next number of its name, linked in its parent behind a sibling (noXmlNode: as
    // the first child).
    XmlNodeId insert(XmlNodeId parent, XmlNodeId previous, const XmlKey& key);

    // An edit: takes a node and all below it out of the tree; siblings with its name move up.
    void remove(XmlNodeId id);

    std::string_view text(XmlNodeId id, XmlPart part) const;
    void setText(XmlNodeId id, XmlPart part, std::string text);

    // What the part was in the file; nothing for a node, or a part of it, that was not there.
    std::optional<std::string_view> originalText(XmlNodeId id, XmlPart part) const;

    // All of a node and what is below it, as it was read.
    std::string_view originalText(XmlNodeId id) const
    {
        return std::string_view(original).substr(nodes[id].lead, nodes[id].end - nodes[id].lead);
    }

    // What follows the root element.
    std::string_view epilogue() const;
    void setEpilogue(std::string text) { ownEpilogue = std::move(text); }

    // True when no edit has changed the text.
    bool isOriginal() const;

private:
    using OwnTexts = std::array<std::optional<std::string>, xmlPartCount>;

    // The children of one name of the parent that was numbered last.
    struct Count
    {
        XmlNodeId parent = noXmlNode;
        std::uint32_t number = 0;
    };

    static constexpr std::uint32_t searchedCount = 12; // up to this many children are found without an index

    void link(XmlNodeId id, XmlNodeId previous);
    void unlink(XmlNodeId id);
    void release(XmlNodeId id);
    void touch(XmlNodeId id);
    std::string_view span(const XmlNode& node, XmlPart part) const;
    void buildIndex(XmlNodeId element);
    void leaveIndex(XmlNodeId id);
    void moveUp(XmlNodeId parent, XmlKey key);

    std::string original;
    XmlNames names;
    std::vector<XmlNode> nodes;
    std::vector<XmlNodeId> released;
    std::unordered_map<XmlNodeId, OwnTexts> ownTexts;
    std::vector<Count> counts; // by name, while the children of an element are numbered
    HashIndex index;           // of the children of large elements
    std::size_t indexed = 0;   // how many there have been in it
    std::optional<std::string> ownEpilogue;
    XmlNodeId root = noXmlNode;
};

} // namespace Repository::Documents
