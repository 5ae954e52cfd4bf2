#pragma once

#include "host/FrameworkCore/AppConfig/ChangesInterface.h"
#include "repository/backends/Backend.h"

#include <memory>

namespace Repository {

class AttributeStore;

// What backends hold that their files do not, found among the backends of a store. Any thread.
class BackendChanges : public FrameworkCore::AppConfig::Interfaces::ChangesInterface
{
public:
    using Outcome = FrameworkCore::AppConfig::Outcome;
    using UnsavedChange = FrameworkCore::AppConfig::Interfaces::UnsavedChange;
    using ConflictSide = FrameworkCore::AppConfig::Interfaces::ConflictSide;

    explicit BackendChanges(std::shared_ptr<AttributeStore> store);

    QStringList getEditedBackends() const override;
    QVector<UnsavedChange> getUnsavedChanges(const QString& backend) const override;
    Outcome getUnsavedDiff(const QString& backend, QString& diff) const override;
    Outcome revert(const QString& path) override;
    Outcome resolveConflicts(const QString& path, ConflictSide side) override;
    Outcome revertChanges(const QString& backend, const QStringList& paths) override;
    Outcome saveChanges(const QString& backend, const QStringList& paths) override;
    Outcome revertHunks(const QString& backend, const QStringList& hunks) override;
    Outcome saveHunks(const QString& backend, const QStringList& hunks) override;
    quint64 getChangesRevision(const QString& backend) const override;

private:
    Outcome revertPart(const QString& backend, const Backend::Part& part);
    Outcome savePart(const QString& backend, const Backend::Part& part);
    Outcome changeStep(const QString& path, const char* name,
                       const std::function<Outcome(Backend&, const Backend::ApplyChange&)>& change);

    std::shared_ptr<AttributeStore> store;
};

} // namespace Repository
