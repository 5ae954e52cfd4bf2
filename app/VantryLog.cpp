#include "app/VantryLog.h"

#include "host/Shared/Logging/LogStreamProvider.h"

namespace Vantry {

using Shared::Logging::LogMessageContext;

Shared::Logging::LogMessageContainer logLine(Shared::Logging::LogMessageType type)
{
    const LogMessageContext context({}, -1, {}, QString::fromLatin1("Vantry"), {},
                                    LogMessageContext::LogMessageFlags());
    return Shared::Logging::LogStreamProvider(context).handleMessageInternal(type, {});
}

} // namespace Vantry
