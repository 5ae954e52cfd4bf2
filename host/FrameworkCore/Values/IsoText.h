#pragma once

#include "host/FrameworkCore/Values/Value.h"

#include <optional>
#include <string>
#include <string_view>

namespace FrameworkCore::Values {

// The full ISO 8601 form of a date, time or date-time: always seconds, milliseconds when not zero, the digits
// of a second beyond these up to the last that is not zero, the offset as given. Nothing when the text is not
// a real one. Also accepted: "HH:MM", a blank for the "T", any number of digits of a second. Years beyond
// 9999 carry a sign.
std::optional<std::string> normaliseIso(std::string_view text, Type type);

} // namespace FrameworkCore::Values
