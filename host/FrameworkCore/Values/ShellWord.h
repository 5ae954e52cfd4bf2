#pragma once

#include "host/FrameworkCore/CoreExport.h"

#include <string>
#include <string_view>

namespace FrameworkCore::Values {

// A text of UTF-8 as one word of a POSIX shell, in quotes where it needs them. Controls are written as
// escapes in the quotes that bash, zsh and POSIX 2024 have for that.
VANTRY_CORE_EXPORT std::string shellWord(std::string_view text);

} // namespace FrameworkCore::Values
