#include "repository/operations/AttributeWriter.h"

#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/backends/Backend.h"
#include "repository/common/Border.h"
#include "repository/common/PathRules.h"
#include "repository/common/Texts.h"
#include "repository/store/BackendLookup.h"
#include "repository/store/Delivery.h"
#include "repository/store/Refusals.h"
#include "repository/transaction/ListEdit.h"
#include "repository/transaction/Projection.h"

namespace Repository {

using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::Values::toValue;

bool AttributeWriter::createAttribute(const QString& path, const QVariant& value, const int& option,
                                      const int& access)
{
    return create(path, value, option, access).ok();
}

int AttributeWriter::writeAttributeValue(const QString& path, const QVariant& value, const int& points)
{
    return write(path, value, points).getStatus();
}

Outcome AttributeWriter::create(const QString& path, const QVariant& value, int option, int access)
{
    return runForCaller(Outcome::Operation::Change, path,
                        [&] { return createOne(path, value, option, access); });
}

Outcome AttributeWriter::write(const QString& path, const QVariant& value, int points)
{
    return runForCaller(Outcome::Operation::Change, path, [&] { return writeOne(path, value, points); });
}

Outcome AttributeWriter::retype(const QString& path, const QVariant& value)
{
    return runForCaller(Outcome::Operation::Change, path,
                        [&] { return changeOne(path, value, acceptRetyped, Delivery::allPoints); });
}

Outcome AttributeWriter::createOne(const QString& path, const QVariant& value, int option, int access)
{
    auto attributeValue = FrameworkCore::Values::toAttributeVariant(value);
    bool isHidden = !isReadable(AccessMode(access));
    Outcome outcome = checkCreation(path, attributeValue.has_value(), access);
    if (outcome.ok()) {
        const auto stepName = [&] {
            return Texts::tr("Create %1").arg(readablePath(*store->getTree(), path));
        };
        outcome = store->change(stepName, [&](Transaction& transaction) {
            const auto element = insertElement(transaction, path, *attributeValue, option == createBefore);
            Outcome inserted =
                element ? *element
                        : insert(transaction, path, *std::move(attributeValue), AccessMode(access));
            isHidden = isHidden || (!inserted.ok() && store->getTree()->hidesValues(path));
            return inserted;
        });
    }
    if (outcome == StatusCode::AlreadyExists && option == createOrWrite)
        return writeOne(path, value, Delivery::allPoints);
    return Refusals::notSet(std::move(outcome), path, value, isHidden);
}

Outcome AttributeWriter::checkCreation(const QString& path, bool isTypeKnown, int access)
{
    if (!isValidPath(path))
        return Refusals::invalidPath(path);
    if (isAtOrBelow(path, ownRoot))
        return Refusals::ownTree();
    if (access < int(AccessMode::ReadOnly) || access > int(AccessMode::ReadWrite))
        return Outcome(StatusCode::NotWritable, Texts::tr("%1 is not an access mode").arg(access))
            .advise(Texts::tr("1 is read-only, 2 write-only, 3 read-write"));
    return isTypeKnown ? Outcome() : Refusals::noAttributeType();
}

Outcome AttributeWriter::insert(Transaction& transaction, const QString& path, QVariant value,
                                AccessMode access)
{
    NodeWriter& nodes = transaction.getNodes();
    const NodeIndex::Key key(path);
    Node* const node = nodes.find(path);
    if (node && node->isAttribute())
        return Outcome(StatusCode::AlreadyExists, Texts::tr("it exists already"))
            .advise(Texts::tr("write to it, or choose another name"));
    Node& ancestor = node ? *node : nodes.nearest(parentPath(path));
    Backend* const backend = ancestor.backend;
    Outcome outcome = acceptNew(nodes.getTree(), key, node, backend, value);
    if (!outcome.ok())
        return outcome;
    if (backend) {
        outcome = transaction.edit(*backend).insert(path, toValue(value));
        if (!outcome.ok())
            return Refusals::unfit(std::move(outcome), value,
                                   !isReadable(access) || !isReadable(backend->getAccessMode()));
        access = AccessMode(quint8(access) & quint8(backend->getAccessMode()));
    }
    if (!node) {
        nodes.create(path, key, ancestor, std::move(value), access);
        nodes.followValue(ancestor);
        return outcome;
    }
    if (backend && !nodes.getOrder().isInPlace(*node))
        nodes.getOrder().restoreLater(*backend); // the value has come before the group
    nodes.setAttribute(*node, std::move(value), access);
    return outcome;
}

Outcome AttributeWriter::writeOne(const QString& path, const QVariant& value, int points)
{
    AttributeTree& tree = *store->getTree();
    History::Write record; // outlives the lock and the callbacks
    const NodeIndex::Key key(path);
    NodeIndex::Shard& shard = tree.index.shardOf(key);
    std::unique_lock lock(shard.mutex);
    Node* node = shard.find(key);
    if (!node || !node->isAttribute()) {
        lock.unlock();
        const auto element = ListElement::at(path);
        return element ? writeElement(*element, path, value) : refuseUnknown(path, value);
    }
    QVariant accepted;
    bool isChanged = false;
    record.begin(store->getHistory(), *node);
    std::optional<Outcome> outcome = replace(*node, path, value, accepted, isChanged);
    if (!outcome || !outcome->ok()) {
        const bool isHidden = !node->isReadable();
        const bool isLinked = !outcome && node->backend->isLinked(path);
        lock.unlock();
        if (outcome)
            return Refusals::notSet(*std::move(outcome), path, value, isHidden);
        if (isLinked)
            return changeOne(path, value, acceptWrite, points);
        { // whoever edits the backend holds this lock until it is done
            const std::shared_lock waiting(tree.structure);
        }
        return writeOne(path, value, points);
    }
    record.end(*node);
    const Delivery delivery(*node, path, tree.patterns,
                            isChanged ? UpdateResult::Changed : UpdateResult::Unchanged, points,
                            std::move(accepted));
    lock.unlock();
    delivery.send(path);
    return {};
}

Outcome AttributeWriter::changeOne(const QString& path, const QVariant& value, Acceptance acceptance,
                                   int points)
{
    bool isKnown = false;
    bool isHidden = false;
    const auto stepName = [&] { return Texts::tr("Write %1").arg(readablePath(*store->getTree(), path)); };
    Outcome outcome = store->change(stepName, [&](Transaction& transaction) {
        Node* const node = transaction.getNodes().find(path);
        isKnown = node && node->isAttribute();
        isHidden = isKnown && !node->isReadable();
        transaction.getNodes().notifyAt(points);
        return isKnown ? change(transaction, *node, value, acceptance) : Outcome();
    });
    if (isKnown)
        return Refusals::notSet(std::move(outcome), path, value, isHidden);
    const auto element = value.userType() == QMetaType::QString ? ListElement::at(path) : std::nullopt;
    return element ? writeElement(*element, path, value) : refuseUnknown(path, value);
}

Outcome AttributeWriter::change(Transaction& transaction, Node& node, const QVariant& value,
                                Acceptance acceptance)
{
    QVariant accepted;
    Outcome outcome = writeInFile(transaction, node, value, accepted, acceptance);
    if (outcome.ok())
        transaction.getNodes().setAttribute(node, std::move(accepted), node.getAccess());
    return outcome;
}

Outcome AttributeWriter::accept(const NodeWriter& nodes, const QString& path, const QVariant& value,
                                QVariant& accepted, Acceptance acceptance)
{
    const Node* const node = nodes.find(path);
    if (!node || !node->isAttribute())
        return {};
    const std::lock_guard shardLock(nodes.getTree().index.shardOf(NodeIndex::Key(path)).mutex);
    return acceptance(*node, value, accepted).of(Outcome::Operation::Set, path);
}

Outcome AttributeWriter::writeInFile(Transaction& transaction, const Node& node, const QVariant& value,
                                     QVariant& accepted, Acceptance acceptance)
{
    const NodeWriter& nodes = transaction.getNodes();
    const QString path = node.getPath();
    Outcome outcome = accept(nodes, path, value, accepted, acceptance);
    const QStringList followers = node.backend ? node.backend->followersOf(path) : QStringList();
    for (const QString& follower : followers) {
        QVariant same;
        outcome = outcome.ok() ? accept(nodes, follower, accepted, same, acceptRetyped) : outcome;
    }
    if (outcome.ok() && node.backend)
        outcome =
            Refusals::unfitFor(node, transaction.edit(*node.backend).set(path, toValue(accepted)), accepted);
    return outcome;
}

Outcome AttributeWriter::writeElement(const ListElement& element, const QString& path, const QVariant& value)
{
    bool isHidden = false;
    const auto name = [&] { return Texts::tr("Write %1").arg(readablePath(*store->getTree(), path)); };
    const Outcome outcome = store->change(name, [&](Transaction& transaction) -> Outcome {
        Node* const list = transaction.getNodes().find(element.list);
        if (!ListEdit::textsIn(transaction.getNodes(), list))
            return Refusals::notFound();
        isHidden = !list->isReadable();
        return ListEdit(transaction, *list).set(element.index, value);
    });
    return outcome == StatusCode::NotFound ? refuseUnknown(path, value)
                                           : Refusals::notSet(outcome, path, value, isHidden);
}

std::optional<Outcome> AttributeWriter::insertElement(Transaction& transaction, const QString& path,
                                                      const QVariant& value, bool movesOthers)
{
    NodeWriter& nodes = transaction.getNodes();
    Node* const node = nodes.find(path);
    Node& array = nodes.nearest(parentPath(path));
    const QStringView below = pathAfter(path, array.getPathSize());
    const QStringView name = below.left(below.indexOf(pathSeparator));
    const auto index = elementIndex(name);
    const auto texts = node || !index ? std::nullopt : ListEdit::textsIn(nodes, &array);
    if (!index || (!texts && !(node && movesOthers)))
        return {};
    Outcome outcome = acceptNew(nodes.getTree(), NodeIndex::Key(path), nullptr, array.backend, value);
    if (!outcome.ok())
        return outcome;
    const int count = texts ? texts->size() : *index + 1;
    if (*index > count)
        return ListEdit::beyond(count);
    if (*index < count && (!movesOthers || name.size() < below.size()))
        return Outcome(StatusCode::AlreadyExists, Texts::tr("it exists already"));
    const bool isText = texts && value.userType() == QMetaType::QString && name.size() == below.size();
    const auto inserted =
        array.backend && !isText
            ? transaction.edit(*array.backend)
                  .insertElement(joinedPath(array.getPath(), name),
                                 {{pathBytes(pathAfter(below, name.size())), toValue(value)}})
            : std::nullopt;
    if (inserted && inserted->ok())
        Projection(transaction).showAll(*array.backend);
    if (inserted || !texts || name.size() < below.size())
        return inserted;
    return ListEdit(transaction, array).insert(*index, value);
}

Outcome AttributeWriter::refuseUnknown(const QString& path, const QVariant& value)
{
    AttributeTree& tree = *store->getTree();
    bool isHidden = false;
    {
        const std::shared_lock lock(tree.structure);
        isHidden = tree.hidesValues(path);
    }
    Outcome outcome = isValidPath(path) ? Refusals::notFound().advise(Texts::tr("create it first"))
                                        : Refusals::invalidPath(path);
    return Refusals::notSet(std::move(outcome), path, value, isHidden);
}

std::optional<Outcome> AttributeWriter::replace(Node& node, const QString& path, const QVariant& value,
                                                QVariant& accepted, bool& isChanged)
{
    Outcome outcome = acceptWrite(node, value, accepted);
    if (!outcome.ok())
        return outcome;
    isChanged = !node.value.isSame(accepted);
    NodeValue written(accepted); // first, since it may need memory
    if (node.backend) {
        std::optional<Outcome> stored = node.backend->set(path, toValue(accepted));
        if (!stored || !stored->ok())
            return stored ? Refusals::unfitFor(node, *std::move(stored), accepted) : stored;
    }
    node.value = std::move(written);
    return outcome;
}

} // namespace Repository
