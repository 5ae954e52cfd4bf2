#pragma once

#include "files/FileDescriptor.h"
#include "files/FileLocation.h"
#include "files/FileSaver.h"

#include <memory>
#include <optional>
#include <string>

namespace Files {

class FileReplacement;

// One save, step by step; every step gives an empty text or why the save ends here. What another program
// writes meanwhile is noticed at the latest when the contents are exchanged, and the save then begins again
// with that. For one thread.
class FileSave
{
public:
    // What is given is used until the end of run; written and warning are set in the result, and its stamp.
    FileSave(FileOps& fileOps, const FileLocation& fileLocation, const std::string& content,
             mode_t modeOfNewFile, const MergeContent& mergeContent, SaveFileResult& saveResult);

    std::string run(const FileStamp& stamp);

private:
    std::string attempt();
    std::string examine();
    std::string reconcile();
    std::string replace();
    std::string replaceBy(FileReplacement& replacement);
    std::string writeInPlace(const std::string& reason);
    void warn(const std::string& text);

    FileOps& ops; // not owned
    const FileLocation& location;
    const std::string* bytes; // not owned
    std::string merged;       // what bytes points to after a merge
    const mode_t newFileMode;
    const MergeContent& merge;
    SaveFileResult& result;
    FileDescriptor folder;
    FileStamp known;                        // what the bytes are based on
    std::optional<FileDescriptor> original; // none for a new file
    struct stat status = {};
    std::string found;       // what the file holds
    bool isUpToDate = false; // it holds the bytes
    bool isChanged = false;  // by another program, in the last moment
};

} // namespace Files
