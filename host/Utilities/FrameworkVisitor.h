#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"
#include "host/HostExport.h"

#include <memory>

namespace Utilities {

// Mix-in: gives a class access to the framework it runs in. Any thread.
class VANTRY_HOST_EXPORT FrameworkVisitor
{
public:
    virtual ~FrameworkVisitor();

    // The repository of the process, to build paths with; empty while there is none.
    std::shared_ptr<const FrameworkCore::AppConfig::Interfaces::RepositoryInterface> getAppConfig() const;
};

} // namespace Utilities
