#pragma once

#include <QString>

namespace Repository {

// The category under which the repository logs.
QString logCategory();

// Logs why an operation was refused. Any thread; never with a lock of the repository held.
void logFailure(const QString& text) noexcept;

} // namespace Repository
