#include "host/Utilities/FrameworkVisitor.h"

#include "host/Utilities/RepositoryAccess.h"

namespace Utilities {

FrameworkVisitor::~FrameworkVisitor() = default;

std::shared_ptr<const FrameworkCore::AppConfig::Interfaces::RepositoryInterface>
FrameworkVisitor::getAppConfig() const
{
    return GetAppConfigRepositoryInterface();
}

} // namespace Utilities
