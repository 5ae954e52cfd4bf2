#include "repository/mounting/FolderBackends.h"

#include "repository/common/MemoryGuard.h"
#include "repository/common/RepositoryLog.h"
#include "repository/common/Texts.h"
#include "repository/mounting/FolderBackend.h"

#include <QFile>
#include <QFileInfo>

namespace Repository {

using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;

FolderBackends::FolderBackends(std::shared_ptr<AttributeStore> attributes, FileBackends& fileBackends,
                               bool watchesFolders, Observer hearer)
    : store(std::move(attributes)), files(fileBackends), observer(std::move(hearer))
{
    if (!watchesFolders)
        return;
    // A folder's own state tells what comes and goes; the system would tell of every write in it.
    Files::FileWatcher::Settings looking;
    looking.usesSystem = false;
    watcher = std::make_unique<Files::FileWatcher>([](const std::string&, const std::string&) {}, looking);
}

QString FolderBackends::toLocation(const QString& given) const
{
    return FolderLocation(given).toText();
}

bool FolderBackends::isSamePlace(const QString& location, const QString& other) const
{
    const auto folderOf = [](const QString& text) {
        return QFileInfo(FolderLocation(text).getFolder()).canonicalFilePath();
    };
    return folderOf(location) == folderOf(other);
}

Outcome FolderBackends::open(const Backend::Description& description, const Mount& mount)
{
    const FolderLocation location(description.filePath);
    if (!location.getError().isEmpty())
        return {StatusCode::InvalidPath, location.getError()};
    const QFileInfo info(location.getFolder());
    if (!info.isDir())
        return {StatusCode::NotFound,
                info.exists() ? Texts::tr("it is not a folder") : Texts::tr("no such folder")};
    const auto folder = std::make_shared<FolderBackend>(description, files, observer, store);
    Outcome outcome = mount(folder);
    if (!outcome.ok())
        return outcome;
    outcome = folder->scan();
    watch(folder);
    return outcome;
}

// Also those that have come into it meanwhile.
void FolderBackends::watch(const std::shared_ptr<FolderBackend>& folder)
{
    if (!watcher)
        return;
    const auto look = [this, weak = std::weak_ptr(folder)](auto&&...) {
        const auto present = weak.lock();
        if (!present || present->isClosed())
            return;
        const Outcome outcome = guardMemory([&] { return present->reload(Backend::Trigger::Watcher, {}); });
        if (!outcome.ok())
            logged(outcome);
        watch(present);
    };
    const std::lock_guard lock(mutex);
    const QStringList folders = folder->getFolders();
    for (const QString& each : folders) {
        if (!watches.contains(each))
            watches.insert(each, watcher->watch(QFile::encodeName(each).toStdString(),
                                                std::chrono::system_clock::now(), look));
    }
}

void FolderBackends::forget(const Backend& backend)
{
    const auto* const folder = dynamic_cast<const FolderBackend*>(&backend);
    if (!folder)
        return;
    const std::lock_guard lock(mutex);
    const QStringList folders = folder->getFolders();
    for (const QString& each : folders) {
        if (watches.contains(each))
            watcher->unwatch(watches.take(each));
    }
}

} // namespace Repository
