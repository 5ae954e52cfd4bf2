#pragma once

#include "repository/documents/common/Dialect.h"

#include <string_view>
#include <vector>

namespace Repository::Documents {

// The table of dialects, in the order in which they are offered and recognised. Each format of lines has one
// called "generic", which is that of the files that no other dialect claims.
const std::vector<Dialect>& getDialects();

// Null for an unknown name.
const Dialect* findDialect(std::string_view format, std::string_view name);

const Dialect& getGenericDialect(std::string_view format);

// The dialect of a file by its name and where it is, for any format when it is empty; null for none.
const Dialect* recogniseName(std::string_view format, std::string_view path);

// The same by how the file begins: its first section, then its other lines.
const Dialect* recogniseText(std::string_view format, std::string_view beginning);

} // namespace Repository::Documents
