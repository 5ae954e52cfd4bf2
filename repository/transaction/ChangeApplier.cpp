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
    auto edit = std::make_unique<TreeEdit>(tree, QStringList(), recorder);
    edit->editDocument(backend);
    const Backend::Changes changes = change();
    if (!backend.isClosed())
        Projection(*edit).showChanges(backend, changes);
    edit->unlock();
    done.push_back(std::move(edit));
}

} // namespace Repository
