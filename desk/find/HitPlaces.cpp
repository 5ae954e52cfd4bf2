#include "desk/find/HitPlaces.h"

namespace Vantry {

HitPlaces::HitPlaces(BackendFiles& backendFiles, BackendFiles::Repository& attributes, QObject* parent)
    : QObject(parent), files(backendFiles), repository(attributes)
{
}

void HitPlaces::clear()
{
    fileNames.clear();
}

QString HitPlaces::backendOf(const QString& path) const
{
    return repository.getTreeInterface()->getNodeInformation(path).backend;
}

QString HitPlaces::textOf(const QString& path)
{
    if (fileNames.isEmpty()) {
        const QStringList backends = files.getBackends();
        const QStringList names = files.getFileNames(backends);
        for (int i = 0; i < backends.size(); ++i)
            fileNames.insert(backends[i], names[i]);
    }
    return fileNames.value(backendOf(path));
}

QString HitPlaces::longTextOf(const QString& path) const
{
    const QString backend = backendOf(path);
    return backend.isEmpty() ? QString() : files.getLocation(backend);
}

} // namespace Vantry
