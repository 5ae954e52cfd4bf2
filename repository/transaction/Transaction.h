#pragma once

#include "repository/backends/DocumentEdit.h"
#include "repository/history/StepRecorder.h"
#include "repository/store/AttributeTree.h"
#include "repository/transaction/NodeWriter.h"

#include <memory>
#include <mutex>
#include <vector>

namespace Repository {

// One change of the tree's shape in one piece with that of its backends. It holds the structure lock until it
// ends or unlock is called; the watchers are called when it ends. One thread.
class Transaction
{
public:
    // Changes one backend at most, by one operation, which is whole or nothing by itself. The recorder, which
    // may be null, hears what changes.
    explicit Transaction(AttributeTree& tree, StepRecorder* recorder = nullptr);

    // Changes the backends that the paths touch by several operations. Without a commit its end takes them
    // back to what they were. Until the locks are released, these backends neither save nor look at what they
    // keep; saves under way are waited for.
    Transaction(AttributeTree& tree, StepRecorder* recorder, const QStringList& paths);

    ~Transaction();
    Q_DISABLE_COPY(Transaction)

    // Keeps writes of single values out of the backend until the locks are released.
    DocumentEdit& edit(Backend& backend);

    NodeWriter& getNodes() { return nodes; }
    bool isRecorded() const { return recorder != nullptr; }

    // What the backends hold now stays; the nodes follow.
    void commit() { isCommitted = true; }

    // The last of a change that was made: the tree follows where entries have changed with others.
    void showLinked();

    // Ends the change of the tree.
    void unlock();

private:
    void holdSaving(const QStringList& paths);

    AttributeTree& tree;
    StepRecorder* const recorder; // not owned
    const bool rollsBack;         // unless it is committed
    bool isCommitted = false;
    std::vector<std::shared_ptr<Backend>> heldBackends;
    std::vector<std::unique_lock<std::mutex>> savingLocks; // in the order of the backends' addresses
    std::unique_lock<std::shared_mutex> lock;
    std::vector<std::unique_ptr<DocumentEdit>> documentEdits;
    NodeWriter nodes;
};

} // namespace Repository
