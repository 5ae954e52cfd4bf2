#pragma once

#include "repository/history/StepRecorder.h"
#include "repository/store/AttributeTree.h"

#include <map>
#include <vector>

namespace Repository {

// Keeps what nodes of backends were before a transaction came to them. The structure lock is held.
class BeforeImages
{
public:
    // A node that is about to change; what it is, or that there was none.
    void add(const Node& node, const NodeState& before);

    // What must not be read is touched in the backend, so that its text is not for history.
    void hide(Backend* backend);

    // Records what has become of the backend's nodes.
    void report(Backend& backend, AttributeTree& tree, StepRecorder& recorder);

private:
    struct Image
    {
        const Node* node; // not owned; of the transaction, which keeps even removed ones
        QString path;
        NodeState before;
    };

    struct OfBackend
    {
        std::vector<Image> images;
        bool isHidden = false;
    };

    std::map<Backend*, OfBackend> backends; // not owned
};

} // namespace Repository
