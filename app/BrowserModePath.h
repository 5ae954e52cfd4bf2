#pragma once

#include "host/Utilities/ApplicationWidgets/ApplicationWidget.h"

namespace Vantry {

// Path of the attribute that holds the name of the page shown in the widget's GUI context; empty while there
// is no repository.
QString browserModePath(Utilities::ApplicationWidgets::ApplicationWidget& widget);

} // namespace Vantry
