#pragma once

#include "repository/documents/common/Dialect.h"

namespace Repository::Documents {

// Keys and values of Java's properties: \t, \n, \r, \f and \u0041 are escapes, and a backslash before
// anything else only takes its meaning. A file is read as UTF-8, or as Latin-1 where it is not; since its
// program may do only the latter, other characters are written as escapes, unless there are some already.
extern const Spelling propertiesSpelling;

} // namespace Repository::Documents
