#pragma once

#include "files/FilesExport.h"

#include <cstddef>
#include <cstdio>
#include <fcntl.h>
#include <string>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <vector>

namespace Files {

// The calls to the operating system by which files are read and saved, one method a call, so that tests can
// make each of them fail. Every method means what the call of its name means, errno included. Any thread.
class VANTRY_FILES_EXPORT SystemCalls
{
public:
    virtual ~SystemCalls() = default;

    // The operating system itself.
    static SystemCalls& system();

    // Opens a folder by a path of which no part may be a link, so that nobody leads it elsewhere meanwhile.
    virtual int openFolder(const std::string& path, int flags);
    virtual int openAt(int folder, const std::string& name, int flags, mode_t mode)
    {
        return ::openat(folder, name.c_str(), flags, mode);
    }
    virtual int close(int descriptor) { return ::close(descriptor); }
    virtual ssize_t read(int descriptor, char* to, std::size_t size) { return ::read(descriptor, to, size); }
    virtual ssize_t write(int descriptor, const char* from, std::size_t size)
    {
        return ::write(descriptor, from, size);
    }
    virtual int seekToStart(int descriptor) { return ::lseek(descriptor, 0, SEEK_SET) == 0 ? 0 : -1; }
    virtual int stat(int descriptor, struct stat& result) { return ::fstat(descriptor, &result); }
    // Of a link itself.
    virtual int statAt(int folder, const std::string& name, struct stat& result)
    {
        return ::fstatat(folder, name.c_str(), &result, AT_SYMLINK_NOFOLLOW);
    }
    // As the effective user.
    virtual int accessAt(int folder, const std::string& name, int mode)
    {
        return ::faccessat(folder, name.c_str(), mode, AT_EACCESS);
    }
    virtual int lock(int descriptor, int operation) { return ::flock(descriptor, operation); }
    virtual int lockByte(int descriptor, off_t at); // F_OFD_SETLK, exclusive
    virtual int changeOwner(int descriptor, uid_t user, gid_t group)
    {
        return ::fchown(descriptor, user, group);
    }
    virtual int changeMode(int descriptor, mode_t mode) { return ::fchmod(descriptor, mode); }
    virtual int truncate(int descriptor, off_t size) { return ::ftruncate(descriptor, size); }
    virtual int sync(int descriptor) { return ::fsync(descriptor); }
    virtual int renameAt(int folder, const std::string& from, const std::string& to)
    {
        return ::renameat(folder, from.c_str(), folder, to.c_str());
    }
    // Fails with EEXIST instead of replacing.
    virtual int renameNewAt(int folder, const std::string& from, const std::string& to);
    // Each takes the other's name in one step. EINVAL where the file system cannot do that.
    virtual int exchangeAt(int folder, const std::string& one, const std::string& other)
    {
        return ::renameat2(folder, one.c_str(), folder, other.c_str(), RENAME_EXCHANGE);
    }
    virtual int unlinkAt(int folder, const std::string& name) { return ::unlinkat(folder, name.c_str(), 0); }
    virtual int makeFolder(const std::string& path, mode_t mode) { return ::mkdir(path.c_str(), mode); }
    // The names in a folder that begin with the prefix.
    virtual int list(int folder, const std::string& prefix, std::vector<std::string>& names);

    // The absolute path without links; -1 when a part of it is missing or unreachable.
    virtual int resolve(const std::string& path, std::string& result);
    virtual int readLink(const std::string& path, std::string& result);

    virtual int listExtendedAttributes(int descriptor, std::vector<std::string>& names);
    // Writes nothing when it is there already with this value.
    virtual int copyExtendedAttribute(int from, int to, const std::string& name);
    virtual int removeExtendedAttribute(int descriptor, const std::string& name)
    {
        return ::fremovexattr(descriptor, name.c_str());
    }
};

inline bool isSameFile(const struct stat& a, const struct stat& b)
{
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

} // namespace Files
