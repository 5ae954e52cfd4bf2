#include "repository/mounting/BackendRegistry.h"

#include "host/FrameworkCore/Values/VariantValue.h"
#include "repository/common/Border.h"
#include "repository/common/PathRules.h"
#include "repository/common/Texts.h"
#include "repository/documents/Formats.h"
#include "repository/fleet/EtcdBackends.h"
#include "repository/mounting/FileBackends.h"
#include "repository/mounting/FolderBackends.h"
#include "repository/mounting/Mounts.h"
#include "repository/operations/AttributeStore.h"
#include "repository/store/BackendLookup.h"
#include "repository/store/Refusals.h"
#include "repository/transaction/ChangeApplier.h"

#include <algorithm>

namespace Repository {

using FrameworkCore::AppConfig::AccessMode;
using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;

namespace {

class Information : public FrameworkCore::AppConfig::Interfaces::BackendInformationInterface
{
public:
    explicit Information(const std::shared_ptr<const Backend>& ofBackend)
        : description(ofBackend->getDescription()), backend(ofBackend)
    {
    }

    QString getBackendType() const override { return description.type; }
    QString getBackendDescription() const override
    {
        const auto open = backend.lock();
        const QString state = open ? open->getState() : QString();
        return state.isEmpty()              ? description.text
               : description.text.isEmpty() ? state
                                            : QStringLiteral("%1 (%2)").arg(description.text, state);
    }
    QString getBackendLocation() const override { return description.filePath; }
    QString explainTypeTag(const QVariant& value) const override
    {
        const Documents::Format* const format = Documents::findFormat(description.type.toStdString());
        return format ? QString::fromStdString(format->explainTypeTag(FrameworkCore::Values::toValue(value)))
                      : QString();
    }
    bool namesType(const QString& path) const override
    {
        const auto open = backend.lock();
        return !open || open->namesType(path);
    }
    Progress getProgress() const override
    {
        const auto open = backend.lock();
        return open ? open->getProgress() : Progress();
    }

private:
    const Backend::Description description;
    const std::weak_ptr<const Backend> backend; // which may be closed meanwhile
};

QString trimSeparators(QString name)
{
    while (name.startsWith(pathSeparator))
        name.remove(0, 1);
    while (name.endsWith(pathSeparator))
        name.chop(1);
    return name;
}

} // namespace

BackendRegistry::BackendRegistry(std::shared_ptr<AttributeStore> attributes, bool watchesFiles,
                                 BackendKind::Observer observer)
    : store(std::move(attributes))
{
    auto files = std::make_unique<FileBackends>(store->getTree(), watchesFiles, observer);
    auto folders = std::make_unique<FolderBackends>(store, *files, watchesFiles, observer);
    kinds.push_back(std::move(files));
    kinds.push_back(std::move(folders));
    kinds.push_back(std::make_unique<EtcdBackends>(store->getTree(), std::move(observer)));
}

// A kind uses those before it, also on threads of its own.
BackendRegistry::~BackendRegistry()
{
    while (!kinds.empty())
        kinds.pop_back();
}

QStringList BackendRegistry::getTypes() const
{
    QStringList types;
    for (const auto& kind : kinds)
        types += kind->getTypes();
    return types;
}

// Null for an unknown type.
BackendKind* BackendRegistry::kindOf(const QString& type) const
{
    const auto found =
        std::find_if(kinds.begin(), kinds.end(), [&type](const auto& kind) { return kind->hasType(type); });
    return found == kinds.end() ? nullptr : found->get();
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

    return runForCaller(Outcome::Operation::CreateBackend, name, [&] {
        BackendKind* const kind = kindOf(type);
        Outcome outcome = kind ? checkDescription(description) : Refusals::noType(type, getTypes());
        if (!outcome.ok())
            return outcome;
        description.filePath = kind->toLocation(description.filePath);
        outcome = guardMemory([&] { return create(*kind, description, option); });
        return outcome.ok() ? outcome : outcome.in(description.filePath);
    });
}

Outcome BackendRegistry::checkDescription(const Backend::Description& description)
{
    if (isTooDeep(description.name))
        return Refusals::invalidPath(description.name);
    if (!isValidPath(description.name) || description.name.contains(QLatin1Char(';')))
        return {StatusCode::InvalidPath,
                Texts::tr("a backend's name is the path of its root: names joined by '.', none of them "
                          "empty, without '*' and ';'")};
    if (isAtOrBelow(description.name, ownRoot))
        return Refusals::ownTree();
    if (description.accessMode == AccessMode::None || description.accessMode > AccessMode::ReadWrite)
        return {StatusCode::NotWritable,
                Texts::tr("the access mode must be read-only, write-only or read-write")};
    return {};
}

// What was mounted before it turned out that it cannot be opened is taken out again.
Outcome BackendRegistry::open(BackendKind& kind, const Backend::Description& description)
{
    Mounts mounts(*store->getTree(), store->getHistory());
    std::shared_ptr<Backend> mounted;
    Outcome outcome = kind.open(description, [&](const std::shared_ptr<Backend>& backend) {
        Outcome ofMount = mounts.mount(backend);
        if (ofMount.ok())
            mounted = backend;
        return ofMount;
    });
    if (!outcome.ok() && mounted && mounts.unmount(mounted, true).ok())
        kind.forget(*mounted);
    return outcome;
}

Outcome BackendRegistry::create(BackendKind& kind, const Backend::Description& description, int option)
{
    const auto existing = findBackend(*store->getTree(), description.name);
    if (!existing)
        return open(kind, description);
    if (option != createOrReload)
        return {StatusCode::AlreadyExists, Texts::tr("a backend of that name exists already")};
    const Backend::Description& present = existing->getDescription();
    const bool isSameType =
        present.type == description.type || present.type.section(QLatin1Char(':'), 0, 0) == description.type;
    if (isSameType && present.accessMode == description.accessMode &&
        kind.isSamePlace(present.filePath, description.filePath))
        return reload(*existing);
    return {StatusCode::AlreadyExists,
            Texts::tr("a backend of that name exists with another file, type or access mode (%1, %2)")
                .arg(present.filePath, present.type)};
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
    return runForCaller(what, name, [&] {
        const auto backend = findBackend(*store->getTree(), name);
        Outcome outcome = backend ? guardMemory([&] { return operation(backend); }) : Refusals::noBackend();
        return backend && outcome == StatusCode::NotEnoughMemory
                   ? outcome.in(backend->getDescription().filePath)
                   : outcome;
    });
}

Outcome BackendRegistry::reloadBackend(const QString& name)
{
    return operate(name, Outcome::Operation::ReloadBackend,
                   [this](const auto& backend) { return reload(*backend); });
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
        if (outcome.ok())
            kindOf(backend->getDescription().type)->forget(*backend);
        return outcome;
    });
}

Outcome BackendRegistry::setLocked(const QString& name, bool isLocked)
{
    return operate(name, Outcome::Operation::Lock, [isLocked](const auto& backend) {
        backend->setLocked(isLocked);
        return Outcome();
    });
}

QStringList BackendRegistry::getLockedBackends()
{
    QStringList names;
    for (const auto& backend : store->getTree()->getBackends()) {
        if (backend->isLocked())
            names.append(backend->getName());
    }
    return names;
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
    return backend ? std::make_shared<Information>(backend) : nullptr;
}

} // namespace Repository
