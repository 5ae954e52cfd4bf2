#pragma once

#include "repository/backends/DocumentEdit.h"
#include "repository/history/History.h"

#include <QSet>

namespace Repository {

struct AttributeTree;
class TreeEdit;

// Takes steps of history back and does them again, each all or nothing: the tree is asked whether it is still
// what the step left, then the documents change, and can be taken back, and the tree follows. Where the text
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

    Outcome replay(TreeEdit& edit, const HistoryStep& step);
    Outcome check(TreeEdit& edit, const BackendChange& change) const;
    Outcome checkPlace(TreeEdit& edit, const Backend& backend, const QString& path, const NodeState& expected,
                       const NodeState& wanted) const;
    Outcome changeDocument(TreeEdit& edit, const BackendChange& change);
    Outcome changeValues(DocumentEdit& document, const BackendChange& change) const;
    Outcome changeShape(TreeEdit& edit, const BackendChange& change);
    Outcome changeEntries(TreeEdit& edit, const BackendChange& change) const;

    void showTree(TreeEdit& edit, const BackendChange& change) const;

    AttributeTree& tree;
    History& history;
    const Direction direction;
    QSet<const Backend*> unlikeEntries; // their documents may differ from the tree in more than the entries
};

} // namespace Repository
