#include "repository/FileDescriptor.h"

#include <cerrno>
#include <system_error>

namespace Repository {

FileDescriptor::FileDescriptor(FileOps& fileOps, int opened) : ops(fileOps), number(opened)
{
}

FileDescriptor::~FileDescriptor()
{
    const int error = errno;
    close();
    errno = error;
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

std::string systemReason()
{
    return std::generic_category().message(errno);
}

} // namespace Repository
