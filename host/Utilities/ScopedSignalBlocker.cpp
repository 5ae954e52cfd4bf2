#include "host/Utilities/ScopedSignalBlocker.h"

namespace Utilities {

ScopedSignalBlocker::ScopedSignalBlocker(const QPointer<QObject>& object) : blockedObject(object)
{
    if (blockedObject)
        wasBlocked = blockedObject->blockSignals(true);
}

ScopedSignalBlocker::~ScopedSignalBlocker()
{
    if (blockedObject)
        blockedObject->blockSignals(wasBlocked);
}

} // namespace Utilities
