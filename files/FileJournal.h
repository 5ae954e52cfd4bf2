#pragma once

#include "files/FileDescriptor.h"

#include <optional>
#include <string>
#include <sys/types.h>

namespace Files {

// The copy of a file's content that lies on the disk for as long as the file itself is written over in place,
// and from which it comes back when that was interrupted: the save is done when the journal is gone. It lies
// beside the file, or in the StateFolder when the folder takes no new files or the file has names in several
// ones. Who saves holds a lock on it, so that a journal that can be locked is that of a save that has ended.
struct VANTRY_FILES_EXPORT FileJournal
{
    std::string file;    // its name in the journal's folder; in the StateFolder its path
    ino_t inode = 0;     // a file that has been replaced since is not touched
    std::string content; // before

    std::string toBytes() const;
    // Nothing when the bytes are not a whole journal.
    static std::optional<FileJournal> fromBytes(const std::string& bytes);
};

// Writes over a file from its start, cuts it off after the bytes and brings it onto the disk. Empty, or why
// it failed, with anything between the old and the new content in the file.
std::string overwrite(SystemCalls& calls, FileDescriptor& file, const std::string& bytes);

} // namespace Files
