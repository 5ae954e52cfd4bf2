#pragma once

#include <string>
#include <string_view>

namespace Repository::Documents {

// Why a line is not YAML and what to write instead, for a person, where libfyaml only says what it did not
// expect. Other messages of it stay as they are.
std::string explainYamlFault(std::string_view message, std::string_view line);

} // namespace Repository::Documents
