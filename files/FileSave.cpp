#include "files/FileSave.h"

#include "files/FileReplacement.h"
#include "files/InPlaceWriter.h"
#include "files/Leftovers.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace Files {

FileSave::FileSave(FileOps& fileOps, const FileLocation& fileLocation, const std::string& content,
                   const MergeContent& mergeContent, SaveFileResult& saveResult)
    : ops(fileOps), location(fileLocation), bytes(&content), merge(mergeContent), result(saveResult),
      folder(ops, location.folder)
{
}

std::string FileSave::run(const FileStamp& stamp)
{
    if (!folder.isOpen())
        return "its folder cannot be opened: " + systemReason();
    std::string error = lock();
    if (error.empty())
        error = examine(stamp);
    if (error.empty() && !unchanged)
        error = replace();
    if (error.empty())
        result.stamp = FileStamp::of(*bytes);
    return error;
}

std::string FileSave::lock()
{
    using Access = LockedFolder::Access;
    std::string error =
        Leftovers(ops, folder, location, Leftovers::Place::Beside).settle(Access::Exclusive, result.warning);
    if (!error.empty())
        return error;
    bool isAbsent = false;
    state = FileJournal::openStateFolder(ops, error, isAbsent);
    if (!state)
        return isAbsent ? std::string() : error;
    return Leftovers(ops, *state, location, Leftovers::Place::State).settle(Access::Shared, result.warning);
}

std::string FileSave::examine(const FileStamp& stamp)
{
    original.emplace(ops);
    const std::string error = original->openRegular(folder.get(), location.name, O_RDONLY, status);
    if (!error.empty() && errno == ENOENT) {
        original.reset();
        return stamp.exists ? "it is gone since it was read" : std::string();
    }
    if (!error.empty())
        return error;
    if (!original->readAll(found))
        return "it cannot be read: " + systemReason();
    unchanged = found == *bytes;
    if (unchanged)
        return {};
    const std::string refusal = takeIn(stamp);
    if (!refusal.empty() || unchanged)
        return refusal;
    return ops.accessAt(folder.get(), location.name, W_OK) == 0 ? std::string()
                                                                : "it is not writable: " + systemReason();
}

// Reconciles what is to be written with what the file holds.
std::string FileSave::takeIn(const FileStamp& stamp)
{
    const FileStamp now = FileStamp::of(found);
    if (now == stamp)
        return {};
    if (!merge)
        return stamp.exists ? "another program has changed it since it was read"
                            : "another program has created it meanwhile";
    MergedContent answer = merge(found, now);
    merged = std::move(answer.bytes);
    bytes = &merged;
    unchanged = found == merged;
    return answer.refusal;
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
    std::string error = replacement.create(TemporaryName::Kind::Replacement, isNew ? 0666 : 0600);
    if (error.empty())
        error = replacement.fill(*bytes);
    if (error.empty() && !isNew)
        error = replacement.adopt(original->get(), status, lost);
    if (error.empty())
        error = replacement.finish();
    if (error.empty() && !isNew)
        error = changeSince(ops, folder.get(), location.name, status);
    if (error.empty())
        error = replacement.publish(location.name, isNew);
    if (!error.empty())
        return error;
    result.written = true;
    warn(lost);
    if (ops.sync(folder.get()) != 0)
        warn("it is saved, but may be the old one after a power cut: " + systemReason());
    return {};
}

std::string FileSave::writeInPlace(const std::string& reason)
{
    std::string warning;
    std::string error = InPlaceWriter(ops, folder, location, state).write(status, found, *bytes, warning);
    if (!error.empty())
        return error + " (it would have been written in place, since " + reason + ")";
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
