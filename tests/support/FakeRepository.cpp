#include "tests/support/FakeRepository.h"

#include "host/FrameworkCore/AppConfig/PathPattern.h"

#include <algorithm>
#include <atomic>
#include <utility>

namespace TestSupport {

using namespace FrameworkCore::AppConfig;
using namespace FrameworkCore::AppConfig::Interfaces;
using FrameworkCore::Notification::UpdatePoint;
using FrameworkCore::Notification::UpdateResult;

using Guard = std::unique_lock<std::mutex>;

namespace {

constexpr int allPoints = 15;

QVariant shownValue(const FakeNode& node)
{
    return isReadable(node.access) ? node.value : QVariant();
}

class Attribute : public AttributeInterface
{
public:
    Attribute(QString attributePath, QString attributeName, const FakeNode& ownNode)
        : path(std::move(attributePath)), name(std::move(attributeName)), node(ownNode)
    {
    }

    AccessMode getAccessMode() const override { return node.access; }
    QString getName() const override { return name; }
    QString getPath() const override { return path; }
    QString getDataType() const override { return QString::fromLatin1(QMetaType::typeName(node.type)); }
    QVariant getValue() const override { return shownValue(node); }

private:
    const QString path;
    const QString name;
    const FakeNode node;
};

QVariant withAttributeType(const QVariant& value)
{
    const auto type = QMetaType::Type(value.userType());
    const bool isWhole = type == QMetaType::Int || type == QMetaType::UInt || type == QMetaType::Short ||
                         type == QMetaType::Long;
    QVariant converted = value;
    if (isWhole || type == QMetaType::Float)
        converted.convert(isWhole ? QMetaType::LongLong : QMetaType::Double);
    return converted;
}

} // namespace

// What watchers are notified of once the lock is released.
struct FakeRepository::Update
{
    QString path;
    UpdateResult result = UpdateResult::Changed;
    QVariant value;
    int points = allPoints;
    QString backend;
};

class FakeRepository::Backend : public BackendInformationInterface
{
public:
    Backend(QString backendName, QString rootPath, QString backendType, QString text)
        : name(std::move(backendName)), root(std::move(rootPath)), type(std::move(backendType)),
          description(std::move(text))
    {
    }

    QString getBackendType() const override { return type; }
    QString getBackendDescription() const override { return description; }

    const QString name;
    const QString root;

private:
    const QString type;
    const QString description;
};

class FakeRepository::Registration : public RegistrationInterface
{
public:
    Registration(const QString& pathOrPattern, UpdateCallback called, int listenedPoints)
        : pattern(pathOrPattern), callback(std::move(called)), points(listenedPoints)
    {
    }

    void end() override { ended = true; }
    bool hasEnded() const { return ended; }

