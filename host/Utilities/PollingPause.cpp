#include "host/Utilities/PollingPause.h"

namespace Utilities {

int PollingPause::count = 0;

} // namespace Utilities
