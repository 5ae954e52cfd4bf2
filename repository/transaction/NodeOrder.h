#pragma once

#include "repository/store/AttributeTree.h"
#include "repository/store/Delivery.h"

#include <set>
#include <vector>

namespace Repository {

// Keeps nodes in the order of their backends. The structure lock is held for all of its life.
class NodeOrder
{
public:
    explicit NodeOrder(AttributeTree& attributes) : tree(attributes) {}

    // Where among its siblings a new child belongs, as its backend has them.
    std::size_t placeFor(const QString& path, const Node& parent);

    // Whether a node is known to be where its backend has it.
    bool isInPlace(const Node& node);

    // Brings the backend's nodes into its order in restoreAll, after changes that may move nodes.
    void restoreLater(Backend& backend) { unordered.insert(&backend); }

    // Appends what the watchers of moved nodes are to hear.
    void restoreAll(std::vector<Delivery>& deliveries);

    bool hasFailed() const { return failed; } // memory was refused for some of it

private:
    void restore(Backend& backend, std::vector<Delivery>& deliveries);
    void announce(const Node& parent, std::vector<Delivery>& deliveries);

    AttributeTree& tree;
    std::set<Backend*> unordered; // not owned
    bool failed = false;
};

} // namespace Repository
