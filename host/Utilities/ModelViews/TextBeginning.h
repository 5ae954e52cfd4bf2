#pragma once

#include "host/HostExport.h"

#include <QString>

namespace Utilities::ModelViews {

// As much of a text as can be laid out without a wait: so many characters and lines, and no more than some
// marks above one character. The text itself when that is all of it. Any thread.
VANTRY_HOST_EXPORT QString beginningOf(const QString& text, int longest, int mostLines);

} // namespace Utilities::ModelViews
