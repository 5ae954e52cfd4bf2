#include "repository/Backend.h"

#include "repository/RepositoryLog.h"

#include <QFile>

namespace Repository {

using Documents::Outcome;
using FrameworkCore::Values::Value;

namespace {

QString reasonOf(const Outcome& outcome)
{
    return QString::fromStdString(outcome.error);
}

std::string nameOnDisk(const Backend::Description& description)
{
    return QFile::encodeName(description.filePath).toStdString();
}

} // namespace

Backend::Backend(Description backendDescription) : description(std::move(backendDescription))
{
}

std::shared_ptr<Backend> Backend::open(const Description& description, QString& reason)
{
    std::shared_ptr<Backend> backend(new Backend(description));
    reason = backend->read();
    return reason.isEmpty() ? std::move(backend) : nullptr;
}

QString Backend::read()
{
    ReadFileResult file = files.read(nameOnDisk(description));
    if (!file.ok() && !(file.missing && description.accessMode != AccessMode::ReadOnly))
        return QString::fromStdString(file.error);
    auto fresh = Documents::makeDocument(description.type.toStdString());
    const Outcome outcome = fresh->parse(std::move(file.bytes));
    if (!outcome.ok())
        return QStringLiteral("%1:%2:%3: %4")
            .arg(description.filePath)
            .arg(outcome.line)
            .arg(outcome.column)
            .arg(reasonOf(outcome));
    document = std::move(fresh);
    ++revision;
    edited = false;
    stamp = file.stamp;
    return {};
}

std::string Backend::relative(const QString& path) const
{
    return path.mid(description.name.size() + 1).toStdString();
}

void Backend::visitEntries(const std::function<void(const Documents::Entry&)>& visitor) const
{
    const std::lock_guard lock(mutex);
    document->visit(visitor);
}

void Backend::visit(const std::function<void(const QString&, const Value&)>& visitor) const
{
    visitEntries([&](const Documents::Entry& entry) {
        const QString below = QString::fromStdString(entry.path);
        visitor(below.isEmpty() ? description.name : description.name + QLatin1Char('.') + below,
                entry.value);
    });
}

bool Backend::contains(const QString& path) const
{
    const std::lock_guard lock(mutex);
    return document->contains(relative(path));
}

bool Backend::removalMovesSiblings(const QString& path) const
{
    const std::lock_guard lock(mutex);
    return document->removalMovesSiblings(relative(path));
}

QString Backend::edit(const std::function<Outcome(Documents::Document&)>& change)
{
    if (closed)
        return QStringLiteral("the backend '%1' is being closed").arg(description.name);
    const Outcome outcome = change(*document);
    if (outcome.ok()) {
        edited = true;
        ++revision;
    }
    return reasonOf(outcome);
}

bool Backend::set(const QString& path, const Value& value, QString& reason)
{
    const std::lock_guard lock(mutex);
    if (reshaped)
        return false;
    reason = edit([&](Documents::Document& text) { return text.set(relative(path), value); });
    return true;
}

QString Backend::insert(const QString& path, const Value& value)
{
    const std::lock_guard lock(mutex);
    return edit([&](Documents::Document& text) { return text.insert(relative(path), value); });
}

QString Backend::remove(const QString& path)
{
    const std::lock_guard lock(mutex);
    return edit([&](Documents::Document& text) { return text.remove(relative(path)); });
}

std::string Backend::getBytes() const
{
    const std::lock_guard lock(mutex);
    return document->getBytes();
}

quint64 Backend::getRevision() const
{
    const std::lock_guard lock(mutex);
    return revision;
}

bool Backend::isEdited() const
{
    const std::lock_guard lock(mutex);
    return edited;
}

QString Backend::close(bool discardChanges)
{
    const std::lock_guard savingLock(saving);
    const std::lock_guard lock(mutex);
    if (closed)
        return QStringLiteral("it is being closed already");
    if (edited && !discardChanges)
        return QStringLiteral("it has edits that are not saved");
    closed = true;
    return {};
}

bool Backend::isClosed() const
{
    const std::lock_guard lock(mutex);
    return closed;
}

QString Backend::save()
{
    const std::lock_guard savingLock(saving);
    std::string bytes;
    FileStamp base;
    {
        const std::lock_guard lock(mutex);
        if (!edited && stamp.exists)
            return {};
        bytes = document->getBytes();
        base = stamp;
        edited = false; // an edit that comes while the file is written belongs to the next save
    }
    const SaveFileResult result = files.save(nameOnDisk(description), bytes, base);
    {
        const std::lock_guard lock(mutex);
        if (result.ok())
            stamp = result.stamp;
        else
            edited = true;
    }
    if (!result.warning.empty())
        logFailure(QString::fromStdString(result.warning));
    return QString::fromStdString(result.error);
}

QString Backend::reread()
{
    const std::lock_guard savingLock(saving);
    const std::lock_guard lock(mutex);
    return edited ? QStringLiteral("it has edits that are not saved") : read();
}

} // namespace Repository
