#pragma once

#include "repository/store/AttributeTree.h"

#include <QString>

#include <functional>
#include <vector>

namespace Repository {

// Walks a node and all below it, parents first, siblings in the order of their file, in portions: between
// them the tree is free to change, and the walk goes on after the node that it has come to. One thread.
class ResumableWalk
{
public:
    // The empty path is the top, which is not visited itself.
    ResumableWalk(AttributeTree& tree, QString root);

    bool isDone() const { return done; }

    // Visits at most so many nodes, holding the structure lock. What is below a node is left out when the
    // visitor gives false.
    void visit(int count, const std::function<bool(const Node& node)>& visitor);

private:
    // The children of a node on the way, and the next of their places.
    struct Frame
    {
        const Children* children; // not owned
        std::size_t place;
    };

    void resume();
    void pause();

    AttributeTree& tree;
    const QString root;
    std::vector<Frame> frames; // from the root on; empty between portions
    bool isBegun = false;
    bool done = false;

    // Where it has paused.
    QString lastPath;
    std::vector<std::size_t> places; // of the frames
};

} // namespace Repository
