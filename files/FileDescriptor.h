#pragma once

#include "files/FileOps.h"

#include <string>

namespace Files {

// An open file that is closed at the end of its scope. For one thread.
class VANTRY_FILES_EXPORT FileDescriptor
{
public:
    // Takes over what an open call gave; a negative number is no file.
    explicit FileDescriptor(FileOps& fileOps, int opened = -1);
    ~FileDescriptor();
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;

    bool isOpen() const { return number >= 0; }
    int get() const { return number; }

    // Opens a regular file that is there, and tells its status. Empty, or why not, with errno when it is the
    // system's reason and 0 otherwise. A link is not followed. Nothing else is opened, since opening a device
    // or a pipe may do things already.
    std::string openRegular(int folder, const std::string& name, int flags, struct stat& status);

    // All to the end of the file; false with errno.
    bool readAll(std::string& bytes);
    // All of it, however many calls it takes; false with errno.
    bool writeAll(const std::string& bytes);
    // False with errno when the system reports late that something was not written.
    bool close();

private:
    FileOps& ops; // not owned
    int number;
};

// Empty while a name leads to the file of the status, and nobody has written to it since as far as times
// tell; otherwise why that is not so.
std::string changeSince(FileOps& ops, int folder, const std::string& name, const struct stat& status);

// The system's words for errno, or for an error that was errno.
std::string systemReason();
std::string systemReason(int error);

} // namespace Files
