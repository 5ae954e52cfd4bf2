#include "repository/BackendRegistry.h"

#include "repository/AttributeStore.h"
#include "repository/BackendLookup.h"
#include "repository/BackendReshaping.h"
#include "repository/MemoryGuard.h"
#include "repository/PathRules.h"
#include "repository/RefusalText.h"
#include "repository/RepositoryLog.h"
#include "repository/documents/Formats.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>

#include <algorithm>

namespace Repository {

using FrameworkCore::AppConfig::AccessMode;

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

auto noMemoryFor(const QString& file)
{
    return [file](const QString& reason) { return QStringLiteral("%1: %2").arg(file, reason); };
}

QString noSuchBackend()
{
    return QStringLiteral("there is no backend of that name");
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

BackendRegistry::BackendRegistry(std::shared_ptr<AttributeStore> attributes, bool watchesFiles)
    : store(std::move(attributes))
{
    if (watchesFiles)
        watcher = std::make_unique<Files::FileWatcher>(
            [](const std::string& text) { logFailure(QFile::decodeName(text.c_str())); });
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
    Backend::Description description;
    description.name = trimSeparators(name);
    description.type = type;
    description.text = configuration.description;
    description.filePath = configuration.location.toString();
    description.accessMode = configuration.accessMode;

    QString reason = checkDescription(description);
    if (reason.isEmpty()) {
        description.filePath = QFileInfo(description.filePath).absoluteFilePath();
        reason = guardMemory([&] { return create(description, option); }, noMemoryFor(description.filePath));
    }
    if (!reason.isEmpty())
        logFailure(
            QStringLiteral("The backend '%1' was not created: %2").arg(RefusalText::shownPath(name), reason));
    return reason.isEmpty();
}

QString BackendRegistry::checkDescription(const Backend::Description& description)
{
    if (!getTypes().contains(description.type))
        return QStringLiteral("there is no backend type '%1'; known are: %2")
            .arg(description.type, getTypes().join(QStringLiteral(", ")));
    if (isTooDeep(description.name))
        return RefusalText::invalidPath(description.name);
    if (!isValidPath(description.name) || description.name.contains(QLatin1Char(';')))
        return QStringLiteral(
            "a backend's name is the path of its root: names joined by '.', none of them empty, "
            "without '*' and ';'");
    if (isAtOrBelow(description.name, ownRoot))
        return QStringLiteral("'%1' belongs to the repository itself").arg(ownRoot);
    if (description.accessMode == AccessMode::None || description.accessMode > AccessMode::ReadWrite)
        return QStringLiteral("the access mode must be read-only, write-only or read-write");
    if (description.filePath.isEmpty())
        return QStringLiteral("no file was named");
    return {};
}

QString BackendRegistry::create(const Backend::Description& description, int option)
{
    if (const auto existing = findBackend(*store, description.name)) {
        if (option != createOrReload)
            return QStringLiteral("a backend of that name exists already");
        const Backend::Description& present = existing->getDescription();
        if (fileIdentity(present.filePath) == fileIdentity(description.filePath) &&
            present.type == description.type && present.accessMode == description.accessMode)
            return reload(*existing);
        return QStringLiteral("a backend of that name exists with another file, type or access mode (%1, %2)")
            .arg(present.filePath, present.type);
    }
    const QString identity = fileIdentity(description.filePath);
    QString reason = reserve(identity);
    if (!reason.isEmpty())
        return reason;
    const auto release = qScopeGuard([&] {
        const std::lock_guard lock(mutex);
        opening.remove(identity);
    });
    const auto before = std::chrono::system_clock::now();
    const auto backend = Backend::open(description, reason);
    if (backend)
        reason = store->mount(backend);
    if (!reason.isEmpty())
        return reason;
    noteFile(backend, identity);
    watch(backend, before);
    return {};
}

void BackendRegistry::watch(const std::shared_ptr<Backend>& backend,
                            std::chrono::system_clock::time_point since)
{
    if (!watcher)
        return;
    // The watcher must not keep alive what ends it.
    const auto look = [weakStore = std::weak_ptr(store), weakBackend = std::weak_ptr(backend)] {
        const auto attributes = weakStore.lock();
        const auto mounted = weakBackend.lock();
        if (!attributes || !mounted || mounted->isClosed())
            return;
        const auto reload = [&] {
            BackendReshaping reshaping(*attributes, *mounted);
            return mounted->reload(Backend::Look::Happening, std::ref(reshaping));
        };
        const QString refusal = guardMemory(reload, noMemoryFor(mounted->getDescription().filePath));
        if (!refusal.isEmpty())
            logFailure(QStringLiteral("The file of the backend '%1' has changed: %2")
                           .arg(mounted->getName(), refusal));
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
QString BackendRegistry::reserve(const QString& identity)
{
    const std::lock_guard lock(mutex);
    for (const auto& backend : mayBeOf(identity)) {
        const QString& filePath = backend->getDescription().filePath;
        if (!backend->isClosed() && fileIdentity(filePath) == identity)
            return QStringLiteral("%1 is already open as '%2'").arg(filePath, backend->getName());
    }
    if (opening.contains(identity))
        return QStringLiteral("%1 is just being opened by another backend").arg(identity);
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

QString BackendRegistry::reload(Backend& backend)
{
    const auto operation = [&] {
        BackendReshaping reshaping(*store, backend);
        return backend.reload(Backend::Look::Asked, std::ref(reshaping));
    };
    return guardMemory(operation, noMemoryFor(backend.getDescription().filePath));
}

bool BackendRegistry::reloadBackend(const QString& name)
{
    const auto backend = findBackend(*store, name);
    const QString reason = backend ? reload(*backend) : noSuchBackend();
    if (!reason.isEmpty())
        logFailure(QStringLiteral("The backend '%1' was not reloaded: %2").arg(name, reason));
    return reason.isEmpty();
}

bool BackendRegistry::saveBackend(const QString& name)
{
    const auto backend = findBackend(*store, name);
    const auto operation = [&] {
        if (!backend)
            return noSuchBackend();
        BackendReshaping reshaping(*store, *backend);
        return backend->save(std::ref(reshaping));
    };
    const QString reason =
        guardMemory(operation, noMemoryFor(backend ? backend->getDescription().filePath : name));
    if (!reason.isEmpty())
        logFailure(RefusalText::unsaved(name, reason));
    return reason.isEmpty();
}

bool BackendRegistry::closeBackend(const QString& name, bool discardChanges)
{
    const auto backend = findBackend(*store, name);
    const auto operation = [&] {
        return backend ? store->unmount(backend, discardChanges) : noSuchBackend();
    };
    const QString reason = guardMemory(operation, noMemoryFor(name));
    if (!reason.isEmpty())
        logFailure(QStringLiteral("The backend '%1' was not closed: %2").arg(name, reason));
    else {
        unwatch(*backend);
        forgetFile(*backend);
    }
    return reason.isEmpty();
}

QStringList BackendRegistry::getBackendNames()
{
    QStringList names;
    for (const auto& backend : store->getBackends())
        names.append(backend->getName());
    return names;
}

std::shared_ptr<FrameworkCore::AppConfig::Interfaces::BackendInformationInterface>
BackendRegistry::getBackendInformation(const QString& name)
{
    const auto backend = findBackend(*store, name);
    return backend ? std::make_shared<Information>(backend->getDescription()) : nullptr;
}

} // namespace Repository
