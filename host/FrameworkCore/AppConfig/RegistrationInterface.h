#pragma once

#include "host/FrameworkCore/CoreExport.h"

namespace FrameworkCore::AppConfig::Interfaces {

// Handle of one callback registration. Dropping the handle does not end the registration.
class VANTRY_CORE_EXPORT RegistrationInterface
{
public:
    virtual ~RegistrationInterface() = default;

    // No operation that begins after this returns calls back; one under way on another thread may still do
    // so. Any thread, also from inside the callback itself; further calls do nothing.
    virtual void end() = 0;
};

} // namespace FrameworkCore::AppConfig::Interfaces
