#include "files/FileReplacement.h"

#include "files/Reason.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <utility>

namespace Files {

namespace {

bool isAccessList(const std::string& attribute)
{
    return attribute.compare(0, 17, "system.posix_acl_") == 0;
}

// A file that something else is mounted on is busy; in a sticky folder only the owner may move a file.
bool isBarring(int error)
{
    return error == EBUSY || error == EXDEV || error == EPERM || error == EACCES;
}

bool isUntouched(const struct stat& before, const struct stat& now)
{
    return isSameFile(now, before) && now.st_size == before.st_size &&
           now.st_mtim.tv_sec == before.st_mtim.tv_sec && now.st_mtim.tv_nsec == before.st_mtim.tv_nsec;
}

} // namespace

FileReplacement::~FileReplacement()
{
    if (!temporaryName.empty())
        calls.unlinkAt(folder, temporaryName);
}

std::string FileReplacement::failure(const std::string& what, bool barring)
{
    barred = barring;
    return what + (": " + systemReason());
}

std::string FileReplacement::create(TemporaryName::Kind kind, mode_t mode)
{
    constexpr int attempts = 20;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const std::string name = TemporaryName::make(kind);
        const int opened =
            calls.openAt(folder, name, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode);
        if (opened >= 0) {
            file.emplace(calls, opened);
            temporaryName = name;
            if (keepLocked())
                return {};
            continue;
        }
        if (errno != EEXIST && errno != EINTR)
            break;
    }
    return failure(Reason::tr("a new file cannot be created in its folder"),
                   errno == EACCES || errno == EPERM || errno == EROFS);
}

// False when somebody who cleared up after a crash took it for a leftover before it was locked.
bool FileReplacement::keepLocked()
{
    keeper.emplace(calls, calls.openAt(folder, temporaryName, O_RDONLY | O_NOFOLLOW | O_CLOEXEC, 0));
    const bool isLocked = !keeper->isOpen() || keeper->tryLock() || errno != EWOULDBLOCK;
    const bool isKept = calls.stat(file->get(), identity) != 0 || identity.st_nlink > 0;
    if (isLocked && isKept)
        return true;
    calls.unlinkAt(folder, temporaryName);
    temporaryName.clear();
    return false;
}

std::string FileReplacement::fill(const std::string& bytes)
{
    return file->writeAll(bytes) ? std::string()
                                 : failure(Reason::tr("the new content cannot be written"), false);
}

std::string FileReplacement::adopt(int original, const struct stat& status, std::string& warning)
{
    struct stat own = {};
    if (calls.stat(file->get(), own) != 0)
        return failure(Reason::tr("the new file cannot be examined"), false);
    const bool foreign = own.st_uid != status.st_uid || own.st_gid != status.st_gid;
    if (foreign && calls.changeOwner(file->get(), status.st_uid, status.st_gid) != 0)
        return failure(Reason::tr("its owner and group cannot be kept"), errno == EPERM);
    const std::string lost = adoptAttributes(original);
    if (!lost.empty())
        warning = lost;
    // Last, since changing the owner clears the set-id bits.
    if (calls.changeMode(file->get(), status.st_mode & 07777) != 0)
        return failure(Reason::tr("its permissions cannot be kept"), errno == EPERM);
    return {};
}

std::string FileReplacement::adoptAttributes(int original)
{
    std::vector<std::string> wanted;
    std::vector<std::string> present;
    if ((calls.listExtendedAttributes(original, wanted) != 0 ||
         calls.listExtendedAttributes(file->get(), present) != 0) &&
        errno != ENOTSUP)
        return Reason::tr("the extended attributes could not be read: %1", {systemReason()});
    std::string lost;
    for (const std::string& name : wanted) {
        if (calls.copyExtendedAttribute(original, file->get(), name) != 0)
            lost = Reason::tr("the extended attribute %1 could not be kept: %2", {name, systemReason()});
    }
    // The folder may give new files an access list that this one does not have.
    for (const std::string& name : present) {
        if (isAccessList(name) && std::find(wanted.begin(), wanted.end(), name) == wanted.end() &&
            calls.removeExtendedAttribute(file->get(), name) != 0)
            lost = Reason::tr("the folder's access list could not be kept off it: %1", {systemReason()});
    }
    return lost;
}

std::string FileReplacement::finish()
{
    // After a failed sync the system may have dropped the content and call the next sync a success.
    if (calls.sync(file->get()) != 0)
        return failure(Reason::tr("the new content cannot be brought onto the disk"), false);
    return file->close() ? std::string()
                         : failure(Reason::tr("the new content was not written to its end"), false);
}

