#include "files/InPlaceWriter.h"

#include "files/FileJournal.h"
#include "files/FileReplacement.h"
#include "files/Reason.h"
#include "files/StateFolder.h"

#include <fcntl.h>
#include <memory>
#include <optional>

namespace Files {

namespace {

// Writing takes the set-id bits away.
void keepMode(SystemCalls& calls, int folder, const std::string& name, const struct stat& status,
              std::string& warning)
{
    struct stat now = {};
    FileDescriptor file(calls);
    if (!file.openRegular(folder, name, O_RDONLY, now).empty() || now.st_mode == status.st_mode)
        return;
    if (calls.changeMode(file.get(), status.st_mode & 07777) != 0)
        warning = Reason::tr("its permissions could not be kept: %1", {systemReason()});
}

class InPlaceWriter
{
public:
    InPlaceWriter(SystemCalls& systemCalls, const FileDescriptor& fileFolder,
                  const FileLocation& fileLocation)
        : calls(systemCalls), folder(fileFolder), location(fileLocation)
    {
    }

    std::string write(const struct stat& status, const std::string& found, const std::string& bytes,
                      std::string& warning, bool& isChanged)
    {
        FileDescriptor file(calls);
        struct stat opened = {};
        std::string error = file.openRegular(folder.get(), location.name, O_RDWR, opened);
        if (error.empty())
            error = keepJournal(status, {location.name, status.st_ino, found});
        if (!error.empty())
            return error;
        // As late as can be: what another program does between this and the writing is lost.
        const std::optional<bool> isSame = file.holds(found);
        if (!isSame)
            error = Reason::tr("it cannot be read: %1", {systemReason()});
        isChanged = isSame && (!*isSame || !isSameFile(opened, status));
        if (!error.empty() || isChanged) {
            removeJournal();
            return error;
        }
        error = overwrite(calls, file, bytes);
        if (error.empty())
            keepMode(calls, folder.get(), location.name, status, warning);
        if (error.empty() && calls.unlinkAt(journalFolder, journalName) != 0)
            error = Reason::tr("the copy of its former content, %1, cannot be removed: %2",
                               {journalName, systemReason()});
        if (!error.empty())
            return error + undo(opened, found);
        if (calls.sync(journalFolder) != 0)
            warning = Reason::tr("it may be the old one after a power cut: %1", {systemReason()});
        return {};
    }

private:
    std::string keepJournal(const struct stat& status, FileJournal content)
    {
        bool isBarred = status.st_nlink > 1; // who reads it by its other name has to find the journal, too
        std::string error;
        if (!isBarred)
            error = keepIn(folder, content, isBarred);
        if (isBarred) {
            state = StateFolder::make(calls, error);
            content.file = location.path();
            if (state)
                error = keepIn(*state, content, isBarred);
        }
        return error.empty() ? error
                             : Reason::tr("no copy of its content can be kept meanwhile: %1", {error});
    }

    std::string keepIn(const FileDescriptor& place, const FileJournal& content, bool& isBarred)
    {
        journal.emplace(calls, place.get());
        std::string error = journal->create(TemporaryName::Kind::Replacement, 0600);
        if (error.empty())
            error = journal->fill(content.toBytes());
        if (error.empty())
            error = journal->finish();
        const std::string name = TemporaryName::make(TemporaryName::Kind::Journal);
        bool isTaken = false;
        if (error.empty())
            error = journal->publish(name, isTaken);
        if (isTaken)
            error = Reason::tr("%1 exists already", {name});
        isBarred = journal->isBarred();
        if (!error.empty())
            return error;
        journalFolder = place.get();
        journalName = name;
        if (calls.sync(place.get()) == 0)
            return {};
        error = Reason::tr("it cannot be brought onto the disk: %1", {systemReason()});
        removeJournal();
        return error;
    }

    // Empty when nothing is left of the attempt.
    std::string undo(const struct stat& written, const std::string& found)
    {
        FileDescriptor file(calls);
        struct stat status = {};
        std::string error = file.openRegular(folder.get(), location.name, O_WRONLY, status);
        const bool isReplaced = error.empty() && status.st_ino != written.st_ino;
        if (error.empty() && !isReplaced)
            error = overwrite(calls, file, found);
        if (!error.empty())
            return Reason::tr(
                "; it is damaged until it is read next, when its former content comes back from %1",
                {journalName});
        removeJournal();
        return {};
    }

    // When the file has what the journal has, which is therefore no longer needed, nor harmful.
    void removeJournal()
    {
        if (calls.unlinkAt(journalFolder, journalName) == 0)
            calls.sync(journalFolder);
    }

    SystemCalls& calls; // not owned
    const FileDescriptor& folder;
    const FileLocation& location;
    std::unique_ptr<FileDescriptor> state;  // opened when the journal is to lie there
    std::optional<FileReplacement> journal; // locked while the file is being written
    int journalFolder = -1;                 // not owned
    std::string journalName;
};

} // namespace

std::string writeInPlace(SystemCalls& calls, const FileDescriptor& folder, const FileLocation& location,
                         const struct stat& status, const std::string& found, const std::string& bytes,
                         std::string& warning, bool& isChanged)
{
    return InPlaceWriter(calls, folder, location).write(status, found, bytes, warning, isChanged);
}

} // namespace Files
