#pragma once

#include "repository/documents/common/Format.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// All formats, in the order in which they are offered to people. They live as long as the program.
const std::vector<const Format*>& getFormats();

// Null for an unknown name.
const Format* findFormat(std::string_view name);

// What a text is when no other format claims it.
const Format& getDefaultFormat();

// Names of the formats, in the same order.
const std::vector<std::string>& getDocumentTypes();

// An empty document of the format; null for an unknown name.
std::unique_ptr<Document> makeDocument(std::string_view type);

} // namespace Repository::Documents
