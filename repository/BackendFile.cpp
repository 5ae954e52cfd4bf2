#include "files/SizeLimit.h"
#include "repository/Backend.h"
#include "repository/DocumentComparison.h"
#include "repository/EntryList.h"
#include "repository/FileFormat.h"
#include "repository/FileKind.h"
#include "repository/PathBudget.h"
#include "repository/RepositoryLog.h"
#include "repository/documents/Formats.h"

#include <QFile>

#include <sys/stat.h>

// The part of a backend that reads its file and writes it.

namespace Repository {

using Documents::Outcome;

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

// Why the file could not be read again under its name when it held the text; empty when it could.
QString lockingOut(const Backend::Description& description, const std::string& before,
                   const std::string& text)
{
    if (text.size() > Files::SizeLimit::get())
        return QStringLiteral("%1: with these edits %2")
            .arg(description.filePath, QString::fromStdString(Files::SizeLimit::refusal()));
    const QString reason = FileFormat::explainMistaking(description.filePath, description.type, before, text);
    return reason.isEmpty() ? reason : QStringLiteral("%1: %2").arg(description.filePath, reason);
}

// Never with a lock held.
void logWarning(const std::string& warning)
{
    if (!warning.empty())
        logFailure(QString::fromStdString(warning));
}

} // namespace

QString Backend::reasonOf(const Outcome& outcome) const
{
    const QString reason = QString::fromStdString(outcome.error);
    return outcome.line == 0 ? reason
                             : QStringLiteral("%1:%2:%3: %4")
                                   .arg(description.filePath)
                                   .arg(outcome.line)
                                   .arg(outcome.column)
                                   .arg(reason);
}

QString Backend::damageText() const
{
    return QStringLiteral("%1: there was not enough memory for an edit, which is only half done; revert the "
                          "file or open it anew")
        .arg(description.filePath);
}

Files::ReadFileResult Backend::readFile()
{
    Files::ReadFileResult file = files.read(nameOnDisk(description));
    hasPrivateFile = file.ok() && (file.mode & S_IROTH) == 0;
    return file;
}

QString Backend::read()
{
    const QString refusal = refusalOfKind(description.filePath);
    if (!refusal.isEmpty())
        return QStringLiteral("%1: %2").arg(description.filePath, refusal);
    Files::ReadFileResult file = readFile();
    logWarning(file.warning);
    if (!file.ok() && !(file.missing && description.accessMode != AccessMode::ReadOnly))
        return QString::fromStdString(file.error);
    stamp = file.stamp;
    return reasonOf(content.load(std::move(file.bytes)));
}

QString Backend::save(const Reshaping& reshape)
{
    std::string warning;
    QString refusal;
    {
        const std::lock_guard lock(saving);
        refusal = write(reshape, warning);
    }
    logWarning(warning);
    return refusal;
}

QString Backend::write(const Reshaping& reshape, std::string& warning)
{
    std::string text;
    Files::FileStamp known;
    const bool isThere = QFile::exists(description.filePath);
    {
        const std::lock_guard lock(mutex);
        QString refusal = closedText();
        if (!refusal.isEmpty())
            return refusal;
        isGone = isGone && !isThere; // somebody may have put it back
        if (content.isDamaged())
            return damageText();
        refusal = conflictText();
        if (!refusal.isEmpty())
            return QStringLiteral("%1: %2").arg(description.filePath, refusal);
        if (!content.hasEdits() && stamp.exists)
            return {};
        if (!stamp.exists && content.getText().empty())
            content.load(emptyText(description.type));
        text = content.getText();
        const QString lockout = lockingOut(description, content.getBase(), text);
        if (!lockout.isEmpty())
            return lockout;
        known = stamp;
    }
    const Files::MergeContent merge = [&](const std::string& found, const Files::FileStamp& foundStamp) {
        QString refusal = takeIn(found, foundStamp, reshape);
        const std::lock_guard lock(mutex);
        if (refusal.isEmpty())
            refusal = conflictText();
        text = content.getText();
        if (refusal.isEmpty())
            refusal = lockingOut(description, content.getBase(), text);
        return Files::MergedContent{text, refusal.toStdString()};
    };
    const Files::SaveFileResult saved = files.save(nameOnDisk(description), text, known, merge);
    warning = saved.warning;
    const bool hasGone = !saved.ok() && known.exists && !QFile::exists(description.filePath);
    const std::lock_guard lock(mutex);
    if (saved.ok()) {
        stamp = saved.stamp;
        content.setSaved(std::move(text));
        return {};
    }
    isGone = hasGone;
    return isGone ? conflictText() : QString::fromStdString(saved.error);
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
QString Backend::takeIn(const std::string& found, const Files::FileStamp& foundStamp,
                        const Reshaping& reshape)
{
    auto theirs = Documents::makeDocument(description.type.toStdString());
    Outcome outcome = theirs->parse(found);
    if (!outcome.ok()) {
        const std::lock_guard lock(mutex);
        isBehind = true;
        return QStringLiteral("what another program has written there cannot be read: %1; what is open "
                              "stays as it was")
            .arg(reasonOf(outcome));
    }
    PathBudget::check(*theirs);
    {
        const std::lock_guard lock(mutex);
        if (content.isDamaged())
            return damageText();
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
    return misfit.empty() ? QString()
                          : QStringLiteral("another program has changed the file: %1")
                                .arg(QString::fromStdString(misfit));
}

QString Backend::reload(Look look, const Reshaping& reshape)
{
    std::string warning;
    QString refusal;
    {
        const std::lock_guard lock(saving);
        if (isClosed())
            return look == Look::Asked ? closedText() : QString();
        refusal = lookAtFile(look, reshape, warning);
    }
    logWarning(warning);
    return refusal;
}

QString Backend::lookAtFile(Look look, const Reshaping& reshape, std::string& warning)
{
    const Files::ReadFileResult file = readFile();
    warning = file.warning;
    bool hasChanged = false;
    {
        const std::lock_guard lock(mutex);
        hasChanged = file.stamp != stamp || isGone;
    }
    QString refusal;
    if (file.missing)
        refusal = takeGone(look, reshape);
    else if (!file.ok())
        refusal = QString::fromStdString(file.error);
    else if (hasChanged)
        refusal = takeIn(file.bytes, file.stamp, reshape);
    if (look == Look::Asked)
        return refusal;
    if (refusal.isEmpty()) { // nobody asked, so somebody must be told
        const std::lock_guard lock(mutex);
        refusal = conflictText();
    }
    if (refusal == lastRefusal)
        return {};
    lastRefusal = refusal;
    return refusal;
}

QString Backend::takeGone(Look look, const Reshaping& reshape)
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
        return QStringLiteral(
                   "%1 is gone: what is open stays as it was, and is a conflict until you keep yours "
                   "or take theirs")
            .arg(description.filePath);
    QString refusal;
    reshape([&] {
        const std::lock_guard lock(mutex);
        stamp = {};
        return change([&] { refusal = reasonOf(content.load({})); });
    });
    return refusal;
}

} // namespace Repository
