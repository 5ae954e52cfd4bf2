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
using Documents::Outcome;
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

std::shared_ptr<Backend> Backend::open(const Description& description, QString& reason)
{
    std::shared_ptr<Backend> backend(new Backend(description));
    reason = backend->read();
    return reason.isEmpty() ? std::move(backend) : nullptr;
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

QString Backend::edit(const std::function<Outcome(Document&)>& change)
{
    const QString refusal = closedText();
    if (!refusal.isEmpty())
        return refusal;
    const auto operation = [&] { return QString::fromStdString(content.edit(change).error); };
    return guardMemory(operation, [](const QString& reason) { return reason; });
}

bool Backend::set(const QString& path, const Value& value, QString& reason)
{
    const std::lock_guard lock(mutex);
    if (reshaped)
        return false;
    reason = edit([&](Document& text) { return text.set(relative(path), value); });
    return true;
}

QString Backend::insert(const QString& path, const Value& value)
{
    const std::lock_guard lock(mutex);
    return edit([&](Document& text) { return text.insert(relative(path), value); });
}

void Backend::beginRun()
{
    const std::lock_guard lock(mutex);
    edit([](Document& text) {
        text.beginRun();
        return Outcome();
    });
}

QString Backend::endRun(QString& refusedPath)
{
    const std::lock_guard lock(mutex);
    std::string refused;
    QString reason = edit([&](Document& text) { return text.endRun(refused); });
    refusedPath = absolute(refused);
    return reason;
}

QString Backend::insertAll(const QString& path, const std::vector<Documents::Entry>& entries,
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

QString Backend::remove(const QString& path)
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

QString Backend::close(bool discardChanges)
{
    const std::lock_guard savingLock(saving);
    const std::lock_guard lock(mutex);
    if (closed)
        return QStringLiteral("it is being closed already");
    if (!discardChanges && (isGone || content.hasEdits()))
        return QStringLiteral("it has edits that are not saved; save or discard them first");
    closed = true;
    return {};
}

bool Backend::isClosed() const
{
    const std::lock_guard lock(mutex);
    return closed;
}

QString Backend::closedText() const
{
    return closed ? QStringLiteral("the backend '%1' is being closed").arg(description.name) : QString();
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

QString Backend::conflictText() const
{
    if (isGone)
        return QStringLiteral(
            "the file is gone since it was read; keep yours, and it is written anew, or take "
            "theirs, and it stays away");
    const std::vector<EditedDocument::Conflict> conflicts = content.getConflicts();
    if (conflicts.empty())
        return {};
    constexpr std::size_t shown = 5;
    QStringList lines;
    for (std::size_t i = 0; i < conflicts.size() && i < shown; ++i) {
        const EditedDocument::Conflict& conflict = conflicts[i];
        QString line = QLatin1Char('\'') + absolute(conflict.path) + QLatin1Char('\'');
        if (isReadable(description.accessMode))
            line += QStringLiteral(" (yours: %1, in the file: %2)")
                        .arg(valueForPeople(conflict.mine), valueForPeople(conflict.theirs));
        lines.append(line);
    }
    QString text = lines.join(QStringLiteral(", "));
    if (conflicts.size() > shown)
        text += QStringLiteral(" and %1 more").arg(conflicts.size() - shown);
    return QStringLiteral(
               "another program has changed what was edited here: %1; keep yours or take theirs first")
        .arg(text);
}

QString Backend::revert(const QString& path, const Reshaping& reshape)
{
    QString refusal;
    reshape([&] {
        const std::lock_guard lock(mutex);
        refusal = closedText();
        if (!refusal.isEmpty())
            return Changes();
        return change([&] { refusal = QString::fromStdString(content.revert({relative(path)})); });
    });
    catchUp(reshape);
    return refusal;
}

QString Backend::resolveConflicts(const QString& path, ConflictSide side, const Reshaping& reshape,
                                  bool& found)
{
    QString refusal;
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
            return change([&] { refusal = QString::fromStdString(content.revert(conflicts)); });
        if (found)
            content.forgetConflicts(conflicts);
        return Changes();
    });
    catchUp(reshape);
    return refusal;
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
