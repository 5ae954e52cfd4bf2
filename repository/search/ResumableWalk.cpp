#include "repository/search/ResumableWalk.h"

#include "repository/common/PathRules.h"

#include <algorithm>

namespace Repository {

ResumableWalk::ResumableWalk(AttributeTree& attributes, QString rootPath)
    : tree(attributes), root(std::move(rootPath)), lastPath(root)
{
}

void ResumableWalk::visit(int count, const std::function<bool(const Node&)>& visitor)
{
    const std::shared_lock lock(tree.structure);
    const Node* last = nullptr;
    const auto enter = [&](const Node& node) {
        last = &node;
        --count;
        if (visitor(node) && node.children)
            frames.push_back({node.children.get(), 0});
    };
    if (isBegun)
        resume();
    else if (const Node* const first = tree.nodeOf(root); first && first != &tree.top)
        enter(*first);
    else if (first && first->children)
        frames.push_back({first->children.get(), 0});
    isBegun = true;
    while (count > 0 && !frames.empty()) {
        Frame& frame = frames.back();
        if (frame.place == frame.children->places.size())
            frames.pop_back();
        else if (const Node* const child = frame.children->places[frame.place++])
            enter(*child);
    }
    done = frames.empty();
    if (last)
        lastPath = last->getPath();
    pause();
}

void ResumableWalk::pause()
{
    places.clear();
    for (const Frame& frame : frames)
        places.push_back(frame.place);
    frames.clear();
}

// From the last node, or the nearest above it that is still there. Its siblings may have moved.
void ResumableWalk::resume()
{
    const Node* const first = tree.nodeOf(root);
    QStringView path = lastPath;
    const Node* node = tree.nodeOf(path);
    while (first && !node) {
        path = parentPath(path);
        node = tree.nodeOf(path);
    }
    if (!first)
        return;
    std::size_t depth = 0;
    for (const Node* above = node; above != first; above = above->parent)
        ++depth;
    if (node->children && depth < places.size())
        frames.push_back({node->children.get(), std::min(places[depth], node->children->places.size())});
    for (; node != first; node = node->parent)
        frames.push_back({node->parent->children.get(), node->slot + std::size_t(1)});
    std::reverse(frames.begin(), frames.end());
}

} // namespace Repository
