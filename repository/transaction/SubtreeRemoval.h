#pragma once

#include "repository/transaction/TreeEdit.h"

namespace Repository {

// Takes away a node and all below it: first in its backend, which may refuse, then in the tree. One thread.
class SubtreeRemoval
{
public:
    using Outcome = FrameworkCore::AppConfig::Outcome;

    SubtreeRemoval(TreeEdit& treeEdit, Node& root) : edit(treeEdit), node(root) {}

    Outcome removeFromBackend();
    void removeFromTree();

private:
    TreeEdit& edit;
    Node& node;
    bool movesOthers = false;
};

} // namespace Repository
