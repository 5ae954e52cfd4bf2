#include "desk/session/SessionKeeper.h"

#include "files/StateFolder.h"
#include "repository/mounting/FolderLocation.h"

#include <QFile>

#include <algorithm>

namespace Vantry {

namespace {

constexpr qint64 leastPatience = 1000; // milliseconds

std::unique_ptr<QLockFile> lockSession()
{
    std::string reason;
    if (!Files::StateFolder::make(Files::SystemCalls::system(), reason))
        return nullptr;
    auto lock = std::make_unique<QLockFile>(QFile::decodeName(Files::StateFolder::path().c_str()) +
                                            QStringLiteral("/session.lock"));
    lock->setStaleLockTime(0); // only by its process
    return lock->tryLock() ? std::move(lock) : nullptr;
}

} // namespace

SessionKeeper::SessionKeeper(std::shared_ptr<Repository> attributes, FileMounter& fileMounter,
                             Views windowViews)
    : repository(std::move(attributes)), mounter(fileMounter), views(std::move(windowViews)),
      lock(lockSession()), place(KeptChanges::RunningPlace::take()),
      unsaved(repository->getChangesInterface()), patience(leastPatience)
{
    constexpr int moment = 1000; // milliseconds
    timer.setInterval(moment);
    timer.setSingleShot(true);
    connect(&timer, &QTimer::timeout, this, &SessionKeeper::save);
}

SessionKeeper::~SessionKeeper() = default;

bool SessionKeeper::restore(const std::function<void(const QVector<SessionState::View>&)>& prepare)
{
    const SessionState last = lock ? SessionState::read() : SessionState();
    if (last.files.isEmpty())
        return false;
    prepare(last.windows);
    isRestoring = true;
    toLock = last.locked;
    std::vector<FileMounter::Request> requests;
    for (const SessionState::File& file : last.files)
        requests.push_back({file.location, file.type, file.name});
    connect(&mounter, &FileMounter::mounted, this, &SessionKeeper::finishRestoring);
    mounter.mount(requests);
    return true;
}

// The pages read the tree in the same turn of the event loop, or before.
void SessionKeeper::finishRestoring()
{
    if (mounter.isBusy())
        return;
    disconnect(&mounter, &FileMounter::mounted, this, &SessionKeeper::finishRestoring);
    isRestoring = false;
    const QStringList names = repository->getBackendInterface()->getBackendNames();
    for (const QString& name : qAsConst(toLock)) {
        if (names.contains(name))
            repository->getBackendInterface()->setLocked(name, true);
    }
    QTimer::singleShot(0, this, &SessionKeeper::restored);
}

QVector<KeptChanges::Entry> SessionKeeper::takeUnsaved() const
{
    return place ? KeptChanges::takeOver(*place) : QVector<KeptChanges::Entry>();
}

void SessionKeeper::follow()
{
    isFollowing = true;
    connect(&unsaved, &Utilities::UnsavedBackends::looked, this, &SessionKeeper::look);
    connect(&keeping, &LatestTask::failed, this, [this] { sinceKept.start(); });
    sinceKept.start();
}

void SessionKeeper::noteChange()
{
    if (lock && isFollowing && !timer.isActive())
        timer.start();
}

void SessionKeeper::look()
{
    const auto present = repository->getBackendInterface();
    if (present->getBackendNames() != backends || present->getLockedBackends() != locked)
        noteChange();
    const bool hasUnsaved = !unsaved.getNames().isEmpty() || !kept.isEmpty();
    if (place && hasUnsaved && !keeping.isBusy() && sinceKept.elapsed() >= patience)
        lookAtUnsaved();
}

// Files of folders come with these.
QVector<SessionState::File> SessionKeeper::filesToOpen() const
{
    QVector<SessionState::File> found;
    QStringList folders; // each ends with a "/"
    const auto interface = repository->getBackendInterface();
    for (const QString& name : backends) {
        const auto information = interface->getBackendInformation(name);
        const QString location = information ? information->getBackendLocation() : QString();
        const bool isInFolder = std::any_of(folders.begin(), folders.end(), [&](const QString& folder) {
            return location.startsWith(folder);
        });
        if (location.isEmpty() || isInFolder)
            continue;
        found.append({information->getBackendType(), name, location});
        if (information->getBackendType() == QLatin1String("folder"))
            folders.append(::Repository::FolderLocation(location).getFolder() + QLatin1Char('/'));
    }
    return found;
}

void SessionKeeper::save()
{
    if (mounter.isBusy() || isRestoring) { // it would be half of what was there
        timer.start();
        return;
    }
    backends = repository->getBackendInterface()->getBackendNames();
    locked = repository->getBackendInterface()->getLockedBackends();
    const SessionState state{filesToOpen(), locked, views()};
    const QByteArray json = state.toJson();
    if (json != written && state.write().isEmpty())
        written = json;
}

// On a worker, since it costs as much as the files are large.
void SessionKeeper::lookAtUnsaved()
{
    sinceKept.start();
    const QStringList names = unsaved.getNames();
    keeping.start([this, names, attributes = repository]() -> LatestTask::Result {
        QElapsedTimer clock;
        clock.start();
        QVector<Found> found;
        for (const QString& name : names) {
            Found each{name, {}, {}};
            attributes->getChangesInterface()->getUnsavedDiff(name, each.diff);
            each.changes = BackendFiles::changesOf(*attributes->getChangesInterface(), name);
            if (!each.diff.isEmpty()) // a file whose values are not to be shown has none
                found.append(each);
        }
        constexpr qint64 share = 20; // at most a twentieth of the time is spent on it
        const qint64 pause = std::max(leastPatience, share * clock.elapsed());
        return [this, found, pause] {
            patience = pause;
            sinceKept.start();
            keep(found);
        };
    });
}

void SessionKeeper::keep(const QVector<Found>& found)
{
    QStringList gone = kept.keys();
    for (const Found& each : found) {
        gone.removeOne(each.backend);
        if (kept.value(each.backend).diff == each.diff)
            continue;
        QString error;
        const QString location = BackendFiles::locationOf(each.backend, *repository);
        const QString diffFile = KeptChanges::keep(location, each.diff, each.changes, error, place.get());
        if (diffFile.isEmpty())
            continue;
        forget(each.backend); // only now, so that at every moment there is one
        kept.insert(each.backend, {{diffFile, location, QDateTime::currentDateTime()}, each.diff});
    }
    for (const QString& backend : gone)
        forget(backend);
}

void SessionKeeper::forget(const QString& backend)
{
    if (kept.contains(backend))
        KeptChanges::replace(kept.take(backend).entry, {});
}

void SessionKeeper::end()
{
    if (!isFollowing)
        return;
    const QStringList names = kept.keys();
    for (const QString& name : names)
        forget(name);
    timer.stop();
    if (lock)
        save();
    timer.stop();
    isFollowing = false;
    disconnect(&unsaved, nullptr, this, nullptr);
}

} // namespace Vantry
