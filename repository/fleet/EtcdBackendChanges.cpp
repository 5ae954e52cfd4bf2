// What of a backend on a store is not written there yet, and what is in conflict.

#include "host/FrameworkCore/Values/ValueText.h"
#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/common/Texts.h"
#include "repository/fleet/EtcdBackend.h"
#include "repository/fleet/WindowThread.h"
#include "repository/merge/UnifiedDiff.h"

namespace Repository {

using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;
using FrameworkCore::Values::Value;

namespace {

QString shown(const std::optional<Value>& value)
{
    return value ? QLatin1Char('\'') + QString::fromStdString(FrameworkCore::Values::toText(*value)) +
                       QLatin1Char('\'')
                 : QStringLiteral("nothing");
}

QVariant variantOf(const std::optional<Value>& value)
{
    return value ? FrameworkCore::Values::toVariant(*value) : QVariant();
}

} // namespace

bool EtcdBackend::isEdited() const
{
    const std::lock_guard lock(state->mutex);
    return !state->entries.getEdits().empty();
}

bool EtcdBackend::isClosed() const
{
    const std::lock_guard lock(state->mutex);
    return closed;
}

Outcome EtcdBackend::close(bool discardChanges)
{
    const std::lock_guard lock(state->mutex);
    if (closed)
        return {StatusCode::BackendFailure, Texts::tr("it is being closed already")};
    if (!discardChanges && !state->entries.getEdits().empty())
        return Outcome(StatusCode::BackendFailure,
                       Texts::tr("it has edits that the store has not acknowledged"))
            .advise(Texts::tr("save or discard them first"));
    closed = true;
    state->changed.notify_all();
    return {};
}

// Where it may wait, it sends by itself, rather than wait for the thread that does so.
Outcome EtcdBackend::save(const ApplyChange&)
{
    using namespace std::chrono_literals;
    std::unique_lock lock(state->mutex);
    state->writeRefusal.clear(); // it may take it now
    state->entries.retryRefused();
    state->work.notify_all();
    if (state->entries.getEdits().empty() && !state->isConnected())
        return refusal(state->explainDown());
    // What others edit meanwhile is not waited for.
    const SharedEntries& entries = state->entries;
    const auto isWritten = [&entries, last = entries.getLastBatch()] { return entries.isWrittenUpTo(last); };
    const auto isOver = [&] {
        const bool isHeldBack = entries.hasConflicts() && !state->isSending;
        return closed || state->isAway() || isHeldBack || !state->writeRefusal.isEmpty() || isWritten();
    };
    const bool isPatient = !isWindowThread();
    bool moves = true; // something becomes of it
    ++state->savers;
    while (moves && !isOver()) {
        if (isPatient && state->sendNow && state->sendNow(lock))
            continue;
        const std::size_t left = entries.getEdits().size();
        state->changed.wait_for(lock, isPatient ? std::chrono::milliseconds(10s) : 250ms, isOver);
        moves = isPatient && entries.getEdits().size() < left;
    }
    --state->savers;
    if (closed)
        return checkOpen();
    return isWritten() ? Outcome() : explainUnsaved();
}

Outcome EtcdBackend::explainConflicts() const
{
    constexpr int shownConflicts = 5;
    Outcome outcome = refusal(Texts::tr("another program has changed what was edited here"))
                          .advise(Texts::tr("keep yours or take theirs first"));
    Outcome::Parts& parts = outcome.change();
    for (const auto& [path, edit] : state->entries.getEdits()) {
        if (!edit.isConflict())
            continue;
        if (parts.details.size() == shownConflicts) {
            ++parts.detailsLeftOut;
            continue;
        }
        const Value* const mine = state->entries.find(path);
        parts.details.append({absolute(path), {}});
        if (isReadable(description.accessMode))
            parts.details.last().text =
                Texts::tr("(yours: %1, in the store: %2)")
                    .arg(shown(mine ? std::optional(*mine) : std::nullopt), shown(edit.stored.value));
    }
    return outcome;
}

Outcome EtcdBackend::checkConflicts() const
{
    const std::lock_guard lock(state->mutex);
    return state->entries.hasConflicts() ? explainConflicts() : Outcome();
}

Outcome EtcdBackend::explainUnsaved() const
{
    if (state->entries.hasConflicts())
        return explainConflicts();
    if (!state->isConnected() && state->entries.isSomethingSent())
        return refusal(state->explainDown())
            .advise(Texts::tr("some of it may be stored already; look when the store is there again"));
    if (!state->isConnected())
        return refusal(state->explainDown());
    if (!state->writeRefusal.isEmpty())
        return refusal(Texts::tr("the store refuses it: %1").arg(state->writeRefusal));
    return refusal(Texts::tr("the store has not acknowledged it yet; it is being sent"));
}

Outcome EtcdBackend::reload(Trigger, const ApplyChange&)
{
    const std::lock_guard lock(state->mutex);
    return state->isConnected() ? Outcome() : refusal(state->explainDown());
}

Outcome EtcdBackend::locate(const QString&, TextPlace&) const
{
    return {StatusCode::NotFound, Texts::tr("a store has no text with places in it")};
}

Outcome EtcdBackend::findAt(int, int, QString&) const
{
    return {StatusCode::NotFound, Texts::tr("a store has no text with places in it")};
}

Outcome EtcdBackend::getReadableText(BackendText&) const
{
    return {StatusCode::NotReadable, Texts::tr("a store has no text")};
}

QVector<Backend::UnsavedChange> EtcdBackend::getUnsavedChanges() const
{
    const bool showsValues = isReadable(description.accessMode);
    QVector<UnsavedChange> changes;
    const std::lock_guard lock(state->mutex);
    for (const auto& [path, edit] : state->entries.getEdits()) {
        const Value* const mine = state->entries.find(path);
        UnsavedChange change;
        change.path = absolute(path);
        change.kind = !mine                ? UnsavedChange::Kind::Removed
                      : !edit.stored.value ? UnsavedChange::Kind::Created
                                           : UnsavedChange::Kind::Changed;
        change.isConflict = edit.isConflict();
        if (showsValues) {
            change.before = variantOf(edit.stored.value);
            change.after = mine ? FrameworkCore::Values::toVariant(*mine) : QVariant();
            change.base = change.isConflict ? variantOf(edit.base.value) : QVariant();
        }
        changes.append(change);
    }
    return changes;
}

QString EtcdBackend::getUnsavedDiff() const
{
    if (!isReadable(description.accessMode))
        return {};
    std::string before;
    std::string after;
    {
        const std::lock_guard lock(state->mutex);
        for (const auto& [path, edit] : state->entries.getEdits()) {
            before += edit.stored.value ? lineOf(path, *edit.stored.value) : std::string();
            const Value* const mine = state->entries.find(path);
            after += mine ? lineOf(path, *mine) : std::string();
        }
    }
    return QString::fromStdString(unifiedDiff(before, after, description.filePath.toStdString()));
}

Outcome EtcdBackend::revert(const QString& path, const ApplyChange& apply)
{
    return revertPart({{path}, {}}, apply);
}

Outcome EtcdBackend::revertPart(const Part& part, const ApplyChange& apply)
{
    if (!part.hunks.isEmpty())
        return refusal(Texts::tr("a store has no lines of text"));
    std::vector<std::string> paths;
    for (const QString& path : part.paths)
        paths.push_back(relative(path));
    apply([&] {
        const std::lock_guard lock(state->mutex);
        return Changes{state->entries.revert(paths), false};
    });
    return {};
}

// All is written as soon as it can be; there is no part that would have to be asked for.
Outcome EtcdBackend::savePart(const Part& part, const ApplyChange& apply)
{
    return part.hunks.isEmpty() ? save(apply) : refusal(Texts::tr("a store has no lines of text"));
}

Outcome EtcdBackend::resolveConflicts(const QString& path, ConflictSide side, const ApplyChange& apply)
{
    const std::string place = relative(path);
    Part conflicts;
    {
        const std::lock_guard lock(state->mutex);
        for (const auto& [edited, edit] : state->entries.getEdits()) {
            if (edit.isConflict() && isWithin(edited, place))
                conflicts.paths.append(absolute(edited));
        }
        if (side == ConflictSide::Mine)
            state->entries.keepEdits(place);
        state->work.notify_all();
    }
    if (conflicts.paths.isEmpty())
        return {StatusCode::NotFound, Texts::tr("there is no conflict at or below it")};
    if (side == ConflictSide::Theirs)
        return revertPart(conflicts, apply);
    if (side == ConflictSide::Base) {
        apply([&] {
            const std::lock_guard lock(state->mutex);
            state->work.notify_all();
            return Changes{state->entries.takeBases(place), false};
        });
    }
    return {};
}

} // namespace Repository
