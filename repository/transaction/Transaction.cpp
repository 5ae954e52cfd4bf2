#include "repository/transaction/Transaction.h"

#include "repository/store/BackendLookup.h"
#include "repository/transaction/Projection.h"

#include <algorithm>

namespace Repository {

Transaction::Transaction(AttributeTree& attributes, StepRecorder* stepRecorder)
    : tree(attributes), recorder(stepRecorder), rollsBack(false), lock(tree.structure),
      nodes(tree, recorder != nullptr)
{
}

Transaction::Transaction(AttributeTree& attributes, StepRecorder* stepRecorder, const QStringList& paths)
    : tree(attributes), recorder(stepRecorder), rollsBack(true), nodes(tree, recorder != nullptr)
{
    holdSaving(paths);
    lock = std::unique_lock(tree.structure);
}

Transaction::~Transaction()
{
    unlock();
    nodes.deliver();
}

void Transaction::holdSaving(const QStringList& paths)
{
    for (const QString& path : paths) {
        for (auto& backend : backendsTouching(tree, path))
            heldBackends.push_back(std::move(backend));
    }
    std::sort(heldBackends.begin(), heldBackends.end(), std::less<>());
    heldBackends.erase(std::unique(heldBackends.begin(), heldBackends.end()), heldBackends.end());
    for (const auto& backend : heldBackends)
        savingLocks.push_back(backend->holdSaving());
}

DocumentEdit& Transaction::edit(Backend& backend)
{
    for (const auto& begun : documentEdits) {
        if (&begun->getBackend() == &backend)
            return *begun;
    }
    documentEdits.push_back(std::make_unique<DocumentEdit>(backend, rollsBack));
    if (recorder)
        recorder->beginShape(backend);
    return *documentEdits.back();
}

void Transaction::showLinked()
{
    for (const auto& begun : documentEdits) {
        if (begun->mayChangeOthers())
            Projection(*this).showAll(begun->getBackend(),
                                      FrameworkCore::Notification::UpdateResult::Changed);
    }
}

void Transaction::unlock()
{
    if (!lock.owns_lock())
        return;
    for (const auto& begun : documentEdits) {
        if (!isCommitted)
            begun->rollBack();
    }
    nodes.finish();
    for (const auto& begun : documentEdits) {
        if (recorder)
            nodes.getImages()->report(begun->getBackend(), tree, *recorder);
    }
    documentEdits.clear();
    lock.unlock();
    savingLocks.clear();
    heldBackends.clear();
}

} // namespace Repository
