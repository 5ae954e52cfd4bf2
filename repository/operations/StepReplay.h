#pragma once

#include "repository/history/History.h"

#include <QSet>

namespace Repository {

struct AttributeTree;
class DocumentEdit;
class NodeWriter;
class Transaction;

// Takes steps of history back and does them again, each all or nothing: the tree is asked whether it is still
// what the step left, then the documents change, and the tree follows. Where the text
// of a file is what the step left, it becomes byte for byte what it was before; otherwise the values are
// brought back one by one. Any thread.
class StepReplay
{
public:
    using Direction = History::Direction;
    using Outcome = FrameworkCore::AppConfig::Outcome;

    StepReplay(AttributeTree& tree, History& history, Direction direction);

    Outcome run();

    // The same for a step that has been taken out of history; by now its backends may have been closed.
    Outcome run(HistoryStep step);

private:
    // A step seen in the direction of the replay.
    template <typename Change>
    const NodeState& from(const Change& change) const
    {
        return direction == Direction::Undo ? change.after : change.before;
    }
    template <typename Change>
    const NodeState& to(const Change& change) const
    {
        return direction == Direction::Undo ? change.before : change.after;
    }

    Outcome replay(Transaction& transaction, const HistoryStep& step);
    Outcome check(const NodeWriter& nodes, const BackendChange& change) const;
    Outcome checkPlace(const NodeWriter& nodes, const Backend& backend, const QString& path,
                       const NodeState& expected, const NodeState& wanted) const;
    Outcome changeDocument(Transaction& transaction, const BackendChange& change);
    Outcome changeValues(DocumentEdit& document, const BackendChange& change) const;
    Outcome changeShape(Transaction& transaction, const BackendChange& change);
    Outcome changeEntries(Transaction& transaction, const BackendChange& change) const;

    void showTree(Transaction& transaction, const BackendChange& change) const;

    AttributeTree& tree;
    History& history;
    const Direction direction;
    QSet<const Backend*> unlikeEntries; // their documents may differ from the tree in more than the entries
};

} // namespace Repository
