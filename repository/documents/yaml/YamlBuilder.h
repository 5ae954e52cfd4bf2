#pragma once

#include "repository/documents/common/Document.h"
#include "repository/documents/yaml/YamlReader.h"
#include "repository/documents/yaml/YamlTree.h"

#include <string_view>
#include <unordered_map>
#include <vector>

namespace Repository::Documents {

// Makes the tree of a text from what the reader tells of it.
class YamlBuilder
{
public:
    static constexpr std::size_t maximumDepth = 1000;
    static constexpr std::size_t mostCopies = 100000; // of what aliases and merges show

    // As YamlReader does it.
    YamlBuilder(YamlTree& yamlTree, bool fillsGaps, bool readsPart);

    Outcome build();

private:
    // A collection that is not at its end yet.
    struct Frame
    {
        NodeId id = noNode;
        std::string anchor;
        bool isMap = false;
        bool hasKey = false;
        bool hasKeyProperties = false;
        bool hasMerge = false;
        YamlStyle keyStyle = YamlStyle::Plain;
        Type tag = Type::Group;
        std::size_t before = 0; // where what may tag its first element begins
        std::size_t key = 0;
        std::size_t keyEnd = 0;
        std::string keyAnchor;
        std::string keyText; // of an alias
    };

    struct Anchor
    {
        NodeId node = noNode;
        bool isKey = false;
        bool isOpen = false; // what it names is not at its end
    };

    Outcome take(const YamlEvent& event);
    Outcome checkBrackets(const YamlEvent& event) const;
    bool isKeyExplicit(const Frame& frame) const;
    Outcome checkBlock(const YamlEvent& event) const;
    Outcome checkColumn(const YamlEvent& event) const;
    bool isInKey() const { return keyDepth > 0; }
    bool expectsKey() const;
    void startKey(const YamlEvent& event);
    void goOnInKey(const YamlEvent& event);
    void endKey(std::size_t end);
    NodeId add(YamlNode node, const YamlEvent& event);
    void addScalar(const YamlEvent& event);
    void addAlias(const YamlEvent& event);
    void open(const YamlEvent& event);
    void close(const YamlEvent& event);
    void closeSequence(NodeId id);
    void finish();
    void placeEmpty(YamlNode& node);
    void placeBlock(const YamlEvent& event, std::size_t& begin, std::size_t& end);
    std::string nameOf(const YamlRange& anchor) const;
    void copyBelow(NodeId target, NodeId alias);
    NodeId copyOne(NodeId id, NodeId parent, bool isInherited);
    bool namesMerge(const Frame& frame) const;
    std::vector<NodeId> mapsBehind(NodeId merge) const;
    std::vector<NodeId> membersOf(NodeId map, const std::vector<NodeId>& sources) const;
    void inherit(NodeId map);
    YamlTree::Origin originBehind(const Anchor& anchor) const;
    bool isTextBehind(const Anchor& anchor) const;
    std::size_t sizeOf(NodeId id, std::size_t most) const;
    Type readTag(std::size_t begin) const;
    void readDirectives(std::size_t begin, std::size_t end);
    Type typeOf(const YamlRange& tag);
    std::string_view source() const { return tree.getOriginal(); }

    YamlTree& tree;
    std::vector<Frame> frames;
    std::unordered_map<std::string, Anchor> anchors;
    std::unordered_map<NodeId, NodeId> mergeTargets;          // of the aliases in merges
    std::unordered_map<std::string, std::string> tagPrefixes; // by their handles
    Outcome fault;
    bool mayInherit = true;  // not more than all copies may be
    std::size_t lastEnd = 0; // of what was read
    std::size_t keyDepth = 0;
    std::size_t copies = 0;
    bool mayHaveTags;
    bool fills;
    bool isPart; // of a file, where anchors may be missing
};

} // namespace Repository::Documents
