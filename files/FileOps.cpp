#include "files/FileOps.h"

#include <cerrno>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/file.h>
#include <sys/syscall.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace Files {

namespace {

int readExtendedAttribute(int descriptor, const std::string& name, std::string& value)
{
    const ssize_t size = ::fgetxattr(descriptor, name.c_str(), nullptr, 0);
    if (size < 0)
        return -1;
    value.resize(static_cast<std::size_t>(size));
    const ssize_t length = ::fgetxattr(descriptor, name.c_str(), value.data(), value.size());
    if (length < 0)
        return -1;
    value.resize(static_cast<std::size_t>(length));
    return 0;
}

} // namespace

FileOps& FileOps::system()
{
    static FileOps ops;
    return ops;
}

int FileOps::openFolder(const std::string& path, int flags)
{
    struct open_how how = {};
    how.flags = static_cast<std::uint64_t>(flags) | O_DIRECTORY | O_CLOEXEC;
    how.resolve = RESOLVE_NO_SYMLINKS;
    const long opened = ::syscall(SYS_openat2, AT_FDCWD, path.c_str(), &how, sizeof how);
    if (opened >= 0 || (errno != ENOSYS && errno != EPERM))
        return static_cast<int>(opened);
    return ::open(path.c_str(), flags | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC); // an old or a confined kernel
}

int FileOps::openAt(int folder, const std::string& name, int flags, mode_t mode)
{
    return ::openat(folder, name.c_str(), flags, mode);
}

int FileOps::close(int descriptor)
{
    return ::close(descriptor);
}

ssize_t FileOps::read(int descriptor, char* to, std::size_t size)
{
    return ::read(descriptor, to, size);
}

ssize_t FileOps::write(int descriptor, const char* from, std::size_t size)
{
    return ::write(descriptor, from, size);
}

int FileOps::seekToStart(int descriptor)
{
    return ::lseek(descriptor, 0, SEEK_SET) == 0 ? 0 : -1;
}

int FileOps::stat(int descriptor, struct stat& result)
{
    return ::fstat(descriptor, &result);
}

int FileOps::statAt(int folder, const std::string& name, struct stat& result)
{
    return ::fstatat(folder, name.c_str(), &result, AT_SYMLINK_NOFOLLOW);
}

int FileOps::accessAt(int folder, const std::string& name, int mode)
{
    return ::faccessat(folder, name.c_str(), mode, AT_EACCESS);
}

int FileOps::lock(int descriptor, int operation)
{
    return ::flock(descriptor, operation);
}

int FileOps::lockByte(int descriptor, off_t at)
{
    struct flock range = {};
    range.l_type = F_WRLCK;
    range.l_whence = SEEK_SET;
    range.l_start = at;
    range.l_len = 1;
    return ::fcntl(descriptor, F_OFD_SETLK, &range);
}

int FileOps::changeOwner(int descriptor, uid_t user, gid_t group)
{
    return ::fchown(descriptor, user, group);
}

int FileOps::changeMode(int descriptor, mode_t mode)
{
    return ::fchmod(descriptor, mode);
}

int FileOps::truncate(int descriptor, off_t size)
{
    return ::ftruncate(descriptor, size);
}

int FileOps::sync(int descriptor)
{
    return ::fsync(descriptor);
}

int FileOps::renameAt(int folder, const std::string& from, const std::string& to)
{
    return ::renameat(folder, from.c_str(), folder, to.c_str());
}

int FileOps::renameNewAt(int folder, const std::string& from, const std::string& to)
{
    const int result = ::renameat2(folder, from.c_str(), folder, to.c_str(), RENAME_NOREPLACE);
    if (result == 0 || (errno != EINVAL && errno != ENOSYS))
        return result;
    // Some file systems cannot do it in one step; a second name cannot replace a file either.
    if (::linkat(folder, from.c_str(), folder, to.c_str(), 0) != 0)
        return -1;
    ::unlinkat(folder, from.c_str(), 0); // the new file stands, whatever becomes of its first name
    return 0;
}

int FileOps::exchangeAt(int folder, const std::string& one, const std::string& other)
{
    return ::renameat2(folder, one.c_str(), folder, other.c_str(), RENAME_EXCHANGE);
}

int FileOps::unlinkAt(int folder, const std::string& name)
{
    return ::unlinkat(folder, name.c_str(), 0);
}

int FileOps::makeFolder(const std::string& path, mode_t mode)
{
    return ::mkdir(path.c_str(), mode);
}

int FileOps::list(int folder, const std::string& prefix, std::vector<std::string>& names)
{
    const int own = ::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (own < 0)
        return -1;
    DIR* const listing = ::fdopendir(own);
    if (!listing) {
        ::close(own);
        return -1;
    }
    errno = 0;
    while (const dirent* const entry = ::readdir(listing)) {
        if (std::strncmp(entry->d_name, prefix.c_str(), prefix.size()) == 0)
            names.emplace_back(entry->d_name);
        errno = 0;
    }
    const int error = errno;
    ::closedir(listing);
    errno = error;
    return error == 0 ? 0 : -1;
}

int FileOps::resolve(const std::string& path, std::string& result)
{
    char* const resolved = ::realpath(path.c_str(), nullptr);
    if (!resolved)
        return -1;
    result = resolved;
    std::free(resolved);
    return 0;
}

int FileOps::readLink(const std::string& path, std::string& result)
{
    char target[PATH_MAX];
    const ssize_t length = ::readlink(path.c_str(), target, sizeof target);
    if (length < 0)
        return -1;
    result.assign(target, static_cast<std::size_t>(length));
    return 0;
}

int FileOps::listExtendedAttributes(int descriptor, std::vector<std::string>& names)
{
    const ssize_t size = ::flistxattr(descriptor, nullptr, 0);
    if (size <= 0)
        return static_cast<int>(size);
    std::string list(static_cast<std::size_t>(size), '\0');
    const ssize_t length = ::flistxattr(descriptor, list.data(), list.size());
    if (length < 0)
        return -1;
    list.resize(static_cast<std::size_t>(length));
    for (std::size_t at = 0; at < list.size(); at += names.back().size() + 1)
        names.emplace_back(list.c_str() + at);
    return 0;
}

int FileOps::copyExtendedAttribute(int from, int to, const std::string& name)
{
    std::string value;
    std::string present;
    if (readExtendedAttribute(from, name, value) != 0)
        return -1;
    if (readExtendedAttribute(to, name, present) == 0 && present == value)
        return 0;
    return ::fsetxattr(to, name.c_str(), value.data(), value.size(), 0);
}

int FileOps::removeExtendedAttribute(int descriptor, const std::string& name)
{
    return ::fremovexattr(descriptor, name.c_str());
}

} // namespace Files
