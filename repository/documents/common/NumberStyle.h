#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace Repository::Documents {

// A number with an exponent as the former spelling has one: 200000 after 1E5 is 2E5. Nothing where the former
// spelling is not of that form, or the one that a number has anyway.
std::optional<std::string> spellLike(double number, std::string_view former);

} // namespace Repository::Documents
