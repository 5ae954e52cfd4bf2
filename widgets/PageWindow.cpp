#include "widgets/PageWindow.h"

#include <QWidget>

namespace Widgets {

void deleteWith(QWidget& page, QWidget& window)
{
    // At once: a deferred deletion would come after the module.
    QObject::connect(&page, &QObject::destroyed, &window, [&window] { delete &window; });
}

} // namespace Widgets
