#include "files/Leftovers.h"

#include "files/TemporaryName.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace Files {

Leftovers::Leftovers(FileOps& fileOps, LockedFolder& lockedFolder, const FileLocation& fileLocation,
                     Place folderPlace)
    : ops(fileOps), folder(lockedFolder), location(fileLocation), place(folderPlace)
{
}

std::string Leftovers::settle(LockedFolder::Access access, std::string& warning)
{
    std::string lockError = folder.lock(access);
    if (!lockError.empty() && access == LockedFolder::Access::Exclusive)
        return lockError;
    std::vector<std::string> names;
    if (ops.list(folder.get(), TemporaryName::prefix, names) != 0)
        return "its folder cannot be listed: " + systemReason();
    if (!names.empty() && lockError.empty())
        lockError = folder.lock(LockedFolder::Access::Exclusive);
    if (!lockError.empty())
        warning = lockError;
    return names.empty() ? std::string() : settleAll(lockError, warning);
}

std::string Leftovers::settleAll(const std::string& lockError, std::string& warning)
{
    std::vector<std::string> names; // anew: those before the lock may have been a save's
    if (ops.list(folder.get(), TemporaryName::prefix, names) != 0)
        return "its folder cannot be listed: " + systemReason();
    for (const std::string& name : names) {
        const auto kind = TemporaryName::kindOf(name);
        struct stat status = {};
        if (kind == TemporaryName::Kind::Journal) {
            std::string error = settleJournal(name, lockError, warning);
            if (!error.empty())
                return error;
        } else if (kind && lockError.empty() && ops.statAt(folder.get(), name, status) == 0 &&
                   S_ISREG(status.st_mode)) {
            ops.unlinkAt(folder.get(), name); // without the right to, it is left to those who have it
        }
    }
    return {};
}

std::string Leftovers::settleJournal(const std::string& name, const std::string& lockError,
                                     std::string& warning)
{
    FileDescriptor file(ops);
    struct stat status = {};
    struct stat saved = {};
    const bool isThere = ops.statAt(AT_FDCWD, location.path(), saved) == 0;
    std::string reason = file.openRegular(folder.get(), name, O_RDONLY, status);
    const bool isMine = status.st_uid == ::geteuid();
    if (!reason.empty() && errno == ENOENT)
        return {};
    if (!reason.empty() && (errno != EACCES || isMine) && errno != 0)
        return "an interrupted save cannot be undone by " + name + ": " + reason;
    // Whoever may not write the file must not get it written by whoever reads it.
    if (reason.empty() && !isMine && status.st_uid != 0 && !(isThere && status.st_uid == saved.st_uid))
        reason = "it is another user's";
    std::string bytes;
    if (reason.empty() && !file.readAll(bytes))
        return "an interrupted save cannot be undone by " + name + ": " + systemReason();
    const auto journal = FileJournal::fromBytes(bytes);
    if (!journal) {
        warning = "a save into its folder was interrupted, which cannot be undone by " + name + ": " +
                  (reason.empty() ? "it is damaged" : reason);
        return {};
    }
    bool isOurs = false;
    reason = findOwner(*journal, isOurs);
    if (!isOurs || !reason.empty())
        return reason;
    if (!lockError.empty())
        return "it is being written: " + lockError;
    reason = restore(*journal, warning);
    if (!reason.empty())
        return "an interrupted save cannot be undone by " + name + ": " + reason;
    if (ops.unlinkAt(folder.get(), name) != 0 || ops.sync(folder.get()) != 0)
        return "an interrupted save was undone, but " + name + " cannot be removed: " + systemReason();
    return {};
}

// Whether the journal is of our file, which may have had another name when it was saved.
std::string Leftovers::findOwner(const FileJournal& journal, bool& isOurs) const
{
    isOurs = journal.file == (place == Place::Beside ? location.name : location.path());
    if (isOurs || place == Place::Beside)
        return {};
    struct stat named = {};
    struct stat wanted = {};
    if (ops.statAt(AT_FDCWD, journal.file, named) == 0 &&
        ops.statAt(AT_FDCWD, location.path(), wanted) == 0) {
        isOurs = named.st_dev == wanted.st_dev && named.st_ino == wanted.st_ino;
        return {};
    }
    const bool isElsewhere = errno == ENOENT || errno == ENOTDIR || errno == EACCES;
    return isElsewhere ? std::string() : "it cannot be examined: " + systemReason();
}

std::string Leftovers::restore(const FileJournal& journal, std::string& warning)
{
    const std::string path = location.path();
    FileDescriptor file(ops);
    struct stat status = {};
    std::string error = file.openRegular(AT_FDCWD, path, O_RDONLY, status);
    const bool isGone = !error.empty() && (errno == ENOENT || errno == 0);
    if (isGone || (error.empty() && status.st_ino != journal.inode))
        return {};
    std::string found;
    if (error.empty() && !file.readAll(found))
        error = "it cannot be read: " + systemReason();
    if (!error.empty() || found == journal.content)
        return error;
    FileDescriptor writer(ops);
    error = writer.openRegular(AT_FDCWD, path, O_WRONLY, status);
    if (error.empty())
        error = overwrite(ops, writer, journal.content);
    if (error.empty())
        warning = "a save of it was interrupted; it holds again what it held before";
    return error;
}

} // namespace Files
