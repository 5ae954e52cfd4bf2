#include "repository/mounting/FolderBackend.h"

#include "files/FolderScan.h"
#include "repository/backends/FileFormat.h"
#include "repository/common/MemoryGuard.h"
#include "repository/common/RepositoryLog.h"
#include "repository/common/Texts.h"
#include "repository/documents/common/ComponentCodec.h"
#include "repository/mounting/Mounts.h"
#include "repository/transaction/ChangeApplier.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <condition_variable>
#include <sys/stat.h>
#include <system_error>
#include <thread>
#include <utility>

namespace Repository {

using FrameworkCore::AppConfig::AccessMode;
using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;

namespace {

QString fromDisk(const std::string& path)
{
    return QFile::decodeName(path.c_str());
}

// When it was written, in nanoseconds, and its size.
std::pair<qint64, qint64> stateOf(const QString& file)
{
    struct stat status = {};
    ::stat(QFile::encodeName(file).constData(), &status);
    constexpr qint64 second = 1'000'000'000;
    return {status.st_mtim.tv_sec * second + status.st_mtim.tv_nsec, status.st_size};
}

// Has what several threads have done in any order carried on with in the order of its numbers, by whichever
// of them has just done what was missing. None waits for another but one that is far ahead, so that what is
// done and not carried on with is never much.
class InOrder
{
public:
    explicit InOrder(int count) : done(std::size_t(count)) {}

    // Until a number may be begun.
    void waitFor(int number)
    {
        std::unique_lock lock(mutex);
        goesOn.wait(lock, [&] { return std::size_t(number) < next + mostAhead; });
    }

    template <typename CarryOn>
    void add(int number, const CarryOn& carryOn)
    {
        std::unique_lock lock(mutex);
        done[std::size_t(number)] = true;
        if (isBusy)
            return;
        isBusy = true;
        for (; next < done.size() && done[next]; ++next) {
            lock.unlock();
            carryOn(int(next));
            lock.lock();
            if (next % (mostAhead / 2) == 0) // to wake one costs as much as a file
                goesOn.notify_all();
        }
        isBusy = false;
        goesOn.notify_all();
    }

private:
    static constexpr std::size_t mostAhead = 64;

