#pragma once

#include "files/FileDescriptor.h"

#include <optional>

namespace Files {

// Keeps this user's own saves into one folder apart, so that they need not take turns by trying again;
// without it, two that meet in the same instant may keep what one of them wrote beside the file. It is held
// in $XDG_RUNTIME_DIR, in the state folder or else in /tmp, by a file of this user alone, which no other user
// can lock, and the kernel ends it with the process. For one thread.
class SaveLock
{
public:
    // Waits for a moment at most, and goes on without the lock where there is no place for it. The status is
    // that of the folder.
    SaveLock(SystemCalls& calls, const struct stat& folder);

private:
    void open(SystemCalls& calls, const FileDescriptor& place, const std::string& name);

    std::optional<FileDescriptor> file;
};

} // namespace Files
