#pragma once

#include "repository/documents/common/Document.h"
#include "repository/documents/common/SyntaxTree.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// Finds the node that holds the value of an entry, or says why the entry can have no such value.
template <typename File>
Outcome findSettable(const File& file, std::string_view path, const Value& value, NodeId& valueNode)
{
    const NodeId id = file.find(path);
    if (id == noNode)
        return refused(Reason::tr("there is no entry %1", {quoted(path)}));
    valueNode = file.valueNodeOf(id);
    if (valueNode == noNode)
        return refused(Reason::tr("%1 is a group, which has no value of its own", {quoted(path)}));
    if (value.type == Type::Group)
        return refused(Reason::tr("%1 has a value and cannot become a group", {quoted(path)}));
    return {};
}

// Walks over the entries of a syntax tree in its order, and calls back with the path of each, its node, and
// the one of its value or noNode. The file says what its nodes are: isShown, false for one that is no entry,
// nor is anything below it; mayHoldEntries; appendName, of an entry at a position in its group; valueNodeOf.
// The paths are made in the text, which is empty at first.
template <typename File, typename Callback>
void walkEntries(const File& file, std::string& path, const Callback& callback)
{
    struct Level
    {
        std::size_t pathLength;
        std::size_t position;
    };
    std::vector<Level> levels;
    NodeId id = file.tree.getRoot();
    while (id != noNode) {
        const bool isShown = file.isShown(id);
        if (!levels.empty() && isShown) {
            if (!path.empty())
                path += '.';
            file.appendName(path, id, levels.back().position);
        }
        const NodeId valueNode = isShown ? file.valueNodeOf(id) : noNode;
        if (isShown && (valueNode != noNode || !levels.empty()))
            callback(path, id, valueNode);
        if (isShown && file.mayHoldEntries(id) && file.tree.node(id).first != noNode) {
            levels.push_back({path.size(), 0});
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
        path.resize(levels.back().pathLength);
        id = file.tree.node(id).next;
    }
}

template <typename File, typename Callback>
void walkEntries(const File& file, const Callback& callback)
{
    std::string path;
    walkEntries(file, path, callback);
}

// See Document::visit; the file has read and isArray, too.
template <typename File>
void visitEntries(const File& file, const std::function<void(const Entry&)>& visitor)
{
    Entry entry;
    walkEntries(file, entry.path, [&](const std::string& path, NodeId id, NodeId valueNode) {
        entry.value = valueNode == noNode ? Value() : file.read(valueNode, path);
        entry.isArray.reset();
        if (valueNode == noNode)
            entry.isArray = file.isArray(id);
        visitor(entry);
    });
}

} // namespace Repository::Documents
