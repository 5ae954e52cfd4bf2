#pragma once

#include "host/HostExport.h"

#include <QString>

namespace Utilities {

// Logs a failure of what the host or the desk does for a page, under the page's category. Any thread.
VANTRY_HOST_EXPORT void logFailure(const QString& text);

} // namespace Utilities
