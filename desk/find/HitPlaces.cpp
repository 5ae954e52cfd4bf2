#include "desk/find/HitPlaces.h"

#include <algorithm>

namespace Vantry {

HitPlaces::HitPlaces(BackendFiles& backendFiles, BackendFiles::Repository& attributes, QObject* parent)
    : QObject(parent), files(backendFiles), repository(attributes)
{
}

void HitPlaces::clear()
{
    fileNames.clear();
    lines.clear();
    wanted.clear();
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
    const QString file = fileNames.value(backendOf(path));
    if (!file.isEmpty() && !lines.contains(path)) {
        wanted.removeOne(path);
        wanted.append(path);
        locate();
    }
    return withLine(file, path);
}

QString HitPlaces::withLine(const QString& file, const QString& path) const
{
    const int line = lines.value(path);
    return line > 0 ? QStringLiteral("%1:%2").arg(file).arg(line) : file;
}

// As many as a screen shows; what has been scrolled out of sight is asked for again when it is back.
void HitPlaces::locate()
{
    constexpr int mostAtOnce = 20;
    constexpr int mostWanted = 100;
    const auto texts = repository.getTextInterface();
    if (lookUp.isBusy() || wanted.isEmpty() || !texts)
        return;
    wanted = wanted.mid(std::max(0, wanted.size() - mostWanted));
    lookUp.start([this, texts, paths = wanted.mid(std::max(0, wanted.size() - mostAtOnce))] {
        QHash<QString, int> found;
        for (const QString& path : paths) {
            FrameworkCore::AppConfig::Interfaces::TextPlace place;
            texts->locate(path, place);
            found.insert(path, place.lineOnDisk);
        }
        return [this, found] {
            for (auto line = found.begin(); line != found.end(); ++line) {
                if (wanted.removeOne(line.key())) // otherwise it was of a former search
                    lines.insert(line.key(), line.value());
            }
            emit changed();
            locate();
        };
    });
}

QString HitPlaces::longTextOf(const QString& path) const
{
    const QString backend = backendOf(path);
    return backend.isEmpty() ? QString() : withLine(files.getLocation(backend), path);
}

} // namespace Vantry
