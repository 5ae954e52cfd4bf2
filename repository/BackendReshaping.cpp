#include "repository/BackendReshaping.h"

#include "repository/TreeEdit.h"

namespace Repository {

BackendReshaping::BackendReshaping(AttributeStore& attributeStore, Backend& reshapedBackend)
    : store(attributeStore), backend(reshapedBackend)
{
}

BackendReshaping::~BackendReshaping() = default;

void BackendReshaping::operator()(const std::function<void()>& change)
{
    auto edit = std::make_unique<TreeEdit>(store);
    edit->reshape(backend);
    change();
    if (!backend.isClosed())
        edit->showDocument(backend);
    edit->unlock();
    done.push_back(std::move(edit));
}

} // namespace Repository
