#pragma once

#include "host/HostExport.h"

#include <QString>

#include <future>
#include <type_traits>
#include <utility>

namespace Utilities {

// Why the exception that is being handled has ended a piece of work, for the person: no memory, no thread, or
// what the exception says. To be called in a catch block. Any thread.
VANTRY_HOST_EXPORT QString currentFailure();

// Runs the function on a thread of its own. The future gives its result or throws what it threw, and goes
// only when the thread has ended. Where the system gives no thread, the future is invalid and the failure
// says why.
template <typename Function>
std::future<std::invoke_result_t<Function>> startWorker(Function function, QString& failure)
{
    try {
        return std::async(std::launch::async, std::move(function));
    } catch (...) {
        failure = currentFailure();
        return {};
    }
}

} // namespace Utilities
