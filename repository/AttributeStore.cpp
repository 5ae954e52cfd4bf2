#include "repository/AttributeStore.h"

#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/AttributeSnapshot.h"
#include "repository/Backend.h"
#include "repository/PathRules.h"
#include "repository/RefusalText.h"
#include "repository/RegistrationHandle.h"
#include "repository/RegistrationHold.h"
#include "repository/RepositoryLog.h"
#include "repository/TreeEdit.h"

namespace Repository {

AttributeStore::AttributeStore(std::size_t historyBound) : history(historyBound)
{
}

AttributeStore::~AttributeStore() = default;

FrameworkCore::AppConfig::StatusCode AttributeStore::refuse(StatusCode status, const QString& path,
                                                            const QString& reason)
{
    logFailure(refusalText(path, reason));
    return status;
}

QString AttributeStore::refusalText(const QString& path, const QString& reason)
{
    return QStringLiteral("'%1' was left as it is: %2").arg(RefusalText::shownPath(path), reason);
}

FrameworkCore::AppConfig::StatusCode AttributeStore::refuseValue(StatusCode status, const QString& path,
                                                                 const QVariant& value, bool isHidden,
                                                                 const QString& reason)
{
    logFailure(RefusalText::ofValue(path, value, isHidden, reason));
    return status;
}

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

FrameworkCore::AppConfig::StatusCode AttributeStore::create(const QString& path, const QVariant& value,
                                                            int option, int access)
{
    auto attributeValue = FrameworkCore::Values::toAttributeVariant(value);
    bool isHidden = !isReadable(AccessMode(access));
    QString reason;
    StatusCode status = checkCreation(path, attributeValue.has_value(), access, reason);
    if (status == StatusCode::Success) {
        const History::Scope step(history, [&path] { return QStringLiteral("Create %1").arg(path); });
        TreeEdit edit(*this, step.getRecorder() ? QStringList(path) : QStringList(), step.getRecorder());
        status = edit.createAttribute(path, *std::move(attributeValue), AccessMode(access), reason);
        if (status != StatusCode::Success)
            isHidden = isHidden || hidesValues(path);
    }
    if (status == StatusCode::Success)
        return status;
    if (status == StatusCode::AlreadyExists && option == createOrWrite)
        return write(path, value, Delivery::allPoints);
    return refuseValue(status, path, value, isHidden, reason);
}

FrameworkCore::AppConfig::StatusCode AttributeStore::checkCreation(const QString& path, bool isTypeKnown,
                                                                   int access, QString& reason)
{
    if (!isValidPath(path)) {
        reason = RefusalText::invalidPath(path);
        return StatusCode::InvalidPath;
    }
    if (isAtOrBelow(path, ownRoot)) {
        reason = RefusalText::ownTree();
        return StatusCode::NotWritable;
    }
    if (access < int(AccessMode::ReadOnly) || access > int(AccessMode::ReadWrite)) {
        reason =
            QStringLiteral("%1 is no access mode; 1 is read-only, 2 write-only, 3 read-write").arg(access);
        return StatusCode::NotWritable;
    }
    if (!isTypeKnown) {
        reason = RefusalText::noAttributeType();
        return StatusCode::WrongType;
    }
    return StatusCode::Success;
}

FrameworkCore::AppConfig::StatusCode AttributeStore::write(const QString& path, const QVariant& value,
                                                           int points)
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
    QString reason;
    QVariant previous;
    record.begin(history, *node);
    const auto status = store(*node, value, previous, reason);
    if (status != StatusCode::Success) {
        const bool isHidden = !node->isReadable();
        lock.unlock();
        if (status)
            return refuseValue(*status, path, value, isHidden, reason);
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
    return StatusCode::Success;
}

FrameworkCore::AppConfig::StatusCode AttributeStore::refuseUnknown(const QString& path, const QVariant& value)
{
    bool isHidden = false;
    {
        const std::shared_lock lock(structure);
        isHidden = hidesValues(path);
    }
    if (!isValidPath(path))
        return refuseValue(StatusCode::InvalidPath, path, value, isHidden, RefusalText::invalidPath(path));
    return refuseValue(StatusCode::NotFound, path, value, isHidden,
                       RefusalText::notFound() + QStringLiteral("; create it first"));
}

FrameworkCore::AppConfig::StatusCode AttributeStore::accept(const Node& node, const QVariant& value,
                                                            QVariant& accepted, QString& reason)
{
    if (!isWritable(node.getAccess())) {
        reason = RefusalText::readOnly(node);
        return StatusCode::NotWritable;
    }
    auto converted = node.value.isValid()
                         ? FrameworkCore::Values::convertVariant(value, node.value.userType())
                         : FrameworkCore::Values::toAttributeVariant(value);
    if (!converted) {
        reason = node.value.isValid() ? RefusalText::wrongType(value, node.value.userType())
                                      : RefusalText::noAttributeType();
        return StatusCode::WrongType;
    }
    const Rules* rules = node.getRules();
    if (const Breach breach = rules ? findBreach(*rules, *converted) : Breach()) {
        reason = breach.explain();
        return StatusCode::RefusedByValidation;
    }
    accepted = *std::move(converted);
    return StatusCode::Success;
}

std::optional<FrameworkCore::AppConfig::StatusCode>
AttributeStore::store(Node& node, const QVariant& value, QVariant& previous, QString& reason) const
{
    QVariant& accepted = previous; // until it changes places with the one before
    const StatusCode status = accept(node, value, accepted, reason);
    if (status != StatusCode::Success)
        return status;
    if (node.backend) {
        if (!node.backend->set(node.path, FrameworkCore::Values::toValue(accepted), reason))
            return {};
        if (!reason.isEmpty()) {
            reason = RefusalText::unfit(accepted, !node.isReadable(), reason);
            return StatusCode::BackendFailure;
        }
    }
    node.value.swap(accepted);
    return StatusCode::Success;
}

std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RegistrationInterface>
AttributeStore::addRegistration(const QString& pathOrPattern,
                                const FrameworkCore::AppConfig::Interfaces::UpdateCallback& callback,
                                int points)
{
    if (isTooDeep(pathOrPattern)) {
        refuse(StatusCode::InvalidPath, pathOrPattern, RefusalText::invalidPath(pathOrPattern));
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
    refuse(StatusCode::InvalidPath, pathOrPattern,
           QStringLiteral("a callback needs a function and a valid path or pattern to listen to"));
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

bool AttributeStore::addRule(const QString& path, const QString& name)
{
    QString reason;
    const auto rule = makeRule(name, reason);
    if (!rule || !isValidPath(path)) {
        logFailure(
            QStringLiteral("'%1' was not given the validation '%2': %3")
                .arg(RefusalText::shownPath(path), name, rule ? RefusalText::invalidPath(path) : reason));
        return false;
    }
    const NodeIndex::Key key(path);
    NodeIndex::Shard& shard = index.shardOf(key);
    const std::lock_guard lock(shard.mutex);
    Node* node = shard.find(key);
    Rules& rules = node ? node->extrasToFill().rules : shard.waiting[path].rules;
    rules.push_back(rule);
    return true;
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
