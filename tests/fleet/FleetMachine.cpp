#include "tests/fleet/FleetMachine.h"

using FrameworkCore::Notification::UpdatePoint;

FleetMachine::FleetMachine(const QString& location, AccessMode access)
    : repository(Repository::AttributeRepository::create()),
      mounted(repository->getBackendInterface()->mount(QStringLiteral("etcd"), QStringLiteral("m"),
                                                       {location, QStringLiteral("for tests"), access}, 2))
{
}

FleetMachine::~FleetMachine()
{
    if (registration)
        registration->end();
}

FleetMachine::Outcome FleetMachine::create(const QString& path, const QVariant& value)
{
    return repository->getWriterInterface()->create(path, value, 2, 3);
}

FleetMachine::Outcome FleetMachine::write(const QString& path, const QVariant& value)
{
    return repository->getWriterInterface()->write(path, value, 15);
}

FleetMachine::Outcome FleetMachine::remove(const QString& path)
{
    return repository->getTreeInterface()->removeTree(path);
}

FleetMachine::Outcome FleetMachine::save()
{
    return repository->getBackendInterface()->save(QStringLiteral("m"));
}

QVariant FleetMachine::read(const QString& path) const
{
    QVariant value;
    repository->getReaderInterface()->readAttributeValue(path, value, 0);
    return value;
}

bool FleetMachine::exists(const QString& path) const
{
    return repository->getTreeInterface()->getNodeInformation(path).isAttribute;
}

QStringList FleetMachine::paths() const
{
    QStringList attributes;
    const QStringList all = repository->getTreeInterface()->findPaths({QStringLiteral("m.*")});
    for (const QString& path : all) {
        if (exists(path))
            attributes.append(path);
    }
    attributes.sort();
    return attributes;
}

QVector<FleetMachine::UnsavedChange> FleetMachine::unsaved() const
{
    return repository->getChangesInterface()->getUnsavedChanges(QStringLiteral("m"));
}

QString FleetMachine::description() const
{
    const auto information = repository->getBackendInterface()->getBackendInformation(QStringLiteral("m"));
    return information ? information->getBackendDescription() : QString();
}

void FleetMachine::listen(const QString& pattern)
{
    registration = repository->getNotificationInterface()->registerUpdateCallback(
        pattern,
        [this](const QString& path, const UpdatePoint&, const UpdateResult& result, const QVariant& value,
               const QString&) {
            const std::lock_guard lock(mutex);
            heard.append(result == UpdateResult::Removed ? path + QStringLiteral(" removed")
                                                         : path + QStringLiteral(" = ") + value.toString());
        },
        int(UpdatePoint::AfterStore));
}

QStringList FleetMachine::getHeard() const
{
    const std::lock_guard lock(mutex);
    return heard;
}
