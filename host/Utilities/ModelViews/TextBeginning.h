#pragma once

#include "host/HostExport.h"

#include <QString>
#include <QStringList>

namespace Utilities::ModelViews {

// As much of a text as can be laid out without a wait: so many characters and lines, fewer where its script
// or direction changes all the time, and no more than some marks above one character. The text itself when
// that is all of it. Any thread.
VANTRY_HOST_EXPORT QString beginningOf(const QString& text, int longest, int mostLines);

// The same, with an ellipsis where something is left out.
VANTRY_HOST_EXPORT QString shortened(const QString& text, int longest, int mostLines);

// The items joined by commas, as far as they are needed for a text longer than that.
VANTRY_HOST_EXPORT QString joinedBeginning(const QStringList& items, int longest);

} // namespace Utilities::ModelViews
