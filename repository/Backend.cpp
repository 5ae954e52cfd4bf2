#include "repository/Backend.h"

#include "host/FrameworkCore/Values/ValueText.h"
#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/DocumentComparison.h"
#include "repository/EntryList.h"
#include "repository/MemoryGuard.h"
#include "repository/PathRules.h"
#include "repository/UnifiedDiff.h"
#include "repository/documents/common/TextEncoding.h"

#include <algorithm>
#include <set>

namespace Repository {

using Documents::Document;
using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;
using FrameworkCore::Values::Value;

namespace {

QString valueForPeople(const std::optional<Value>& value)
{
    return value ? QLatin1Char('\'') + QString::fromStdString(FrameworkCore::Values::toText(*value)) +
                       QLatin1Char('\'')
                 : QStringLiteral("nothing");
}

} // namespace

Backend::Backend(Description backendDescription)
    : description(std::move(backendDescription)), content(description.type.toStdString())
{
}

std::shared_ptr<Backend> Backend::open(const Description& description, Outcome& outcome)
{
    std::shared_ptr<Backend> backend(new Backend(description));
    outcome = backend->read();
    return outcome.ok() ? std::move(backend) : nullptr;
}

std::string Backend::relative(const QString& path) const
{
    return path.mid(description.name.size() + 1).toStdString();
}

QString Backend::absolute(const std::string& path) const
{
    return joinedPath(description.name, path);
}

void Backend::visitEntries(const std::function<void(const Documents::Entry&)>& visitor) const
{
    const std::lock_guard lock(mutex);
    content.getDocument().visit(visitor);
}

void Backend::visit(const std::function<void(const QString&, const Value&)>& visitor) const
{
    visitEntries([&](const Documents::Entry& entry) { visitor(absolute(entry.path), entry.value); });
}

bool Backend::contains(const QString& path) const
{
    const std::lock_guard lock(mutex);
    return content.getDocument().contains(relative(path));
}

bool Backend::removalMovesOthers(const QString& path) const
{
    const std::lock_guard lock(mutex);
    const Document& document = content.getDocument();
    const std::string entry = relative(path);
    return document.removalMovesSiblings(entry) || document.removalMovesGroups(entry);
}

Backend::Place Backend::placeOf(const QString& path) const
{
    const std::lock_guard lock(mutex);
    const Documents::SiblingPlace place = content.getDocument().placeOf(relative(path));
    const bool isAfter = place.kind == Documents::SiblingPlace::Kind::After;
    return {place.kind, isAfter ? absolute(place.sibling) : QString()};
}

Outcome Backend::edit(const std::function<Documents::Outcome(Document&)>& change)
{
    Outcome outcome = checkOpen();
    if (!outcome.ok())
        return outcome;
    return guardMemory([&] {
        const Documents::Outcome changed = content.edit(change);
        return changed.ok() ? Outcome()
                            : Outcome(StatusCode::BackendFailure, QString::fromStdString(changed.error));
    });
}

std::optional<Outcome> Backend::set(const QString& path, const Value& value)
{
    const std::lock_guard lock(mutex);
    if (reshaped)
        return {};
    return edit([&](Document& text) { return text.set(relative(path), value); });
}

Outcome Backend::insert(const QString& path, const Value& value)
{
    const std::lock_guard lock(mutex);
    return edit([&](Document& text) { return text.insert(relative(path), value); });
}

void Backend::beginRun()
{
    const std::lock_guard lock(mutex);
    edit([](Document& text) {
        text.beginRun();
        return Documents::Outcome();
    });
}

Outcome Backend::endRun(QString& refusedPath)
{
    const std::lock_guard lock(mutex);
    std::string refused;
    Outcome outcome = edit([&](Document& text) { return text.endRun(refused); });
    refusedPath = absolute(refused);
    return outcome;
}

Outcome Backend::insertAll(const QString& path, const std::vector<Documents::Entry>& entries,
                           std::size_t& refused)
{
    const std::lock_guard lock(mutex);
    return edit([&](Document& text) { return text.insertAll(relative(path), entries, refused); });
}

bool Backend::keepsGivenOrder() const
{
    const std::lock_guard lock(mutex);
    return content.getDocument().keepsGivenOrder();
}

Outcome Backend::remove(const QString& path)
{
    const std::lock_guard lock(mutex);
    return edit([&](Document& text) { return text.remove(relative(path)); });
}

std::optional<std::string> Backend::spell(const QString& path) const
{
    const std::lock_guard lock(mutex);
    return content.getDocument().spell(relative(path));
}

std::string Backend::getBytes() const
{
    const std::lock_guard lock(mutex);
    return content.getText();
}

quint64 Backend::getRevision() const
{
    const std::lock_guard lock(mutex);
    return content.getRevision();
}

bool Backend::isEdited() const
{
    const std::lock_guard lock(mutex);
    return isGone || content.hasEdits();
}

Outcome Backend::close(bool discardChanges)
{
    const std::lock_guard savingLock(saving);
    const std::lock_guard lock(mutex);
    if (closed)
        return {StatusCode::BackendFailure, QStringLiteral("it is being closed already")};
    if (!discardChanges && (isGone || content.hasEdits())) {
        Outcome unsaved(StatusCode::BackendFailure, QStringLiteral("it has edits that are not saved"));
        return unsaved.advise(QStringLiteral("save or discard them first"));
    }
    closed = true;
    return {};
}

bool Backend::isClosed() const
{
    const std::lock_guard lock(mutex);
    return closed;
}

Outcome Backend::checkOpen() const
{
    return closed ? Outcome(StatusCode::BackendFailure, QStringLiteral("its backend is being closed"))
                  : Outcome();
}

QVector<Backend::UnsavedChange> Backend::getUnsavedChanges() const
{
    std::string before;
    std::string after;
    std::set<std::string> conflicts;
    QVector<UnsavedChange> changes;
    {
        const std::lock_guard lock(mutex);
        if (isGone)
            changes.append({description.name, UnsavedChange::Kind::Changed, {}, {}, true});
        if (!content.hasEdits())
            return changes;
        before = content.getBase();
        after = content.getText();
        for (EditedDocument::Conflict& conflict : content.getConflicts())
            conflicts.insert(std::move(conflict.path));
    }
    // Parsed without the lock, which writers wait for.
    const auto found =
        EditedDocument::changesBetween(description.type.toStdString(), std::move(before), std::move(after));
    const bool showsValues = isReadable(description.accessMode);
    for (const DocumentChange& change : found) {
        UnsavedChange unsaved;
        unsaved.path = absolute(change.path);
        unsaved.kind = change.kind == DocumentChange::Kind::Created   ? UnsavedChange::Kind::Created
                       : change.kind == DocumentChange::Kind::Removed ? UnsavedChange::Kind::Removed
                                                                      : UnsavedChange::Kind::Changed;
        if (showsValues) {
            unsaved.before = FrameworkCore::Values::toVariant(change.before);
            unsaved.after = FrameworkCore::Values::toVariant(change.after);
        }
        unsaved.isConflict = conflicts.count(change.path) > 0;
        changes.append(unsaved);
    }
    return changes;
}

QString Backend::getUnsavedDiff() const
{
    if (!isReadable(description.accessMode))
        return {};
    std::string before;
    std::string after;
    {
        const std::lock_guard lock(mutex);
        if (!content.hasEdits())
            return {};
        before = content.getBase();
        after = content.getText();
    }
    // A diff is one text, whatever the file's encoding is.
    Documents::TextEncoding().decode(before, {});
    Documents::TextEncoding().decode(after, {});
    return QString::fromStdString(unifiedDiff(before, after, description.filePath.toStdString()));
}

Outcome Backend::refusal(const QString& reason) const
{
    return Outcome(StatusCode::BackendFailure, reason).in(description.filePath);
}

Outcome Backend::checkConflicts() const
{
    if (isGone)
        return refusal(QStringLiteral("the file is gone since it was read"))
            .advise(QStringLiteral("keep yours, and it is written anew, or take theirs, and it stays away"));
    const std::vector<EditedDocument::Conflict> conflicts = content.getConflicts();
    if (conflicts.empty())
        return {};
    constexpr std::size_t shown = 5;
    Outcome outcome = refusal(QStringLiteral("another program has changed what was edited here"))
                          .advise(QStringLiteral("keep yours or take theirs first"));
    Outcome::Parts& parts = outcome.change();
    for (std::size_t i = 0; i < conflicts.size() && i < shown; ++i) {
        const EditedDocument::Conflict& conflict = conflicts[i];
        parts.details.append({absolute(conflict.path), {}});
        if (isReadable(description.accessMode))
            parts.details.last().text =
                QStringLiteral("(yours: %1, in the file: %2)")
                    .arg(valueForPeople(conflict.mine), valueForPeople(conflict.theirs));
    }
    parts.detailsLeftOut = std::max(int(conflicts.size()) - int(shown), 0);
    return outcome;
}

Outcome Backend::revert(const QString& path, const Reshaping& reshape)
{
    Outcome outcome;
    reshape([&] {
        const std::lock_guard lock(mutex);
        outcome = checkOpen();
        if (!outcome.ok())
            return Changes();
        return change([&] { outcome = reverted({relative(path)}); });
    });
    catchUp(reshape);
    return outcome;
}

Outcome Backend::reverted(const std::vector<std::string>& paths)
{
    const std::string reason = content.revert(paths);
    return reason.empty() ? Outcome() : refusal(QString::fromStdString(reason));
}

Outcome Backend::resolveConflicts(const QString& path, ConflictSide side, const Reshaping& reshape)
{
    Outcome outcome;
    bool found = false;
    const std::string below = relative(path);
    const bool isMine = side == ConflictSide::Mine;
    reshape([&] {
        const std::lock_guard lock(mutex);
        if (closed)
            return Changes();
        found = isGone && below.empty();
        if (found) {
            isGone = false;
            stamp = {};
            if (!isMine)
                return change([this] { content.load({}); });
            content.dropBase();
            return Changes();
        }
        std::vector<std::string> conflicts;
        for (EditedDocument::Conflict& conflict : content.getConflicts()) {
            if (isWithin(conflict.path, below))
                conflicts.push_back(std::move(conflict.path));
        }
        found = !conflicts.empty();
        if (found && !isMine)
            return change([&] { outcome = reverted(conflicts); });
        if (found)
            content.forgetConflicts(conflicts);
        return Changes();
    });
    catchUp(reshape);
    return found ? outcome
                 : Outcome(StatusCode::NotFound, QStringLiteral("there is no conflict at or below it"));
}

// What an operation on the document changes.
Backend::Changes Backend::change(const std::function<void()>& operation)
{
    const EntryList before(content.getDocument());
    operation();
    return DocumentComparison(before).run(content.getDocument());
}

// With some edits gone, a text of the file that had no place for them may have one now.
void Backend::catchUp(const Reshaping& reshape)
{
    {
        const std::lock_guard lock(mutex);
        if (!isBehind)
            return;
    }
    reload(Look::Happening, reshape);
}

} // namespace Repository
