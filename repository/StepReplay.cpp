#include "repository/StepReplay.h"

#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/AttributeStore.h"
#include "repository/PathRules.h"
#include "repository/RefusalText.h"
#include "repository/RepositoryLog.h"
#include "repository/TreeEdit.h"

#include <QSet>

#include <algorithm>

namespace Repository {

using FrameworkCore::AppConfig::StatusCode;
using FrameworkCore::Notification::UpdateResult;
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

QStringList rootsOf(const HistoryStep& step)
{
    QStringList roots;
    for (const BackendChange& change : step.changes)
        roots.append(change.backend->getName());
    return roots;
}

QString changedSince(const QString& path)
{
    return QStringLiteral("'%1' has changed since").arg(path);
}

QString whatItIs(const NodeState& state)
{
    return state.isAttribute ? RefusalText::shown(state.value) : QStringLiteral("without a value");
}

// How a place differs from what the step left there, and what to do about it.
QString explainChange(const QString& path, const NodeState& present, const NodeState& left)
{
    if (present.isHidden() || left.isHidden())
        return changedSince(path);
    return QStringLiteral("%1: it is %2 now, and the step left it %3; put that back first")
        .arg(changedSince(path), whatItIs(present), whatItIs(left));
}

} // namespace

StepReplay::StepReplay(AttributeStore& attributes, Direction replayDirection)
    : store(attributes), direction(replayDirection)
{
}

StatusCode StepReplay::run()
{
    const bool isUndo = direction == Direction::Undo;
    auto step = store.history.take(direction);
    if (!step) {
        logFailure(isUndo ? QStringLiteral("There is nothing to undo")
                          : QStringLiteral("There is nothing to redo"));
        return StatusCode::NotFound;
    }
    return run(*std::move(step));
}

StatusCode StepReplay::run(HistoryStep step)
{
    const History::Mute mute;
    const bool isUndo = direction == Direction::Undo;
    const QString name = step.name;
    QString reason;
    {
        TreeEdit edit(store, rootsOf(step), nullptr);
        reason = replay(edit, step);
        store.history.settle(std::move(step), direction, reason.isEmpty());
    }
    if (reason.isEmpty())
        return StatusCode::Success;
    logFailure(
        (isUndo ? QStringLiteral("'%1' was not undone: %2") : QStringLiteral("'%1' was not done again: %2"))
            .arg(name, reason));
    return StatusCode::NotWritable;
}

QString StepReplay::replay(TreeEdit& edit, const HistoryStep& step)
{
    for (const BackendChange& change : step.changes) {
        edit.reshape(*change.backend);
        const QString reason = check(edit, change);
        if (!reason.isEmpty())
            return reason;
    }
    const bool isOneValue = step.changes.size() == 1 && step.changes.front().values.size() == 1 &&
                            step.changes.front().entries.empty() && !step.changes.front().text;
    QString reason;
    for (const BackendChange& change : step.changes) {
        if (!isOneValue)
            edit.reshape(*change.backend).keepText();
        reason = reason.isEmpty() ? changeDocument(edit, change) : reason;
    }
    for (const BackendChange& change : step.changes) {
        if (reason.isEmpty())
            showTree(edit, change);
        else
            edit.reshape(*change.backend).restoreText();
    }
    return reason;
}

QString StepReplay::check(TreeEdit& edit, const BackendChange& change) const
{
    const bool isUndo = direction == Direction::Undo;
    if (change.backend->isClosed())
        return QStringLiteral("the backend '%1' is closed").arg(change.backend->getName());
    // What both the values and the shape changed is looked at as the later of them left it.
    const QSet<QString> inShape = isUndo ? pathsOf(change.entries) : QSet<QString>();
    const QSet<QString> inValues = isUndo ? QSet<QString>() : pathsOf(change.values);
    QString reason;
    for (const EntryChange& entry : change.entries) {
        if (reason.isEmpty() && !inValues.contains(entry.path))
            reason = checkPlace(edit, *change.backend, entry.path, from(entry), to(entry));
    }
    for (const ValueChange& value : change.values) {
        if (reason.isEmpty() && !inShape.contains(value.path))
            reason = checkPlace(edit, *change.backend, value.path, from(value), to(value));
    }
    return reason;
}

