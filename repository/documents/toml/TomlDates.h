#pragma once

#include "repository/documents/common/Values.h"

#include <optional>
#include <string>
#include <string_view>

namespace Repository::Documents {

// A date, time or date-time of a value; nothing for any other text.
std::optional<Value> readTomlDate(std::string_view spelled);

// The value with the separator, the form of UTC and at least the digits of a second that the former one has.
std::string spellTomlDate(const Value& value, std::string_view former);

} // namespace Repository::Documents
