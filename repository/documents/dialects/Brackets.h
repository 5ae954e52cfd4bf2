#pragma once

#include "repository/documents/common/Values.h"

#include <string>
#include <string_view>

namespace Repository::Documents {

// Why a program that takes the first "]" for the end of a section's name refuses it; empty without one.
inline std::string explainBracket(std::string_view section)
{
    return section.find(']') == std::string_view::npos
               ? std::string()
               : Reason::tr("its program takes no brackets in the name of a section");
}

} // namespace Repository::Documents
