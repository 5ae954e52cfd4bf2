#include "repository/mounting/FileBackends.h"

#include "repository/backends/FileBackend.h"
#include "repository/backends/FileFormat.h"
#include "repository/backends/FileKind.h"
#include "repository/common/MemoryGuard.h"
#include "repository/common/Texts.h"
#include "repository/documents/Formats.h"
#include "repository/store/AttributeTree.h"
#include "repository/transaction/ChangeApplier.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace Repository {

using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;

FileBackends::FileBackends(std::shared_ptr<AttributeTree> attributes, bool watchesFiles,
                           Observer unaskedObserver)
    : tree(std::move(attributes)), observer(std::move(unaskedObserver))
{
    if (watchesFiles)
        watcher = std::make_unique<Files::FileWatcher>(
            [copy = observer](const std::string& file, const std::string& reason) {
                report(Outcome(StatusCode::BackendFailure, QString::fromStdString(reason))
                           .in(QFile::decodeName(file.c_str())),
                       copy);
            });
}

QStringList FileBackends::getTypes() const
{
    QStringList types;
    for (const std::string& type : Documents::getDocumentTypes())
        types.append(QString::fromStdString(type));
    return types;
}

bool FileBackends::hasType(const QString& type) const
{
    return Documents::findFormat(type.toStdString()) != nullptr;
}

QString FileBackends::toLocation(const QString& given) const
{
    return given.isEmpty() ? given : QFileInfo(given).absoluteFilePath();
}

bool FileBackends::isSamePlace(const QString& location, const QString& other) const
{
    return fileIdentity(location) == fileIdentity(other);
}

Outcome FileBackends::open(const Backend::Description& description, const Mount& mount)
{
    Reading reading;
    const Outcome outcome = read(description, reading);
    if (!reading.backend)
        return outcome;
    const Outcome mounted = show(reading, mount);
    return mounted.ok() ? outcome : mounted;
}

Outcome FileBackends::read(const Backend::Description& description, Reading& reading)
{
    if (description.filePath.isEmpty())
        return {StatusCode::NotFound, Texts::tr("no file was named")};
    const Files::FileLocation location = locationOf(description.filePath);
    Outcome outcome = reserve(fileIdentity(description.filePath, location), reading);
    if (!outcome.ok()) {
        const bool isLeftAlone =
            description.type.isEmpty() && FileFormat::ofUnchosenFile(description.filePath).isEmpty();
        return isLeftAlone ? Outcome() : outcome;
    }
    reading.since = std::chrono::system_clock::now();
    reading.backend = FileBackend::open(description, location, outcome);
    return outcome;
}

Outcome FileBackends::show(const Reading& reading, const Mount& mount)
{
    const Outcome mounted = mount(reading.backend);
    if (!mounted.ok())
        return mounted;
    reading.backend->releaseDocument();
    noteFile(reading.backend, *reading.identity);
    watch(reading.backend, reading.since);
    return mounted;
}

void FileBackends::forget(const Backend& backend)
{
    unwatch(backend);
    const std::lock_guard lock(mutex);
    const auto isGone = [&backend](const std::weak_ptr<Backend>& each) {
        const auto known = each.lock();
        return !known || known.get() == &backend;
    };
    const QString identity = QDir::cleanPath(backend.getDescription().filePath);
    for (auto each = filesByIdentity.find(identity); each != filesByIdentity.end() && each.key() == identity;)
        each = isGone(*each) ? filesByIdentity.erase(each) : std::next(each);
    linkedFiles.erase(std::remove_if(linkedFiles.begin(), linkedFiles.end(), isGone), linkedFiles.end());
}

void FileBackends::watch(const std::shared_ptr<Backend>& backend, std::chrono::system_clock::time_point since)
{
    if (!watcher)
        return;
    // The watcher must not keep alive what ends it.
    const auto look = [weakTree = std::weak_ptr(tree), weakBackend = std::weak_ptr(backend),
                       copy = observer](const Files::FileWatcher::IsQuiet& isQuiet) {
        const auto attributes = weakTree.lock();
        const auto mounted = weakBackend.lock();
        if (!attributes || !mounted || mounted->isClosed())
            return;
        const auto reload = [&] {
            ChangeApplier applier(*attributes, *mounted);
            return mounted->reload(Backend::Trigger::Watcher, [&](const auto& change) {
                if (isQuiet())
                    applier(change);
            });
        };
        Outcome outcome = guardMemory(reload);
        if (!outcome.ok())
            outcome.of(Outcome::Operation::FollowFile, mounted->getName())
                .in(mounted->getDescription().filePath);
        report(outcome, copy);
    };
    const std::string path = QFile::encodeName(backend->getDescription().filePath).toStdString();
    const int number = watcher->watch(path, since, look);
    {
        const std::lock_guard lock(mutex);
        watches.insert(backend.get(), number);
    }
    if (backend->isClosed())
        unwatch(*backend);
}

void FileBackends::unwatch(const Backend& backend)
{
    const std::lock_guard lock(mutex);
    if (watches.contains(&backend))
        watcher->unwatch(watches.take(&backend));
}

void FileBackends::Release::operator()(const QString* identity) const
{
    const std::lock_guard lock(files->mutex);
    files->opening.remove(*identity);
    delete identity;
}

// Keeps the file for the caller, so that two creations at once do not both open it.
Outcome FileBackends::reserve(const QString& identity, Reading& reading)
{
    const std::lock_guard lock(mutex);
    for (const auto& backend : mayBeOf(identity)) {
        const QString& filePath = backend->getDescription().filePath;
        if (!backend->isClosed() && fileIdentity(filePath) == identity)
            return Outcome(StatusCode::AlreadyExists,
                           Texts::tr("the file is already open as '%1'").arg(backend->getName()))
                .in(filePath);
    }
    if (opening.contains(identity))
        return Outcome(StatusCode::AlreadyExists,
                       Texts::tr("the file is just being opened by another backend"))
            .in(identity);
    opening.insert(identity);
    reading.identity = std::unique_ptr<const QString, Release>(new QString(identity), Release{this});
    return {};
}

std::vector<std::shared_ptr<Backend>> FileBackends::mayBeOf(const QString& identity) const
{
    std::vector<std::shared_ptr<Backend>> found;
    const auto add = [&found](const std::weak_ptr<Backend>& each) {
        if (auto backend = each.lock())
            found.push_back(std::move(backend));
    };
    const auto [begin, end] = filesByIdentity.equal_range(identity);
    std::for_each(begin, end, add);
    std::for_each(linkedFiles.begin(), linkedFiles.end(), add);
    return found;
}

void FileBackends::noteFile(const std::shared_ptr<Backend>& backend, const QString& identity)
{
    const std::lock_guard lock(mutex);
    const QString& filePath = backend->getDescription().filePath;
    if (identity == filePath)
        filesByIdentity.insert(filePath, backend); // one text for both
    else if (identity == QDir::cleanPath(filePath))
        filesByIdentity.insert(identity, backend);
    else
        linkedFiles.push_back(backend);
}

} // namespace Repository
