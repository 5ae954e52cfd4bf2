#pragma once

#include "files/FileLocation.h"
#include "files/FileSaver.h"
#include "files/LockedFolder.h"

#include <memory>
#include <optional>
#include <string>

namespace Files {

class FileReplacement;

// One save, step by step; every step gives an empty text or why the save ends here. For one thread.
class FileSave
{
public:
    // What is given is used until the end of run; written and warning are set in the result, and its stamp.
    FileSave(FileOps& fileOps, const FileLocation& fileLocation, const std::string& content,
             const MergeContent& mergeContent, SaveFileResult& saveResult);

    std::string run(const FileStamp& stamp);

private:
    std::string lock();
    std::string examine(const FileStamp& stamp);
    std::string takeIn(const FileStamp& stamp);
    std::string replace();
    std::string replaceBy(FileReplacement& replacement);
    std::string writeInPlace(const std::string& reason);
    void warn(const std::string& text);

    FileOps& ops; // not owned
    const FileLocation& location;
    const std::string* bytes; // not owned
    std::string merged;       // what bytes points to after a merge
    const MergeContent& merge;
    SaveFileResult& result;
    LockedFolder folder;
    std::unique_ptr<LockedFolder> state;    // none when there is no such folder
    std::optional<FileDescriptor> original; // none for a new file
    struct stat status = {};
    std::string found; // what the file holds
    bool unchanged = false;
};

} // namespace Files
