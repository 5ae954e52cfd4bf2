#include "files/SizeLimit.h"
#include "repository/Backend.h"
#include "repository/DocumentComparison.h"
#include "repository/EntryList.h"
#include "repository/FileFormat.h"
#include "repository/FileKind.h"
#include "repository/PathBudget.h"
#include "repository/documents/Formats.h"

#include <QFile>

#include <sys/stat.h>

// The part of a backend that reads its file and writes it.

namespace Repository {

using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;

namespace {

std::string nameOnDisk(const Backend::Description& description)
{
    return QFile::encodeName(description.filePath).toStdString();
}

// What a new file of the type holds when there is nothing to write into it.
std::string emptyText(const QString& type)
{
    return type == QLatin1String("json") ? "{}\n" : std::string();
}

} // namespace

Outcome Backend::outcomeOf(const Documents::Outcome& parsed) const
{
    return parsed.ok() ? Outcome()
                       : Outcome(StatusCode::BackendFailure, QString::fromStdString(parsed.error))
                             .in(description.filePath, int(parsed.line), int(parsed.column));
}

// A success may have one, too.
Outcome Backend::warned(Outcome outcome, const std::string& warning) const
{
    if (!warning.empty()) {
        outcome.in(description.filePath);
        outcome.change().warnings.append(QString::fromStdString(warning));
    }
    return outcome;
}

Outcome Backend::damage() const
{
    return refusal(QStringLiteral("there was not enough memory for an edit, which is only half done"))
        .advise(QStringLiteral("revert the file or open it anew"));
}

// Whether the file could be read again under its name when it held the text.
Outcome Backend::checkReadability(const std::string& text) const
{
    if (text.size() > Files::SizeLimit::get())
        return refusal(QStringLiteral("with these edits ") +
                       QString::fromStdString(Files::SizeLimit::refusal()));
    const QString reason =
        FileFormat::explainMistaking(description.filePath, description.type, content.getBase(), text);
    return reason.isEmpty() ? Outcome() : refusal(reason);
}

Files::ReadFileResult Backend::readFile()
{
    Files::ReadFileResult file = files.read(nameOnDisk(description));
    hasPrivateFile = file.ok() && (file.mode & S_IROTH) == 0;
    return file;
}

Outcome Backend::read()
{
    const QString wrongKind = refusalOfKind(description.filePath);
    if (!wrongKind.isEmpty())
        return refusal(wrongKind);
    Files::ReadFileResult file = readFile();
    if (!file.ok() && !(file.missing && description.accessMode != AccessMode::ReadOnly))
        return warned(refusal(QString::fromStdString(file.reason)), file.warning);
    stamp = file.stamp;
    return warned(outcomeOf(content.load(std::move(file.bytes))), file.warning);
}

Outcome Backend::save(const Reshaping& reshape)
{
    const std::lock_guard lock(saving);
    return write(reshape);
}

Outcome Backend::write(const Reshaping& reshape)
{
    std::string text;
    Files::FileStamp known;
    const bool isThere = QFile::exists(description.filePath);
    {
        const std::lock_guard lock(mutex);
        Outcome outcome = checkOpen();
        if (!outcome.ok())
            return outcome;
        isGone = isGone && !isThere; // somebody may have put it back
        if (content.isDamaged())
            return damage();
        outcome = checkConflicts();
        if (!outcome.ok())
            return outcome;
        if (!content.hasEdits() && stamp.exists)
            return {};
        if (!stamp.exists && content.getText().empty())
            content.load(emptyText(description.type));
        text = content.getText();
        outcome = checkReadability(text);
        if (!outcome.ok())
            return outcome;
        known = stamp;
    }
    Outcome merged;
    const Files::MergeContent merge = [&](const std::string& found, const Files::FileStamp& foundStamp) {
        merged = takeIn(found, foundStamp, reshape);
        const std::lock_guard lock(mutex);
        if (merged.ok())
            merged = checkConflicts();
        text = content.getText();
        if (merged.ok())
            merged = checkReadability(text);
        return Files::MergedContent{text, merged.explain().toStdString()};
    };
    const Files::SaveFileResult saved = files.save(nameOnDisk(description), text, known, merge);
    const bool hasGone = !saved.ok() && known.exists && !QFile::exists(description.filePath);
    const std::lock_guard lock(mutex);
    if (saved.ok()) {
        stamp = saved.stamp;
        content.setSaved(std::move(text));
        return warned({}, saved.warning);
    }
    isGone = hasGone;
    if (isGone)
        return checkConflicts();
    return merged.ok() ? refusal(QString::fromStdString(saved.reason)) : merged;
}

EditedDocument Backend::getCopy() const
{
    std::unique_lock lock(mutex);
    const EditedDocument::Snapshot snapshot = content.getSnapshot();
    lock.unlock();
    return EditedDocument(snapshot);
}

// Puts the edits onto what was found, unless it cannot be. This is done on a copy, so that meanwhile nobody
// waits; only when somebody has written by then, the second attempt is made while everybody waits.
Outcome Backend::takeIn(const std::string& found, const Files::FileStamp& foundStamp,
                        const Reshaping& reshape)
{
    auto theirs = Documents::makeDocument(description.type.toStdString());
    Outcome outcome = outcomeOf(theirs->parse(found));
    if (!outcome.ok()) {
        const std::lock_guard lock(mutex);
        isBehind = true;
        Outcome::Parts& parts = outcome.change();
        parts.reason.prepend(QStringLiteral("what another program has written there cannot be read: "));
        return outcome.advise(QStringLiteral("what is open stays as it was"));
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
    reshape([&] {
        const std::lock_guard lock(mutex);
        if (content.getRevision() == copied) {
            std::swap(content, copy);
        } else {
            theirs = Documents::makeDocument(description.type.toStdString());
            theirs->parse(found);
            changes = change([&] { misfit = content.merge(std::move(theirs), found); });
        }
        isBehind = !misfit.empty();
        if (!isBehind) {
            stamp = foundStamp;
            isGone = false;
        }
        return changes;
    });
    return misfit.empty() ? Outcome()
                          : refusal(QStringLiteral("another program has changed the file: ") +
                                    QString::fromStdString(misfit));
}

Outcome Backend::reload(Look look, const Reshaping& reshape)
{
    const std::lock_guard lock(saving);
    if (isClosed())
        return look == Look::Asked ? checkOpen() : Outcome();
    return lookAtFile(look, reshape);
}

Outcome Backend::lookAtFile(Look look, const Reshaping& reshape)
{
    const Files::ReadFileResult file = readFile();
    bool hasChanged = false;
    {
        const std::lock_guard lock(mutex);
        hasChanged = file.stamp != stamp || isGone;
    }
    Outcome outcome;
    if (file.missing)
        outcome = takeGone(look, reshape);
    else if (!file.ok())
        outcome = refusal(QString::fromStdString(file.reason));
    else if (hasChanged)
        outcome = takeIn(file.bytes, file.stamp, reshape);
    if (look == Look::Asked)
        return warned(outcome, file.warning);
    if (outcome.ok()) { // nobody asked, so somebody must be told
        const std::lock_guard lock(mutex);
        outcome = checkConflicts();
    }
    const QString text = outcome.toText();
    if (text == lastRefusal)
        return warned({}, file.warning);
    lastRefusal = text;
    return warned(outcome, file.warning);
}

Outcome Backend::takeGone(Look look, const Reshaping& reshape)
{
    bool becomesEmpty = false;
    {
        const std::lock_guard lock(mutex);
        if (!stamp.exists)
            return {};
        becomesEmpty = look == Look::Asked && !content.hasEdits() && isWritable(description.accessMode);
        isGone = !becomesEmpty;
    }
    if (!becomesEmpty)
        return refusal(QStringLiteral("the file is gone: what is open stays as it was"))
            .advise(QStringLiteral("keep yours, and it is written anew, or take theirs, and it stays away"));
    Outcome outcome;
    reshape([&] {
        const std::lock_guard lock(mutex);
        stamp = {};
        return change([&] { outcome = outcomeOf(content.load({})); });
    });
    return outcome;
}

} // namespace Repository
