#include "repository/operations/StepReplay.h"

#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/common/PathRules.h"
#include "repository/common/Texts.h"
#include "repository/store/AttributeTree.h"
#include "repository/store/Refusals.h"
#include "repository/transaction/Projection.h"

#include <QSet>

#include <algorithm>

namespace Repository {

using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;
using FrameworkCore::Values::toValue;

namespace {

template <typename Changes>
QSet<QString> pathsOf(const Changes& changes)
{
    QSet<QString> paths;
    for (const auto& change : changes)
        paths.insert(change.path);
    return paths;
}

bool isOneValue(const HistoryStep& step)
{
    const BackendChange& first = step.changes.front();
    return step.changes.size() == 1 && first.values.size() == 1 && first.entries.empty() && !first.text;
}

QStringList rootsOf(const HistoryStep& step)
{
    QStringList roots;
    for (const BackendChange& change : step.changes)
        roots.append(change.backend->getName());
    return roots;
}

Outcome refusal(const QString& reason, const QString& path, const QString& text = {})
{
    Outcome outcome(StatusCode::NotWritable, reason);
    outcome.change().details.append({path, text});
    return outcome;
}

Outcome changedSince(const QString& path)
{
    return refusal(Texts::tr("it has been changed since"), path);
}

QString whatItIs(const NodeState& state)
{
    return state.isAttribute ? Outcome::shownValue(state.value) : Texts::tr("without a value");
}

// How a place differs from what the step left there, and what to do about it.
Outcome explainChange(const QString& path, const NodeState& present, const NodeState& left)
{
    if (present.isHidden() || left.isHidden())
        return changedSince(path);
    return refusal(Texts::tr("it has been changed since"), path,
                   Texts::tr("is %1 now, and the step left it %2").arg(whatItIs(present), whatItIs(left)))
        .advise(Texts::tr("put that back first"));
}

} // namespace

StepReplay::StepReplay(AttributeTree& attributes, History& steps, Direction replayDirection)
    : tree(attributes), history(steps), direction(replayDirection)
{
}

Outcome StepReplay::run()
{
    auto step = history.take(direction);
    if (!step)
        return {StatusCode::NotFound, direction == Direction::Undo ? Texts::tr("There is nothing to undo")
                                                                   : Texts::tr("There is nothing to redo")};
    return run(*std::move(step));
}

Outcome StepReplay::run(HistoryStep step)
{
    const History::Mute mute;
    const QString name = step.name;
    // A single value is changed by one operation.
    std::optional<Transaction> transaction;
    if (isOneValue(step))
        transaction.emplace(tree);
    else
        transaction.emplace(tree, nullptr, rootsOf(step));
    Outcome outcome = replay(*transaction, step);
    history.settle(std::move(step), direction, outcome.ok());
    return outcome.ok() ? outcome
                        : outcome.of(direction == Direction::Undo ? Outcome::Operation::Undo
                                                                  : Outcome::Operation::Redo,
                                     name);
}

Outcome StepReplay::replay(Transaction& transaction, const HistoryStep& step)
{
    Outcome outcome;
    for (const BackendChange& change : step.changes) {
        transaction.edit(*change.backend);
        outcome = outcome.ok() ? check(transaction.getNodes(), change) : outcome;
    }
    for (const BackendChange& change : step.changes)
        outcome = outcome.ok() ? changeDocument(transaction, change) : outcome;
    if (!outcome.ok())
        return outcome;
    transaction.commit();
    for (const BackendChange& change : step.changes)
        showTree(transaction, change);
    transaction.showLinked();
    return outcome;
}

Outcome StepReplay::check(const NodeWriter& nodes, const BackendChange& change) const
{
    const bool isUndo = direction == Direction::Undo;
    if (change.backend->isClosed())
        return refusal(Texts::tr("a backend of it is closed"), change.backend->getName());
    if (change.backend->isLocked())
        return refusal(Texts::tr("a backend of it is locked"), change.backend->getName())
            .advise(Texts::tr("unlock it first"));
    // What both the values and the shape changed is looked at as the later of them left it.
    const QSet<QString> inShape = isUndo ? pathsOf(change.entries) : QSet<QString>();
    const QSet<QString> inValues = isUndo ? QSet<QString>() : pathsOf(change.values);
    Outcome outcome;
    for (const EntryChange& entry : change.entries) {
        if (outcome.ok() && !inValues.contains(entry.path))
            outcome = checkPlace(nodes, *change.backend, entry.path, from(entry), to(entry));
    }
    for (const ValueChange& value : change.values) {
        if (outcome.ok() && !inShape.contains(value.path))
            outcome = checkPlace(nodes, *change.backend, value.path, from(value), to(value));
    }
    return outcome;
}

Outcome StepReplay::checkPlace(const NodeWriter& nodes, const Backend& backend, const QString& path,
                               const NodeState& expected, const NodeState& wanted) const
{
    const NodeState present = NodeState::at(nodes.getTree(), path);
    if (!isSameValue(present, expected))
        return explainChange(path, present, expected);
    if ((wanted.isNode || expected.isAttribute) && nodes.nearest(path).backend != &backend)
        return refusal(Texts::tr("another backend owns it by now"), path);
    return {};
}

Outcome StepReplay::changeDocument(Transaction& transaction, const BackendChange& change)
{
    DocumentEdit& document = transaction.edit(*change.backend);
    if (direction == Direction::Redo) {
        Outcome outcome = changeValues(document, change);
        return outcome.ok() ? changeShape(transaction, change) : outcome;
    }
    Outcome outcome = changeShape(transaction, change);
    return outcome.ok() ? changeValues(document, change) : outcome;
}

Outcome StepReplay::changeValues(DocumentEdit& document, const BackendChange& change) const
{
    for (const ValueChange& value : change.values) {
        const auto& spelling = direction == Direction::Undo ? value.spellingBefore : value.spellingAfter;
        Outcome outcome = spelling ? document.respell(value.path, *spelling)
                                   : document.set(value.path, toValue(to(value).value));
        if (!outcome.ok())
            return outcome;
    }
    return {};
}

Outcome StepReplay::changeShape(Transaction& transaction, const BackendChange& change)
{
    if (change.text) {
        const std::string text = change.backend->getBytes();
        const auto wanted = direction == Direction::Undo ? change.text->undo(text) : change.text->redo(text);
        if (wanted && !change.hasAllEntries)
            unlikeEntries.insert(change.backend.get());
        if (wanted)
            return transaction.edit(*change.backend).replaceText(*wanted);
    }
    if (!change.hasAllEntries)
        return changedSince(change.backend->getName());
    if (!change.entries.empty())
        unlikeEntries.insert(change.backend.get());
    return changeEntries(transaction, change);
}

Outcome StepReplay::changeEntries(Transaction& transaction, const BackendChange& change) const
{
    const Backend& backend = *change.backend;
    DocumentEdit& document = transaction.edit(*change.backend);
    QSet<QString> leaving;
    for (const EntryChange& entry : change.entries) {
        if (from(entry).isNode && !to(entry).isNode)
            leaving.insert(entry.path);
    }
    Outcome outcome;
    for (auto entry = change.entries.rbegin(); entry != change.entries.rend() && outcome.ok(); ++entry) {
        const bool loses = from(*entry).isAttribute && !to(*entry).isAttribute;
        const Node* node = transaction.getNodes().find(entry->path);
        if (!node || (!loses && !leaving.contains(entry->path)) || !backend.contains(entry->path) ||
            backend.originOf(entry->path) == Backend::Origin::Copy)
            continue;
        const bool holdsOthers =
            node->children && std::any_of(node->children->places.begin(), node->children->places.end(),
                                          [&leaving](const Node* child) {
                                              return child && !leaving.contains(child->getPath());
                                          });
        if (!holdsOthers)
            outcome = document.remove(entry->path);
        else if (loses)
            outcome = refusal(Texts::tr("other attributes have come below"), entry->path);
    }
    document.beginBatch();
    for (const EntryChange& entry : change.entries) {
        const bool isCopy = !from(entry).isNode && backend.originOf(entry.path) == Backend::Origin::Copy;
        if (!outcome.ok() || !to(entry).isNode || isCopy)
            continue;
        if (to(entry).isAttribute && from(entry).isAttribute)
            outcome = document.set(entry.path, toValue(to(entry).value));
        else if (to(entry).isAttribute)
            outcome = document.insert(entry.path, toValue(to(entry).value));
        else if (!from(entry).isNode && !backend.contains(entry.path))
            outcome = document.insert(entry.path, {});
    }
    QString lacking;
    const Outcome ended = document.endBatch(lacking);
    return outcome.ok() ? ended : outcome;
}

void StepReplay::showTree(Transaction& transaction, const BackendChange& change) const
{
    NodeWriter& nodes = transaction.getNodes();
    const auto show = [&nodes](const QString& path, const NodeState& wanted) {
        Node& node = nodes.ensure(path);
        if (wanted.isAttribute)
            nodes.setAttribute(node, wanted.value, wanted.access);
        else
            nodes.makeGroup(node);
    };
    for (auto entry = change.entries.rbegin(); entry != change.entries.rend(); ++entry) {
        if (!to(*entry).isNode)
            nodes.takeAttribute(entry->path);
    }
    for (const EntryChange& entry : change.entries) {
        if (to(entry).isNode)
            show(entry.path, to(entry));
    }
    const QSet<QString> inShape = direction == Direction::Undo ? QSet<QString>() : pathsOf(change.entries);
    for (const ValueChange& value : change.values) {
        if (!inShape.contains(value.path))
            show(value.path, to(value));
    }
    if (unlikeEntries.contains(change.backend.get()))
        Projection(transaction).showAll(*change.backend);
    else if (!change.entries.empty() || change.text)
        nodes.getOrder().restoreLater(*change.backend);
}

} // namespace Repository
