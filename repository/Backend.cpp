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

std::unique_ptr<Backend> Backend::open(const Description& description, QString& reason)
{
    std::unique_ptr<Backend> backend(new Backend(description));
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
    isEdited = false;
    stamp = file.stamp;
    return {};
}

std::string Backend::relative(const QString& path) const
{
    return path.mid(description.name.size() + 1).toStdString();
}

void Backend::visit(const std::function<void(const QString&, const Value&)>& visitor) const
{
    const std::lock_guard lock(mutex);
    document->visit([&](const Documents::Entry& entry) {
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

QString Backend::keepEdit(const Outcome& outcome)
{
    isEdited = isEdited || outcome.ok();
    return reasonOf(outcome);
}

QString Backend::set(const QString& path, const Value& value)
{
    const std::lock_guard lock(mutex);
    return keepEdit(document->set(relative(path), value));
}

QString Backend::insert(const QString& path, const Value& value)
{
    const std::lock_guard lock(mutex);
    return keepEdit(document->insert(relative(path), value));
}

QString Backend::remove(const QString& path)
{
    const std::lock_guard lock(mutex);
    return keepEdit(document->remove(relative(path)));
}

QString Backend::save()
{
    const std::lock_guard savingLock(saving);
    std::string bytes;
    FileStamp base;
    {
        const std::lock_guard lock(mutex);
        if (!isEdited && stamp.exists)
            return {};
        bytes = document->getBytes();
        base = stamp;
        isEdited = false; // an edit that comes while the file is written belongs to the next save
    }
    const SaveFileResult result = files.save(nameOnDisk(description), bytes, base);
    {
        const std::lock_guard lock(mutex);
        if (result.ok())
            stamp = result.stamp;
        else
            isEdited = true;
    }
    if (!result.warning.empty())
        logFailure(QString::fromStdString(result.warning));
    return QString::fromStdString(result.error);
}

QString Backend::reread()
{
    const std::lock_guard savingLock(saving);
    const std::lock_guard lock(mutex);
    return isEdited ? QStringLiteral("it has edits that are not saved") : read();
}

} // namespace Repository
