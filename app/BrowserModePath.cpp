#include "app/BrowserModePath.h"

namespace Vantry {

QString browserModePath(Utilities::ApplicationWidgets::ApplicationWidget& widget)
{
    return widget.buildContextPath({QString::fromLatin1("instances"), widget.getApplicationIdentification(),
                                    QString::fromLatin1("state")});
}

} // namespace Vantry
