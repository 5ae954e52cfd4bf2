#pragma once

#include "files/FileJournal.h"
#include "files/FileLocation.h"
#include "files/FileReplacement.h"

#include <memory>
#include <optional>
#include <string>

namespace Files {

// Writes over a file that cannot be replaced: the last resort, since a crash leaves a mixture, which only the
// journal that was made durable before can undo. Another program that reads the file in that moment sees the
// mixture. For one save, in one thread.
class InPlaceWriter
{
public:
    // The folder is the file's own.
    InPlaceWriter(FileOps& fileOps, const FileDescriptor& fileFolder, const FileLocation& fileLocation);

    // Empty, or why it failed; the file is as it was then, or will be when it is read next. The status and
    // the content are those that the file has; when another program has changed it since, nothing is written
    // and isChanged is set.
    std::string write(const struct stat& status, const std::string& found, const std::string& bytes,
                      std::string& warning, bool& isChanged);

private:
    std::string keepJournal(const struct stat& status, FileJournal content);
    std::string keepIn(const FileDescriptor& place, const FileJournal& content, bool& isBarred);
    std::string undo(const struct stat& written, const std::string& found);
    void removeJournal();

    FileOps& ops; // not owned
    const FileDescriptor& folder;
    const FileLocation& location;
    std::unique_ptr<FileDescriptor> state;  // opened when the journal is to lie there
    std::optional<FileReplacement> journal; // locked while the file is being written
    int journalFolder = -1;                 // not owned
    std::string journalName;
};

} // namespace Files
