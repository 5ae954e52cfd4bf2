#pragma once

#include "files/FileJournal.h"
#include "files/FileLocation.h"

#include <string>
#include <sys/stat.h>

namespace Files {

// Clears up what saves have left that were killed: new content that never took its place, what another
// program wrote in the moment of an exchange, and journals of files that were written in place, which put the
// file right. Looked for whenever a file is read or saved. Nothing but regular files that have our names is
// touched, never what a save that goes on still holds a lock on, and who only reads writes for nobody but the
// user itself. For one thread.
class CrashRecovery
{
public:
    enum class Purpose { Reading, Saving };

    // Looks beside the file and in the state folder. Empty, or why the file must not be read or saved now.
    // The warning says what was put right, or could not be. The folder is the file's own.
    static std::string recover(FileOps& ops, const FileDescriptor& folder, const FileLocation& location,
                               Purpose purpose, std::string& warning);

private:
    enum class Place { Beside, State };

    CrashRecovery(FileOps& fileOps, const FileDescriptor& fileFolder, const FileLocation& fileLocation,
                  const FileDescriptor& searchedFolder, Place searchedPlace, Purpose recoveryPurpose);

    std::string searchPlace(std::string& warning);
    bool mayChange(const struct stat& status) const;
    void removeReplacement(const std::string& name);
    void recoverExchange(const std::string& name, std::string& warning);
    void undoExchange(const std::string& name, const struct stat& status, std::string& warning);
    std::string recoverJournal(const std::string& name, std::string& warning);
    std::string recoverJournal(const std::string& name, FileDescriptor& opened, const struct stat& status,
                               const FileJournal& journal, std::string& warning);
    std::string findTarget(const FileJournal& journal, bool& isOurs) const;
    std::string restore(const FileJournal& journal, std::string& warning);
    bool awaitEnd(FileDescriptor& opened) const;

    FileOps& ops; // not owned
    const FileDescriptor& folder;
    const FileLocation& location;
    const FileDescriptor& searched;
    const Place place;
    const Purpose purpose;
};

} // namespace Files
