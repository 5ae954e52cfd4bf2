#pragma once

#include "repository/documents/common/Document.h"

#include <string_view>

namespace Repository::Documents {

// Says whether a text is TOML 1.0, and if not, what is wrong where. The text is UTF-8 without a byte-order
// mark. It may throw std::bad_alloc.
class TomlReader
{
public:
    static Outcome check(std::string_view text);

    // How deep arrays and inline tables may lie in each other.
    static constexpr std::size_t maximumDepth = 250;
};

} // namespace Repository::Documents