QString StepReplay::checkPlace(TreeEdit& edit, const Backend& backend, const QString& path,
                               const NodeState& expected, const NodeState& wanted) const
{
    const NodeState present = edit.stateOf(path);
    if (!isSameValue(present, expected))
        return explainChange(path, present, expected);
    if ((wanted.isNode || expected.isAttribute) && edit.nearest(path).backend != &backend)
        return QStringLiteral("'%1' belongs to another backend by now").arg(path);
    return {};
}

QString StepReplay::changeDocument(TreeEdit& edit, const BackendChange& change)
{
    Backend::Reshape& reshape = edit.reshape(*change.backend);
    if (direction == Direction::Redo) {
        const QString reason = changeValues(reshape, change);
        return reason.isEmpty() ? changeShape(edit, change) : reason;
    }
    const QString reason = changeShape(edit, change);
    return reason.isEmpty() ? changeValues(reshape, change) : reason;
}

QString StepReplay::changeValues(Backend::Reshape& reshape, const BackendChange& change) const
{
    for (const ValueChange& value : change.values) {
        const auto& spelling = direction == Direction::Undo ? value.spellingBefore : value.spellingAfter;
        const QString reason = spelling ? reshape.respell(value.path, *spelling)
                                        : reshape.set(value.path, toValue(to(value).value));
        if (!reason.isEmpty())
            return reason;
    }
    return {};
}

QString StepReplay::changeShape(TreeEdit& edit, const BackendChange& change)
{
    if (change.text) {
        const std::string text = change.backend->getBytes();
        const auto wanted = direction == Direction::Undo ? change.text->undo(text) : change.text->redo(text);
        if (wanted && !change.hasAllEntries)
            unlikeEntries.insert(change.backend.get());
        if (wanted)
            return edit.reshape(*change.backend).replaceText(*wanted);
    }
    if (!change.hasAllEntries)
        return changedSince(change.backend->getName());
    if (!change.entries.empty())
        unlikeEntries.insert(change.backend.get());
    return changeEntries(edit, change);
}

QString StepReplay::changeEntries(TreeEdit& edit, const BackendChange& change) const
{
    Backend& backend = *change.backend;
    QSet<QString> leaving;
    for (const EntryChange& entry : change.entries) {
        if (from(entry).isNode && !to(entry).isNode)
            leaving.insert(entry.path);
    }
    QString reason;
    for (auto entry = change.entries.rbegin(); entry != change.entries.rend() && reason.isEmpty(); ++entry) {
        const bool loses = from(*entry).isAttribute && !to(*entry).isAttribute;
        const Node* node = edit.find(entry->path);
        if (!node || (!loses && !leaving.contains(entry->path)) || !backend.contains(entry->path))
            continue;
        const bool holdsOthers =
            node->children &&
            std::any_of(node->children->places.begin(), node->children->places.end(),
                        [&leaving](const Node* child) { return child && !leaving.contains(child->path); });
        if (!holdsOthers)
            reason = backend.remove(entry->path);
        else if (loses)
            reason = QStringLiteral("'%1' has got other attributes below it").arg(entry->path);
    }
    backend.beginRun();
    for (const EntryChange& entry : change.entries) {
        if (!reason.isEmpty() || !to(entry).isNode)
            continue;
        if (to(entry).isAttribute && from(entry).isAttribute)
            reason = edit.reshape(backend).set(entry.path, toValue(to(entry).value));
        else if (to(entry).isAttribute)
            reason = backend.insert(entry.path, toValue(to(entry).value));
        else if (!from(entry).isNode && !backend.contains(entry.path))
            reason = backend.insert(entry.path, {});
    }
    QString lacking;
    const QString lackingReason = backend.endRun(lacking);
    return reason.isEmpty() ? lackingReason : reason;
}

void StepReplay::showTree(TreeEdit& edit, const BackendChange& change) const
{
    const auto show = [&edit](const QString& path, const NodeState& wanted) {
        Node& node = edit.ensure(path);
        if (wanted.isAttribute)
            edit.setAttribute(node, wanted.value, wanted.access,
                              node.isAttribute() ? UpdateResult::Changed : UpdateResult::Created);
        else
            edit.makeGroup(node);
    };
    for (auto entry = change.entries.rbegin(); entry != change.entries.rend(); ++entry) {
        if (!to(*entry).isNode)
            edit.takeAttribute(entry->path);
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
        edit.showDocument(*change.backend);
    else if (!change.entries.empty() || change.text)
        edit.restoreOrder(*change.backend);
}

} // namespace Repository
