#pragma once

#include "host/FrameworkCore/CoreExport.h"

#include <cstddef>
#include <string_view>

namespace FrameworkCore::Values {

// Length of the one UTF-8 sequence that the text begins with; 0 for an empty text and where the bytes are no
// UTF-8 (cut short, overlong, a surrogate, beyond U+10FFFF).
VANTRY_CORE_EXPORT std::size_t utf8Length(std::string_view text);

// True when the whole text is UTF-8.
VANTRY_CORE_EXPORT bool isUtf8(std::string_view text);

} // namespace FrameworkCore::Values
