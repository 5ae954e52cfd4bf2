#pragma once

#include "repository/documents/common/Document.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// Names of the formats, in the order in which they are offered to people.
const std::vector<std::string>& getDocumentTypes();

// An empty document of the format; null for an unknown name.
std::unique_ptr<Document> makeDocument(std::string_view type);

} // namespace Repository::Documents
