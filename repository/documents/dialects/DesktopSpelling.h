#pragma once

#include "repository/documents/common/Dialect.h"

namespace Repository::Documents {

// Values of desktop entries and of KConfig: \s, \n, \t, \r and \\ are escapes, and "\;" stays as it is, since
// it is part of an item of a list. KConfig knows \x41, too, and drops what follows any other backslash.
extern const Spelling desktopSpelling;
extern const Spelling kdeSpelling;

} // namespace Repository::Documents
