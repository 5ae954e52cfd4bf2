#include "repository/store/WriteCheck.h"

#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/backends/Backend.h"
#include "repository/store/Refusals.h"

namespace Repository {

using FrameworkCore::AppConfig::isWritable;
using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;

namespace {

Outcome checkValidations(const Validations* validations, const QVariant& value)
{
    const Breach breach = validations ? findBreach(*validations, value) : Breach();
    return breach ? Outcome(StatusCode::RefusedByValidation, breach.explain()) : Outcome();
}

// Nothing was converted where the value is of no type that fits.
Outcome accept(const Node& node, std::optional<QVariant> converted, QVariant& accepted)
{
    if (!converted)
        return Refusals::noAttributeType();
    Outcome outcome = checkValidations(node.getValidations(), *converted);
    if (outcome.ok())
        accepted = *std::move(converted);
    return outcome;
}

} // namespace

FrameworkCore::AppConfig::AccessMode presentAccess(const Node& node)
{
    using FrameworkCore::AppConfig::AccessMode;
    const bool isLocked = node.backend && node.backend->isLocked();
    return isLocked ? AccessMode(quint8(node.getAccess()) & quint8(AccessMode::ReadOnly)) : node.getAccess();
}

Outcome acceptWrite(const Node& node, const QVariant& value, QVariant& accepted)
{
    if (!isWritable(presentAccess(node)))
        return Refusals::readOnly(node);
    auto converted = node.value.isNull() ? FrameworkCore::Values::toAttributeVariant(value)
                                         : FrameworkCore::Values::convertVariant(value, node.value.getType());
    if (!converted && !node.value.isNull())
        return Refusals::wrongType(value, node.value.getType());
    return accept(node, std::move(converted), accepted);
}

Outcome acceptRetyped(const Node& node, const QVariant& value, QVariant& accepted)
{
    return isWritable(presentAccess(node))
               ? accept(node, FrameworkCore::Values::toAttributeVariant(value), accepted)
               : Refusals::readOnly(node);
}

Outcome acceptNew(AttributeTree& tree, const NodeIndex::Key& key, const Node* node, const Backend* backend,
                  const QVariant& value)
{
    if (backend && (backend->isLocked() || !isWritable(backend->getAccessMode())))
        return Refusals::readOnly(*backend);
    const NodeIndex::Shard& shard = tree.index.shardOf(key);
    const std::lock_guard shardLock(shard.mutex);
    return checkValidations(shard.validationsOf(node, key.path), value);
}

} // namespace Repository
