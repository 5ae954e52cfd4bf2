#pragma once

#include "host/HostExport.h"

#include <functional>

namespace Utilities {

// Whether the caller is on the thread of the widgets. True while there is no application object.
VANTRY_HOST_EXPORT bool isOnGuiThread();

// Calls the function on the GUI thread and waits for its end; an exception that it throws reaches the caller.
// The caller must hold no lock that the GUI thread may want, and the GUI thread must not wait for the caller.
// Throws std::runtime_error, and the function is not called, when the application ends meanwhile.
VANTRY_HOST_EXPORT void runOnGuiThread(const std::function<void()>& function);

// Has the function called on the GUI thread: at once when the caller is there, otherwise later. It is dropped
// when the application ends before.
VANTRY_HOST_EXPORT void postToGuiThread(const std::function<void()>& function);

} // namespace Utilities
