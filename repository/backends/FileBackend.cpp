#include "repository/backends/FileBackend.h"

#include "files/SizeLimit.h"
#include "repository/backends/FileFormat.h"
#include "repository/backends/FileKind.h"
#include "repository/common/PathBudget.h"
#include "repository/common/PathRules.h"
#include "repository/common/Texts.h"
#include "repository/documents/Formats.h"
#include "repository/merge/DocumentComparison.h"
#include "repository/merge/EntryList.h"

#include <QFile>

#include <sys/stat.h>

namespace Repository {

using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;

namespace {

std::string nameOnDisk(const Backend::Description& description)
{
    return QFile::encodeName(description.filePath).toStdString();
}

} // namespace

std::shared_ptr<FileBackend> FileBackend::open(const Description& description, Outcome& outcome)
{
    return open(description, locationOf(description.filePath), outcome);
}

std::shared_ptr<FileBackend> FileBackend::open(const Description& description,
                                               const Files::FileLocation& location, Outcome& outcome)
{
    Description known = description;
    const QString wrongKind = refusalOfKind(description.filePath);
    Files::ReadFileResult file;
    if (wrongKind.isEmpty())
        file = Files::FileSaver().read(nameOnDisk(description), location);
    known.type = description.type.isEmpty()
                     ? FileFormat::ofUnchosenContent(description.filePath, file.bytes)
                     : FileFormat::withDialect(description.type, description.filePath, file.bytes);
    if (known.type.isEmpty())
        return nullptr;
    std::shared_ptr<FileBackend> backend(new FileBackend(known, known.type.toStdString()));
    outcome = wrongKind.isEmpty() ? backend->take(std::move(file)) : backend->refusal(wrongKind);
    return outcome.ok() ? std::move(backend) : nullptr;
}

// A success may have one, too.
Outcome FileBackend::warned(Outcome outcome, const std::string& warning) const
{
    if (!warning.empty()) {
        outcome.in(description.filePath);
        outcome.change().warnings.append(QString::fromStdString(warning));
    }
    return outcome;
}

// Whether the file could be read again under its name when it held the text. Where its type was chosen by
// hand, it can be again.
Outcome FileBackend::checkReadability(const std::string& text)
{
    if (text.size() > Files::SizeLimit::get())
        return refusal(
            Texts::tr("with these edits %1").arg(QString::fromStdString(Files::SizeLimit::refusal())));
    if (!tellsType)
        tellsType = FileFormat::tells(description.filePath, description.type, content.getBase());
    const QString reason =
        *tellsType ? FileFormat::explainMistaking(description.filePath, description.type, text) : QString();
    return reason.isEmpty() ? Outcome() : refusal(reason);
}

Files::ReadFileResult FileBackend::readFile()
{
    Files::ReadFileResult file = files.read(nameOnDisk(description));
    noteMode(file);
    return file;
}

void FileBackend::noteMode(const Files::ReadFileResult& file)
{
    hasPrivateFile = file.ok() && (file.mode & S_IROTH) == 0;
}

Outcome FileBackend::take(Files::ReadFileResult file)
{
    noteMode(file);
    if (!file.ok() && !(file.missing && description.accessMode != AccessMode::ReadOnly))
        return warned(refusal(QString::fromStdString(file.reason)), file.warning);
    digest = file.digest;
    return warned(outcomeOf(content.load(std::move(file.bytes))), file.warning);
}

Outcome FileBackend::save(const ApplyChange& apply)
{
    const std::lock_guard lock(saving);
    return writeFile(apply);
}

Outcome FileBackend::savePart(const Part& part, const ApplyChange& apply)
{
    const std::lock_guard lock(saving);
    return writeFile(apply, &part);
}

// What is to be written, if it can be.
Outcome FileBackend::takeText(const Part* part, std::string& text)
{
    if (!part) {
        text = content.getText();
    } else if (!part->hunks.isEmpty()) {
        const Outcome outcome = textWith(Hunks::These, part->hunks, text);
        if (!outcome.ok())
            return outcome;
        const Documents::Outcome parsed = Documents::makeDocument(content.getType())->parse(text);
        if (!parsed.ok())
            return refusal(Texts::tr("the file could not be read with these changes alone: ") +
                           QString::fromStdString(parsed.error));
    } else {
        std::string reason;
        auto taken = content.baseWith(relativePaths(*part), reason);
        if (!taken)
            return refusal(QString::fromStdString(reason));
        text = std::move(*taken);
    }
    return checkReadability(text);
}

Outcome FileBackend::writeFile(const ApplyChange& apply, const Part* part)
{
    std::string text;
    std::size_t revision = 0; // of the text
    Files::FileDigest known;
    const bool isThere = QFile::exists(description.filePath);
    {
        const std::lock_guard lock(mutex);
        Outcome outcome = checkOpen();
        if (!outcome.ok())
            return outcome;
        isDeleted = isDeleted && !isThere; // somebody may have put it back
        if (content.isDamaged())
            return damage();
        outcome = checkConflicts();
        if (!outcome.ok())
            return outcome;
        if (!content.hasEdits() && digest.exists)
            return {};
        if (!digest.exists && content.getText().empty())
            content.load(Documents::findFormat(description.type.toStdString())->getEmptyText());
        outcome = takeText(part, text);
        if (!outcome.ok())
            return outcome;
        revision = content.getRevision();
        known = digest;
    }
    Outcome merged;
    const Files::MergeContent merge = [&](const std::string& found, const Files::FileDigest& foundDigest) {
        merged = mergeExternal(found, foundDigest, apply);
        const std::lock_guard lock(mutex);
        if (merged.ok())
            merged = checkConflicts();
        if (merged.ok())
            merged = takeText(part, text);
        revision = content.getRevision();
        return Files::MergedContent{text, merged.explain().toStdString()};
    };
    const Files::SaveFileResult saved = files.save(nameOnDisk(description), text, known, merge);
    const bool hasGone = !saved.ok() && known.exists && !QFile::exists(description.filePath);
    const std::lock_guard lock(mutex);
    if (saved.ok()) {
        digest = saved.digest;
        if (part)
            content.setPartSaved(std::move(text));
        else
            content.setSaved(std::move(text), revision);
        return warned({}, saved.warning);
    }
    isDeleted = hasGone;
    if (isDeleted)
        return checkConflicts();
    return merged.ok() ? refusal(QString::fromStdString(saved.reason)) : merged;
}

// Puts the edits onto what was found, unless it cannot be. This is done on a copy, so that meanwhile nobody
// waits; only when somebody has written by then, the second attempt is made while everybody waits.
Outcome FileBackend::mergeExternal(const std::string& found, const Files::FileDigest& foundDigest,
                                   const ApplyChange& apply)
{
    auto theirs = Documents::makeDocument(description.type.toStdString());
    Outcome outcome = outcomeOf(theirs->parse(found));
    if (!outcome.ok()) {
        const std::lock_guard lock(mutex);
        hasUnmergedDiskContent = true;
        Outcome::Parts& parts = outcome.change();
        parts.reason.prepend(Texts::tr("what another program has written there cannot be read: "));
        return outcome.advise(Texts::tr("what is open stays as it was"));
    }
    PathBudget::check(*theirs);
    {
        const std::lock_guard lock(mutex);
        if (content.isDamaged())
            return damage();
    }
    EditedDocument copy = getCopy();
    const std::size_t copied = copy.getRevision();
    const EntryList before(copy.getDocument());
    std::string misfit = copy.merge(std::move(theirs), found);
    Changes changes = DocumentComparison(before).run(copy.getDocument());
    apply([&] {
        const std::lock_guard lock(mutex);
        if (content.getRevision() == copied) {
            std::swap(content, copy);
        } else {
            theirs = Documents::makeDocument(description.type.toStdString());
            theirs->parseAgain(found);
            changes = change([&] { misfit = content.merge(std::move(theirs), found); });
        }
        hasUnmergedDiskContent = !misfit.empty();
        if (!hasUnmergedDiskContent) {
            digest = foundDigest;
            isDeleted = false;
        }
        return changes;
    });
    return misfit.empty() ? Outcome()
                          : refusal(Texts::tr("another program has changed the file: ") +
                                    QString::fromStdString(misfit));
}

Outcome FileBackend::reload(Trigger trigger, const ApplyChange& apply)
{
    const std::lock_guard lock(saving);
    if (isClosed())
        return trigger == Trigger::Request ? checkOpen() : Outcome();
    return reloadFile(trigger, apply);
}

Outcome FileBackend::reloadFile(Trigger trigger, const ApplyChange& apply)
{
    const Files::ReadFileResult file = readFile();
    bool hasChanged = false;
    {
        const std::lock_guard lock(mutex);
        hasChanged = file.digest != digest || isDeleted;
    }
    Outcome outcome;
    if (file.missing)
        outcome = handleDeletion(trigger, apply);
    else if (!file.ok())
        outcome = refusal(QString::fromStdString(file.reason));
    else if (hasChanged)
        outcome = mergeExternal(file.bytes, file.digest, apply);
    if (trigger == Trigger::Request)
        return warned(outcome, file.warning);
    if (outcome.ok()) { // nobody asked, so it must be reported
        const std::lock_guard lock(mutex);
        outcome = checkConflicts();
    }
    const QString text = outcome.toText();
    if (text == lastRefusal)
        return warned({}, file.warning);
    lastRefusal = text;
    return warned(outcome, file.warning);
}

Outcome FileBackend::handleDeletion(Trigger trigger, const ApplyChange& apply)
{
    bool becomesEmpty = false;
    {
        const std::lock_guard lock(mutex);
        if (!digest.exists)
            return {};
        becomesEmpty =
            trigger == Trigger::Request && !content.hasEdits() && isWritable(description.accessMode);
        isDeleted = !becomesEmpty;
    }
    if (!becomesEmpty)
        return refusal(Texts::tr("the file has been deleted: what is open stays as it was"))
            .advise(Texts::tr("keep yours, and it is written anew, or take theirs, and it stays away"));
    Outcome outcome;
    apply([&] {
        const std::lock_guard lock(mutex);
        digest = {};
        return change([&] { outcome = outcomeOf(content.load({})); });
    });
    return outcome;
}

bool FileBackend::isEdited() const
{
    const std::lock_guard lock(mutex);
    return isDeleted || content.hasEdits();
}

// Another one also once the file is gone, which is a conflict, and when it is back.
quint64 FileBackend::getChangesRevision() const
{
    const std::lock_guard lock(mutex);
    return 2 * quint64(content.getRevision()) + (isDeleted ? 1 : 0);
}

Outcome FileBackend::close(bool discardChanges)
{
    const std::lock_guard savingLock(saving);
    const std::lock_guard lock(mutex);
    if (closed)
        return {StatusCode::BackendFailure, Texts::tr("it is being closed already")};
    if (!discardChanges && (isDeleted || content.hasEdits())) {
        Outcome unsaved(StatusCode::BackendFailure, Texts::tr("it has edits that are not saved"));
        return unsaved.advise(Texts::tr("save or discard them first"));
    }
    closed = true;
    return {};
}

QVector<Backend::UnsavedChange> FileBackend::getUnsavedChanges() const
{
    QVector<UnsavedChange> changes;
    {
        const std::lock_guard lock(mutex);
        if (isDeleted)
            changes.append({description.name, UnsavedChange::Kind::Changed, {}, {}, true, {}});
    }
    return changes + DocumentBackend::getUnsavedChanges();
}

Outcome FileBackend::checkConflicts() const
{
    return isDeleted ? refusal(Texts::tr("the file has been deleted since it was read"))
                           .advise(Texts::tr(
                               "keep yours, and it is written anew, or take theirs, and it stays away"))
                     : DocumentBackend::checkConflicts();
}

Outcome FileBackend::revert(const QString& path, const ApplyChange& apply)
{
    return revertPart({{path}, {}}, apply);
}

Outcome FileBackend::revertPart(const Part& part, const ApplyChange& apply)
{
    Outcome outcome;
    apply([&] {
        const std::lock_guard lock(mutex);
        outcome = checkOpen();
        if (!outcome.ok())
            return Changes();
        if (part.hunks.isEmpty())
            return change([&] { outcome = reverted(relativePaths(part)); });
        std::string text;
        outcome = textWith(Hunks::Others, part.hunks, text);
        if (!outcome.ok())
            return Changes();
        return change([&] {
            outcome = outcomeOf(content.replaceText(std::move(text)));
            if (!outcome.ok())
                outcome.change().reason.prepend(
                    Texts::tr("the file could not be read without these changes: "));
        });
    });
    mergeUnmerged(apply);
    return outcome;
}

Outcome FileBackend::resolveConflicts(const QString& path, ConflictSide side, const ApplyChange& apply)
{
    Outcome outcome;
    bool found = false;
    const std::string below = relative(path);
    apply([&] {
        const std::lock_guard lock(mutex);
        if (closed)
            return Changes();
        found = isDeleted && below.empty();
        if (found) {
            isDeleted = false;
            digest = {};
            if (side == ConflictSide::Theirs)
                return change([this] { content.load({}); });
            Changes changes;
            if (side == ConflictSide::Base)
                changes = change([&] { outcome = reverted({std::string()}); });
            content.dropBase();
            return changes;
        }
        std::vector<EditedDocument::Conflict> conflicts;
        std::vector<std::string> paths;
        for (EditedDocument::Conflict& conflict : content.getConflicts()) {
            if (!isWithin(conflict.path, below))
                continue;
            paths.push_back(conflict.path);
            conflicts.push_back(std::move(conflict));
        }
        found = !conflicts.empty();
        if (found && side == ConflictSide::Theirs)
            return change([&] { outcome = reverted(paths); });
        if (found && side == ConflictSide::Base)
            return change([&] {
                const std::string reason = content.takeBases(conflicts);
                outcome = reason.empty() ? Outcome() : refusal(QString::fromStdString(reason));
            });
        if (found)
            content.settleConflicts(paths);
        return Changes();
    });
    mergeUnmerged(apply);
    return found ? outcome : Outcome(StatusCode::NotFound, Texts::tr("there is no conflict at or below it"));
}

// With some edits gone, a text of the file that had no place for them may have one now.
void FileBackend::mergeUnmerged(const ApplyChange& apply)
{
    {
        const std::lock_guard lock(mutex);
        if (!hasUnmergedDiskContent)
            return;
    }
    reload(Trigger::Watcher, apply);
}

} // namespace Repository
