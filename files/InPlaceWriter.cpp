#include "files/InPlaceWriter.h"

#include "files/FileReplacement.h"

#include <cerrno>
#include <fcntl.h>

namespace Files {

namespace {

// With all that leads to it, each made durable before anything relies on it.
bool makeFolders(FileOps& ops, const std::string& path)
{
    constexpr mode_t onlyMine = 0700;
    const std::string parent = path.substr(0, path.rfind('/'));
    if (ops.makeFolder(path, onlyMine) != 0) {
        if (errno != ENOENT || parent.empty())
            return errno == EEXIST;
        if (!makeFolders(ops, parent) || ops.makeFolder(path, onlyMine) != 0)
            return false;
    }
    const LockedFolder above(ops, parent.empty() ? "/" : parent);
    return above.isOpen() && ops.sync(above.get()) == 0;
}

// Writing takes the set-id bits away.
void keepMode(FileOps& ops, int folder, const std::string& name, const struct stat& status,
              std::string& warning)
{
    struct stat now = {};
    FileDescriptor file(ops);
    if (!file.openRegular(folder, name, O_RDONLY, now).empty() || now.st_mode == status.st_mode)
        return;
    if (ops.changeMode(file.get(), status.st_mode & 07777) != 0)
        warning = "its permissions could not be kept: " + systemReason();
}

} // namespace

InPlaceWriter::InPlaceWriter(FileOps& fileOps, const LockedFolder& lockedFolder,
                             const FileLocation& fileLocation, std::unique_ptr<LockedFolder>& stateFolder)
    : ops(fileOps), folder(lockedFolder), location(fileLocation), state(stateFolder)
{
}

std::string InPlaceWriter::write(const struct stat& status, const std::string& found,
                                 const std::string& bytes, std::string& warning)
{
    FileDescriptor file(ops);
    struct stat opened = {};
    std::string error = file.openRegular(folder.get(), location.name, O_WRONLY, opened);
    if (error.empty())
        error = keepJournal(status, {location.name, status.st_ino, found});
    if (!error.empty())
        return error;
    // As late as can be: what another program does between this and the writing is lost.
    error = changeSince(ops, folder.get(), location.name, status);
    if (!error.empty()) {
        removeJournal();
        return error;
    }
    error = overwrite(ops, file, bytes);
    if (error.empty())
        keepMode(ops, folder.get(), location.name, status, warning);
    if (error.empty() && ops.unlinkAt(journalFolder, journalName) != 0)
        error = "the copy of its former content, " + journalName + ", cannot be removed: " + systemReason();
    if (!error.empty())
        return error + undo(found);
    if (ops.sync(journalFolder) != 0)
        warning = "it may be the old one after a power cut: " + systemReason();
    return {};
}

std::string InPlaceWriter::keepJournal(const struct stat& status, FileJournal journal)
{
    bool isBarred = status.st_nlink > 1; // who reads it by its other name has to find the journal, too
    std::string error;
    if (!isBarred)
        error = keepIn(folder, journal, isBarred);
    if (isBarred) {
        error = openStateFolder();
        journal.file = location.path();
        if (error.empty())
            error = keepIn(*state, journal, isBarred);
    }
    return error.empty() ? error : "no copy of its content can be kept meanwhile: " + error;
}

std::string InPlaceWriter::keepIn(const LockedFolder& place, const FileJournal& journal, bool& isBarred)
{
    FileReplacement copy(ops, place.get());
    std::string error = copy.create(TemporaryName::Kind::Replacement, 0600);
    if (error.empty())
        error = copy.fill(journal.toBytes());
    if (error.empty())
        error = copy.finish();
    const std::string name = TemporaryName::make(TemporaryName::Kind::Journal);
    if (error.empty())
        error = copy.publish(name, true);
    isBarred = copy.isBarred();
    if (!error.empty())
        return error;
    journalFolder = place.get();
    journalName = name;
    if (ops.sync(place.get()) == 0)
        return {};
    error = "it cannot be brought onto the disk: " + systemReason();
    removeJournal();
    return error;
}

std::string InPlaceWriter::openStateFolder()
{
    const std::string path = FileJournal::stateFolder();
    std::string error;
    bool isAbsent = false;
    if (!state && !path.empty() && !makeFolders(ops, path))
        return path + " cannot be made: " + systemReason();
    if (!state)
        state = FileJournal::openStateFolder(ops, error, isAbsent);
    if (!state)
        return error;
    return state->lock(LockedFolder::Access::Exclusive);
}

// Empty when nothing is left of the attempt.
std::string InPlaceWriter::undo(const std::string& found)
{
    FileDescriptor file(ops);
    struct stat status = {};
    std::string error = file.openRegular(folder.get(), location.name, O_WRONLY, status);
    if (error.empty())
        error = overwrite(ops, file, found);
    if (!error.empty())
        return "; it is damaged until it is read next, when its former content comes back from " +
               journalName;
    removeJournal();
    return {};
}

// When the file has what the journal has, which is therefore no longer needed, nor harmful.
void InPlaceWriter::removeJournal()
{
    if (ops.unlinkAt(journalFolder, journalName) == 0)
        ops.sync(journalFolder);
}

} // namespace Files
