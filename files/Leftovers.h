#pragma once

#include "files/FileJournal.h"
#include "files/FileLocation.h"
#include "files/LockedFolder.h"

#include <string>
#include <sys/stat.h>

namespace Files {

// What saves that were killed have left: new content that never took its place, which is removed, and
// journals of files that were written in place, which put the file right. Looked for whenever a file is read
// or saved. Nothing but regular files that have our names is touched, and only under the exclusive lock,
// which no process that is still saving leaves to us. For one thread.
class Leftovers
{
public:
    enum class Place { Beside, State };

    // Journals are looked for that belong to the file. The folder is the file's own or the state folder.
    Leftovers(FileOps& fileOps, LockedFolder& lockedFolder, const FileLocation& fileLocation,
              Place folderPlace);

    // Locks the folder, for this access at least. Empty, or why the file must not be read or saved now; that
    // it cannot be locked shared is only a warning.
    std::string settle(LockedFolder::Access access, std::string& warning);

private:
    std::string settleAll(const std::string& lockError, std::string& warning);
    std::string settleJournal(const std::string& name, const std::string& lockError, std::string& warning);
    std::string findOwner(const FileJournal& journal, bool& isOurs) const;
    std::string restore(const FileJournal& journal, std::string& warning);

    FileOps& ops; // not owned
    LockedFolder& folder;
    const FileLocation& location;
    const Place place;
};

} // namespace Files
