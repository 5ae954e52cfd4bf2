#pragma once

#include "host/HostExport.h"

#include <QtGlobal>

namespace Utilities {

// While one exists, nobody asks the repository at intervals: an operation under way keeps it busy, and who
// asks would wait for its end. GUI thread.
class VANTRY_HOST_EXPORT PollingPause
{
public:
    PollingPause() { ++count; }
    ~PollingPause() { --count; }
    Q_DISABLE_COPY(PollingPause)

    static bool isOn() { return count > 0; }

private:
    static int count;
};

} // namespace Utilities
