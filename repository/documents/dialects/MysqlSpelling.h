#pragma once

#include "repository/documents/common/Dialect.h"

namespace Repository::Documents {

// Values of MySQL and MariaDB: quotes around the whole value keep blanks and "#"; \n, \t, \r, \b, \s, \", \'
// and \\ are escapes with quotes and without them, and any other backslash is itself.
extern const Spelling mysqlSpelling;

} // namespace Repository::Documents
