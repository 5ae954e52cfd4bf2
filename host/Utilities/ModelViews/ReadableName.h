#pragma once

#include "host/HostExport.h"

#include <QString>

namespace Utilities::ModelViews {

// The names of files and folders as they are on the disk, of a path that has them encoded; not for paths of
// what is in a file. Any thread.
VANTRY_HOST_EXPORT QString decodedName(const QString& name);

} // namespace Utilities::ModelViews
