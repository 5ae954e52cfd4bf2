#pragma once

#include "repository/documents/common/ComponentCodec.h"
#include "repository/documents/common/SyntaxTree.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// Where a path leads in a syntax tree: the last of its nodes that is there, and the components after it.
struct PathMatch
{
    bool isPath = false;
    NodeId node = noNode;
    std::size_t depth = 0; // of that node below the one where the path begins
    std::vector<std::string_view> missing;

    bool isWhole() const { return isPath && missing.empty(); }
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