    std::mutex mutex;
    std::condition_variable goesOn;
    std::vector<bool> done;
    std::size_t next = 0; // the first that is not carried on with
    bool isBusy = false;
};

} // namespace

FolderBackend::FolderBackend(const Description& folder, FileBackends& kind, BackendKind::Observer hearer,
                             const std::shared_ptr<AttributeStore>& attributes)
    : DocumentBackend(folder, "txt"), location(folder.filePath), fileBackends(kind),
      observer(std::move(hearer)), store(attributes)
{
}

FolderBackend::OpenFiles FolderBackend::getFiles() const
{
    const std::lock_guard lock(filesMutex);
    return files;
}

QStringList FolderBackend::getFolders() const
{
    const std::lock_guard lock(filesMutex);
    return folders;
}

// Where the backend of a file is: the names that lead to it below the folder's.
QString FolderBackend::nameOf(const QString& file) const
{
    QString name = description.name;
    const QStringList steps =
        file.mid(location.getFolder().size()).split(QLatin1Char('/'), Qt::SkipEmptyParts);
    for (const QString& step : steps)
        name += pathSeparator + QString::fromStdString(Documents::encodeKey(step.toStdString()));
    return name;
}

Backend::SiblingPosition FolderBackend::positionOf(const QString& path) const
{
    const int end = path.lastIndexOf(pathSeparator);
    const std::lock_guard lock(filesMutex);
    const auto group = shown.find(path.left(end));
    if (group == shown.end())
        return {Documents::SiblingPlace::Kind::Last, {}};
    const auto place = group->second.lower_bound(path.mid(end + 1));
    if (place == group->second.begin())
        return {Documents::SiblingPlace::Kind::First, {}};
    return {Documents::SiblingPlace::Kind::After, joinedPath(path.left(end), *std::prev(place))};
}

void FolderBackend::setLocked(bool isOne)
{
    const std::lock_guard lock(filesMutex);
    DocumentBackend::setLocked(isOne);
    for (const auto& file : qAsConst(files))
        file->setLocked(isOne);
}

// To be called before a file is shown.
void FolderBackend::noteNames(const QString& path)
{
    const std::lock_guard lock(filesMutex);
    for (int end = path.lastIndexOf(pathSeparator), next = -1; end >= description.name.size();
         next = end, end = path.lastIndexOf(pathSeparator, end - 1))
        shown[path.left(end)].insert(path.mid(end + 1, next < 0 ? -1 : next - end - 1));
}

// Whether nobody has looked at the file as it is.
bool FolderBackend::isUnknown(const QString& file) const
{
    const std::lock_guard lock(filesMutex);
    return !files.contains(file) && (!unopened.contains(file) || unopened.value(file) != stateOf(file));
}

Outcome FolderBackend::scan()
{
    const std::lock_guard scanLock(scanning);
    const auto found =
        Files::FolderScan::of(QFile::encodeName(location.getFolder()).toStdString(), location.getFilter());
    QSet<QString> present;
    QStringList unknown;
    for (const std::string& path : found.files) {
        const QString file = fromDisk(path);
        present.insert(file);
        if (isUnknown(file))
            unknown.append(file);
    }
    {
        const std::lock_guard lock(filesMutex);
        folders.clear();
        std::transform(found.folders.begin(), found.folders.end(), std::back_inserter(folders), fromDisk);
        problems = 0;
    }
    for (const auto& refusal : found.refusals)
        report(Outcome(StatusCode::BackendFailure, QString::fromStdString(refusal.reason))
                   .in(fromDisk(refusal.folder)));
    closeMissing(present);
    openAll(unknown);

    const std::lock_guard lock(filesMutex);
    Outcome outcome;
    if (problems > 0) {
        outcome.in(location.getFolder());
        outcome.change().warnings.append(Texts::tr("%1 of its %2 files and folders could not be opened")
                                             .arg(problems)
                                             .arg(found.files.size() + found.folders.size()));
    }
    return outcome;
}

void FolderBackend::openAll(const QStringList& unknown)
{
    std::vector<Opening> openings(std::size_t(unknown.size()));
    InOrder inOrder(unknown.size());
    std::atomic<int> next{0};
    done = 0;
    total = unknown.size();
    const auto work = [&] {
        for (int each = next++; each < unknown.size(); each = next++) {
            inOrder.waitFor(each);
            openings[std::size_t(each)] = read(unknown[each]);
            inOrder.add(each, [&](int number) {
                show(std::exchange(openings[std::size_t(number)], {}));
                ++done;
            });
        }
    };
    std::vector<std::thread> helpers;
    const unsigned wanted = std::min<unsigned>(std::thread::hardware_concurrency(), unsigned(unknown.size()));
    try {
        while (helpers.size() + 1 < wanted)
            helpers.emplace_back(work);
    } catch (const std::system_error&) { // there is no thread for it; those that are there do it
    }
    work();
    for (std::thread& helper : helpers)
        helper.join();
    done = total = 0;
}

FolderBackend::Opening FolderBackend::read(const QString& file)
{
    Opening opening;
    if (isClosed())
        return opening;
    opening.file = file;
    opening.state = stateOf(file);
    const auto readFile = [&]() -> Outcome {
        const QFileInfo info(file);
        if (!info.isReadable())
            return {StatusCode::BackendFailure, Texts::tr("this user may not read it")};
        // What is larger is read as a whole only once it is known to be of some type.
        const bool isSmall = opening.state.second <= FileFormat::enough;
        const QString type = isSmall ? QString() : FileFormat::ofUnchosenFile(file);
        if (!isSmall && type.isEmpty())
            return {};
        const bool isWritable = description.accessMode != AccessMode::ReadOnly && info.isWritable();
        const AccessMode mode = isWritable ? description.accessMode : AccessMode::ReadOnly;
        return fileBackends.read({nameOf(file), type, file, file, mode}, opening.reading);
    };
    opening.outcome = guardMemory(readFile);
    return opening;
}

void FolderBackend::show(Opening opening)
{
    const auto attributes = store.lock();
    if (opening.file.isEmpty() || isClosed() || !attributes)
        return;
    const auto mount = [&](const std::shared_ptr<Backend>& backend) {
        noteNames(backend->getName());
        return Mounts(*attributes->getTree(), attributes->getHistory()).mount(backend);
    };
    const std::shared_ptr<Backend> backend = opening.reading.backend;
    if (backend) {
        const Outcome mounted = guardMemory([&] { return fileBackends.show(opening.reading, mount); });
        if (!mounted.ok())
            opening.outcome = mounted;
    }
    bool wasProblem = false;
    {
        const std::lock_guard lock(filesMutex);
        wasProblem = unopened.remove(opening.file) > 0;
        if (opening.outcome.ok() && backend) {
            files.insert(opening.file, backend);
            backend->setLocked(isLocked());
        } else {
            unopened.insert(opening.file, opening.state);
        }
    }
    if (!opening.outcome.ok() || wasProblem)
        report(opening.outcome.in(opening.file));
}

void FolderBackend::report(Outcome outcome)
{
    {
        const std::lock_guard lock(filesMutex);
        problems += outcome.ok() ? 0 : 1;
    }
    outcome.of(Outcome::Operation::CreateBackend, description.name);
    if (observer)
        observer(outcome);
    else
        logged(outcome);
}

void FolderBackend::closeMissing(const QSet<QString>& present)
{
    QStringList gone;
    {
        const std::lock_guard lock(filesMutex);
        for (auto each = unopened.begin(); each != unopened.end();) {
            const bool isGone = !present.contains(each.key());
            if (isGone)
                gone.append(each.key());
            each = isGone ? unopened.erase(each) : std::next(each);
        }
    }
    for (const QString& file : gone)
        report(Outcome().in(file)); // a problem no more
    const OpenFiles open = getFiles();
    for (auto each = open.begin(); each != open.end(); ++each) {
        if (present.contains(each.key()))
            continue;
        // That it is gone is by itself a change of its root.
        const auto changes = each.value()->getUnsavedChanges();
        const bool isEdited = std::any_of(changes.begin(), changes.end(), [&](const UnsavedChange& change) {
            return change.path != each.value()->getName();
        });
        if (!isEdited)
            closeFile(each.key(), each.value(), true);
    }
}

Outcome FolderBackend::closeFile(const QString& file, const std::shared_ptr<Backend>& backend,
                                 bool discardChanges)
{
    const auto attributes = store.lock();
    if (!attributes || backend->isClosed())
        return {};
    const Outcome outcome =
        Mounts(*attributes->getTree(), attributes->getHistory()).unmount(backend, discardChanges);
    if (!outcome.ok())
        return outcome;
    fileBackends.forget(*backend);
    const QString& path = backend->getName();
    const std::lock_guard lock(filesMutex);
    files.remove(file);
    shown[path.left(path.lastIndexOf(pathSeparator))].erase(path.mid(path.lastIndexOf(pathSeparator) + 1));
    return outcome;
}

Outcome FolderBackend::close(bool discardChanges)
{
    const OpenFiles open = getFiles();
    for (const auto& file : open) {
        if (!discardChanges && !file->isClosed() && file->isEdited()) {
            Outcome unsaved(StatusCode::BackendFailure,
                            Texts::tr("'%1' has edits that are not saved").arg(file->getName()));
            return unsaved.advise(Texts::tr("save or discard them first"));
        }
    }
    {
        const std::lock_guard lock(mutex);
        if (closed)
            return {StatusCode::BackendFailure, Texts::tr("it is being closed already")};
        closed = true;
    }
    const std::lock_guard scanLock(scanning); // a scan under way ends first
    const OpenFiles left = getFiles();
    QStringList last = left.keys(); // first, as all that keeps them in order gives them up the quickest
    std::sort(last.rbegin(), last.rend());
    for (const QString& file : last)
        closeFile(file, left.value(file), discardChanges);
    return {};
}

// The first refusal; what can be saved is.
Outcome FolderBackend::save(const ApplyChange&)
{
    Outcome result;
    const OpenFiles open = getFiles();
    for (const auto& file : open) {
        const auto attributes = store.lock();
        if (!attributes || file->isClosed() || !file->isEdited())
            continue;
        ChangeApplier applier(*attributes->getTree(), *file);
        const Outcome outcome = file->save(std::ref(applier));
        if (result.ok() && !outcome.isPlainSuccess())
            result = outcome;
    }
    return result;
}

Outcome FolderBackend::reload(Trigger trigger, const ApplyChange&)
{
    Outcome result = scan();
    const OpenFiles open = getFiles();
    for (const auto& file : open) {
        const auto attributes = store.lock();
        if (trigger == Trigger::Watcher || !attributes || file->isClosed())
            continue;
        ChangeApplier applier(*attributes->getTree(), *file);
        const Outcome outcome = file->reload(trigger, std::ref(applier));
        if (result.ok() && !outcome.ok())
            result = outcome;
    }
    return result;
}

QString FolderBackend::getUnsavedDiff() const
{
    const OpenFiles open = getFiles();
    QStringList paths = open.keys();
    paths.sort();
    QString diff;
    for (const QString& file : paths)
        diff += open[file]->getUnsavedDiff();
    return diff;
}

Outcome FolderBackend::revert(const QString&, const ApplyChange&)
{
    return {};
}

Outcome FolderBackend::resolveConflicts(const QString&, ConflictSide, const ApplyChange&)
{
    return {};
}

Outcome FolderBackend::revertPart(const Part&, const ApplyChange&)
{
    return refusal(Texts::tr("a folder has no changes but those of its files"));
}

Outcome FolderBackend::savePart(const Part& part, const ApplyChange& apply)
{
    return revertPart(part, apply);
}

Outcome FolderBackend::insert(const QString&, const FrameworkCore::Values::Value&)
{
    return refusal(Texts::tr("a folder has no entries but those of its files"));
}

Outcome FolderBackend::insertAll(const QString& path, const std::vector<Documents::Entry>&,
                                 std::size_t& refused)
{
    refused = 0;
    return insert(path, {});
}

} // namespace Repository
