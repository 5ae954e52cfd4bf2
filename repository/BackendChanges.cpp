#include "repository/BackendChanges.h"

#include "repository/AttributeStore.h"
#include "repository/BackendLookup.h"
#include "repository/BackendReshaping.h"
#include "repository/MemoryGuard.h"
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
    const auto compare = [&] { return backend ? backend->getUnsavedChanges() : QVector<UnsavedChange>(); };
    return guardMemory(compare, [&](const QString& reason) {
        logFailure(QStringLiteral("The changes of the backend '%1' were not listed: %2").arg(name, reason));
        return QVector<UnsavedChange>();
    });
}

QString BackendChanges::getUnsavedDiff(const QString& name) const
{
    const auto backend = findBackend(*store, name);
    const auto compare = [&] { return backend ? backend->getUnsavedDiff() : QString(); };
    return guardMemory(compare, [&](const QString& reason) {
        logFailure(QStringLiteral("The changes of the backend '%1' were not shown: %2").arg(name, reason));
        return QString();
    });
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
    const auto operation = [&] {
        const History::Scope step(store->getHistory(),
                                  [&path] { return QStringLiteral("Revert %1").arg(path); });
        BackendReshaping reshaping(*store, *backend, step.getRecorder());
        return backend->revert(path, std::ref(reshaping));
    };
    const QString refusal = guardMemory(operation, [](const QString& reason) { return reason; });
    if (refusal.isEmpty())
        return StatusCode::Success;
    logFailure(QStringLiteral("'%1' was not reverted: %2").arg(path, refusal));
    return StatusCode::BackendFailure;
}

StatusCode BackendChanges::resolveConflicts(const QString& path, ConflictSide side)
{
    const auto backend = backendOf(*store, path);
    bool found = false;
    const auto operation = [&] {
        if (!backend)
            return QString();
        const History::Scope step(store->getHistory(),
                                  [&path] { return QStringLiteral("Resolve %1").arg(path); });
        BackendReshaping reshaping(*store, *backend, step.getRecorder());
        return backend->resolveConflicts(path, side, std::ref(reshaping), found);
    };
    QString refusal = guardMemory(operation, [&found](const QString& reason) {
        found = true;
        return reason;
    });
    if (!found)
        refusal = QStringLiteral("there is no conflict at or below it");
    if (refusal.isEmpty())
        return StatusCode::Success;
    logFailure(QStringLiteral("The conflict at '%1' was not resolved: %2").arg(path, refusal));
    return found ? StatusCode::BackendFailure : StatusCode::NotFound;
}

} // namespace Repository
