#include "repository/AttributeStore.h"

#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/AttributeSnapshot.h"
#include "repository/Backend.h"
#include "repository/PathRules.h"
#include "repository/Refusals.h"
#include "repository/RegistrationHandle.h"
#include "repository/RegistrationHold.h"
#include "repository/RepositoryLog.h"
#include "repository/TreeEdit.h"

namespace Repository {

using FrameworkCore::AppConfig::Outcome;

AttributeStore::AttributeStore(std::size_t historyBound) : history(historyBound)
{
}

AttributeStore::~AttributeStore() = default;

FrameworkCore::AppConfig::StatusCode AttributeStore::read(const QString& path, QVariant& value)
{
    const NodeIndex::Key key(path);
    NodeIndex::Shard& shard = index.shardOf(key);
    const std::lock_guard lock(shard.mutex);
    const Node* node = shard.find(key);
    value = QVariant();
    if (!node || !node->isAttribute())
        return isValidPath(path) ? StatusCode::NotFound : StatusCode::InvalidPath;
    if (!node->isReadable())
        return StatusCode::NotReadable;
    value = node->value;
    return StatusCode::Success;
}

std::shared_ptr<FrameworkCore::AppConfig::Interfaces::AttributeInterface>
AttributeStore::getAttribute(const QString& path)
{
    const NodeIndex::Key key(path);
    NodeIndex::Shard& shard = index.shardOf(key);
    const std::lock_guard lock(shard.mutex);
    const Node* node = shard.find(key);
    if (!node || !node->isAttribute())
        return {};
    return std::make_shared<AttributeSnapshot>(*node);
}

Outcome AttributeStore::create(const QString& path, const QVariant& value, int option, int access)
{
    auto attributeValue = FrameworkCore::Values::toAttributeVariant(value);
    bool isHidden = !isReadable(AccessMode(access));
    Outcome outcome = checkCreation(path, attributeValue.has_value(), access);
    if (outcome.ok()) {
        const History::Scope step(history, [&path] { return QStringLiteral("Create %1").arg(path); });
        TreeEdit edit(*this, step.getRecorder() ? QStringList(path) : QStringList(), step.getRecorder());
        outcome = edit.createAttribute(path, *std::move(attributeValue), AccessMode(access));
        if (!outcome.ok())
            isHidden = isHidden || hidesValues(path);
    }
    if (outcome == StatusCode::AlreadyExists && option == createOrWrite)
        return write(path, value, Delivery::allPoints);
    return Refusals::notSet(std::move(outcome), path, value, isHidden);
}

Outcome AttributeStore::checkCreation(const QString& path, bool isTypeKnown, int access)
{
    if (!isValidPath(path))
        return Refusals::invalidPath(path);
    if (isAtOrBelow(path, ownRoot))
        return Refusals::ownTree();
    if (access < int(AccessMode::ReadOnly) || access > int(AccessMode::ReadWrite))
        return Outcome(StatusCode::NotWritable, QStringLiteral("%1 is not an access mode").arg(access))
            .advise(QStringLiteral("1 is read-only, 2 write-only, 3 read-write"));
    return isTypeKnown ? Outcome() : Refusals::noAttributeType();
}

Outcome AttributeStore::write(const QString& path, const QVariant& value, int points)
{
    History::Write record; // outlives the lock and the callbacks
    const NodeIndex::Key key(path);
    NodeIndex::Shard& shard = index.shardOf(key);
    std::unique_lock lock(shard.mutex);
    Node* node = shard.find(key);
    if (!node || !node->isAttribute()) {
        lock.unlock();
        return refuseUnknown(path, value);
    }
    QVariant previous;
    record.begin(history, *node);
    std::optional<Outcome> outcome = store(*node, value, previous);
    if (!outcome || !outcome->ok()) {
        const bool isHidden = !node->isReadable();
        lock.unlock();
        if (outcome)
            return Refusals::notSet(*std::move(outcome), path, value, isHidden);
        { // whoever reshapes the backend holds this lock until it is done
            const std::shared_lock waiting(structure);
        }
        return write(path, value, points);
    }
    const bool isChanged = !FrameworkCore::Values::isSameValue(previous, node->value);
    record.end(*node);
    const Delivery delivery(*node, patterns, isChanged ? UpdateResult::Changed : UpdateResult::Unchanged,
                            points, key.hash, std::move(previous));
    lock.unlock();
    delivery.send(path);
    return {};
}

Outcome AttributeStore::refuseUnknown(const QString& path, const QVariant& value)
{
    bool isHidden = false;
    {
        const std::shared_lock lock(structure);
        isHidden = hidesValues(path);
    }
    Outcome outcome = isValidPath(path) ? Refusals::notFound().advise(QStringLiteral("create it first"))
                                        : Refusals::invalidPath(path);
    return Refusals::notSet(std::move(outcome), path, value, isHidden);
}

Outcome AttributeStore::accept(const Node& node, const QVariant& value, QVariant& accepted)
{
    if (!isWritable(node.getAccess()))
        return Refusals::readOnly(node);
    auto converted = node.value.isValid()
                         ? FrameworkCore::Values::convertVariant(value, node.value.userType())
                         : FrameworkCore::Values::toAttributeVariant(value);
    if (!converted)
        return node.value.isValid() ? Refusals::wrongType(value, node.value.userType())
                                    : Refusals::noAttributeType();
    const Rules* rules = node.getRules();
    if (const Breach breach = rules ? findBreach(*rules, *converted) : Breach())
        return {StatusCode::RefusedByValidation, breach.explain()};
    accepted = *std::move(converted);
    return {};
}

std::optional<Outcome> AttributeStore::store(Node& node, const QVariant& value, QVariant& previous)
{
    QVariant& accepted = previous; // until it changes places with the one before
    Outcome outcome = accept(node, value, accepted);
    if (!outcome.ok())
        return outcome;
    if (node.backend) {
        std::optional<Outcome> stored =
            node.backend->set(node.path, FrameworkCore::Values::toValue(accepted));
        if (!stored || !stored->ok())
            return stored ? Refusals::unfit(*std::move(stored), accepted, !node.isReadable()) : stored;
    }
    node.value.swap(accepted);
    return outcome;
}

std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RegistrationInterface>
AttributeStore::addRegistration(const QString& pathOrPattern,
                                const FrameworkCore::AppConfig::Interfaces::UpdateCallback& callback,
                                int points)
{
    if (isTooDeep(pathOrPattern)) {
        logged(Refusals::invalidPath(pathOrPattern).of(Outcome::Operation::Change, pathOrPattern));
        return {};
    }
    RegistrationPointer registration(new Registration(callback, points));
    auto handle = std::make_shared<RegistrationHandle>(pathOrPattern, *registration, weak_from_this());
    if (callback && pathOrPattern.contains(QLatin1Char('*'))) {
        patterns.add(pathOrPattern, std::move(registration));
        return handle;
    }
    const NodeIndex::Key key(pathOrPattern);
    NodeIndex::Shard& shard = index.shardOf(key);
    std::unique_lock lock(shard.mutex);
    Node* node = shard.find(key);
    if (callback && (node || isValidPath(pathOrPattern))) {
        (node ? node->exact : shard.waiting[pathOrPattern].exact).add(std::move(registration));
        return handle;
    }
    lock.unlock();
    logged(Outcome(StatusCode::InvalidPath,
                   QStringLiteral("a callback needs a function and a valid path or pattern to listen to"))
               .of(Outcome::Operation::Change, pathOrPattern));
    return {};
}

void AttributeStore::removeRegistration(const QString& pathOrPattern, Registration& registration)
{
    registration.stop();
    if (pathOrPattern.contains(QLatin1Char('*'))) {
        patterns.remove(pathOrPattern, registration);
        return;
    }
    const NodeIndex::Key key(pathOrPattern);
    RegistrationHold::letGo(key.hash, takeExact(pathOrPattern, key, registration));
}

RegistrationPointer AttributeStore::takeExact(const QString& path, const NodeIndex::Key& key,
                                              const Registration& registration)
{
    NodeIndex::Shard& shard = index.shardOf(key);
    const std::lock_guard lock(shard.mutex);
    if (Node* node = shard.find(key))
        return node->exact.take(registration);
    const auto waiting = shard.waiting.find(path);
    if (waiting == shard.waiting.end())
        return {};
    RegistrationPointer taken = waiting->second.exact.take(registration);
    if (waiting->second.exact.isEmpty() && waiting->second.rules.empty())
        shard.waiting.erase(waiting);
    return taken;
}

Outcome AttributeStore::addRule(const QString& path, const QString& name)
{
    QString reason;
    const auto rule = makeRule(name, reason);
    if (!rule || !isValidPath(path)) {
        Outcome outcome = rule ? Refusals::invalidPath(path) : Outcome(StatusCode::NotFound, reason);
        outcome.change().argument = name;
        return outcome.of(Outcome::Operation::AddValidation, path);
    }
    const NodeIndex::Key key(path);
    NodeIndex::Shard& shard = index.shardOf(key);
    const std::lock_guard lock(shard.mutex);
    Node* node = shard.find(key);
    Rules& rules = node ? node->extrasToFill().rules : shard.waiting[path].rules;
    rules.push_back(rule);
    return {};
}

QStringList AttributeStore::getRules(const QString& path)
{
    const NodeIndex::Key key(path);
    NodeIndex::Shard& shard = index.shardOf(key);
    const std::lock_guard lock(shard.mutex);
    const Node* const node = shard.find(key);
    const auto waiting = shard.waiting.find(path);
    const Rules* const rules =
        node ? node->getRules() : (waiting == shard.waiting.end() ? nullptr : &waiting->second.rules);
    QStringList names;
    if (rules) {
        for (const auto& rule : *rules)
            names.append(rule->name);
    }
    return names;
}

} // namespace Repository
