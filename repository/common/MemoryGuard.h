#pragma once

#include "host/FrameworkCore/AppConfig/Outcome.h"
#include "repository/common/Texts.h"

#include <QString>

#include <new>
#include <stdexcept>
#include <type_traits>

namespace Repository {

// Runs an operation at the border of the repository. Where the system gives no memory for it, `refuse` is
// given the reason, for a person, and makes the result: nothing is thrown across the border.
template <typename Operation, typename Refuse>
std::invoke_result_t<Operation> guardMemory(const Operation& operation, const Refuse& refuse)
{
    try {
        return operation();
    } catch (const std::bad_alloc&) {
    } catch (const std::length_error&) { // of a container that cannot be as large
    }
    return refuse(Texts::tr("there is not enough memory for it"));
}

// The same for an operation whose outcome may be that.
template <typename Operation>
FrameworkCore::AppConfig::Outcome guardMemory(const Operation& operation)
{
    return guardMemory(operation, [](const QString& reason) {
        return FrameworkCore::AppConfig::Outcome(FrameworkCore::AppConfig::NotEnoughMemory, reason);
    });
}

} // namespace Repository
