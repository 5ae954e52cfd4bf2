#include "host/Utilities/ModelViews/ReadablePath.h"

#include "host/FrameworkCore/AppConfig/AttributePath.h"
#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

namespace Utilities::ModelViews {

QString readablePath(const QString& path,
                     FrameworkCore::AppConfig::Interfaces::RepositoryInterface& repository)
{
    const auto tree = repository.getTreeInterface();
    QString backend;
    QString present = path; // or what it would lie in
    while (tree && backend.isEmpty() && !present.isEmpty()) {
        backend = tree->getNodeInformation(present).backend;
        present = FrameworkCore::AppConfig::parentPath(present).toString();
    }
    const auto information = repository.getBackendInterface()->getBackendInformation(backend);
    const bool isFolder = information && information->getBackendType() == QLatin1String("folder");
    return FrameworkCore::AppConfig::readablePath(path, backend, isFolder);
}

} // namespace Utilities::ModelViews
