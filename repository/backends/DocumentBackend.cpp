#include "repository/backends/DocumentBackend.h"

#include "host/FrameworkCore/Values/ValueText.h"
#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/common/MemoryGuard.h"
#include "repository/common/Texts.h"
#include "repository/documents/Formats.h"
#include "repository/documents/common/ComponentCodec.h"
#include "repository/documents/common/TextEncoding.h"
#include "repository/documents/common/WrittenEntries.h"
#include "repository/merge/DocumentComparison.h"
#include "repository/merge/EntryList.h"
#include "repository/merge/UnifiedDiff.h"

#include <algorithm>
#include <map>

namespace Repository {

using Documents::Document;
using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;
using FrameworkCore::Values::Reason;
using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;

namespace {

QString valueForPeople(const std::optional<Value>& value)
{
    return value ? QLatin1Char('\'') + QString::fromStdString(FrameworkCore::Values::toText(*value)) +
                       QLatin1Char('\'')
                 : QStringLiteral("nothing");
}

// What the tree shows of a value with more digits of a second is no other value.
Documents::Outcome setValue(Document& document, const std::string& path, const Value& value)
{
    if (value.type == Type::Time || value.type == Type::DateTime) {
        const auto present = document.valueAt(path);
        if (present && FrameworkCore::Values::isFinerThanAttributes(*present) &&
            FrameworkCore::Values::toValue(FrameworkCore::Values::toVariant(*present)) == value)
            return {};
    }
    return document.set(path, value);
}

} // namespace

DocumentBackend::DocumentBackend(Description backendDescription, std::string format)
    : Backend(std::move(backendDescription)), content(std::move(format))
{
}

void DocumentBackend::visitEntries(const std::function<void(const Documents::Entry&)>& visitor) const
{
    const std::lock_guard lock(mutex);
    content.getDocument().visit(visitor);
}

bool DocumentBackend::contains(const QString& path) const
{
    const std::lock_guard lock(mutex);
    return content.getDocument().contains(relative(path));
}

bool DocumentBackend::namesType(const QString& path) const
{
    const std::lock_guard lock(mutex);
    return content.getDocument().namesType(relative(path));
}

std::optional<bool> DocumentBackend::isArray(const QString& path) const
{
    const std::lock_guard lock(mutex);
    return content.getDocument().isArray(relative(path));
}

const Documents::Format* DocumentBackend::getNameEncoding() const
{
    const std::lock_guard lock(mutex);
    const Documents::Format* const format = Documents::findFormat(content.getType());
    return format && format->declaresNames(content.getDocument()) ? format : nullptr;
}

bool DocumentBackend::removalMovesOthers(const QString& path) const
{
    const std::lock_guard lock(mutex);
    const Document& document = content.getDocument();
    const std::string entry = relative(path);
    return document.removalMovesSiblings(entry) || document.removalMovesGroups(entry);
}

Backend::SiblingPosition DocumentBackend::positionOf(const QString& path) const
{
    const std::lock_guard lock(mutex);
    const Documents::SiblingPlace place = content.getDocument().placeOf(relative(path));
    const bool isAfter = place.kind == Documents::SiblingPlace::Kind::After;
    return {place.kind, isAfter ? absolute(place.sibling) : QString()};
}

Backend::Origin DocumentBackend::originOf(const QString& path) const
{
    const std::lock_guard lock(mutex);
    return content.getDocument().originOf(relative(path));
}

QStringList DocumentBackend::followersOf(const QString& path) const
{
    const std::lock_guard lock(mutex);
    QStringList paths;
    for (const std::string& follower : content.getDocument().followersOf(relative(path)))
        paths.append(absolute(follower));
    return paths;
}

bool DocumentBackend::isLinked(const QString& path) const
{
    const std::lock_guard lock(mutex);
    return content.getDocument().isLinked(relative(path));
}

std::optional<Value> DocumentBackend::finerValueAt(const QString& path) const
{
    const std::lock_guard lock(mutex);
    auto value = content.getDocument().valueAt(relative(path));
    return value && FrameworkCore::Values::isFinerThanAttributes(*value) ? value : std::nullopt;
}

std::optional<std::string> DocumentBackend::spell(const QString& path) const
{
    const std::lock_guard lock(mutex);
    return content.getDocument().spell(relative(path));
}

std::string DocumentBackend::getBytes() const
{
    const std::lock_guard lock(mutex);
    return content.getText();
}

quint64 DocumentBackend::getRevision() const
{
    const std::lock_guard lock(mutex);
    return content.getRevision();
}

Outcome DocumentBackend::edit(const std::function<Documents::Outcome(Document&)>& change)
{
    Outcome outcome = isLocked() ? refuseLocked() : checkOpen();
    if (!outcome.ok())
        return outcome;
    return guardMemory([&] {
        const Documents::Outcome changed = content.edit(change);
        return changed.ok() ? Outcome()
                            : Outcome(StatusCode::BackendFailure, QString::fromStdString(changed.error));
    });
}

std::optional<Outcome> DocumentBackend::set(const QString& path, const Value& value)
{
    const std::lock_guard lock(mutex);
    const std::string entry = relative(path);
    if (editing || content.getDocument().isLinked(entry))
        return {};
    return edit([&](Document& text) { return setValue(text, entry, value); });
}

Outcome DocumentBackend::insert(const QString& path, const Value& value)
{
    const std::lock_guard lock(mutex);
    return edit([&](Document& text) { return text.insert(relative(path), value); });
}

void DocumentBackend::beginBatch()
{
    const std::lock_guard lock(mutex);
    edit([](Document& text) {
        text.beginRun();
        return Documents::Outcome();
    });
}

Outcome DocumentBackend::endBatch(QString& refusedPath)
{
    const std::lock_guard lock(mutex);
    std::string refused;
    Outcome outcome = edit([&](Document& text) { return text.endRun(refused); });
    refusedPath = absolute(refused);
    return outcome;
}

Outcome DocumentBackend::insertAll(const QString& path, const std::vector<Documents::Entry>& entries,
                                   std::size_t& refused)
{
    const std::lock_guard lock(mutex);
    return edit([&](Document& text) { return text.insertAll(relative(path), entries, refused); });
}

Outcome DocumentBackend::replaceAll(const QString& path, const std::vector<Documents::Entry>& entries,
                                    std::size_t& refused)
{
    const std::lock_guard lock(mutex);
    return edit([&](Document& text) { return text.replaceAll(relative(path), entries, refused); });
}

void DocumentBackend::releaseDocument()
{
    constexpr std::size_t large = 1 << 20; // takes a person's while to be parsed again
    const std::lock_guard lock(mutex);
    const bool isInUse = editing; // by an edit, whose batch is not in the text before its end
    if (!isInUse && content.getBaseSize() < large)
        content.release();
}

bool DocumentBackend::keepsGivenOrder() const
{
    const std::lock_guard lock(mutex);
    return content.getDocument().keepsGivenOrder();
}

Outcome DocumentBackend::remove(const QString& path)
{
    const std::lock_guard lock(mutex);
    return edit([&](Document& text) { return text.remove(relative(path)); });
}

Outcome DocumentBackend::removeExcerpt(const QString& path)
{
    const std::lock_guard lock(mutex);
    return edit([&](Document& text) { return text.removeExcerpt(relative(path)); });
}

std::optional<Outcome>
DocumentBackend::editIfPossible(const std::function<std::optional<Documents::Outcome>(Document&)>& change)
{
    const std::lock_guard lock(mutex);
    bool isDone = true;
    Outcome outcome = edit([&](Document& text) {
        const auto changed = change(text);
        isDone = changed.has_value();
        return changed.value_or(Documents::Outcome());
    });
    return isDone ? std::optional(std::move(outcome)) : std::nullopt;
}

std::optional<Outcome> DocumentBackend::rename(const QString& path, const QString& name)
{
    return editIfPossible([&](Document& text) { return text.rename(relative(path), name.toStdString()); });
}

std::optional<Outcome> DocumentBackend::insertElement(const QString& path,
                                                      const std::vector<Documents::Entry>& entries)
{
    return editIfPossible([&](Document& text) { return text.insertElement(relative(path), entries); });
}

std::optional<Outcome> DocumentBackend::moveElement(const QString& path, const QString& newPath)
{
    return editIfPossible(
        [&](Document& text) { return text.moveElement(relative(path), relative(newPath)); });
}

std::optional<Documents::Excerpt> DocumentBackend::excerpt(const QString& path) const
{
    const std::lock_guard lock(mutex);
    return content.isDamaged() ? std::nullopt : content.getDocument().excerpt(relative(path));
}

bool DocumentBackend::hasComments(const QString& path) const
{
    const std::lock_guard lock(mutex);
    return !content.isDamaged() && content.getDocument().hasComments(relative(path));
}

std::size_t DocumentBackend::countTags(const QString& path) const
{
    const std::lock_guard lock(mutex);
    return content.isDamaged() ? 0 : content.getDocument().countTags(relative(path));
}

// As it is now, to be changed apart; null when it is damaged.
std::unique_ptr<Document> DocumentBackend::copyDocument() const
{
    std::string type;
    std::string text;
    {
        const std::lock_guard lock(mutex);
        if (content.isDamaged())
            return nullptr;
        type = content.getType();
        text = content.getText();
    }
    auto document = Documents::makeDocument(type);
    document->parseAgain(std::move(text));
    return document;
}

std::vector<Documents::CarriedComment> DocumentBackend::getComments() const
{
    const auto document = copyDocument();
    return document ? Documents::commentsOf(document->getMarks()) : std::vector<Documents::CarriedComment>();
}

std::optional<Documents::Excerpt>
DocumentBackend::excerptOf(const QString& path, const std::vector<Documents::Entry>& entries,
                           const std::vector<Documents::CarriedComment>& comments) const
{
    const auto document = copyDocument();
    const std::string place = relative(path);
    std::size_t refused = 0;
    if (!document || place.empty() || !document->insertAll(place, entries, refused).ok())
        return {};
    std::vector<Documents::CarriedComment> placed = comments;
    for (Documents::CarriedComment& comment : placed)
        comment.path = comment.path.empty() ? place : Documents::joinPath(place, comment.path);
    std::string text = document->getBytes();
    const std::string type = description.type.toStdString();
    Documents::addComments(
        text, [&] { return Documents::makeDocument(type); }, placed);
    document->parseAgain(std::move(text));
    return document->excerpt(place);
}

bool DocumentBackend::insertExcerpt(const QString& path, const Documents::Excerpt& excerpt,
                                    const std::vector<Documents::Entry>& expected)
{
    const std::lock_guard lock(mutex);
    const Outcome outcome = edit([&](Document& text) {
        const bool isInserted = Documents::insertAsWritten(text, relative(path), excerpt, expected);
        return isInserted ? Documents::Outcome()
                          : Documents::refused(Reason::tr("it is not read alike there"));
    });
    return outcome.ok();
}

bool DocumentBackend::isClosed() const
{
    const std::lock_guard lock(mutex);
    return closed;
}

Outcome DocumentBackend::checkOpen() const
{
    return closed ? Outcome(StatusCode::BackendFailure, Texts::tr("its backend is being closed")) : Outcome();
}

Outcome DocumentBackend::refusal(const QString& reason) const
{
    return Outcome(StatusCode::BackendFailure, reason).in(description.filePath);
}

Outcome DocumentBackend::outcomeOf(const Documents::Outcome& parsed) const
{
    return parsed.ok() ? Outcome()
                       : Outcome(StatusCode::BackendFailure, QString::fromStdString(parsed.error))
                             .in(description.filePath, int(parsed.line), int(parsed.column));
}

// What an operation on the document changes.
Backend::Changes DocumentBackend::change(const std::function<void()>& operation)
{
    const EntryList before(content.getDocument());
    operation();
    return DocumentComparison(before).run(content.getDocument());
}

void DocumentBackend::beginEdit()
{
    const std::lock_guard lock(mutex);
    editing = true;
}

void DocumentBackend::endEdit()
{
    const std::lock_guard lock(mutex);
    editing = false;
}

Outcome DocumentBackend::write(const QString& path, const Value& value)
{
    const std::lock_guard lock(mutex);
    return edit([&](Document& text) { return setValue(text, relative(path), value); });
}

Outcome DocumentBackend::respell(const QString& path, const std::string& spelling)
{
    const std::lock_guard lock(mutex);
    return edit([&](Document& text) { return text.respell(relative(path), spelling); });
}

Outcome DocumentBackend::replaceText(std::string bytes)
{
    const std::lock_guard lock(mutex);
    const Outcome outcome = checkOpen();
    return outcome.ok() ? outcomeOf(content.replaceText(std::move(bytes))) : outcome;
}

Outcome DocumentBackend::damage() const
{
    return refusal(Texts::tr("there was not enough memory for an edit, which is only half done"))
        .advise(Texts::tr("revert the file or open it anew"));
}

EditedDocument DocumentBackend::getCopy() const
{
    std::unique_lock lock(mutex);
    const EditedDocument::Snapshot snapshot = content.getSnapshot();
    lock.unlock();
    return EditedDocument(snapshot);
}

QVector<Backend::UnsavedChange> DocumentBackend::getUnsavedChanges() const
{
    std::string format;
    std::string before;
    std::string after;
    std::map<std::string, std::optional<Value>> conflicts; // with what they began with
    QVector<UnsavedChange> changes;
    {
        const std::lock_guard lock(mutex);
        if (!content.hasEdits())
            return changes;
        format = content.getType();
        before = content.getBase();
        after = content.getText();
        for (EditedDocument::Conflict& conflict : content.getConflicts())
            conflicts.emplace(std::move(conflict.path), std::move(conflict.base));
    }
    // Parsed without the lock, which writers wait for.
    const auto found = EditedDocument::changesBetween(format, std::move(before), std::move(after));
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
        const auto conflict = conflicts.find(change.path);
        unsaved.isConflict = conflict != conflicts.end();
        if (showsValues && unsaved.isConflict && conflict->second)
            unsaved.base = FrameworkCore::Values::toVariant(*conflict->second);
        changes.append(unsaved);
    }
    return changes;
}

QString DocumentBackend::getUnsavedDiff() const
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

Outcome DocumentBackend::checkConflicts() const
{
    const std::vector<EditedDocument::Conflict> conflicts = content.getConflicts();
    if (conflicts.empty())
        return {};
    constexpr std::size_t shown = 5;
    Outcome outcome = refusal(Texts::tr("another program has changed what was edited here"))
                          .advise(Texts::tr("keep yours or take theirs first"));
    Outcome::Parts& parts = outcome.change();
    for (std::size_t i = 0; i < conflicts.size() && i < shown; ++i) {
        const EditedDocument::Conflict& conflict = conflicts[i];
        parts.details.append({absolute(conflict.path), {}});
        if (isReadable(description.accessMode))
            parts.details.last().text =
                Texts::tr("(yours: %1, in the file: %2)")
                    .arg(valueForPeople(conflict.mine), valueForPeople(conflict.theirs));
    }
    parts.detailsLeftOut = std::max(int(conflicts.size()) - int(shown), 0);
    return outcome;
}

Outcome DocumentBackend::reverted(const std::vector<std::string>& paths)
{
    const std::string reason = content.revert(paths);
    return reason.empty() ? Outcome() : refusal(QString::fromStdString(reason));
}

} // namespace Repository
