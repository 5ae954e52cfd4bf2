#include "repository/Backend.h"

#include <QFile>

namespace Repository {

using Documents::Outcome;
using FrameworkCore::Values::Value;

namespace {

QString reasonOf(const Outcome& outcome)
{
    return QString::fromStdString(outcome.error);
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
    QFile file(description.filePath);
    std::string bytes;
    if (file.open(QIODevice::ReadOnly))
        bytes = file.readAll().toStdString();
    else if (file.exists() || description.accessMode == AccessMode::ReadOnly)
        return QStringLiteral("%1: %2").arg(description.filePath, file.errorString());
    auto fresh = Documents::makeDocument(description.type.toStdString());
    const Outcome outcome = fresh->parse(bytes);
    if (!outcome.ok())
        return QStringLiteral("%1:%2:%3: %4")
            .arg(description.filePath)
            .arg(outcome.line)
            .arg(outcome.column)
            .arg(reasonOf(outcome));
    document = std::move(fresh);
    fileBytes = std::move(bytes);
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

QString Backend::set(const QString& path, const Value& value)
{
    const std::lock_guard lock(mutex);
    return reasonOf(document->set(relative(path), value));
}

QString Backend::insert(const QString& path, const Value& value)
{
    const std::lock_guard lock(mutex);
    return reasonOf(document->insert(relative(path), value));
}

QString Backend::remove(const QString& path)
{
    const std::lock_guard lock(mutex);
    return reasonOf(document->remove(relative(path)));
}

QString Backend::save()
{
    return QStringLiteral("saving is not there yet");
}

QString Backend::reread()
{
    const std::lock_guard lock(mutex);
    return document->getBytes() == fileBytes ? read() : QStringLiteral("it has edits that are not saved");
}

} // namespace Repository
