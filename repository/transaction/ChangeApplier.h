#pragma once

#include "repository/backends/Backend.h"

#include <memory>
#include <vector>

namespace Repository {

struct AttributeTree;
class StepRecorder;
class Transaction;

// Makes changes of a backend in one piece with those of the tree. Its end calls the watchers, so it
// outlives the operation that it is given to and every lock of it. One thread.
class ChangeApplier
{
public:
    // The recorder hears what changes; null for what undo has nothing to do with.
    ChangeApplier(AttributeTree& tree, Backend& backend, StepRecorder* recorder = nullptr);
    ~ChangeApplier();
    Q_DISABLE_COPY(ChangeApplier)

    void operator()(const std::function<Backend::Changes()>& change);

private:
    AttributeTree& tree;
    Backend& backend;
    StepRecorder* recorder;                         // not owned
    std::vector<std::unique_ptr<Transaction>> done; // their locks are released, their watchers not yet called
};

} // namespace Repository
