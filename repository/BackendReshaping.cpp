#include "repository/BackendReshaping.h"

#include "repository/TreeEdit.h"

namespace Repository {

BackendReshaping::BackendReshaping(AttributeTree& attributes, Backend& reshapedBackend,
                                   StepRecorder* stepRecorder)
    : tree(attributes), backend(reshapedBackend), recorder(stepRecorder)
{
}

BackendReshaping::~BackendReshaping() = default;

void BackendReshaping::operator()(const std::function<Backend::Changes()>& change)
{
    auto edit = std::make_unique<TreeEdit>(tree, QStringList(), recorder);
    edit->reshape(backend);
    const Backend::Changes changes = change();
    if (!backend.isClosed())
        edit->showChanges(backend, changes);
    edit->unlock();
    done.push_back(std::move(edit));
}

} // namespace Repository
