#pragma once

#include "repository/history/History.h"
#include "repository/transaction/Transaction.h"

#include <memory>

namespace Repository {

// The attributes with the history of their changes, which all operations work on. Any thread.
class AttributeStore
{
public:
    using Outcome = FrameworkCore::AppConfig::Outcome;

    // The bound is that of history, in bytes.
    explicit AttributeStore(std::size_t historyBound = History::defaultBound)
        : tree(std::make_shared<AttributeTree>()), history(historyBound)
    {
    }

    // Handles of registrations outlive the store, but not the tree.
    const std::shared_ptr<AttributeTree>& getTree() const { return tree; }
    History& getHistory() { return history; }

    // Runs an operation in a transaction of one operation on one backend, which is a step of history.
    template <typename Operation>
    Outcome change(const History::StepName& name, const Operation& operation)
    {
        const History::Scope step(history, name);
        Transaction transaction(*tree, step.getRecorder());
        return finish(transaction, operation(transaction));
    }

    // The same for several operations on what the paths touch. A refusal rolls them back.
    template <typename Operation>
    Outcome changeAll(const History::StepName& name, const QStringList& paths, const Operation& operation)
    {
        const History::Scope step(history, name);
        Transaction transaction(*tree, step.getRecorder(), paths);
        return finish(transaction, operation(transaction));
    }

private:
    static Outcome finish(Transaction& transaction, Outcome outcome)
    {
        if (outcome.ok())
            transaction.showLinked();
        return outcome;
    }

    const std::shared_ptr<AttributeTree> tree;
    History history;
};

} // namespace Repository
