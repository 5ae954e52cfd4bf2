#include "repository/BackendRegistry.h"

#include "repository/AttributeStore.h"
#include "repository/BackendLookup.h"
#include "repository/ChangeApplier.h"
#include "repository/FileBackend.h"
#include "repository/MemoryGuard.h"
#include "repository/Mounts.h"
#include "repository/PathRules.h"
#include "repository/Refusals.h"
#include "repository/RepositoryLog.h"
#include "repository/documents/Formats.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>

#include <algorithm>

namespace Repository {

using FrameworkCore::AppConfig::AccessMode;
using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;

namespace {

class Information : public FrameworkCore::AppConfig::Interfaces::BackendInformationInterface
{
public:
    explicit Information(Backend::Description backendDescription) : description(std::move(backendDescription))
    {
    }

    QString getBackendType() const override { return description.type; }
    QString getBackendDescription() const override { return description.text; }
    QString getBackendLocation() const override { return description.filePath; }

private:
    Backend::Description description;
};

QString trimSeparators(QString name)
{
    while (name.startsWith(pathSeparator))
        name.remove(0, 1);
    while (name.endsWith(pathSeparator))
        name.chop(1);
    return name;
}

void reportUnasked(const Outcome& outcome, const BackendRegistry::Observer& observer)
{
    logged(outcome);
    if (observer && !(outcome.ok() && outcome.get().warnings.isEmpty()))
        observer(outcome);
}

// Two names of one file compare equal, whether or not the file exists yet.
QString fileIdentity(const QString& filePath)
{
    const QFileInfo file(filePath);
    const QString canonical = file.canonicalFilePath();
    return canonical.isEmpty()
               ? QFileInfo(file.absolutePath()).canonicalFilePath() + QLatin1Char('/') + file.fileName()
               : canonical;
}

} // namespace

BackendRegistry::BackendRegistry(std::shared_ptr<AttributeStore> attributes, bool watchesFiles,
                                 Observer observerOfUnasked)
    : store(std::move(attributes)), observer(std::move(observerOfUnasked))
{
    if (watchesFiles)
        watcher = std::make_unique<Files::FileWatcher>(
            [copy = observer](const std::string& file, const std::string& reason) {
                reportUnasked(Outcome(StatusCode::BackendFailure, QString::fromStdString(reason))
                                  .in(QFile::decodeName(file.c_str())),
                              copy);
            });
}

BackendRegistry::~BackendRegistry() = default;

QStringList BackendRegistry::getTypes()
{
    QStringList types;
    for (const std::string& type : Documents::getDocumentTypes())
        types.append(QString::fromStdString(type));
    return types;
}

bool BackendRegistry::createBackend(const QString& type, const QString& name,
                                    const FrameworkCore::AppConfig::BackendConfiguration& configuration,
                                    const int& option)
{
    return mount(type, name, configuration, option).ok();
}

Outcome BackendRegistry::mount(const QString& type, const QString& name,
                               const FrameworkCore::AppConfig::BackendConfiguration& configuration,
                               int option)
{
    Backend::Description description;
    description.name = trimSeparators(name);
    description.type = type;
    description.text = configuration.description;
    description.filePath = configuration.location.toString();
    description.accessMode = configuration.accessMode;

    Outcome outcome = checkDescription(description);
    if (outcome.ok()) {
        description.filePath = QFileInfo(description.filePath).absoluteFilePath();
        outcome = guardMemory([&] { return create(description, option); });
        if (!outcome.ok())
            outcome.in(description.filePath);
    }
    return logged(outcome.of(Outcome::Operation::CreateBackend, name));
}

Outcome BackendRegistry::checkDescription(const Backend::Description& description)
{
    if (!getTypes().contains(description.type))
        return Refusals::noType(description.type);
    if (isTooDeep(description.name))
        return Refusals::invalidPath(description.name);
    if (!isValidPath(description.name) || description.name.contains(QLatin1Char(';')))
        return {StatusCode::InvalidPath,
                QStringLiteral("a backend's name is the path of its root: names joined by '.', none of them "
                               "empty, without '*' and ';'")};
    if (isAtOrBelow(description.name, ownRoot))
        return Refusals::ownTree();
    if (description.accessMode == AccessMode::None || description.accessMode > AccessMode::ReadWrite)
        return {StatusCode::NotWritable,
                QStringLiteral("the access mode must be read-only, write-only or read-write")};
    if (description.filePath.isEmpty())
        return {StatusCode::NotFound, QStringLiteral("no file was named")};
    return {};
}

Outcome BackendRegistry::create(const Backend::Description& description, int option)
{
    if (const auto existing = findBackend(*store->getTree(), description.name)) {
        if (option != createOrReload)
            return {StatusCode::AlreadyExists, QStringLiteral("a backend of that name exists already")};
        const Backend::Description& present = existing->getDescription();
        if (fileIdentity(present.filePath) == fileIdentity(description.filePath) &&
            present.type == description.type && present.accessMode == description.accessMode)
            return reload(*existing);
        return {
            StatusCode::AlreadyExists,
            QStringLiteral("a backend of that name exists with another file, type or access mode (%1, %2)")
                .arg(present.filePath, present.type)};
    }
    const QString identity = fileIdentity(description.filePath);
    Outcome outcome = reserve(identity);
    if (!outcome.ok())
        return outcome;
    const auto release = qScopeGuard([&] {
        const std::lock_guard lock(mutex);
        opening.remove(identity);
    });
    const auto before = std::chrono::system_clock::now();
    const auto backend = FileBackend::open(description, outcome);
    const Outcome mounted =
        backend ? Mounts(*store->getTree(), store->getHistory()).mount(backend) : Outcome();
    if (!outcome.ok() || !mounted.ok())
        return outcome.ok() ? mounted : outcome;
    noteFile(backend, identity);
    watch(backend, before);
    return outcome;
}

void BackendRegistry::watch(const std::shared_ptr<Backend>& backend,
                            std::chrono::system_clock::time_point since)
{
    if (!watcher)
        return;
    // The watcher must not keep alive what ends it.
    const auto look = [weakStore = std::weak_ptr(store->getTree()), weakBackend = std::weak_ptr(backend),
                       copy = observer] {
        const auto attributes = weakStore.lock();
        const auto mounted = weakBackend.lock();
        if (!attributes || !mounted || mounted->isClosed())
            return;
        const auto reload = [&] {
            ChangeApplier applier(*attributes, *mounted);
            return mounted->reload(Backend::Trigger::Watcher, std::ref(applier));
        };
        Outcome outcome = guardMemory(reload);
        if (!outcome.ok())
            outcome.of(Outcome::Operation::FollowFile, mounted->getName())
                .in(mounted->getDescription().filePath);
        reportUnasked(outcome, copy);
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

void BackendRegistry::unwatch(const Backend& backend)
{
    const std::lock_guard lock(mutex);
    if (watches.contains(&backend))
        watcher->unwatch(watches.take(&backend));
}

// Keeps the file for the caller, so that two creations at once do not both open it.
Outcome BackendRegistry::reserve(const QString& identity)
{
    const std::lock_guard lock(mutex);
    for (const auto& backend : mayBeOf(identity)) {
        const QString& filePath = backend->getDescription().filePath;
        if (!backend->isClosed() && fileIdentity(filePath) == identity)
            return Outcome(StatusCode::AlreadyExists,
                           QStringLiteral("the file is already open as '%1'").arg(backend->getName()))
                .in(filePath);
    }
    if (opening.contains(identity))
        return Outcome(StatusCode::AlreadyExists,
                       QStringLiteral("the file is just being opened by another backend"))
            .in(identity);
    opening.insert(identity);
    return {};
}

std::vector<std::shared_ptr<Backend>> BackendRegistry::mayBeOf(const QString& identity) const
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

void BackendRegistry::noteFile(const std::shared_ptr<Backend>& backend, const QString& identity)
{
    const std::lock_guard lock(mutex);
    if (identity == QDir::cleanPath(backend->getDescription().filePath))
        filesByIdentity.insert(identity, backend);
    else
        linkedFiles.push_back(backend);
}

void BackendRegistry::forgetFile(const Backend& backend)
{
    const std::lock_guard lock(mutex);
    const auto isGone = [&backend](const std::weak_ptr<Backend>& each) {
        const auto known = each.lock();
        return !known || known.get() == &backend;
    };
    for (auto each = filesByIdentity.begin(); each != filesByIdentity.end();)
        each = isGone(*each) ? filesByIdentity.erase(each) : std::next(each);
    linkedFiles.erase(std::remove_if(linkedFiles.begin(), linkedFiles.end(), isGone), linkedFiles.end());
}

Outcome BackendRegistry::reload(Backend& backend)
{
    ChangeApplier applier(*store->getTree(), backend);
    return backend.reload(Backend::Trigger::Request, std::ref(applier));
}

// Does something to the backend of that name, and logs what came of it.
Outcome BackendRegistry::operate(const QString& name, Outcome::Operation what,
                                 const std::function<Outcome(const std::shared_ptr<Backend>&)>& operation)
{
    const auto backend = findBackend(*store->getTree(), name);
    Outcome outcome = backend ? guardMemory([&] { return operation(backend); }) : Refusals::noBackend();
    if (backend && outcome == StatusCode::NotEnoughMemory)
        outcome.in(backend->getDescription().filePath);
    return logged(outcome.of(what, name));
}

Outcome BackendRegistry::reloadBackend(const QString& name)
{
    return operate(name, Outcome::Operation::ReloadBackend,
                   [this](const auto& backend) { return reload(*backend); });
}

bool BackendRegistry::saveBackend(const QString& name)
{
    return save(name).ok();
}

Outcome BackendRegistry::save(const QString& name)
{
    return operate(name, Outcome::Operation::SaveBackend, [this](const auto& backend) {
        ChangeApplier applier(*store->getTree(), *backend);
        return backend->save(std::ref(applier));
    });
}

Outcome BackendRegistry::closeBackend(const QString& name, bool discardChanges)
{
    return operate(name, Outcome::Operation::CloseBackend, [&](const auto& backend) {
        Outcome outcome = Mounts(*store->getTree(), store->getHistory()).unmount(backend, discardChanges);
        if (outcome.ok()) {
            unwatch(*backend);
            forgetFile(*backend);
        }
        return outcome;
    });
}

QStringList BackendRegistry::getBackendNames()
{
    QStringList names;
    for (const auto& backend : store->getTree()->getBackends())
        names.append(backend->getName());
    return names;
}

std::shared_ptr<FrameworkCore::AppConfig::Interfaces::BackendInformationInterface>
BackendRegistry::getBackendInformation(const QString& name)
{
    const auto backend = findBackend(*store->getTree(), name);
    return backend ? std::make_shared<Information>(backend->getDescription()) : nullptr;
}

} // namespace Repository
