#pragma once

#include "repository/documents/common/Values.h"
#include "repository/documents/toml/TomlString.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// The value of a scalar, or of an array that holds nothing but strings. A date beyond those that a value can
// hold is its text.
Value readTomlValue(std::string_view spelled);

// The same with a type tag; Group for none.
Value readTomlValue(std::string_view spelled, Type tag);

// What to write in the place of a value.
struct TomlContent
{
    std::string spelling;
    std::string error; // why there is none
};

// A value as the former one is spelled, as far as that can be; without a former one the plain form. Nothing
// for a value of which TOML would not tell the type, or that it has no form for.
std::optional<std::string> spellTomlValue(const Value& value, std::string_view former,
                                          const TomlStringPlace& place);

// The same where a type tag names the type.
TomlContent spellTaggedTomlValue(const Value& value, std::string_view former, const TomlStringPlace& place);

} // namespace Repository::Documents
