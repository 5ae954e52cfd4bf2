#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"
#include "host/HostExport.h"

#include <memory>

namespace Utilities {

// The attribute repository of the process; empty while the host has set none. Any thread.
VANTRY_HOST_EXPORT std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RepositoryInterface>
GetAppConfigRepositoryInterface();

// Sets the repository that plug-ins get; an empty pointer takes it away. Those who took the earlier one keep
// it.
VANTRY_HOST_EXPORT void SetAppConfigRepositoryInterface(
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RepositoryInterface> repository);

} // namespace Utilities
