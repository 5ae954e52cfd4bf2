#pragma once

#include "files/FilesExport.h"
#include "files/SystemCalls.h"

#include <string>

namespace Files {

// Where a file really is, all links resolved, or where it would be created: links may lead to a file that
// does not exist yet.
struct VANTRY_FILES_EXPORT FileLocation
{
    std::string folder; // absolute, without links
    std::string name;   // in the folder
    int error = 0;      // errno, when the folder cannot be reached

    std::string path() const { return folder == "/" ? folder + name : folder + '/' + name; }

    static FileLocation find(SystemCalls& calls, std::string path);
};

} // namespace Files
