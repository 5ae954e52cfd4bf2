#include "repository/transaction/ChangeApplier.h"

#include "repository/transaction/Projection.h"

namespace Repository {

ChangeApplier::ChangeApplier(AttributeTree& attributes, Backend& changedBackend, StepRecorder* stepRecorder)
    : tree(attributes), backend(changedBackend), recorder(stepRecorder)
{
}

ChangeApplier::~ChangeApplier() = default;

void ChangeApplier::operator()(const std::function<Backend::Changes()>& change)
{
    auto transaction = std::make_unique<Transaction>(tree, recorder);
    transaction->edit(backend);
    const Backend::Changes changes = change();
    if (!backend.isClosed())
        Projection(*transaction).showChanges(backend, changes);
    transaction->unlock();
    done.push_back(std::move(transaction));
}

} // namespace Repository
