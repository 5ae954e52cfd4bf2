#pragma once

#include "host/HostExport.h"

#include <QString>

namespace Utilities::ModelViews::Widgets {

// The text for a message box, which breaks lines between words only: a word that is too long for a line, as a
// path may be, gets invisible places to break at. A word, or a text, that would fill the screen loses its
// middle. Any thread.
VANTRY_HOST_EXPORT QString breakableText(const QString& text);

} // namespace Utilities::ModelViews::Widgets
