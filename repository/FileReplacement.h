#pragma once

#include "repository/FileDescriptor.h"

#include <optional>
#include <string>

namespace Repository {

// A second file in the folder of the one that it is to replace. It is gone again at the end of its scope
// unless it was published. Every step gives an empty text or why it failed. For one thread.
class FileReplacement
{
public:
    FileReplacement(FileOps& fileOps, int openFolder);
    ~FileReplacement();
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    // Without a mode for others, until it has taken over that of the old file, or with that of a new file.
    std::string create(mode_t mode);
    // Owner and mode are taken over or it fails; extended attributes that cannot be are named in the warning.
    std::string adopt(int original, const struct stat& status, std::string& warning);
    // Puts the content onto the disk and closes.
    std::string fill(const std::string& bytes);
    // Takes the name. A file that has come up under the name of a new one is not replaced.
    std::string publish(const std::string& name, bool isNew);

private:
    FileOps& ops; // not owned
    const int folder;
    std::string temporaryName; // empty while there is no such file
    std::optional<FileDescriptor> file;
};

} // namespace Repository
