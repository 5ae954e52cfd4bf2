#include "repository/transaction/FileHold.h"

#include "repository/backends/Backend.h"
#include "repository/store/BackendLookup.h"

#include <algorithm>

namespace Repository {

FileHold::FileHold(AttributeTree& tree, const QStringList& paths)
{
    for (const QString& path : paths) {
        for (auto& backend : backendsTouching(tree, path))
            backends.push_back(std::move(backend));
    }
    std::sort(backends.begin(), backends.end(), std::less<>());
    backends.erase(std::unique(backends.begin(), backends.end()), backends.end());
    for (const auto& backend : backends)
        locks.push_back(backend->holdSaving());
}

} // namespace Repository
