#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace Repository::Documents {

// Character sets that files declare by name, converted by the C library: those that extend ASCII and have no
// shift states.
namespace CharacterSet {

// Whether there is such a set; case does not matter.
bool isKnown(std::string_view name);

// What a conversion gives, up to the first place that has no counterpart.
struct Conversion
{
    std::string text;
    std::optional<std::size_t> failedAt; // offset in what was to be converted
};

Conversion toUtf8(const std::string& name, std::string_view bytes);
Conversion fromUtf8(const std::string& name, std::string_view text);

} // namespace CharacterSet

} // namespace Repository::Documents
