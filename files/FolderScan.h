#pragma once

#include "files/FilesExport.h"

#include <string>
#include <vector>

namespace Files {

// What lies in a folder and those below it, in the order of the names. Links are not followed, so that
// nothing comes twice or from elsewhere. Standard library only. Any thread.
struct VANTRY_FILES_EXPORT FolderScan
{
    struct Refusal
    {
        std::string folder;
        std::string reason;
    };

    // Folders more than so many levels below the given one are refused.
    static constexpr int deepest = 64;

    static FolderScan of(const std::string& folder);

    std::vector<std::string> files;   // regular ones
    std::vector<std::string> folders; // the given one first
    std::vector<Refusal> refusals;
};

} // namespace Files
