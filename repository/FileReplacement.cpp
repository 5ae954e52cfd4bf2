#include "repository/FileReplacement.h"

#include "repository/FileSaver.h"

#include <cerrno>
#include <fcntl.h>
#include <random>

namespace Repository {

namespace {

// Short and not made from the file's name, which may have the longest length already.
std::string randomName()
{
    constexpr char letters[] = "abcdefghijklmnopqrstuvwxyz0123456789";
    std::random_device random;
    std::string name = FileSaver::temporaryPrefix;
    for (int i = 0; i < 8; ++i)
        name += letters[random() % (sizeof letters - 1)];
    return name;
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

std::string FileReplacement::create(mode_t mode)
{
    constexpr int attempts = 20;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const std::string name = randomName();
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
    return "a new file cannot be created in its folder: " + systemReason();
}

std::string FileReplacement::adopt(int original, const struct stat& status, std::string& warning)
{
    struct stat own = {};
    if (ops.stat(file->get(), own) != 0)
        return "the new file cannot be examined: " + systemReason();
    const bool foreign = own.st_uid != status.st_uid || own.st_gid != status.st_gid;
    // Changing the owner clears the set-id bits of the mode, so the mode comes after it.
    if (foreign && ops.changeOwner(file->get(), status.st_uid, status.st_gid) != 0)
        return "its owner and group cannot be kept: " + systemReason();
    if (ops.changeMode(file->get(), status.st_mode & 07777) != 0)
        return "its permissions cannot be kept: " + systemReason();
    std::vector<std::string> names;
    if (ops.listExtendedAttributes(original, names) != 0 && errno != ENOTSUP)
        warning = "the extended attributes could not be read: " + systemReason();
    for (const std::string& name : names) {
        if (ops.copyExtendedAttribute(original, file->get(), name) != 0)
            warning = "the extended attribute " + name + " could not be kept: " + systemReason();
    }
    return {};
}

std::string FileReplacement::fill(const std::string& bytes)
{
    if (!file->writeAll(bytes))
        return "the new content cannot be written: " + systemReason();
    // After a failed sync the system may have dropped the content and call the next sync a success.
    if (ops.sync(file->get()) != 0)
        return "the new content cannot be brought onto the disk: " + systemReason();
    if (!file->close())
        return "the new content was not written to its end: " + systemReason();
    return {};
}

std::string FileReplacement::publish(const std::string& name, bool isNew)
{
    const int result =
        isNew ? ops.renameNewAt(folder, temporaryName, name) : ops.renameAt(folder, temporaryName, name);
    if (result != 0)
        return "the new file cannot take its place: " + systemReason();
    temporaryName.clear();
    return {};
}

} // namespace Repository
