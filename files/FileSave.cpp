#include "files/FileSave.h"

#include "files/CrashRecovery.h"
#include "files/FileReplacement.h"
#include "files/InPlaceWriter.h"
#include "files/SaveLock.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <unistd.h>

namespace Files {

FileSave::FileSave(FileOps& fileOps, const FileLocation& fileLocation, const std::string& content,
                   mode_t modeOfNewFile, const MergeContent& mergeContent, SaveFileResult& saveResult)
    : ops(fileOps), location(fileLocation), bytes(&content), newFileMode(modeOfNewFile), merge(mergeContent),
      result(saveResult), folder(ops, ops.openFolder(location.folder, O_RDONLY))
{
}

std::string FileSave::run(const FileStamp& stamp)
{
    struct stat folderStatus = {};
    if (!folder.isOpen() || ops.stat(folder.get(), folderStatus) != 0)
        return "its folder cannot be opened: " + systemReason();
    known = stamp;
    const SaveLock lock(ops, folderStatus);
    std::string error =
        CrashRecovery::recover(ops, folder, location, CrashRecovery::Purpose::Saving, result.warning);
    using Clock = std::chrono::steady_clock;
    const auto deadline = Clock::now() + std::chrono::seconds(10);
    while (error.empty() && Clock::now() < deadline) {
        error = attempt();
        if (error.empty() && !isChanged) {
            result.stamp = FileStamp::of(*bytes);
            return {};
        }
    }
    return error.empty() ? "other programs keep changing it" : error;
}

std::string FileSave::attempt()
{
    isChanged = false;
    const std::string error = examine();
    return error.empty() && !isUpToDate ? replace() : error;
}

std::string FileSave::examine()
{
    isUpToDate = false;
    original.emplace(ops);
    std::string error = original->openRegular(folder.get(), location.name, O_RDONLY, status);
    if (!error.empty() && errno == ENOENT) {
        original.reset();
        return known.exists ? "it has been deleted since it was read" : std::string();
    }
    if (error.empty())
        error = original->readAll(found);
    if (!error.empty())
        return error;
    isUpToDate = found == *bytes;
    if (isUpToDate)
        return {};
    error = reconcile();
    if (!error.empty() || isUpToDate)
        return error;
    return ops.accessAt(folder.get(), location.name, W_OK) == 0 ? std::string()
                                                                : "it is not writable: " + systemReason();
}

// What is to be written with what the file holds.
std::string FileSave::reconcile()
{
    const FileStamp now = FileStamp::of(found);
    if (now == known)
        return {};
    if (!merge)
        return known.exists ? "another program has changed it since it was read"
                            : "another program has created it meanwhile";
    MergedContent answer = merge(found, now);
    if (!answer.refusal.empty())
        return answer.refusal;
    merged = std::move(answer.bytes);
    bytes = &merged;
    known = now;
    isUpToDate = found == merged;
    return {};
}

std::string FileSave::replace()
{
    if (original && status.st_nlink > 1)
        return writeInPlace("it has " + std::to_string(status.st_nlink) + " names (hard links)");
    std::string error;
    {
        FileReplacement replacement(ops, folder.get());
        error = replaceBy(replacement);
        if (error.empty() || !original || !replacement.isBarred())
            return error;
    }
    return writeInPlace(error);
}

std::string FileSave::replaceBy(FileReplacement& replacement)
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
                      : replacement.exchange(location.name, status, found, FileStamp::of(*bytes), isChanged,
                                             doubt);
    if (!error.empty() || isChanged)
        return error;
    result.written = true;
    warn(lost);
    warn(doubt);
    if (ops.sync(folder.get()) != 0)
        warn("it is saved, but may be the old one after a power cut: " + systemReason());
    return {};
}

std::string FileSave::writeInPlace(const std::string& reason)
{
    std::string warning;
    const std::string error =
        InPlaceWriter(ops, folder, location).write(status, found, *bytes, warning, isChanged);
    if (!error.empty())
        return error + " (it would have been written in place, since " + reason + ")";
    if (isChanged)
        return {};
    result.written = true;
    warn("it was written in place, since " + reason);
    warn(warning);
    return {};
}

void FileSave::warn(const std::string& text)
{
    const bool joins = !text.empty() && !result.warning.empty();
    result.warning += (joins ? "; " : "") + text;
}

} // namespace Files
