#include "app/ModuleConstants.h"

namespace Vantry {

const QStringList BrowserMode = {QString::fromLatin1(""), QString::fromLatin1("attributes"),
                                 QString::fromLatin1("backends"), QString::fromLatin1("tests")};

const QString AllBackends = QString::fromLatin1("All backends");

QString browserModePath(Utilities::ApplicationWidgets::ApplicationWidget& widget)
{
    return widget.buildContextPath({QString::fromLatin1("instances"), widget.getApplicationIdentification(),
                                    QString::fromLatin1("state")});
}

} // namespace Vantry
