#pragma once

#include "files/FileDescriptor.h"

#include <optional>

namespace Files {

// Keeps this user's own saves into one folder apart, so that they need not take turns by trying again;
// nothing depends on it. It is held in $XDG_RUNTIME_DIR or in the state folder, where no other user can hold
// it, and the kernel ends it with the process. For one thread.
class SaveLock
{
public:
    // Waits for a moment at most, and goes on without the lock where there is no place for it. The status is
    // that of the folder.
    SaveLock(SystemCalls& calls, const struct stat& folder);

private:
    std::optional<FileDescriptor> file;
};

} // namespace Files
