#pragma once

#include "repository/documents/common/ComponentCodec.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace Repository::Documents {

using NodeId = std::uint32_t;
constexpr NodeId noNode = UINT32_MAX;

// Where a node lies in its tree.
struct SyntaxNode
{
    NodeId parent = noNode;
    NodeId first = noNode; // child
    NodeId last = noNode;
    NodeId next = noNode;
    NodeId previous = noNode;
    std::uint32_t count = 0; // of children, as far as the format counts them
    bool hasOwnTexts : 1;    // some part was edited
    bool touched : 1;        // something in it or below was edited

    SyntaxNode() : hasOwnTexts(false), touched(false) {}
};

// A concrete syntax tree: nodes over spans of a file's text, one span a part, and the texts that edits put in
// place of parts. Node is a SyntaxNode with adopt and disown, which count children; Part an enumeration.
// Costs at most the depth.
template <typename Node, typename Part, std::size_t partCount>
class SyntaxTree
{
public:
    const std::string& getOriginal() const { return original; }

    // noNode in a text without any.
    NodeId getRoot() const { return root; }
    const Node& node(NodeId id) const { return nodes[id]; }
    Node& node(NodeId id) { return nodes[id]; }

    // While reading: appends a node as the last child of its parent, or as the root.
    NodeId read(const Node& node)
    {
        const NodeId id = allocate();
        nodes[id] = node;
        attach(id, node.parent == noNode ? noNode : nodes[node.parent].last);
        return id;
    }

    // How many nodes lie around a node.
    std::size_t depthOf(NodeId id) const
    {
        std::size_t depth = 0;
        while (id != noNode && (id = nodes[id].parent) != noNode)
            ++depth;
        return depth;
    }

    void setText(NodeId id, Part part, std::string text)
    {
        ownTexts[id][std::size_t(part)] = std::move(text);
        nodes[id].hasOwnTexts = true;
        touch(id);
    }

protected:
    using OwnTexts = std::array<std::optional<std::string>, partCount>;

    explicit SyntaxTree(std::string text) : original(std::move(text)) {}

    // The number of a new node, to be linked.
    NodeId allocate()
    {
        if (released.empty()) {
            nodes.emplace_back();
            return static_cast<NodeId>(nodes.size() - 1);
        }
        const NodeId id = released.back();
        released.pop_back();
        nodes[id] = Node();
        return id;
    }

    // Links a node that knows its parent after a sibling (noNode: as the first child), or as the root.
    void attach(NodeId id, NodeId previous)
    {
        if (nodes[id].parent == noNode)
            root = id;
        else
            link(id, previous);
    }

    void link(NodeId id, NodeId previous)
    {
        Node& node = nodes[id];
        Node& parent = nodes[node.parent];
        node.previous = previous;
        node.next = previous == noNode ? parent.first : nodes[previous].next;
        (previous == noNode ? parent.first : nodes[previous].next) = id;
        (node.next == noNode ? parent.last : nodes[node.next].previous) = id;
        parent.adopt(node);
    }

    void unlink(NodeId id)
    {
        const Node& node = nodes[id];
        Node& parent = nodes[node.parent];
        (node.previous == noNode ? parent.first : nodes[node.previous].next) = node.next;
        (node.next == noNode ? parent.last : nodes[node.next].previous) = node.previous;
        parent.disown(node);
    }

    // Forgets a node and all below it, each of which the callback hears of before.
    template <typename Callback>
    void release(NodeId id, const Callback& callback)
    {
        std::vector<NodeId> pending{id};
        while (!pending.empty()) {
            const NodeId next = pending.back();
            pending.pop_back();
            for (NodeId child = nodes[next].first; child != noNode; child = nodes[child].next) {
                callback(child);
                pending.push_back(child);
            }
            if (nodes[next].hasOwnTexts)
                ownTexts.erase(next);
            released.push_back(next);
        }
    }

    void touch(NodeId id)
    {
        for (; id != noNode && !nodes[id].touched; id = nodes[id].parent)
            nodes[id].touched = true;
    }

    // What an edit has put in place of a part; null for one that is as it was read.
    const std::string* ownText(NodeId id, Part part) const
    {
        if (!nodes[id].hasOwnTexts)
            return nullptr;
        const std::optional<std::string>& own = ownTexts.at(id)[std::size_t(part)];
        return own ? &*own : nullptr;
    }

    std::string_view span(std::uint32_t from, std::uint32_t to) const
    {
        return std::string_view(original).substr(from, to - from);
    }

    bool isTouched() const { return root != noNode && nodes[root].touched; }

    std::string original;
    std::vector<Node> nodes;
    std::vector<NodeId> released;
    std::unordered_map<NodeId, OwnTexts> ownTexts;
    NodeId root = noNode;
};

// Where a path leads in a syntax tree: the last of its nodes that is there, and the components after it.
struct PathMatch
{
    bool isPath = false;
    NodeId node = noNode;
    std::size_t depth = 0; // of that node below the one where the path begins
    std::vector<std::string_view> missing;

    // The node of the whole path; noNode where some of it is missing.
    NodeId target() const { return isPath && missing.empty() ? node : noNode; }
};

// Follows a path from a node down; findChild gives the child of a node by a component, noNode without one.
template <typename FindChild>
PathMatch matchPath(std::string_view path, NodeId from, const FindChild& findChild)
{
    PathMatch match;
    match.node = from;
    const auto components = splitPath(path);
    if (!components)
        return match;
    match.isPath = true;
    for (; match.depth < components->size(); ++match.depth) {
        const NodeId child = findChild(match.node, (*components)[match.depth]);
        if (child == noNode)
            break;
        match.node = child;
    }
    match.missing.assign(components->begin() + std::ptrdiff_t(match.depth), components->end());
    return match;
}

} // namespace Repository::Documents
