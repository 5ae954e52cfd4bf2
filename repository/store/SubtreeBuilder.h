#pragma once

#include "host/FrameworkCore/Values/Value.h"
#include "repository/common/PathBudget.h"
#include "repository/store/Delivery.h"
#include "repository/store/NewNodes.h"

#include <QHash>

#include <string>
#include <string_view>
#include <vector>

namespace Repository {

class PatternIndex;

// Builds the nodes of a document below a root that has no children yet, then files them all at once. Nothing
// needs to be compared there, and since a document visits parents before their children, the parent of the
// next node is nearly always at hand. The structure lock is held for all of its life; no other lock is taken
// before the nodes are filed, so that adding may be done under the backend's.
class SubtreeBuilder
{
public:
    // What is built belongs to the root's backend and has its access mode. Both outlive the builder.
    SubtreeBuilder(Node& emptyRoot, NodePages& memory);

    // A node that is not there yet; the path is relative to the root and not empty. Parents come first.
    void add(std::string_view path, const FrameworkCore::Values::Value& value);

    // Hands all nodes to the index, and appends what the watchers of the new attributes are to hear; false
    // when there was no memory for all of that.
    bool file(NodeIndex& index, const PatternIndex& patterns, std::vector<Delivery>& deliveries);

private:
    // A node that the next one may go into: the last one, and those above it.
    struct Level
    {
        std::size_t pathLength; // of the relative path
        int fullLength;         // of the path in the tree
        Node* node;             // not owned

        // Where the name of a node in it begins in its path.
        std::size_t nameBegin() const { return pathLength == 0 ? 0 : pathLength + 1; }
    };

    Level levelAbove(std::string_view path);
    Node& search(const QString& path);
    void appendName(std::string_view name);

    Node& root;
    NodePages& pages;
    NewNodes made;
    PathBudget budget;
    std::string last; // the relative path of the last level
    QString fullPath; // the same in the tree
    std::vector<Level> levels;
    std::vector<Node*> groups;    // that got children; not owned
    QHash<QString, Node*> byPath; // empty until a node is searched
};

} // namespace Repository