    void tell(const Update& update) const
    {
        if (!pattern.matches(update.path))
            return;
        for (const auto point : {UpdatePoint::BeforeValidation, UpdatePoint::AfterValidation,
                                 UpdatePoint::BeforeStore, UpdatePoint::AfterStore}) {
            if ((static_cast<int>(point) & points & update.points) != 0 && !ended)
                callback(update.path, point, update.result, update.value, update.backend);
        }
    }

private:
    const PathPattern pattern;
    const UpdateCallback callback;
    const int points;
    std::atomic<bool> ended{false};
};

FakeRepository::FakeRepository(const QString& separator) : tree(separator)
{
    tree.reach({});
    set(internalPath("repository", "path_separator"), separator, AccessMode::ReadOnly);
    set(internalPath("backends", "names"), QVariant(), AccessMode::ReadOnly);
}

FakeRepository::~FakeRepository() = default;

void FakeRepository::set(const QString& path, const QVariant& value, AccessMode access)
{
    Guard guard(mutex);
    FakeNode& node = tree.reach(path);
    const bool existed = std::exchange(node.isAttribute, true);
    node.value = withAttributeType(value);
    node.type = node.value.userType();
    node.access = access;
    const Update update{
        path, existed ? UpdateResult::Changed : UpdateResult::Created, shownValue(node), allPoints, {}};
    guard.unlock();
    tell({update});
}

void FakeRepository::addBackend(const QString& name, const QString& rootPath, const QString& type,
                                const QString& description)
{
    Guard guard(mutex);
    backends.append(std::make_shared<Backend>(name, rootPath, type, description));
    tree.reach(rootPath);
    const QString namesPath = internalPath("backends", "names");
    guard.unlock();
    set(tree.join({namesPath, name}), rootPath, AccessMode::ReadOnly);
    set(namesPath, getBackendNames().join(QLatin1Char(';')), AccessMode::ReadOnly);
}

QVariant FakeRepository::getValue(const QString& path) const
{
    const Guard guard(mutex);
    const FakeNode* const node = tree.find(path);
    return node ? node->value : QVariant();
}

int FakeRepository::getRegistrationCount() const
{
    const Guard guard(mutex);
    return int(std::count_if(registrations.begin(), registrations.end(),
                             [](const auto& registration) { return !registration->hasEnded(); }));
}

bool FakeRepository::createBackend(const QString& type, const QString& name,
                                   const BackendConfiguration& configuration, const int& option)
{
    {
        const Guard guard(mutex);
        backendCreations.append({type, name, configuration, option});
        if (refusesBackends || name.isEmpty() || backendNamed(name))
            return false;
    }
    addBackend(name, name, type, configuration.description);
    return true;
}

bool FakeRepository::saveBackend(const QString& name)
{
    const Guard guard(mutex);
    savedBackends.append(name);
    return backendNamed(name) != nullptr;
}

QStringList FakeRepository::getBackendNames()
{
    const Guard guard(mutex);
    QStringList names;
    for (const auto& backend : qAsConst(backends))
        names.append(backend->name);
    return names;
}

std::shared_ptr<BackendInformationInterface> FakeRepository::getBackendInformation(const QString& name)
{
    const Guard guard(mutex);
    return backendNamed(name);
}

int FakeRepository::readAttributeValue(const QString& path, QVariant& value, const int&)
{
    const Guard guard(mutex);
    value = QVariant();
    const FakeNode* const node = tree.find(path);
    if (!node || !node->isAttribute)
        return StatusCode::NotFound;
    value = shownValue(*node);
    return isReadable(node->access) ? StatusCode::Success : StatusCode::NotReadable;
}

std::shared_ptr<AttributeInterface> FakeRepository::getAttribute(const QString& path)
{
    const Guard guard(mutex);
    const FakeNode* const node = tree.find(path);
    if (!node || !node->isAttribute)
        return {};
    return std::make_shared<Attribute>(path, tree.nameOf(path), *node);
}

bool FakeRepository::createAttribute(const QString& path, const QVariant& value, const int& option,
                                     const int& access)
{
    Guard guard(mutex);
    writes.append({path, value, option, access});
    if (nextStatus.exchange(StatusCode::Success) != StatusCode::Success || !tree.isValidPath(path))
        return false;
    const FakeNode* const node = tree.find(path);
    const bool exists = node && node->isAttribute;
    guard.unlock();
    if (exists)
        return option == 3 && store(path, value, allPoints) == StatusCode::Success;
    set(path, value, static_cast<AccessMode>(access));
    return true;
}

int FakeRepository::writeAttributeValue(const QString& path, const QVariant& value, const int& points)
{
    {
        const Guard guard(mutex);
        writes.append({path, value, points, -1});
    }
    const int refusal = nextStatus.exchange(StatusCode::Success);
    return refusal != StatusCode::Success ? refusal : store(path, value, points);
}

int FakeRepository::store(const QString& path, const QVariant& value, int points)
{
    Guard guard(mutex);
    FakeNode* const node = tree.find(path);
    if (!node || !node->isAttribute)
        return StatusCode::NotFound;
    if (!isWritable(node->access))
        return StatusCode::NotWritable;
    QVariant converted = withAttributeType(value);
    if (node->type == QMetaType::UnknownType)
        node->type = converted.userType();
    if (!value.isValid())
        converted = QVariant(node->type, nullptr);
    else if (converted.userType() != node->type && !converted.convert(node->type))
        return StatusCode::WrongType;
    const bool changed = converted != node->value;
    node->value = converted;
    const Update update{
        path, changed ? UpdateResult::Changed : UpdateResult::Unchanged, shownValue(*node), points, {}};
    guard.unlock();
    tell({update});
    return StatusCode::Success;
}

std::shared_ptr<RegistrationInterface> FakeRepository::registerUpdateCallback(const QString& pathOrPattern,
                                                                              const UpdateCallback& callback,
                                                                              const int& points)
{
    const Guard guard(mutex);
    if (pathOrPattern.isEmpty() || !callback)
        return {};
    registrations.push_back(std::make_shared<Registration>(pathOrPattern, callback, points));
    return registrations.back();
}

void FakeRepository::tell(const QList<Update>& updates)
{
    Guard guard(mutex);
    registrations.erase(std::remove_if(registrations.begin(), registrations.end(),
                                       [](const auto& registration) { return registration->hasEnded(); }),
                        registrations.end());
    const auto listeners = registrations;
    QList<Update> told = updates;
    for (Update& update : told) {
        const auto backend = backendOf(update.path);
        update.backend = backend ? backend->name : QString();
    }
    guard.unlock();
    for (const Update& update : qAsConst(told)) {
        for (const auto& listener : listeners)
            listener->tell(update);
    }
}

QStringList FakeRepository::getChildNames(const QString& path) const
{
    const Guard guard(mutex);
    const FakeNode* const node = tree.find(path);
    return node ? node->children : QStringList();
}

NodeInformation FakeRepository::getNodeInformation(const QString& path) const
{
    const Guard guard(mutex);
    NodeInformation information;
    const FakeNode* const node = tree.find(path);
    if (!node)
        return information;
    information.exists = true;
    information.isAttribute = node->isAttribute;
    information.childCount = node->children.size();
    information.accessMode = node->access;
    information.dataType = QString::fromLatin1(QMetaType::typeName(node->type));
    if (const auto backend = backendOf(path)) {
        information.isBackendRoot = backend->root == path;
        information.backend = backend->name;
    }
    return information;
}

QStringList FakeRepository::findPaths(const PathSearch& search) const
{
    const Guard guard(mutex);
    return tree.findPaths(search);
}

Outcome FakeRepository::removeTree(const QString& path)
{
    Guard guard(mutex);
    if (path.isEmpty() || !tree.find(path))
        return {StatusCode::NotFound, QStringLiteral("no such attribute")};
    QStringList roots;
    for (const auto& backend : qAsConst(backends))
        roots.append(backend->root);
    const bool holdsRoot = std::any_of(roots.cbegin(), roots.cend(),
                                       [&](const QString& root) { return tree.isAtOrBelow(root, path); });
    if (holdsRoot || tree.isAtOrBelow(path, QStringLiteral("internal")))
        return {StatusCode::NotWritable, QStringLiteral("it cannot be removed")};
    QList<Update> updates;
    const QStringList gone = tree.remove(path, roots);
    for (const QString& attribute : gone)
        updates.append({attribute, UpdateResult::Removed, QVariant(), allPoints, {}});
    guard.unlock();
    tell(updates);
    return {};
}

QString FakeRepository::internalPath(const char* parent, const char* name) const
{
    return tree.join({QStringLiteral("internal"), QLatin1String(parent), QLatin1String(name)});
}

std::shared_ptr<FakeRepository::Backend> FakeRepository::backendNamed(const QString& name) const
{
    const auto found = std::find_if(backends.cbegin(), backends.cend(),
                                    [&name](const auto& backend) { return backend->name == name; });
    return found == backends.cend() ? nullptr : *found;
}

std::shared_ptr<FakeRepository::Backend> FakeRepository::backendOf(const QString& path) const
{
    std::shared_ptr<Backend> owner; // the longest root owns a path
    for (const auto& backend : backends) {
        if (tree.isAtOrBelow(path, backend->root) && (!owner || owner->root.size() < backend->root.size()))
            owner = backend;
    }
    return owner;
}

} // namespace TestSupport
