#pragma once

#include <string>
#include <string_view>

namespace Repository::Documents {

// A json text that all readers accept: without comments, and without a comma after the last of something.
std::string plainJson(std::string_view text);

} // namespace Repository::Documents
