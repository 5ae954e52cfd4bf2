#pragma once

#include <QStringList>

namespace Vantry {

// The example that a person can try things out on, a copy of their own: its files, written into the folder
// for the person's data where they are missing; what was changed in them stays. Empty, with the reason, when
// they cannot be written. GUI thread.
QStringList makeExampleFiles(QString& error);

} // namespace Vantry
