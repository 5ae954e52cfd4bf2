#include "files/FileDescriptor.h"

#include "files/Reason.h"
#include "files/SizeLimit.h"

#include <array>
#include <fcntl.h>
#include <new>
#include <sys/file.h>
#include <system_error>

namespace Files {

namespace {

std::string kindRefusal(const struct stat& status)
{
    errno = 0;
    if (S_ISDIR(status.st_mode))
        return Reason::tr("it is a folder");
    return S_ISREG(status.st_mode) ? std::string() : Reason::tr("it is not a regular file");
}

std::string tooLarge()
{
    errno = EFBIG;
    return SizeLimit::refusal();
}

} // namespace

FileDescriptor::FileDescriptor(SystemCalls& systemCalls, int opened) : calls(systemCalls), number(opened)
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
    if (calls.statAt(folder, name, status) != 0)
        return Reason::tr("it cannot be examined: %1", {systemReason()});
    const std::string refusal = kindRefusal(status);
    if (!refusal.empty())
        return refusal;
    number = calls.openAt(folder, name, flags | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0);
    if (!isOpen() || calls.stat(number, status) != 0)
        return Reason::tr("it cannot be opened: %1", {systemReason()});
    return kindRefusal(status); // another file may have taken the name
}

std::string FileDescriptor::readAll(std::string& bytes, std::uint64_t beyondLimit)
{
    bytes.clear();
    struct stat status = {};
    if (calls.stat(number, status) != 0)
        return Reason::tr("it cannot be examined: %1", {systemReason()});
    const std::uint64_t limit = SizeLimit::get() + beyondLimit;
    if (static_cast<std::uint64_t>(status.st_size) > limit)
        return tooLarge();
    try {
        return readAtMost(limit, static_cast<std::size_t>(status.st_size), bytes);
    } catch (const std::bad_alloc&) {
        std::string().swap(bytes);
        errno = ENOMEM;
        return Reason::tr("there is not enough memory to read it");
    }
}

// The expected size saves copies; a file may have grown since, and those of the system say 0.
std::string FileDescriptor::readAtMost(std::uint64_t limit, std::size_t expected, std::string& bytes)
{
    // One byte more, to meet the end without a second buffer.
    constexpr std::size_t least = 4096;
    std::size_t filled = 0;
    bytes.resize(expected + 1);
    while (true) {
        if (filled == bytes.size())
            bytes.resize(bytes.size() * 2 + least);
        const ssize_t got = calls.read(number, bytes.data() + filled, bytes.size() - filled);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return Reason::tr("it cannot be read: %1", {systemReason()});
        if (got == 0)
            break;
        filled += static_cast<std::size_t>(got);
        if (filled > limit)
            return tooLarge();
    }
    bytes.resize(filled);
    return {};
}

std::optional<bool> FileDescriptor::holds(const std::string& bytes)
{
    std::array<char, 65536> piece{};
    std::size_t same = 0;
    while (true) {
        const ssize_t got = calls.read(number, piece.data(), piece.size());
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return std::nullopt;
        if (got == 0)
            return same == bytes.size();
        if (bytes.compare(same, static_cast<std::size_t>(got), piece.data(), static_cast<std::size_t>(got)) !=
            0)
            return false;
        same += static_cast<std::size_t>(got);
    }
}

bool FileDescriptor::tryLock()
{
    return calls.lock(number, LOCK_EX | LOCK_NB) == 0;
}

bool FileDescriptor::writeAll(const std::string& bytes)
{
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t written = calls.write(number, bytes.data() + done, bytes.size() - done);
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
    return calls.close(closing) == 0 || errno == EINTR;
}

std::string systemReason(int error)
{
    return std::generic_category().message(error);
}

} // namespace Files
