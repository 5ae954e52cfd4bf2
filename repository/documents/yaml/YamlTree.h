#pragma once

#include "repository/documents/common/HashIndex.h"
#include "repository/documents/yaml/YamlNode.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Repository::Documents {

static_assert(noNode == HashIndex::none);

// The key of the member that holds the own value of a node which has children too.
constexpr std::string_view yamlOwnValueKey = "#value";

// The tree of a text of YAML, in the order of the text. After an edit of more than a value the text is read
// again, as a whole or as far as its neighbours.
class YamlTree : public SyntaxTree<YamlNode, YamlPart, 1>
{
public:
    explicit YamlTree(std::string text) : SyntaxTree(std::move(text)) {}

    YamlNode& node(NodeId id)
    {
        if (hasShifts)
            settle(id);
        return nodes[id];
    }
    const YamlNode& node(NodeId id) const { return const_cast<YamlTree*>(this)->node(id); }

    std::string_view text(std::size_t begin, std::size_t end) const
    {
        return std::string_view(original).substr(begin, end - begin);
    }

    // The next node in the order of the text; noNode after the last one.
    NodeId following(NodeId id) const;

    // Whether a map has a key twice, and whether there are directives.
    bool hasRepeatedKeys() const { return !ordinals.empty(); }
    bool hasDirectives() const { return isDirected; }

    // The value as it is written now, and as it was read.
    std::string_view valueText(NodeId id) const;
    std::string_view readValueText(NodeId id) const { return text(node(id).value, node(id).valueEnd); }
    void restoreValue(NodeId id);

    // The only edited value, whose text is read again.
    void takeValue(NodeId id);
    bool isEdited(NodeId id) const { return nodes[id].hasOwnTexts; }

    // The decoded key, in the text or in the buffer.
    std::string_view keyText(NodeId id, std::string& buffer) const;

    // How many of its key, with it, come up to a member.
    std::size_t ordinalOf(NodeId id) const { return nodes[id].isRepeated ? ordinals.at(id) : 1; }

    // The node that a copy or an alias shows; noNode for an alias of nothing, and for any other node.
    struct Origin
    {
        NodeId node = noNode;
        bool isKey = false; // its key is what is shown
    };
    Origin originOf(NodeId id) const;

    // What shows a node, in the order of the text.
    const std::vector<NodeId>& sharersOf(NodeId origin) const;

    // Whether a node shows another one, or the other way round, and whether any does.
    bool isLinked(NodeId id) const;
    bool hasLinks() const { return !origins.empty(); }

    // Whether the key of a node is the one that merges maps into the one around it.
    bool isMergeKey(NodeId id) const;

    // Whether it is what a map merges, or lies in that.
    bool isInMerge(NodeId id) const;

    // The last child that is written in the collection.
    NodeId lastOwn(NodeId collection) const;

    // The child by its component of a path; noNode without one. An own value is not a child, and neither are
    // the elements of a list.
    NodeId find(NodeId parent, std::string_view component) const;
    NodeId findKey(NodeId parent, std::string_view key, std::size_t ordinal = 1) const;
    NodeId elementAt(NodeId sequence, std::size_t position) const;
    std::size_t positionOf(NodeId element) const;
    void appendName(std::string& path, NodeId id, std::size_t position) const;
    NodeId findOwnValue(NodeId id) const;
    bool isOwnValue(NodeId id) const;

    // The first node at or below that an alias leads to from elsewhere; noNode for none.
    NodeId findUsed(NodeId id) const;

    // Where the first alias of a node is.
    std::size_t findAliasOf(NodeId id) const;

    // While reading.
    void makeRoom(std::size_t count) { nodes.reserve(count); }
    void setRoot(NodeId id);
    void setOrigin(NodeId id, Origin origin);
    void setKeyText(NodeId id, std::string text) { keyTexts[id] = std::move(text); }
    void copyKeyText(NodeId from, NodeId to);
    void numberMembers(NodeId map);
    void numberLast(NodeId map);
    void noteAlias(NodeId target, std::size_t offset) { aliases.emplace(target, offset); }
    void noteDirective() { isDirected = true; }

    // Members or elements of a block that follow each other, and the lines in which they are.
    struct Run
    {
        NodeId collection = noNode;
        NodeId first = noNode;
        NodeId end = noNode; // the one after the last
        std::size_t begin = 0;
        std::size_t textEnd = 0;
    };

    // Puts the text and the nodes of another run in the place of one. Neither has anchors, aliases or keys
    // twice, the collection keeps a child, and nothing is edited.
    void replace(const Run& run, const YamlTree& from, const Run& part);

private:
    static constexpr std::uint32_t fewChildren = 8; // are looked through

    bool hasName(NodeId id, std::string_view key, std::size_t ordinal) const;
    void numberMember(NodeId id, HashIndex* index);
    void drop(NodeId id);
    NodeId graft(const YamlTree& from, NodeId id, NodeId parent, NodeId previous, std::uint32_t by);
    NodeId place(const YamlNode& node, NodeId previous);
    void shift(std::size_t from, std::uint32_t by);
    void settleEnds(NodeId collection);

    // Nodes that follow each other in memory, and mostly in the text. Where all their offsets are shifted by
    // the same, that is only noted, until one of the nodes is asked for.
    struct Page
    {
        std::uint32_t least = 0; // of the offsets; not known before they are looked through
        std::uint32_t most = UINT32_MAX;
        std::uint32_t by = 0; // is still to be added to them
    };
    static constexpr std::size_t pageSize = 256;

    void settle(NodeId id);
    void settlePage(std::size_t number);
    void forgetBounds(NodeId id);

    std::unordered_map<NodeId, Origin> origins;
    std::unordered_map<NodeId, std::vector<NodeId>> sharers; // of origins
    std::unordered_map<NodeId, std::string> keyTexts;        // of keys that are aliases
    std::unordered_map<NodeId, std::size_t> ordinals;
    std::unordered_map<NodeId, std::size_t> aliases;                  // the first of each target
    std::unordered_map<NodeId, HashIndex> indexes;                    // of large maps
    mutable std::unordered_map<NodeId, std::vector<NodeId>> elements; // of sequences that were searched
    bool isDirected = false;
    std::vector<Page> pages; // none before the first shift
    bool hasShifts = false;
};

} // namespace Repository::Documents
