#pragma once

namespace Shared::Logging {

enum class LogMessageType : int { Information = 1, Outcome = 2, Failure = 3 };

} // namespace Shared::Logging
