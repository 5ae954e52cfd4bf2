#pragma once

#include "host/FrameworkCore/CoreExport.h"

#include <QString>

namespace Shared::Logging {

// The process-wide side of logging. Any thread.
class VANTRY_CORE_EXPORT LogHandler
{
public:
    // Names the source of all later log lines of the process.
    static void SetLogIdentification(const QString& identification);
    static QString GetLogIdentification();
};

} // namespace Shared::Logging
