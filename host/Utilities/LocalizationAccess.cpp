#include "host/Utilities/LocalizationAccess.h"

#include "host/Shared/Localization/CoreLocalization.h"

namespace Utilities {

std::shared_ptr<FrameworkCore::Core::CoreLocalizationInterface> GetLocalizationInterface()
{
    static const auto localization = std::make_shared<Shared::Localization::CoreLocalization>();
    return localization;
}

} // namespace Utilities
