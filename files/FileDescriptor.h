#pragma once

#include "files/SystemCalls.h"

#include <cerrno>
#include <cstdint>
#include <optional>
#include <string>

namespace Files {

// An open file that is closed at the end of its scope. For one thread.
class VANTRY_FILES_EXPORT FileDescriptor
{
public:
    // Takes over what an open call gave; a negative number is not a file.
    explicit FileDescriptor(SystemCalls& systemCalls, int opened = -1);
    ~FileDescriptor();
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;

    bool isOpen() const { return number >= 0; }
    int get() const { return number; }

    // Opens a regular file that is there, and tells its status. Empty, or why not, with errno when it is the
    // system's reason and 0 otherwise. A link is not followed. Nothing else is opened, since opening a device
    // or a pipe may do things already.
    std::string openRegular(int folder, const std::string& name, int flags, struct stat& status);

    // All to the end of the file. Empty, or why not, with errno: the system's reason, EFBIG for the
    // SizeLimit, ENOMEM. Bytes that are more than a file's content may exceed the limit by so much.
    std::string readAll(std::string& bytes, std::uint64_t beyondLimit = 0);
    // Whether the file holds these bytes and no others, read from where it is. Nothing, with errno, when it
    // cannot be read.
    std::optional<bool> holds(const std::string& bytes);
    // Locks the file itself against other holders, without waiting. It says whether whoever made it is alive.
    bool tryLock();
    // All of it, however many calls it takes; false with errno.
    bool writeAll(const std::string& bytes);
    // False with errno when the system reports late that something was not written.
    bool close();

private:
    std::string readAtMost(std::uint64_t limit, std::size_t expected, std::string& bytes);

    SystemCalls& calls; // not owned
    int number;
};

// The system's words for an error.
std::string systemReason(int error = errno);

} // namespace Files
