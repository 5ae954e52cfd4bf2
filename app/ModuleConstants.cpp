#include "app/ModuleConstants.h"

namespace Vantry {

const QStringList BrowserMode = {QString::fromLatin1(""), QString::fromLatin1("attributes"),
                                 QString::fromLatin1("backends"), QString::fromLatin1("tests")};

const QString AllBackends = QString::fromLatin1("All backends");

} // namespace Vantry
