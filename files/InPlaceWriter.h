#pragma once

#include "files/FileDescriptor.h"
#include "files/FileLocation.h"

#include <string>

namespace Files {

// Writes over a file that cannot be replaced: the last resort, since a crash leaves a mixture, which only the
// journal that was made durable before can undo. Another program that reads the file in that moment sees the
// mixture. Empty, or why it failed; the file is as it was then, or will be when it is read next. The status
// and the content found are those that the file has; when another program has changed it since, nothing is
// written and isChanged is set. The folder is the file's own.
std::string writeInPlace(SystemCalls& calls, const FileDescriptor& folder, const FileLocation& location,
                         const struct stat& status, const std::string& found, const std::string& bytes,
                         std::string& warning, bool& isChanged);

} // namespace Files
