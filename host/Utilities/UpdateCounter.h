#pragma once

#include "host/FrameworkCore/AppConfig/NotificationInterface.h"
#include "host/HostExport.h"

namespace Utilities {

// Counts updates of attributes, one count for the whole process. The callbacks are code of the host: they may
// stay registered after the plug-in that registered them was unmapped. Any thread.
class VANTRY_HOST_EXPORT UpdateCounter
{
public:
    using Callback = FrameworkCore::AppConfig::Interfaces::UpdateCallback;

    // Two callbacks that each count one at every call: for the updates of a path, and of a pattern.
    static Callback countOfPath();
    static Callback countOfPattern();

    static qint32 getCount();
    static void reset();
};

} // namespace Utilities
