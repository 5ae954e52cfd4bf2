#pragma once

#include "repository/documents/common/Dialect.h"

namespace Repository::Documents {

// Values without escapes, of which each dialect joins the lines in its own way: systemd with a blank in place
// of each backslash, Samba with one blank for a run of them, Python's configparser with line breaks. The
// last is also that of values which never go on.
extern const Spelling systemdSpelling;
extern const Spelling sambaSpelling;
extern const Spelling pythonSpelling;
extern const Spelling commentedPythonSpelling; // with comments that begin with ";" after its lines
extern const Spelling supervisorSpelling;      // or with "#"
extern const Spelling plainSpelling;

} // namespace Repository::Documents
