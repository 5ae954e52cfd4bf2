#pragma once

#include "host/HostExport.h"

#include <QString>

namespace Utilities::ModelViews {

// A text of any lines, and of any signs, as a tool tip that shows it as it is and wraps it, also inside
// of words that are too long for a line. What looks like markup in it is never followed, and what is longer
// than a screen ends in an ellipsis. All tool tips with texts of people are made by it. Empty without a text.
// Any thread.
VANTRY_HOST_EXPORT QString toolTipText(const QString& text);

} // namespace Utilities::ModelViews
