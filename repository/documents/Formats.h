#pragma once

#include "repository/documents/common/Format.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// A type of documents is the name of a format, "ini", or of one of its dialects, "ini:git". "ini" alone is
// the dialect of files that no program is known to read.

// All formats, in the order in which they are offered to people. They live as long as the program.
const std::vector<const Format*>& getFormats();

// That of a type; null for an unknown one.
const Format* findFormat(std::string_view type);

// Names of the formats, in the same order, and the types that name a dialect.
const std::vector<std::string>& getDocumentTypes();
const std::vector<std::string>& getDialectTypes();

// The name of a type's format: "ini" of "ini:git".
std::string_view formatOf(std::string_view type);

// The type of a file with this path whose text begins like this: where a format alone is given, the dialect
// is recognised. The path may be empty.
std::string recogniseDialect(std::string_view type, std::string_view path, std::string_view beginning);

// The type of a dialect, whatever its format, that the path alone or the text alone tells; empty for none.
std::string typeByName(std::string_view path);
std::string typeByText(std::string_view beginning);

// An empty document of the type; null for an unknown one.
std::unique_ptr<Document> makeDocument(std::string_view type);

} // namespace Repository::Documents
