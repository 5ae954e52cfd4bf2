#include "repository/store/AttachedValidations.h"

#include "repository/common/PathRules.h"
#include "repository/common/RepositoryLog.h"
#include "repository/store/AttributeTree.h"
#include "repository/store/Refusals.h"
#include "repository/validation/Validation.h"

namespace Repository {

using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;

QStringList AttachedValidations::getValidationNames()
{
    return validationNames();
}

QVector<FrameworkCore::AppConfig::Interfaces::ValidationDescription>
AttachedValidations::getValidationDescriptions()
{
    return validationDescriptions();
}

int AttachedValidations::addValidation(const QString& path, const QString& name)
{
    QString reason;
    const auto validation = makeValidation(name, reason);
    if (!validation || !isValidPath(path)) {
        Outcome outcome = validation ? Refusals::invalidPath(path) : Outcome(StatusCode::NotFound, reason);
        outcome.change().argument = name;
        logged(outcome.of(Outcome::Operation::AddValidation, path));
        return 0;
    }
    const NodeIndex::Key key(path);
    NodeIndex::Shard& shard = tree->index.shardOf(key);
    const std::lock_guard lock(shard.mutex);
    Node* node = shard.find(key);
    Validations& validations =
        node ? node->listeners.ensureBlock().validations : shard.pending[path].validations;
    validations.push_back(validation);
    return 1;
}

QStringList AttachedValidations::getValidationsOf(const QString& path) const
{
    const NodeIndex::Key key(path);
    NodeIndex::Shard& shard = tree->index.shardOf(key);
    const std::lock_guard lock(shard.mutex);
    const Validations* const validations = shard.validationsOf(shard.find(key), path);
    QStringList names;
    if (validations) {
        for (const auto& validation : *validations)
            names.append(validation->name);
    }
    return names;
}

} // namespace Repository
