#include "files/FileDescriptor.h"

#include <cerrno>
#include <fcntl.h>
#include <system_error>

namespace Files {

namespace {

std::string kindRefusal(const struct stat& status)
{
    errno = 0;
    if (S_ISDIR(status.st_mode))
        return "it is a folder";
    return S_ISREG(status.st_mode) ? std::string() : "it is not a regular file";
}

} // namespace

FileDescriptor::FileDescriptor(FileOps& fileOps, int opened) : ops(fileOps), number(opened)
{
}

FileDescriptor::~FileDescriptor()
{
    const int error = errno;
    close();
    errno = error;
}

std::string FileDescriptor::openRegular(int folder, const std::string& name, int flags, struct stat& status)
{
    if (ops.statAt(folder, name, status) != 0)
        return "it cannot be examined: " + systemReason();
    const std::string refusal = kindRefusal(status);
    if (!refusal.empty())
        return refusal;
    number = ops.openAt(folder, name, flags | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0);
    if (!isOpen() || ops.stat(number, status) != 0)
        return "it cannot be opened: " + systemReason();
    return kindRefusal(status); // another file may have taken the name
}

bool FileDescriptor::readAll(std::string& bytes)
{
    bytes.clear();
    struct stat status = {};
    if (ops.stat(number, status) != 0)
        return false;
    // One byte more than the file says it has, to meet its end without a second buffer.
    constexpr std::size_t least = 4096;
    std::size_t filled = 0;
    bytes.resize(static_cast<std::size_t>(status.st_size) + 1);
    while (true) {
        if (filled == bytes.size())
            bytes.resize(bytes.size() * 2 + least);
        const ssize_t got = ops.read(number, bytes.data() + filled, bytes.size() - filled);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return false;
        if (got == 0)
            break;
        filled += static_cast<std::size_t>(got);
    }
    bytes.resize(filled);
    return true;
}

bool FileDescriptor::writeAll(const std::string& bytes)
{
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t written = ops.write(number, bytes.data() + done, bytes.size() - done);
        if (written < 0 && errno == EINTR)
            continue;
        if (written == 0)
            errno = EIO;
        if (written <= 0)
            return false;
        done += static_cast<std::size_t>(written);
    }
    return true;
}

bool FileDescriptor::close()
{
    if (!isOpen())
        return true;
    const int closing = number;
    number = -1;
    // An interrupted close has closed the file all the same.
    return ops.close(closing) == 0 || errno == EINTR;
}

std::string changeSince(FileOps& ops, int folder, const std::string& name, const struct stat& status)
{
    struct stat now = {};
    const int result = ops.statAt(folder, name, now);
    if (result != 0 && errno != ENOENT)
        return "it cannot be examined: " + systemReason();
    if (result == 0 && now.st_dev == status.st_dev && now.st_ino == status.st_ino &&
        now.st_size == status.st_size && now.st_mtim.tv_sec == status.st_mtim.tv_sec &&
        now.st_mtim.tv_nsec == status.st_mtim.tv_nsec)
        return {};
    return "another program has changed it while it was being saved";
}

std::string systemReason()
{
    return systemReason(errno);
}

std::string systemReason(int error)
{
    return std::generic_category().message(error);
}

} // namespace Files
