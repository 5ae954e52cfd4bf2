#pragma once

#include "files/FileDescriptor.h"

#include <string>

namespace Files {

// A folder that is open, and locked to the end of the scope against all others who read or save files of it
// by this class. The kernel holds the lock, so that of a program that was killed is gone at once. Only
// reading permission is needed. For one thread.
class LockedFolder
{
public:
    enum class Access { Shared, Exclusive };

    // Opens it; locking is a step of its own.
    LockedFolder(FileOps& fileOps, const std::string& path);

    bool isOpen() const { return folder.isOpen(); } // otherwise errno tells why, right after construction
    int get() const { return folder.get(); }

    // Empty, or why it is not locked. Waits for a few seconds: a lock that is held for longer than any save
    // takes belongs to a program that hangs. Others may come in between when the access is changed.
    std::string lock(Access access);

private:
    FileOps& ops; // not owned
    FileDescriptor folder;
};

} // namespace Files
