#pragma once

#include "repository/notification/PatternIndex.h"
#include "repository/store/NodeIndex.h"
#include "repository/store/NodePages.h"

#include <QString>

#include <memory>
#include <shared_mutex>
#include <vector>

namespace Repository {

class Backend;

// The nodes of the tree in memory, found by their paths. It has no operations of its own: those are made of
// its members by whoever holds the locks that guard them.
//
// The structure lock guards the tree's shape: it is held for reading while nodes are walked, and for writing
// while nodes come and go, which Transaction does. A shard's lock guards the attributes of its nodes, and a
// node found under it stays alive while it is held; with the structure lock held, nodes are found without it.
// Locks are taken in the order saving of a file, structure, shard, history, backend, patterns; never two
// shards at once; and none is held while a callback or the log is called.
struct AttributeTree
{
    // The structure lock is held; the empty path is the top.
    const Node* nodeOf(QStringView path) { return path.isEmpty() ? &top : index.find(NodeIndex::Key(path)); }

    // Whether values must not be read there, of an attribute that there is or would be; the lock is held.
    bool hidesValues(QStringView path);

    // In the order of their creation. One that is closed meanwhile can still be used, and refuses edits and
    // saves. Takes the structure lock.
    std::vector<std::shared_ptr<Backend>> getBackends();

    std::shared_mutex structure;
    NodeIndex index;
    PatternIndex patterns;
    NodePages pages; // for nodes that come many at a time; guarded by structure, held for writing
    Node top;        // holds the top-level nodes; not in the index
    std::vector<std::shared_ptr<Backend>> backends; // guarded by structure
};

// Whether it is the repository's own, at ownRoot or below.
bool isOwn(const Node& node);

// The node and all below it, parents first; of one backend only, unless that is null.
std::vector<Node*> subtreeOf(Node& node, const Backend* onlyBackend);

} // namespace Repository
