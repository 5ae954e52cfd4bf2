#pragma once

#include "repository/documents/common/Dialect.h"

namespace Repository::Documents {

// Values of git: quotes around any part of them keep blanks and comment marks; \n, \t, \b, \" and \\ are
// escapes in quotes and out of them.
extern const Spelling gitSpelling;

} // namespace Repository::Documents
