#pragma once

#include "host/FrameworkCore/AppConfig/ChangesInterface.h"
#include "repository/Backend.h"

#include <memory>

namespace Repository {

class AttributeStore;

// What backends hold that their files do not, found among the backends of a store. Any thread.
class BackendChanges : public FrameworkCore::AppConfig::Interfaces::ChangesInterface
{
public:
    using StatusCode = FrameworkCore::AppConfig::StatusCode;
    using UnsavedChange = FrameworkCore::AppConfig::Interfaces::UnsavedChange;
    using ConflictSide = FrameworkCore::AppConfig::Interfaces::ConflictSide;

    explicit BackendChanges(std::shared_ptr<AttributeStore> store);

    QStringList getEditedBackends() const override;
    QVector<UnsavedChange> getUnsavedChanges(const QString& backend) const override;
    QString getUnsavedDiff(const QString& backend) const override;
    StatusCode revert(const QString& path) override;
    StatusCode resolveConflicts(const QString& path, ConflictSide side) override;

private:
    std::shared_ptr<AttributeStore> store;
};

} // namespace Repository
