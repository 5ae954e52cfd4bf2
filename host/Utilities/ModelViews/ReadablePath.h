#pragma once

#include "host/HostExport.h"

#include <QString>

namespace FrameworkCore::AppConfig::Interfaces {
class RepositoryInterface;
}

namespace Utilities::ModelViews {

// A path with the names of files and folders as they are on the disk; what is in a file stays. Any thread.
VANTRY_HOST_EXPORT QString
readablePath(const QString& path, FrameworkCore::AppConfig::Interfaces::RepositoryInterface& repository);

} // namespace Utilities::ModelViews
