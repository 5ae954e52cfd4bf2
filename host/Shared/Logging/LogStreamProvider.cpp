#include "host/Shared/Logging/LogStreamProvider.h"

namespace Shared::Logging {

LogStreamProvider::LogStreamProvider(LogMessageContext lineContext) : context(std::move(lineContext))
{
}

LogMessageContainer LogStreamProvider::handleMessageInternal(LogMessageType type,
                                                             QList<QVariant> arguments) const
{
    LogMessageContext lineContext = context;
    lineContext.arguments += arguments;
    return LogMessageContainer(std::move(lineContext), type);
}

} // namespace Shared::Logging
