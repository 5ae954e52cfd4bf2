#pragma once

namespace Utilities {

// The two widgets that an application gives to its host.
enum class ApplicationWidgetType : int { Control, Main };

} // namespace Utilities
