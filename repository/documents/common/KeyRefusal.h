#pragma once

#include <string>
#include <string_view>

namespace Repository::Documents {

// Why a component of a path, of which decodeKey makes nothing, is no key, and how the key would be written.
std::string explainNoKey(std::string_view component);

} // namespace Repository::Documents
