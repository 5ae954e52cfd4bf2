#include "desk/RefusalListener.h"

#include "host/Shared/Logging/LogRecord.h"
#include "repository/RepositoryLog.h"

namespace Vantry {

using Shared::Logging::LogRecord;

RefusalListener::RefusalListener() : number(LogRecord::instance().getLastNumber())
{
}

QStringList RefusalListener::getReasons() const
{
    QStringList reasons;
    const auto lines = LogRecord::instance().getLines(number);
    for (const auto& line : lines) {
        if (line.type == Shared::Logging::LogMessageType::Failure &&
            line.category == Repository::logCategory())
            reasons.append(line.text);
    }
    return reasons;
}

} // namespace Vantry
