#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace Repository::Documents {

// The character sets that files declare by name, converted by the C library. Only those that hold ASCII as it
// is and change nothing by shifting are offered.
namespace CharacterSet {

// False for a name that stands for no such set, whatever its case.
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
