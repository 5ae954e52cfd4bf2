#include "host/Utilities/HostLog.h"

#include "host/Shared/Logging/LogStreamProvider.h"

namespace Utilities {

void logFailure(const QString& text)
{
    using namespace Shared::Logging;
    const LogMessageContext context({}, -1, {}, QStringLiteral("Vantry"), {}, LogMessageContext::NoFlag);
    LogStreamProvider(context).handleMessageInternal(LogMessageType::Failure, {}) << text;
}

} // namespace Utilities
