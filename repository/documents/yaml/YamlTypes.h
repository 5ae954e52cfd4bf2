#pragma once

#include "repository/documents/common/Values.h"

#include <string>
#include <string_view>

namespace Repository::Documents {

// The type of a scalar that its tag names; Group for none that is known. A tag as it is spelled.
Type typeOfYamlTag(std::string_view tag);

// The value of a plain scalar by the core schema of YAML 1.2. What readers of YAML 1.1 take for something
// else, as 017 or 1:30, is a text.
Value readYamlPlain(std::string_view text);

// The value of a text with a tag that names its type: a text where it is none of that type.
Value readYamlTagged(Type type, std::string text);

// Whether some reader, of YAML 1.1 or 1.2, would take this plain text for anything but a text.
bool isYamlKeyword(std::string_view text);

// A whole number of all readers that 64 bits cannot hold, which is a text here.
bool isHugeYamlInteger(std::string_view text);

// A number in the base and letter case of the former spelling, and so that all readers see it.
std::string spellYamlInteger(std::int64_t number, std::string_view former);
std::string spellYamlDouble(double number, std::string_view former);

std::string encodeBase64(std::string_view bytes);

} // namespace Repository::Documents
