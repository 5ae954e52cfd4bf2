#pragma once

#include "repository/documents/common/Dialect.h"

namespace Repository::Documents {

// Values of php.ini: in double quotes \" and \\ are escapes, in single quotes nothing is. Constants, on and
// off, and expressions are read as they are spelled, without their meaning.
extern const Spelling phpSpelling;

} // namespace Repository::Documents
