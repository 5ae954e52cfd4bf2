#pragma once

#include "repository/FileOps.h"

#include <string>

namespace Repository {

// An open file that is closed at the end of its scope. For one thread.
class FileDescriptor
{
public:
    // Takes over what an open call gave; a negative number is no file.
    FileDescriptor(FileOps& fileOps, int opened);
    ~FileDescriptor();
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;

    bool isOpen() const { return number >= 0; }
    int get() const { return number; }

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

// The system's words for errno.
std::string systemReason();

} // namespace Repository
