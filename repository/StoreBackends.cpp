#include "repository/AttributeStore.h"
#include "repository/Backend.h"
#include "repository/PathRules.h"
#include "repository/TreeEdit.h"

#include <algorithm>

// The part of the store that mounts backends and takes them out again.

namespace Repository {

namespace {

const QLatin1String backendNamesPath("internal.backends.names");

void publish(TreeEdit& edit, const QString& path, const QVariant& value)
{
    using AccessMode = FrameworkCore::AppConfig::AccessMode;
    using UpdateResult = FrameworkCore::Notification::UpdateResult;
    Node& node = edit.ensure(path);
    edit.setAttribute(node, value, AccessMode::ReadOnly,
                      node.isAttribute() ? UpdateResult::Changed : UpdateResult::Created);
}

void publishNames(TreeEdit& edit, const std::vector<std::shared_ptr<Backend>>& backends)
{
    QStringList names;
    for (const auto& backend : backends)
        names.append(backend->getName());
    publish(edit, backendNamesPath, names.isEmpty() ? QVariant() : names.join(QLatin1Char(';')));
}

} // namespace

void AttributeStore::publish(const QString& path, const QVariant& value)
{
    TreeEdit edit(*this);
    Repository::publish(edit, path, value);
}

FrameworkCore::AppConfig::Outcome AttributeStore::mount(const std::shared_ptr<Backend>& backend)
{
    const QString name = backend->getName();
    TreeEdit edit(*this);
    const Node* place = edit.find(name);
    if (place && place->isBackendRoot())
        return {StatusCode::AlreadyExists, QStringLiteral("a backend of that name exists already")};
    if (place && (place->isAttribute() || (place->children && place->children->count > 0)))
        return {StatusCode::AlreadyExists, QStringLiteral("there are attributes at or below it already")};
    backends.reserve(backends.size() + 1);
    edit.mount(*backend);
    backends.push_back(backend);
    Repository::publish(edit, backendNamesPath + pathSeparator + name, name);
    publishNames(edit, backends);
    return {};
}

FrameworkCore::AppConfig::Outcome AttributeStore::unmount(const std::shared_ptr<Backend>& backend,
                                                          bool discardChanges)
{
    const Outcome outcome = backend->close(discardChanges);
    if (!outcome.ok())
        return outcome;
    history.forgetClosed();
    TreeEdit edit(*this);
    edit.unmount(*backend);
    backends.erase(std::find(backends.begin(), backends.end(), backend));
    edit.takeAttribute(backendNamesPath + pathSeparator + backend->getName());
    publishNames(edit, backends);
    return {};
}

void AttributeStore::showDocument(Backend& backend)
{
    TreeEdit edit(*this);
    if (!backend.isClosed())
        edit.showDocument(backend);
}

std::vector<std::shared_ptr<Backend>> AttributeStore::getBackends()
{
    const std::shared_lock lock(structure);
    return backends;
}

} // namespace Repository
