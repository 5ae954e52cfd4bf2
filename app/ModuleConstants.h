#pragma once

#include "host/Utilities/ApplicationWidgets/ApplicationWidget.h"

#include <QStringList>

namespace Vantry {

// Constants of the module, made when it is loaded and alive until it is unloaded.

// Names of the main widget's pages; a name's position is the index of its page.
extern const QStringList BrowserMode;

// The entry that means every backend in a list of backends. Not translated.
extern const QString AllBackends;

// Path of the attribute that holds the name of the page shown in the widget's GUI context; empty without a
// repository.
QString browserModePath(Utilities::ApplicationWidgets::ApplicationWidget& widget);

} // namespace Vantry
