#pragma once

#include "host/FrameworkCore/Values/Value.h"

#include <optional>
#include <string>
#include <string_view>

namespace FrameworkCore::Values {

// The ISO 8601 text of a date, time or date-time in its full form (seconds always, milliseconds when there
// are any, the offset as the author gave it); nothing when the text is not a real date or time of that type.
// Read are also "HH:MM", a blank instead of the "T", and one to three digits of a second; years beyond 9999
// carry a sign.
std::optional<std::string> normaliseIso(std::string_view text, Type type);

} // namespace FrameworkCore::Values
