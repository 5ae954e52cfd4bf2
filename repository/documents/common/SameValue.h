#pragma once

#include "host/FrameworkCore/Values/Value.h"

#include <cmath>

namespace Repository::Documents {

// Stricter than == where a file is: zero is not minus zero, and "not a number" is itself.
inline bool isSame(const FrameworkCore::Values::Value& a, const FrameworkCore::Values::Value& b)
{
    const auto* const number = std::get_if<double>(&a.data);
    const auto* const other = std::get_if<double>(&b.data);
    if (!number || !other || a.type != b.type)
        return a == b;
    if (std::isnan(*number) || std::isnan(*other))
        return std::isnan(*number) && std::isnan(*other);
    return *number == *other && std::signbit(*number) == std::signbit(*other);
}

} // namespace Repository::Documents
