#pragma once

#include "repository/documents/common/Document.h"

#include <string>
#include <string_view>

namespace Repository::Documents {

// An edit that is refused has a reason and no place in the file.
inline Outcome refused(std::string reason)
{
    return {std::move(reason), 0, 0};
}

inline std::string quoted(std::string_view text)
{
    return '"' + std::string(text) + '"';
}

} // namespace Repository::Documents
