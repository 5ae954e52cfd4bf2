#include "files/FileReplacement.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>

namespace Files {

namespace {

bool isAccessList(const std::string& attribute)
{
    return attribute.compare(0, 17, "system.posix_acl_") == 0;
}

bool contains(const std::vector<std::string>& names, const std::string& name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

} // namespace

FileReplacement::FileReplacement(FileOps& fileOps, int openFolder) : ops(fileOps), folder(openFolder)
{
}

FileReplacement::~FileReplacement()
{
    if (!temporaryName.empty())
        ops.unlinkAt(folder, temporaryName);
}

std::string FileReplacement::failure(const std::string& what, bool barring)
{
    barred = barring;
    return what + ": " + systemReason();
}

std::string FileReplacement::create(TemporaryName::Kind kind, mode_t mode)
{
    constexpr int attempts = 20;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const std::string name = TemporaryName::make(kind);
        const int opened =
            ops.openAt(folder, name, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode);
        if (opened >= 0) {
            file.emplace(ops, opened);
            temporaryName = name;
            return {};
        }
        if (errno != EEXIST && errno != EINTR)
            break;
    }
    return failure("a new file cannot be created in its folder",
                   errno == EACCES || errno == EPERM || errno == EROFS);
}

std::string FileReplacement::fill(const std::string& bytes)
{
    return file->writeAll(bytes) ? std::string() : failure("the new content cannot be written", false);
}

std::string FileReplacement::adopt(int original, const struct stat& status, std::string& warning)
{
    struct stat own = {};
    if (ops.stat(file->get(), own) != 0)
        return failure("the new file cannot be examined", false);
    const bool foreign = own.st_uid != status.st_uid || own.st_gid != status.st_gid;
    if (foreign && ops.changeOwner(file->get(), status.st_uid, status.st_gid) != 0)
        return failure("its owner and group cannot be kept", errno == EPERM);
    const std::string lost = adoptAttributes(original);
    if (!lost.empty())
        warning = lost;
    // Last, since changing the owner clears the set-id bits.
    if (ops.changeMode(file->get(), status.st_mode & 07777) != 0)
        return failure("its permissions cannot be kept", errno == EPERM);
    return {};
}

std::string FileReplacement::adoptAttributes(int original)
{
    std::vector<std::string> wanted;
    std::vector<std::string> present;
    if ((ops.listExtendedAttributes(original, wanted) != 0 ||
         ops.listExtendedAttributes(file->get(), present) != 0) &&
        errno != ENOTSUP)
        return "the extended attributes could not be read: " + systemReason();
    std::string lost;
    for (const std::string& name : wanted) {
        if (ops.copyExtendedAttribute(original, file->get(), name) != 0)
            lost = "the extended attribute " + name + " could not be kept: " + systemReason();
    }
    // The folder may give new files an access list that this one does not have.
    for (const std::string& name : present) {
        if (isAccessList(name) && !contains(wanted, name) &&
            ops.removeExtendedAttribute(file->get(), name) != 0)
            lost = "the folder's access list could not be kept off it: " + systemReason();
    }
    return lost;
}

std::string FileReplacement::finish()
{
    // After a failed sync the system may have dropped the content and call the next sync a success.
    if (ops.sync(file->get()) != 0)
        return failure("the new content cannot be brought onto the disk", false);
    return file->close() ? std::string() : failure("the new content was not written to its end", false);
}

std::string FileReplacement::publish(const std::string& name, bool isNew)
{
    const int result =
        isNew ? ops.renameNewAt(folder, temporaryName, name) : ops.renameAt(folder, temporaryName, name);
    // A file that something else is mounted on is busy; in a sticky folder only the owner may move a file.
    if (result != 0)
        return failure("the new file cannot take its place",
                       errno == EBUSY || errno == EXDEV || errno == EPERM || errno == EACCES);
    temporaryName.clear();
    return {};
}

} // namespace Files
