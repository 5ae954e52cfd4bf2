#pragma once

#include "host/Shared/Logging/LogMessageContainer.h"

namespace Shared::Logging {

// Begins log lines of one context. Any thread.
class VANTRY_CORE_EXPORT LogStreamProvider
{
public:
    explicit LogStreamProvider(LogMessageContext context);

    // A container into which the line's text is streamed; the arguments join those of the context.
    LogMessageContainer handleMessageInternal(LogMessageType type, QList<QVariant> arguments) const;

private:
    LogMessageContext context;
};

} // namespace Shared::Logging
