#pragma once

#include "repository/transaction/Transaction.h"

namespace Repository {

// Brings nodes in line with what their backends hold, as a part of a transaction. Nested backends are
// left alone. One thread.
class Projection
{
public:
    explicit Projection(Transaction& current) : transaction(current), nodes(current.getNodes()) {}

    using UpdateResult = FrameworkCore::Notification::UpdateResult;

    // Makes the tree below the backend's root what the backend holds. The watchers hear of other values as
    // changes of that kind.
    void showAll(Backend& backend, UpdateResult kind = UpdateResult::Reloaded);

    // The same where no more than these changes has come to the backend since the tree showed it.
    void showChanges(Backend& backend, const DocumentChanges& changes);

    // Gives the backend its root, which holds nothing yet, and shows it there.
    void mount(Backend& backend);

    // Takes the backend's nodes out of the tree. Those that lead to nested backends stay as groups of
    // whatever the root lies in.
    void unmount(const Backend& backend);

private:
    void hideEntry(Node& node);
    void showEntry(Backend& backend, Node& node, const FrameworkCore::Values::Value& value,
                   UpdateResult kind = UpdateResult::Reloaded);
    void build(Backend& backend, Node& root);

    Transaction& transaction;
    NodeWriter& nodes;
};

} // namespace Repository
