#include "repository/BackendChanges.h"

#include "repository/AttributeStore.h"
#include "repository/BackendLookup.h"
#include "repository/BackendReshaping.h"
#include "repository/RepositoryLog.h"

namespace Repository {

using FrameworkCore::AppConfig::StatusCode;
using FrameworkCore::AppConfig::Interfaces::UnsavedChange;

BackendChanges::BackendChanges(std::shared_ptr<AttributeStore> attributes) : store(std::move(attributes))
{
}

QStringList BackendChanges::getEditedBackends() const
{
    QStringList names;
    for (const auto& backend : store->getBackends()) {
        if (backend->isEdited())
            names.append(backend->getName());
    }
    return names;
}

QVector<UnsavedChange> BackendChanges::getUnsavedChanges(const QString& name) const
{
    const auto backend = findBackend(*store, name);
    return backend ? backend->getUnsavedChanges() : QVector<UnsavedChange>();
}

QString BackendChanges::getUnsavedDiff(const QString& name) const
{
    const auto backend = findBackend(*store, name);
    return backend ? backend->getUnsavedDiff() : QString();
}

StatusCode BackendChanges::revert(const QString& path)
{
    const auto backend = backendOf(*store, path);
    if (!backend) {
        logFailure(
            QStringLiteral("'%1' was not reverted: it lies in no backend, so there is no file to read it "
                           "from")
                .arg(path));
        return StatusCode::NotFound;
    }
    const History::Scope step(store->getHistory(), [&path] { return QStringLiteral("Revert %1").arg(path); });
    BackendReshaping reshaping(*store, *backend, step.getRecorder());
    const QString refusal = backend->revert(path, std::ref(reshaping));
    if (refusal.isEmpty())
        return StatusCode::Success;
    logFailure(QStringLiteral("'%1' was not reverted: %2").arg(path, refusal));
    return StatusCode::BackendFailure;
}

StatusCode BackendChanges::resolveConflicts(const QString& path, ConflictSide side)
{
    const auto backend = backendOf(*store, path);
    bool found = false;
    QString refusal;
    if (backend) {
        const History::Scope step(store->getHistory(),
                                  [&path] { return QStringLiteral("Resolve %1").arg(path); });
        BackendReshaping reshaping(*store, *backend, step.getRecorder());
        refusal = backend->resolveConflicts(path, side, std::ref(reshaping), found);
    }
    if (!found)
        refusal = QStringLiteral("there is no conflict at or below it");
    if (refusal.isEmpty())
        return StatusCode::Success;
    logFailure(QStringLiteral("The conflict at '%1' was not resolved: %2").arg(path, refusal));
    return found ? StatusCode::BackendFailure : StatusCode::NotFound;
}

} // namespace Repository
