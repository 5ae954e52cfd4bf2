#include "repository/store/BackendLookup.h"

#include "repository/backends/Backend.h"
#include "repository/common/PathRules.h"
#include "repository/store/AttributeTree.h"

#include <algorithm>

namespace Repository {

std::shared_ptr<Backend> findBackend(AttributeTree& tree, const QString& name)
{
    const std::shared_lock lock(tree.structure);
    const auto found = std::find_if(tree.backends.begin(), tree.backends.end(),
                                    [&name](const auto& backend) { return backend->getName() == name; });
    return found == tree.backends.end() ? nullptr : *found;
}

std::shared_ptr<Backend> backendOf(AttributeTree& tree, const QString& path)
{
    std::shared_ptr<Backend> owner;
    for (const auto& backend : tree.getBackends()) {
        if (isAtOrBelow(path, backend->getName()) &&
            (!owner || owner->getName().size() < backend->getName().size()))
            owner = backend;
    }
    return owner;
}

std::vector<std::shared_ptr<Backend>> backendsTouching(AttributeTree& tree, const QString& path)
{
    std::vector<std::shared_ptr<Backend>> touched;
    for (auto& backend : tree.getBackends()) {
        const QString& root = backend->getName();
        if (path.isEmpty() || isAtOrBelow(path, root) || isAtOrBelow(root, path))
            touched.push_back(std::move(backend));
    }
    return touched;
}

QString readablePath(AttributeTree& tree, const QString& path)
{
    const auto backend = backendOf(tree, path);
    return backend ? backend->readable(path) : path;
}

} // namespace Repository
