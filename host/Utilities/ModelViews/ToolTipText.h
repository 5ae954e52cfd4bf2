#pragma once

#include "host/HostExport.h"

#include <QString>

namespace Utilities::ModelViews {

// A text of any lines, and of any signs, as a tool tip that wraps it, also inside of words that are too long
// for a line. Any thread.
VANTRY_HOST_EXPORT QString toolTipText(const QString& text);

} // namespace Utilities::ModelViews
