#pragma once

#include "host/FrameworkCore/CoreExport.h"

namespace FrameworkCore::AppConfig::Interfaces {

// Handle of one callback registration. Dropping the handle does not end the registration.
class VANTRY_CORE_EXPORT RegistrationInterface
{
public:
    virtual ~RegistrationInterface() = default;

    // No call of the callback begins after this returns; one that runs on another thread may still finish.
    // Any thread, also from inside the callback itself; further calls do nothing.
    virtual void end() = 0;
};

} // namespace FrameworkCore::AppConfig::Interfaces
