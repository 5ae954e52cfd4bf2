#pragma once

#include "repository/common/MemoryGuard.h"
#include "repository/common/RepositoryLog.h"

#include <utility>

namespace Repository {

// Runs an operation of the contract for a caller, who asked for it on that subject, a path or a name: refused
// memory becomes an outcome, and what comes of it is logged. No lock of the repository is held.
template <typename Operation>
FrameworkCore::AppConfig::Outcome runForCaller(FrameworkCore::AppConfig::Outcome::Operation what,
                                               const QString& subject, const Operation& operation)
{
    FrameworkCore::AppConfig::Outcome outcome = guardMemory(operation);
    if (!outcome.isPlainSuccess())
        outcome = logged(std::move(outcome.of(what, subject)));
    return outcome;
}

} // namespace Repository
