#include "repository/BackendLookup.h"

#include "repository/AttributeStore.h"
#include "repository/Backend.h"
#include "repository/PathRules.h"

namespace Repository {

std::shared_ptr<Backend> findBackend(AttributeStore& store, const QString& name)
{
    for (const auto& backend : store.getBackends()) {
        if (backend->getName() == name)
            return backend;
    }
    return {};
}

std::shared_ptr<Backend> backendOf(AttributeStore& store, const QString& path)
{
    std::shared_ptr<Backend> owner;
    for (const auto& backend : store.getBackends()) {
        if (isAtOrBelow(path, backend->getName()) &&
            (!owner || owner->getName().size() < backend->getName().size()))
            owner = backend;
    }
    return owner;
}

} // namespace Repository
