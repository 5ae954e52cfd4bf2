#include "repository/operations/AttributeStore.h"

#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/backends/Backend.h"
#include "repository/common/PathRules.h"
#include "repository/store/AttributeSnapshot.h"
#include "repository/store/Delivery.h"
#include "repository/store/Refusals.h"
#include "repository/store/WriteCheck.h"
#include "repository/transaction/SubtreeRemoval.h"

namespace Repository {

using FrameworkCore::AppConfig::Outcome;

AttributeStore::AttributeStore(std::size_t historyBound)
    : tree(std::make_shared<AttributeTree>()), history(historyBound)
{
}

AttributeStore::~AttributeStore() = default;

FrameworkCore::AppConfig::StatusCode AttributeStore::read(const QString& path, QVariant& value)
{
    const NodeIndex::Key key(path);
    NodeIndex::Shard& shard = tree->index.shardOf(key);
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
    NodeIndex::Shard& shard = tree->index.shardOf(key);
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
        TreeEdit edit(*tree, step.getRecorder() ? QStringList(path) : QStringList(), step.getRecorder());
        outcome = edit.createAttribute(path, *std::move(attributeValue), AccessMode(access));
        if (!outcome.ok())
            isHidden = isHidden || tree->hidesValues(path);
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
    NodeIndex::Shard& shard = tree->index.shardOf(key);
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
        { // whoever edits the backend holds this lock until it is done
            const std::shared_lock waiting(tree->structure);
        }
        return write(path, value, points);
    }
    const bool isChanged = !FrameworkCore::Values::isSameValue(previous, node->value);
    record.end(*node);
    const Delivery delivery(*node, tree->patterns,
                            isChanged ? UpdateResult::Changed : UpdateResult::Unchanged, points, key.hash,
                            std::move(previous));
    lock.unlock();
    delivery.send(path);
    return {};
}

Outcome AttributeStore::refuseUnknown(const QString& path, const QVariant& value)
{
    bool isHidden = false;
    {
        const std::shared_lock lock(tree->structure);
        isHidden = tree->hidesValues(path);
    }
    Outcome outcome = isValidPath(path) ? Refusals::notFound().advise(QStringLiteral("create it first"))
                                        : Refusals::invalidPath(path);
    return Refusals::notSet(std::move(outcome), path, value, isHidden);
}

std::optional<Outcome> AttributeStore::store(Node& node, const QVariant& value, QVariant& previous)
{
    QVariant& accepted = previous; // until it changes places with the one before
    Outcome outcome = acceptWrite(node, value, accepted);
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

Outcome AttributeStore::removeTree(const QString& path)
{
    if (isAtOrBelow(path, ownRoot))
        return Refusals::ownTree();
    const History::Scope step(history, [&path] { return QStringLiteral("Remove %1").arg(path); });
    TreeEdit edit(*tree, step.getRecorder() ? QStringList(path) : QStringList(), step.getRecorder());
    Node* const node = edit.find(path);
    if (!node)
        return Refusals::notFound();
    SubtreeRemoval removal(edit, *node);
    Outcome outcome = removal.removeFromBackend();
    if (outcome.ok())
        removal.removeFromTree();
    return outcome;
}

} // namespace Repository
