#include "repository/operations/BackendChanges.h"

#include "repository/common/Border.h"
#include "repository/common/Texts.h"
#include "repository/operations/AttributeStore.h"
#include "repository/store/BackendLookup.h"
#include "repository/store/Refusals.h"
#include "repository/transaction/ChangeApplier.h"

namespace Repository {

using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;
using FrameworkCore::AppConfig::Interfaces::UnsavedChange;

BackendChanges::BackendChanges(std::shared_ptr<AttributeStore> attributes) : store(std::move(attributes))
{
}

QStringList BackendChanges::getEditedBackends() const
{
    QStringList names;
    for (const auto& backend : store->getTree()->getBackends()) {
        if (backend->isEdited())
            names.append(backend->getName());
    }
    return names;
}

QVector<UnsavedChange> BackendChanges::getUnsavedChanges(const QString& name) const
{
    const auto backend = findBackend(*store->getTree(), name);
    const auto compare = [&] { return backend ? backend->getUnsavedChanges() : QVector<UnsavedChange>(); };
    return guardMemory(compare, [&](const QString& reason) {
        logged(Outcome(StatusCode::NotEnoughMemory, reason).of(Outcome::Operation::ListChanges, name));
        return QVector<UnsavedChange>();
    });
}

Outcome BackendChanges::getUnsavedDiff(const QString& name, QString& diff) const
{
    const auto backend = findBackend(*store->getTree(), name);
    return runForCaller(Outcome::Operation::ShowChanges, name, [&] {
        diff = backend ? backend->getUnsavedDiff() : QString();
        return Outcome();
    });
}

// A change that is one step of undo, with the reason when it is in no backend.
Outcome
BackendChanges::changeStep(const QString& path, const char* name,
                           const std::function<Outcome(Backend&, const Backend::ApplyChange&)>& change)
{
    const auto backend = backendOf(*store->getTree(), path);
    if (!backend)
        return {StatusCode::NotFound,
                Texts::tr("it lies in no backend, so there is no file to read it from")};
    const History::Scope step(store->getHistory(),
                              [&] { return Texts::tr(name).arg(backend->readable(path)); });
    ChangeApplier applier(*store->getTree(), *backend, step.getRecorder());
    return change(*backend, std::ref(applier));
}

Outcome BackendChanges::revert(const QString& path)
{
    return runForCaller(Outcome::Operation::Revert, path, [&] {
        return changeStep(
            path, QT_TRANSLATE_NOOP("Repository", "Revert %1"),
            [&path](Backend& backend, const auto& apply) { return backend.revert(path, apply); });
    });
}

Outcome BackendChanges::resolveConflicts(const QString& path, ConflictSide side)
{
    return runForCaller(Outcome::Operation::Resolve, path, [&] {
        return changeStep(
            path, QT_TRANSLATE_NOOP("Repository", "Resolve %1"),
            [&](Backend& backend, const auto& apply) { return backend.resolveConflicts(path, side, apply); });
    });
}

Outcome BackendChanges::revertPart(const QString& name, const Backend::Part& part)
{
    return runForCaller(Outcome::Operation::Revert, name, [&] {
        return changeStep(
            name, QT_TRANSLATE_NOOP("Repository", "Revert changes of %1"),
            [&part](Backend& backend, const auto& apply) { return backend.revertPart(part, apply); });
    });
}

Outcome BackendChanges::savePart(const QString& name, const Backend::Part& part)
{
    return runForCaller(Outcome::Operation::SaveBackend, name, [&] {
        const auto backend = findBackend(*store->getTree(), name);
        if (!backend)
            return Refusals::noBackend();
        ChangeApplier applier(*store->getTree(), *backend);
        return backend->savePart(part, std::ref(applier));
    });
}

Outcome BackendChanges::revertChanges(const QString& backend, const QStringList& paths)
{
    return revertPart(backend, {paths, {}});
}

Outcome BackendChanges::saveChanges(const QString& backend, const QStringList& paths)
{
    return savePart(backend, {paths, {}});
}

Outcome BackendChanges::revertHunks(const QString& backend, const QStringList& hunks)
{
    return revertPart(backend, {{}, hunks});
}

Outcome BackendChanges::saveHunks(const QString& backend, const QStringList& hunks)
{
    return savePart(backend, {{}, hunks});
}

quint64 BackendChanges::getChangesRevision(const QString& name) const
{
    const auto backend = findBackend(*store->getTree(), name);
    return backend ? backend->getChangesRevision() : 0;
}

} // namespace Repository
