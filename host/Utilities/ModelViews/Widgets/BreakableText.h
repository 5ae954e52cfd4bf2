#pragma once

#include <QString>

namespace Utilities::ModelViews::Widgets {

// The text for a message box, which breaks lines between words only: a word that is too long for a line, as a
// path may be, gets invisible places to break at, and a word that would fill the screen loses its middle.
// Any thread.
QString breakableText(const QString& text);

} // namespace Utilities::ModelViews::Widgets
