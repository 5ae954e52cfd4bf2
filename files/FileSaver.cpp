#include "files/FileSaver.h"

#include "files/CrashRecovery.h"
#include "files/FileReplacement.h"
#include "files/InPlaceWriter.h"
#include "files/Reason.h"
#include "files/SaveLock.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <optional>
#include <unistd.h>

namespace Files {

namespace {

// One save, step by step; every step gives an empty text or why the save ends here. What another program
// writes meanwhile is noticed at the latest when the contents are exchanged, and the save then begins again
// with that.
class FileSave
{
public:
    // What is given is used until the end of run; written and warning are set in the result, and its digest.
    FileSave(SystemCalls& systemCalls, const FileLocation& fileLocation, const std::string& content,
             mode_t modeOfNewFile, const MergeContent& mergeContent, SaveFileResult& saveResult)
        : calls(systemCalls), location(fileLocation), bytes(&content), newFileMode(modeOfNewFile),
          merge(mergeContent), result(saveResult), folder(calls, calls.openFolder(location.folder, O_RDONLY))
    {
    }

    std::string run(const FileDigest& digest)
    {
        struct stat folderStatus = {};
        if (!folder.isOpen() || calls.stat(folder.get(), folderStatus) != 0)
            return Reason::tr("its folder cannot be opened: %1", {systemReason()});
        known = digest;
        const SaveLock lock(calls, folderStatus);
        std::string error =
            recoverFromCrash(calls, folder, location, RecoveryPurpose::Saving, result.warning);
        using Clock = std::chrono::steady_clock;
        const auto deadline = Clock::now() + std::chrono::seconds(10);
        while (error.empty() && Clock::now() < deadline) {
            error = attempt();
            if (error.empty() && !isChanged) {
                result.digest = digestOfBytes();
                return {};
            }
        }
        return error.empty() ? Reason::tr("other programs keep changing it") : error;
    }

private:
    std::string attempt()
    {
        isChanged = false;
        const std::string error = examine();
        return error.empty() && !isUpToDate ? replace() : error;
    }

    std::string examine()
    {
        isUpToDate = false;
        original.emplace(calls);
        std::string error = original->openRegular(folder.get(), location.name, O_RDONLY, status);
        if (!error.empty() && errno == ENOENT) {
            original.reset();
            return known.exists ? Reason::tr("it has been deleted since it was read") : std::string();
        }
        if (error.empty())
            error = original->readAll(found);
        if (!error.empty())
            return error;
        const FileDigest now = FileDigest::of(found);
        isUpToDate = now == digestOfBytes();
        if (isUpToDate)
            return {};
        error = reconcile(now);
        if (!error.empty() || isUpToDate)
            return error;
        return calls.accessAt(folder.get(), location.name, W_OK) == 0
                   ? std::string()
                   : Reason::tr("it is not writable: %1", {systemReason()});
    }

    // What is to be written with what the file holds.
    std::string reconcile(const FileDigest& now)
    {
        if (now == known)
            return {};
        if (!merge)
            return known.exists ? Reason::tr("another program has changed it since it was read")
                                : Reason::tr("another program has created it meanwhile");
        MergedContent answer = merge(found, now);
        if (!answer.refusal.empty())
            return answer.refusal;
        merged = std::move(answer.bytes);
        bytes = &merged;
        bytesDigest.reset();
        known = now;
        isUpToDate = now == digestOfBytes();
        return {};
    }

    std::string replace()
    {
        if (original && status.st_nlink > 1)
            return writeInPlace(
                Reason::tr("it has %1 names (hard links)", {std::to_string(status.st_nlink)}));
        std::string error;
        {
            FileReplacement replacement(calls, folder.get());
            error = replaceBy(replacement);
            if (error.empty() || !original || !replacement.isBarred())
                return error;
        }
        return writeInPlace(error);
    }

    std::string replaceBy(FileReplacement& replacement)
    {
        const bool isNew = !original.has_value();
        std::string lost;
        std::string error = replacement.create(TemporaryName::Kind::Replacement, isNew ? newFileMode : 0600);
        if (error.empty())
            error = replacement.fill(*bytes);
        if (error.empty() && !isNew)
            error = replacement.adopt(original->get(), status, lost);
        if (error.empty())
            error = replacement.finish();
        std::string doubt;
        if (error.empty())
            error = isNew ? replacement.publish(location.name, isChanged)
                          : replacement.exchange(location.name, status, found,
                                                 TemporaryName::makeExchange(known, digestOfBytes()),
                                                 isChanged, doubt);
        if (!error.empty() || isChanged)
            return error;
        result.written = true;
        warn(lost);
        warn(doubt);
        if (calls.sync(folder.get()) != 0)
            warn(Reason::tr("it is saved, but may be the old one after a power cut: %1", {systemReason()}));
        return {};
    }

