#pragma once

#include <string>
#include <string_view>

namespace Repository::Documents {

// Why decodeKey refuses a component of a path, and how to write the key instead.
std::string explainNoKey(std::string_view component);

} // namespace Repository::Documents
