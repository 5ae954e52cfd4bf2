#pragma once

#include "files/FileDescriptor.h"
#include "files/FileLocation.h"

#include <string>

namespace Files {

// Who recovers: a reader writes for nobody but the user itself.
enum class RecoveryPurpose { Reading, Saving };

// Clears up what saves have left that were killed: new content that never took its place, what another
// program wrote in the moment of an exchange, and journals of files that were written in place, which put the
// file right. Looked for whenever a file is read or saved, beside the file and in the state folder. Nothing
// but regular files that have our names is touched, and never what a save that goes on still holds a lock on.
// Empty, or why the file must not be read or saved now. The warning says what was put right, or could not be.
// The folder is the file's own.
std::string recoverFromCrash(SystemCalls& calls, const FileDescriptor& folder, const FileLocation& location,
                             RecoveryPurpose purpose, std::string& warning);

} // namespace Files