    std::string writeInPlace(const std::string& reason)
    {
        std::string warning;
        const std::string error =
            Files::writeInPlace(calls, folder, location, status, found, *bytes, warning, isChanged);
        if (!error.empty())
            return Reason::tr("%1 (it would have been written in place, since %2)", {error, reason});
        if (isChanged)
            return {};
        result.written = true;
        warn(Reason::tr("it was written in place, since %1", {reason}));
        warn(warning);
        return {};
    }

    const FileDigest& digestOfBytes()
    {
        if (!bytesDigest)
            bytesDigest = FileDigest::of(*bytes);
        return *bytesDigest;
    }

    void warn(const std::string& text)
    {
        const bool joins = !text.empty() && !result.warning.empty();
        result.warning += (joins ? "; " : "") + text;
    }

    SystemCalls& calls; // not owned
    const FileLocation& location;
    const std::string* bytes; // not owned
    std::string merged;       // what bytes points to after a merge
    std::optional<FileDigest> bytesDigest;
    const mode_t newFileMode;
    const MergeContent& merge;
    SaveFileResult& result;
    FileDescriptor folder;
    FileDigest known;                       // what the bytes are based on
    std::optional<FileDescriptor> original; // none for a new file
    struct stat status = {};
    std::string found;       // what the file holds
    bool isUpToDate = false; // it holds the bytes
    bool isChanged = false;  // by another program, in the last moment
};

std::string readFrom(SystemCalls& calls, const FileLocation& location, ReadFileResult& result)
{
    int opened = calls.openFolder(location.folder, O_RDONLY);
    if (opened < 0 && errno == EACCES)
        opened = calls.openFolder(location.folder, O_PATH); // it may be passed through, but not listed
    const FileDescriptor folder(calls, opened);
    if (!folder.isOpen())
        return Reason::tr("its folder cannot be opened: %1", {systemReason()});
    std::string error = recoverFromCrash(calls, folder, location, RecoveryPurpose::Reading, result.warning);
    if (!error.empty())
        return error;
    FileDescriptor file(calls);
    struct stat status = {};
    error = file.openRegular(folder.get(), location.name, O_RDONLY, status);
    result.missing = !error.empty() && errno == ENOENT;
    result.mode = status.st_mode & 07777;
    return error.empty() ? file.readAll(result.bytes) : error;
}

} // namespace

ReadFileResult FileSaver::read(const std::string& path) const
{
    return read(path, FileLocation::find(calls, path));
}

ReadFileResult FileSaver::read(const std::string& path, const FileLocation& location) const
{
    ReadFileResult result;
    result.missing = location.error == ENOENT;
    result.reason = location.error == 0 ? readFrom(calls, location, result) : systemReason(location.error);
    if (result.missing)
        result.reason = systemReason(ENOENT);
    if (result.reason.empty()) {
        result.digest = FileDigest::of(result.bytes);
    } else {
        result.error = path + ": " + result.reason;
        result.bytes.clear();
    }
    return result;
}

SaveFileResult FileSaver::save(const std::string& path, const std::string& bytes, const FileDigest& digest,
                               const MergeContent& merge, mode_t newFileMode) const
{
    SaveFileResult result;
    const FileLocation location = FileLocation::find(calls, path);
    result.reason = location.error == 0
                        ? FileSave(calls, location, bytes, newFileMode, merge, result).run(digest)
                        : systemReason(location.error);
    if (!result.reason.empty()) {
        result.error = Reason::tr("%1 is not saved: %2", {path, result.reason});
        result.warning.clear();
    }
    return result;
}

SaveFileResult FileSaver::overwrite(const std::string& path, const std::string& bytes,
                                    mode_t newFileMode) const
{
    const MergeContent keepOurs = [&bytes](const std::string&, const FileDigest&) {
        return MergedContent{bytes, {}};
    };
    return save(path, bytes, {}, keepOurs, newFileMode);
}

} // namespace Files
