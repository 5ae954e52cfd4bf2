#pragma once

#include "repository/transaction/Transaction.h"

namespace Repository {

// Takes away a node and all below it: first in its backend, which may refuse, then in the tree. One thread.
class SubtreeRemoval
{
public:
    using Outcome = FrameworkCore::AppConfig::Outcome;

    SubtreeRemoval(Transaction& current, Node& root) : transaction(current), node(root) {}

    Outcome run();

    // The parts of it. Whoever takes the subtree out of its backend otherwise prepares that, too.
    Outcome check();
    Outcome removeFromBackend();
    void removeFromTree();

private:
    Transaction& transaction;
    Node& node;
    bool movesOthers = false;
};

} // namespace Repository
