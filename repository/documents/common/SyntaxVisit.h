#pragma once

#include "repository/documents/common/Document.h"
#include "repository/documents/common/SyntaxTree.h"

#include <cstddef>
#include <functional>
#include <vector>

namespace Repository::Documents {

// Visits the entries of a syntax tree in its order. The file says what its nodes are: isShown, false for one
// that is no entry, nor is anything below it; mayHoldEntries; appendName, of an entry at a position in its
// group; valueNodeOf, read and isArray.
template <typename File>
void visitEntries(const File& file, const std::function<void(const Entry&)>& visitor)
{
    struct Level
    {
        std::size_t pathLength;
        std::size_t position;
    };
    Entry entry;
    std::vector<Level> levels;
    NodeId id = file.tree.getRoot();
    while (id != noNode) {
        const bool isShown = file.isShown(id);
        if (!levels.empty() && isShown) {
            if (!entry.path.empty())
                entry.path += '.';
            file.appendName(entry.path, id, levels.back().position);
        }
        const NodeId valueNode = isShown ? file.valueNodeOf(id) : noNode;
        if (isShown && (valueNode != noNode || !levels.empty())) {
            entry.value = valueNode == noNode ? Value() : file.read(valueNode, entry.path);
            entry.isArray.reset();
            if (valueNode == noNode)
                entry.isArray = file.isArray(id);
            visitor(entry);
        }
        if (isShown && file.mayHoldEntries(id) && file.tree.node(id).first != noNode) {
            levels.push_back({entry.path.size(), 0});
            id = file.tree.node(id).first;
            continue;
        }
        while (!levels.empty() && file.tree.node(id).next == noNode) {
            levels.pop_back();
            id = file.tree.node(id).parent;
        }
        if (levels.empty())
            return;
        ++levels.back().position;
        entry.path.resize(levels.back().pathLength);
        id = file.tree.node(id).next;
    }
}

} // namespace Repository::Documents
