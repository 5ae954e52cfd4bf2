#pragma once

#include "host/FrameworkCore/CoreExport.h"

namespace FrameworkCore::AppConfig::Interfaces {

// Handle of one callback registration. Dropping the handle does not end the registration.
class VANTRY_CORE_EXPORT RegistrationInterface
{
public:
    virtual ~RegistrationInterface() = default;

    // No operation that begins after this returns calls back; one under way on another thread may still do
    // so. What the callback has captured goes when no call is under way any more, and that of a pattern no
    // sooner than the attributes that it matched are written again. Any thread, also from inside the callback
    // itself; further calls do nothing.
    virtual void end() = 0;

    // In place of end(), for whoever is about to go, or to unload the callback's code: when this returns, no
    // call is under way, and nothing of the callback is left. Waits for calls on other threads, so it is not
    // for a callback, nor for who has what one waits for; of a pattern it looks at every attribute. A
    // repository that does not override it does no more than end().
    virtual void endAndWait() { end(); }
};

} // namespace FrameworkCore::AppConfig::Interfaces
