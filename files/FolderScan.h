#pragma once

#include "files/FilesExport.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Files {

// Which files below a folder are wanted. A pattern of the shell with "*", "?" and "[...]" is about names, or
// with a "/" about paths below the folder, where "*" stands for any run of characters.
struct VANTRY_FILES_EXPORT FolderFilter
{
    static constexpr int mostLevels = 64;
    static constexpr std::uintmax_t anySize = UINTMAX_MAX;

    std::vector<std::string> include; // files that match one; all, where there is none
    std::vector<std::string> exclude; // but those that match one of these, as well as folders
    int deepest = mostLevels;         // levels below the folder
    std::uintmax_t largest = anySize; // bytes of a file

    bool takesFile(const std::string& path) const; // whatever its size is
    bool takesFolder(const std::string& path) const;
};

// What lies in a folder and those below it, in the order of the names. Links are not followed, so that
// nothing comes twice or from elsewhere. Standard library and POSIX only. Any thread.
struct VANTRY_FILES_EXPORT FolderScan
{
    struct Refusal
    {
        std::string folder;
        std::string reason;
    };

    static FolderScan of(const std::string& folder, const FolderFilter& filter = {});

    std::vector<std::string> files;   // regular ones
    std::vector<std::string> folders; // the given one first
    std::vector<Refusal> refusals;    // also of a folder more levels below than there may be at most
};

} // namespace Files
