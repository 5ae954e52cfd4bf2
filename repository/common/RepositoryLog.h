#pragma once

#include "host/FrameworkCore/AppConfig/Outcome.h"

#include <QString>

namespace Repository {

// The category under which the repository logs.
QString logCategory();

// Logs what has failed. Any thread; never with a lock of the repository held.
void logFailure(const QString& text) noexcept;

// Logs a failure, or the warnings of a success, and passes the outcome on: what every operation of the
// contract ends with, and the only place where a refusal is logged. Any thread; never with a lock held.
FrameworkCore::AppConfig::Outcome logged(FrameworkCore::AppConfig::Outcome outcome) noexcept;

} // namespace Repository
