#pragma once

#include "host/FrameworkCore/Core/CoreLocalizationInterface.h"
#include "host/HostExport.h"

#include <memory>

namespace Utilities {

// The languages of the process; never empty. GUI thread.
VANTRY_HOST_EXPORT std::shared_ptr<FrameworkCore::Core::CoreLocalizationInterface> GetLocalizationInterface();

} // namespace Utilities
