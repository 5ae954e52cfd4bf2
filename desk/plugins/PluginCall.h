#pragma once

#include "host/Utilities/Worker.h"

namespace Vantry {

// Calls into a plug-in. What it throws ends the call only and is given back as a text; empty when it threw
// nothing.
template <typename Call>
QString failureOfCall(const Call& call)
{
    try {
        call();
        return {};
    } catch (...) {
        return Utilities::currentFailure();
    }
}

} // namespace Vantry
