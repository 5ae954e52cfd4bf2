#pragma once

#include "files/FilesExport.h"

#include <cstddef>
#include <string>
#include <sys/stat.h>
#include <sys/types.h>
#include <vector>

namespace Files {

// The calls to the operating system by which files are read and saved, one method a call, so that tests can
// make each of them fail. Every method means what the call of its name means, errno included. Any thread.
class VANTRY_FILES_EXPORT FileOps
{
public:
    virtual ~FileOps() = default;

    // The operating system itself.
    static FileOps& system();

    // Opens a folder by a path of which no part may be a link, so that nobody leads it elsewhere meanwhile.
    virtual int openFolder(const std::string& path, int flags);
    virtual int openAt(int folder, const std::string& name, int flags, mode_t mode);
    virtual int close(int descriptor);
    virtual ssize_t read(int descriptor, char* to, std::size_t size);
    virtual ssize_t write(int descriptor, const char* from, std::size_t size);
    virtual int seekToStart(int descriptor);
    virtual int stat(int descriptor, struct stat& result);
    virtual int statAt(int folder, const std::string& name, struct stat& result); // of a link itself
    virtual int accessAt(int folder, const std::string& name, int mode);          // as the effective user
    virtual int lock(int descriptor, int operation);                              // flock
    virtual int lockByte(int descriptor, off_t at);                               // F_OFD_SETLK, exclusive
    virtual int changeOwner(int descriptor, uid_t user, gid_t group);
    virtual int changeMode(int descriptor, mode_t mode);
    virtual int truncate(int descriptor, off_t size);
    virtual int sync(int descriptor);
    virtual int renameAt(int folder, const std::string& from, const std::string& to);
    // Fails with EEXIST instead of replacing.
    virtual int renameNewAt(int folder, const std::string& from, const std::string& to);
    // Each takes the other's name in one step. EINVAL where the file system cannot do that.
    virtual int exchangeAt(int folder, const std::string& one, const std::string& other);
    virtual int unlinkAt(int folder, const std::string& name);
    virtual int makeFolder(const std::string& path, mode_t mode);
    // The names in a folder that begin with the prefix.
    virtual int list(int folder, const std::string& prefix, std::vector<std::string>& names);

    // The absolute path without links; -1 when a part of it is missing or unreachable.
    virtual int resolve(const std::string& path, std::string& result);
    virtual int readLink(const std::string& path, std::string& result);

    virtual int listExtendedAttributes(int descriptor, std::vector<std::string>& names);
    // Writes nothing when it is there already with this value.
    virtual int copyExtendedAttribute(int from, int to, const std::string& name);
    virtual int removeExtendedAttribute(int descriptor, const std::string& name);
};

inline bool isSameFile(const struct stat& a, const struct stat& b)
{
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

} // namespace Files
