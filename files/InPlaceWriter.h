#pragma once

#include "files/FileJournal.h"
#include "files/FileLocation.h"
#include "files/LockedFolder.h"

#include <memory>
#include <string>

namespace Files {

// Writes over a file that cannot be replaced: the last resort, since a crash leaves a mixture, which only the
// journal that was made durable before can undo. Another program that reads the file in that moment sees the
// mixture. For one save, in one thread, the file's folder being locked.
class InPlaceWriter
{
public:
    // The state folder is locked as well when the journal is to lie there; while it is null it is not there
    // yet, and is then made.
    InPlaceWriter(FileOps& fileOps, const LockedFolder& lockedFolder, const FileLocation& fileLocation,
                  std::unique_ptr<LockedFolder>& stateFolder);

    // Empty, or why it failed; the file is as it was then, or will be when it is read next. The status and
    // the content are those that the file has.
    std::string write(const struct stat& status, const std::string& found, const std::string& bytes,
                      std::string& warning);

private:
    std::string keepJournal(const struct stat& status, FileJournal journal);
    std::string keepIn(const LockedFolder& place, const FileJournal& journal, bool& isBarred);
    std::string openStateFolder();
    std::string undo(const std::string& found);
    void removeJournal();

    FileOps& ops; // not owned
    const LockedFolder& folder;
    const FileLocation& location;
    std::unique_ptr<LockedFolder>& state;
    int journalFolder = -1; // not owned
    std::string journalName;
};

} // namespace Files
