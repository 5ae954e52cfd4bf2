#pragma once

#include <QString>

namespace Vantry {

// The text of a menu's entry that names a file or something else of people's: no letter of it is a key, and
// what is too long loses its middle. Any thread.
QString menuText(const QString& text);

} // namespace Vantry
