#pragma once

#include "host/HostExport.h"

#include <QObject>
#include <QPointer>

namespace Utilities {

// Blocks the signals of an object until it is destroyed; then they are as they were before. An object that
// dies meanwhile, or a null one, is left alone. Thread of the object.
class VANTRY_HOST_EXPORT ScopedSignalBlocker
{
public:
    explicit ScopedSignalBlocker(const QPointer<QObject>& object);
    ~ScopedSignalBlocker();
    Q_DISABLE_COPY(ScopedSignalBlocker)

private:
    QPointer<QObject> blockedObject;
    bool wasBlocked = false;
};

} // namespace Utilities
