#pragma once

#include "repository/fleet/StoreTransport.h"

#include <QString>

#include <memory>

namespace Repository {

// The module that talks to a store. It is a library of its own, with libraries of its own, and is loaded when
// it is needed first; it then stays. Any thread.
class StoreModule
{
public:
    // Null, with the reason for a person, where there is no module that fits.
    static std::unique_ptr<StoreTransport> open(const StoreSettings& settings, QString& error);
};

} // namespace Repository
