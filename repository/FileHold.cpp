#include "repository/FileHold.h"

#include "repository/AttributeStore.h"
#include "repository/Backend.h"
#include "repository/PathRules.h"

#include <algorithm>

namespace Repository {

FileHold::FileHold(AttributeStore& store, const QStringList& paths)
{
    for (const auto& backend : store.getBackends()) {
        const QString& root = backend->getName();
        if (std::any_of(paths.begin(), paths.end(), [&root](const QString& path) {
                return path.isEmpty() || isAtOrBelow(path, root) || isAtOrBelow(root, path);
            }))
            backends.push_back(backend);
    }
    std::sort(backends.begin(), backends.end(), std::less<>());
    for (const auto& backend : backends)
        locks.push_back(backend->holdFile());
}

} // namespace Repository
