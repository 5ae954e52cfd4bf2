#pragma once

#include "repository/documents/common/BracketItems.h"

#include <string_view>

namespace Repository::Documents {

// The elements of an array or the members of an inline table.
class TomlItems : public BracketItems
{
public:
    // The text begins with the opening bracket and ends with the closing one.
    TomlItems(std::string_view bracketed, std::string_view fileLineEnd);
};

} // namespace Repository::Documents
