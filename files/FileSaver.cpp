#include "files/FileSaver.h"

#include "files/CrashRecovery.h"
#include "files/FileSave.h"

#include <cerrno>
#include <fcntl.h>

namespace Files {

namespace {

std::string readFrom(FileOps& ops, const FileLocation& location, ReadFileResult& result)
{
    int opened = ops.openFolder(location.folder, O_RDONLY);
    if (opened < 0 && errno == EACCES)
        opened = ops.openFolder(location.folder, O_PATH); // it may be passed through, but not listed
    const FileDescriptor folder(ops, opened);
    if (!folder.isOpen())
        return "its folder cannot be opened: " + systemReason();
    std::string error =
        CrashRecovery::recover(ops, folder, location, CrashRecovery::Purpose::Reading, result.warning);
    if (!error.empty())
        return error;
    FileDescriptor file(ops);
    struct stat status = {};
    error = file.openRegular(folder.get(), location.name, O_RDONLY, status);
    result.missing = !error.empty() && errno == ENOENT;
    result.mode = status.st_mode & 07777;
    return error.empty() ? file.readAll(result.bytes) : error;
}

} // namespace

ReadFileResult FileSaver::read(const std::string& path) const
{
    ReadFileResult result;
    const FileLocation location = FileLocation::find(ops, path);
    result.missing = location.error == ENOENT;
    result.reason = location.error == 0 ? readFrom(ops, location, result) : systemReason(location.error);
    if (result.missing)
        result.reason = systemReason(ENOENT);
    if (result.reason.empty()) {
        result.stamp = FileStamp::of(result.bytes);
    } else {
        result.error = path + ": " + result.reason;
        result.bytes.clear();
    }
    return result;
}

SaveFileResult FileSaver::save(const std::string& path, const std::string& bytes, const FileStamp& stamp,
                               const MergeContent& merge, mode_t newFileMode) const
{
    SaveFileResult result;
    const FileLocation location = FileLocation::find(ops, path);
    result.reason = location.error == 0
                        ? FileSave(ops, location, bytes, newFileMode, merge, result).run(stamp)
                        : systemReason(location.error);
    if (!result.reason.empty()) {
        result.error = path + " is not saved: " + result.reason;
        result.warning.clear();
        return result;
    }
    return result;
}

SaveFileResult FileSaver::overwrite(const std::string& path, const std::string& bytes,
                                    mode_t newFileMode) const
{
    const MergeContent keepOurs = [&bytes](const std::string&, const FileStamp&) {
        return MergedContent{bytes, {}};
    };
    return save(path, bytes, {}, keepOurs, newFileMode);
}

} // namespace Files