std::string FileReplacement::publish(const std::string& name, bool& isTaken)
{
    const int result = calls.renameNewAt(folder, temporaryName, name);
    isTaken = result != 0 && errno == EEXIST;
    if (result != 0 && !isTaken)
        return failure(Reason::tr("the new file cannot take its place"), isBarring(errno));
    if (!isTaken)
        temporaryName.clear();
    return {};
}

std::string FileReplacement::exchange(const std::string& name, const struct stat& status,
                                      const std::string& expected, const std::string& exchangeName,
                                      bool& isChanged, std::string& warning)
{
    // Most changes are seen here, before anybody sees this file under the name.
    struct stat now = {};
    isChanged = calls.statAt(folder, name, now) != 0 ? errno == ENOENT : !isUntouched(status, now);
    if (isChanged)
        return {};
    if (calls.renameAt(folder, temporaryName, exchangeName) != 0)
        return failure(Reason::tr("the new file cannot be renamed"), false);
    temporaryName = exchangeName;
    if (calls.exchangeAt(folder, temporaryName, name) == 0)
        return judge(name, expected, isChanged, warning);
    isChanged = errno == ENOENT; // the other file is gone
    if (isChanged)
        return {};
    return errno == EINVAL || errno == ENOSYS
               ? replaceUnseen(name, expected, isChanged)
               : failure(Reason::tr("the new file cannot take its place"), isBarring(errno));
}

// What came back should be what was there when the save began.
std::string FileReplacement::judge(const std::string& name, const std::string& expected, bool& isChanged,
                                   std::string& warning)
{
    FileDescriptor former(calls);
    struct stat status = {};
    const std::string error = former.openRegular(folder, temporaryName, O_RDONLY, status);
    const bool isOther = !error.empty() && (errno == ENOENT || errno == EACCES || errno == 0);
    const std::optional<bool> isSame = error.empty() ? former.holds(expected) : std::nullopt;
    isChanged = isOther || (isSame && !*isSame);
    if (isChanged)
        return putBack(name, isChanged, warning);
    if (isSame)
        calls.unlinkAt(folder, temporaryName); // what cannot be removed is recognised as such later
    else
        warning = Reason::tr("whether another program has written it meanwhile cannot be seen: %1; what it "
                             "held is in %2 until it is read next",
                             {systemReason(), temporaryName});
    temporaryName.clear();
    return {};
}

// Where the file system knows no exchange, what another program does between the look and the renaming is
// lost.
std::string FileReplacement::replaceUnseen(const std::string& name, const std::string& expected,
                                           bool& isChanged)
{
    FileDescriptor present(calls);
    struct stat status = {};
    const std::string error = present.openRegular(folder, name, O_RDONLY, status);
    const std::optional<bool> isSame = error.empty() ? present.holds(expected) : std::optional(false);
    if (!isSame)
        return failure(Reason::tr("it cannot be read"), false);
    isChanged = !*isSame;
    if (isChanged)
        return {};
    if (calls.renameAt(folder, temporaryName, name) != 0)
        return failure(Reason::tr("the new file cannot take its place"), isBarring(errno));
    temporaryName.clear();
    return {};
}

// Until this file has its own name again: another save may be putting something back, too.
std::string FileReplacement::putBack(const std::string& name, bool& isChanged, std::string& warning)
{
    constexpr int attempts = 100;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        // Whoever has removed the file since has removed this one.
        if (calls.exchangeAt(folder, temporaryName, name) != 0 &&
            (errno != ENOENT || calls.renameNewAt(folder, temporaryName, name) != 0) && errno != ENOENT) {
            isChanged = attempt > 0;
            warning = Reason::tr("what another program wrote meanwhile cannot be put back: %1; it is in %2",
                                 {systemReason(), temporaryName});
            break;
        }
        struct stat status = {};
        const int result = calls.statAt(folder, temporaryName, status);
        if (result != 0) // it has gone with what it was, or CrashRecovery finds out what it is
            temporaryName.clear();
        if (result != 0 || isSameFile(status, identity))
            return {};
    }
    const std::string kept = std::exchange(temporaryName, {});
    return isChanged ? Reason::tr("other programs write it at the same time; what one of them wrote is in %1 "
                                  "beside it: look at it and remove it",
                                  {kept})
                     : std::string();
}

} // namespace Files
