#include "desk/files/FileMounter.h"

#include "host/Utilities/GuiThread.h"
#include "host/Utilities/Worker.h"
#include "repository/backends/FileFormat.h"
#include "repository/backends/FileKind.h"
#include "repository/fleet/EtcdLocation.h"
#include "repository/mounting/FolderLocation.h"

#include <QFileInfo>
#include <QHash>
#include <QPointer>

namespace Vantry {

namespace {

using FrameworkCore::AppConfig::AccessMode;

// The backends by the identities of their files.
QHash<QString, QString> openFiles(FileMounter::Repository& repository)
{
    QHash<QString, QString> open;
    const auto backends = repository.getBackendInterface();
    const QStringList names = backends->getBackendNames();
    for (const QString& name : names) {
        const auto information = backends->getBackendInformation(name);
        const QString file = information ? information->getBackendLocation() : QString();
        if (!file.isEmpty())
            open.insert(::Repository::fileIdentity(file), name);
    }
    return open;
}

// Empty when the folder was opened, otherwise why it was not. Files of it that are left out are noted.
QString mountFolder(const ::Repository::FolderLocation& folder, const QString& name,
                    FileMounter::Repository& repository, QStringList& notes)
{
    const QString path = folder.toText();
    const auto outcome = repository.getBackendInterface()->mount(QStringLiteral("folder"), name,
                                                                 {path, path, AccessMode::ReadWrite}, 2);
    if (!outcome.ok())
        return QStringLiteral("%1: %2").arg(path, outcome.explain());
    for (const QString& warning : outcome.get().warnings)
        notes.append(FileMounter::tr("%1: %2; View > Problems tells why").arg(path, warning));
    return {};
}

// Empty when the store was opened, otherwise why it was not.
QString mountStore(const QString& location, const QString& name, FileMounter::Repository& repository)
{
    const ::Repository::EtcdLocation store(location);
    if (!store.getError().isEmpty()) // without a name of the store there is none of the backend
        return QStringLiteral("%1: %2").arg(store.toText(), store.getError());
    const auto outcome = repository.getBackendInterface()->mount(
        QStringLiteral("etcd"), name, {location, location, AccessMode::ReadWrite}, 2);
    return outcome.ok() ? QString() : QStringLiteral("%1: %2").arg(location, outcome.explain());
}

// Empty when the file was opened, otherwise why it was not.
QString mountFile(const QString& file, QString type, const QString& name, FileMounter::Repository& repository,
                  QStringList& notes, bool& isUnknown)
{
    if (::Repository::EtcdLocation::isMeant(file) || type == QLatin1String("etcd"))
        return mountStore(file, name, repository);
    const ::Repository::FolderLocation folder(file);
    if (QFileInfo(folder.getFolder()).isDir())
        return mountFolder(folder, name, repository, notes);
    const QFileInfo info(file);
    if (!info.exists())
        return FileMounter::tr("%1: no such file").arg(file);
    if (!info.isFile()) // reading a pipe might never end
        return FileMounter::tr("%1: it is not a regular file").arg(file);
    if (type.isEmpty())
        type = ::Repository::FileFormat::ofFile(file);
    isUnknown = type.isEmpty();
    if (isUnknown)
        return FileMounter::tr("%1: %2; Open As opens it as a type of your choice")
            .arg(file, ::Repository::FileFormat::explainUnknown(file));
    const AccessMode access = info.isWritable() ? AccessMode::ReadWrite : AccessMode::ReadOnly;
    const auto outcome = repository.getBackendInterface()->mount(
        type, name, {info.absoluteFilePath(), info.absoluteFilePath(), access}, 2);
    // Without the name of the backend, which tells the user nothing.
    return outcome.ok() ? QString()
                        : QStringLiteral("%1: %2").arg(
                              outcome.get().file.isEmpty() ? file : outcome.place(outcome.get().file),
                              outcome.explain());
}

// As it may be shown and kept: the location of a store without what must not stand in it.
QString placeOf(const QString& file)
{
    return ::Repository::EtcdLocation::isMeant(file) ? ::Repository::EtcdLocation(file).toText() : file;
}

QString refusalOf(const QString& file, const QString& reason)
{
    return FileMounter::tr("%1: it was not opened: %2").arg(file, reason);
}

// Of file requests.
template <typename Requests>
FileMounter::Result refusalOfAll(const Requests& requests, const QString& reason)
{
    FileMounter::Result result;
    for (const auto& request : requests)
        result.problems.append(refusalOf(placeOf(request.file), reason));
    return result;
}

} // namespace

FileMounter::Result FileMounter::mountFiles(const Requests& requests,
                                            const std::shared_ptr<Repository>& repository)
{
    Result result;
    QHash<QString, QString> open = openFiles(*repository);
    for (const auto& [given, type, wantedName] : requests) {
        const QString file = placeOf(given);
        const QString identity = ::Repository::fileIdentity(file);
        if (open.contains(identity)) {
            result.openBefore.append(open[identity]);
            continue;
        }
        const bool isFree =
            !wantedName.isEmpty() && !repository->getTreeInterface()->getNodeInformation(wantedName).exists;
        const QString name = isFree ? wantedName : mountName(file, *repository);
        QString problem;
        bool isUnknown = false;
        try {
            problem = mountFile(file, type, name, *repository, result.problems, isUnknown);
        } catch (...) {
            problem = refusalOf(file, Utilities::currentFailure());
        }
        if (problem.isEmpty()) {
            result.opened.append(file);
            open.insert(identity, name);
        } else {
            result.problems.append(problem);
        }
        if (isUnknown)
            result.unknown.append(file);
    }
    return result;
}

FileMounter::FileMounter(std::shared_ptr<Repository> attributes, QObject* parent)
    : QObject(parent), repository(std::move(attributes))
{
}

FileMounter::~FileMounter() = default;

void FileMounter::mount(const QStringList& files, const QString& type)
{
    for (const QString& file : files)
        waiting.push_back({file, type, {}});
    startNext();
}

void FileMounter::mount(const Requests& requests)
{
    waiting.insert(waiting.end(), requests.begin(), requests.end());
    startNext();
}

bool FileMounter::waitFor(std::chrono::milliseconds most) const
{
    return worker.valid() && worker.wait_for(most) == std::future_status::ready;
}

void FileMounter::startNext()
{
    if (waitFor(std::chrono::milliseconds::zero()))
        finish(runs);
    if (worker.valid() || waiting.empty())
        return;
    opening = std::exchange(waiting, {});
    const QPointer<FileMounter> self(this);
    const auto tell = [self, run = ++runs] {
        if (self)
            self->finish(run);
    };
    QString failure;
    worker = Utilities::startWorker(
        [tell, requests = opening, attributes = repository] {
            Result result = mountFiles(requests, attributes);
            try {
                Utilities::postToGuiThread(tell);
            } catch (const std::bad_alloc&) {
                // The result is delivered before the next files are opened.
            }
            return result;
        },
        failure);
    if (worker.valid()) {
        emit started();
        return;
    }
    std::promise<Result> refused;
    refused.set_value(refusalOfAll(opening, failure));
    worker = refused.get_future();
    QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
}

void FileMounter::finish(int run)
{
    if (run != runs || !worker.valid())
        return; // it was reported already
    const Result result = takeResult();
    startNext();
    emit mounted(result);
}

FileMounter::Result FileMounter::takeResult()
{
    try {
        return worker.get();
    } catch (...) {
        return refusalOfAll(opening, Utilities::currentFailure());
    }
}

QString FileMounter::backendOf(const QString& file, Repository& repository)
{
    return openFiles(repository).value(::Repository::fileIdentity(file));
}

QString FileMounter::mountName(const QString& file, Repository& repository)
{
    const QFileInfo info(::Repository::FolderLocation(file).getFolder());
    QString name = info.completeBaseName().isEmpty() ? info.fileName() : info.completeBaseName();
    if (::Repository::EtcdLocation::isMeant(file))
        name = ::Repository::EtcdLocation(file).getStore();
    for (const char special : {'.', '*', '%', ';'})
        name.replace(QLatin1Char(special), QLatin1Char('-'));
    const auto tree = repository.getTreeInterface();
    QString free = name;
    for (int number = 2; tree && tree->getNodeInformation(free).exists; ++number)
        free = QStringLiteral("%1-%2").arg(name).arg(number);
    return free;
}

} // namespace Vantry
