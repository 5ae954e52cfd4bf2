#pragma once

#include "repository/documents/common/Dialect.h"

namespace Repository::Documents {

// Values of Kerberos profiles: quotes around the whole value keep blanks, and in them \n, \t, \b and a
// backslash before any other character are escapes.
extern const Spelling krb5Spelling;

} // namespace Repository::Documents
