#include "files/FileSaver.h"

#include "files/FileSave.h"
#include "files/Leftovers.h"

#include <cerrno>
#include <fcntl.h>

namespace Files {

namespace {

// The folders stay locked, lest the file is written in place meanwhile. One that cannot be listed is not
// locked: who saves there would have to list it, too.
std::string readLocked(FileOps& ops, const FileLocation& location, ReadFileResult& result)
{
    using Access = LockedFolder::Access;
    std::string error;
    LockedFolder folder(ops, location.folder);
    if (!folder.isOpen() && errno != EACCES)
        return "its folder cannot be opened: " + systemReason();
    if (folder.isOpen())
        error =
            Leftovers(ops, folder, location, Leftovers::Place::Beside).settle(Access::Shared, result.warning);
    if (!error.empty())
        return error;
    bool isAbsent = false;
    const auto state = FileJournal::openStateFolder(ops, error, isAbsent);
    if (state)
        error =
            Leftovers(ops, *state, location, Leftovers::Place::State).settle(Access::Shared, result.warning);
    if (!error.empty() && !isAbsent)
        return error;
    FileDescriptor file(ops);
    struct stat status = {};
    error = file.openRegular(AT_FDCWD, location.path(), O_RDONLY, status);
    result.missing = !error.empty() && errno == ENOENT;
    if (error.empty() && !file.readAll(result.bytes))
        error = "it cannot be read: " + systemReason();
    return error;
}

} // namespace

ReadFileResult FileSaver::read(const std::string& path) const
{
    ReadFileResult result;
    const FileLocation location = FileLocation::find(ops, path);
    result.missing = location.error == ENOENT;
    result.error = location.error == 0 ? readLocked(ops, location, result) : systemReason(location.error);
    if (result.missing)
        result.error = systemReason(ENOENT);
    if (result.error.empty()) {
        result.stamp = FileStamp::of(result.bytes);
    } else {
        result.error = path + ": " + result.error;
        result.bytes.clear();
    }
    if (!result.warning.empty())
        result.warning = path + ": " + result.warning;
    return result;
}

SaveFileResult FileSaver::save(const std::string& path, const std::string& bytes, const FileStamp& stamp,
                               const MergeContent& merge) const
{
    SaveFileResult result;
    const FileLocation location = FileLocation::find(ops, path);
    const std::string error = location.error == 0 ? FileSave(ops, location, bytes, merge, result).run(stamp)
                                                  : systemReason(location.error);
    if (!error.empty()) {
        result.error = path + " is not saved: " + error;
        result.warning.clear();
        return result;
    }
    if (!result.warning.empty())
        result.warning = path + ": " + result.warning;
    return result;
}

} // namespace Files
