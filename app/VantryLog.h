#pragma once

#include "host/Shared/Logging/LogMessageContainer.h"

namespace Vantry {

// Begins one log line of this application, into which the text is streamed.
Shared::Logging::LogMessageContainer logLine(Shared::Logging::LogMessageType type);

} // namespace Vantry
