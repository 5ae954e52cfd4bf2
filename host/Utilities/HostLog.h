#pragma once

#include <QString>

namespace Utilities {

// Logs a failure of what the host does for a page, under the page's category. Any thread.
void logFailure(const QString& text);

} // namespace Utilities
