#include "files/SystemCalls.h"

#include <cerrno>
#include <climits>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <dirent.h>
#include <linux/openat2.h>
#include <map>
#include <mutex>
#include <sys/syscall.h>
#include <tuple>

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

// Folders in which no name began with a prefix, so that one of many files is not read once for each of them.
class EmptyListings
{
public:
    bool contains(const struct stat& folder, const std::string& prefix)
    {
        const std::lock_guard lock(mutex);
        const auto known = changes.find(Key(folder.st_dev, folder.st_ino, prefix));
        return known != changes.end() && known->second == changeOf(folder);
    }

    // With what the folder was before it was read.
    void add(const struct stat& folder, const std::string& prefix)
    {
        // The clock of folders is coarse: one that has just changed may change again within the same tick.
        constexpr std::time_t tick = 2; // seconds
        constexpr std::size_t mostFolders = 1000;
        if (folder.st_ctim.tv_sec + tick > std::time(nullptr))
            return;
        const std::lock_guard lock(mutex);
        if (changes.size() >= mostFolders)
            changes.clear();
        changes[Key(folder.st_dev, folder.st_ino, prefix)] = changeOf(folder);
    }

private:
    using Key = std::tuple<dev_t, ino_t, std::string>;
    using Change = std::pair<std::time_t, long>;

    static Change changeOf(const struct stat& folder)
    {
        return {folder.st_ctim.tv_sec, folder.st_ctim.tv_nsec}; // which nobody can set back
    }

    std::mutex mutex;
    std::map<Key, Change> changes;
};

} // namespace

SystemCalls& SystemCalls::system()
{
    static SystemCalls calls;
    return calls;
}

int SystemCalls::openFolder(const std::string& path, int flags)
{
    struct open_how how = {};
    how.flags = static_cast<std::uint64_t>(flags) | O_DIRECTORY | O_CLOEXEC;
    how.resolve = RESOLVE_NO_SYMLINKS;
    const long opened = ::syscall(SYS_openat2, AT_FDCWD, path.c_str(), &how, sizeof how);
    if (opened >= 0 || (errno != ENOSYS && errno != EPERM))
        return static_cast<int>(opened);
    return ::open(path.c_str(), flags | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC); // an old or a confined kernel
}

int SystemCalls::lockByte(int descriptor, off_t at)
{
    struct flock range = {};
    range.l_type = F_WRLCK;
    range.l_whence = SEEK_SET;
    range.l_start = at;
    range.l_len = 1;
    return ::fcntl(descriptor, F_OFD_SETLK, &range);
}

int SystemCalls::renameNewAt(int folder, const std::string& from, const std::string& to)
{
    const int result = ::renameat2(folder, from.c_str(), folder, to.c_str(), RENAME_NOREPLACE);
    if (result == 0 || (errno != EINVAL && errno != ENOSYS))
        return result;
    // Some file systems cannot do it in one step; a second name cannot replace a file either.
    if (::linkat(folder, from.c_str(), folder, to.c_str(), 0) != 0)
        return -1;
    ::unlinkat(folder, from.c_str(), 0); // the new file is in place, whatever becomes of its first name
    return 0;
}

int SystemCalls::list(int folder, const std::string& prefix, std::vector<std::string>& names)
{
    static EmptyListings emptyListings;
    struct stat before = {};
    if (::fstat(folder, &before) == 0 && emptyListings.contains(before, prefix))
        return 0;
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
    if (error == 0 && names.empty())
        emptyListings.add(before, prefix);
    errno = error;
    return error == 0 ? 0 : -1;
}

int SystemCalls::resolve(const std::string& path, std::string& result)
{
    char* const resolved = ::realpath(path.c_str(), nullptr);
    if (!resolved)
        return -1;
    result = resolved;
    std::free(resolved);
    return 0;
}

int SystemCalls::readLink(const std::string& path, std::string& result)
{
    char target[PATH_MAX];
    const ssize_t length = ::readlink(path.c_str(), target, sizeof target);
    if (length < 0)
        return -1;
    result.assign(target, static_cast<std::size_t>(length));
    return 0;
}

int SystemCalls::listExtendedAttributes(int descriptor, std::vector<std::string>& names)
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

int SystemCalls::copyExtendedAttribute(int from, int to, const std::string& name)
{
    std::string value;
    std::string present;
    if (readExtendedAttribute(from, name, value) != 0)
        return -1;
    if (readExtendedAttribute(to, name, present) == 0 && present == value)
        return 0;
    return ::fsetxattr(to, name.c_str(), value.data(), value.size(), 0);
}

} // namespace Files
