#pragma once

#include "files/FilesExport.h"

#include <string>

namespace Files {

// What a file held when it was last read or saved, to recognise a change from outside by: by its content,
// since times are coarse and can be set. The digest is quick and tells accidents apart, not forgeries: who
// can write the file needs none.
struct VANTRY_FILES_EXPORT FileStamp
{
    bool exists = false;
    std::string digest; // of the content; empty for a file that does not exist

    // Of a file that holds these bytes.
    static FileStamp of(const std::string& bytes);

    friend bool operator==(const FileStamp& a, const FileStamp& b)
    {
        return a.exists == b.exists && a.digest == b.digest;
    }
    friend bool operator!=(const FileStamp& a, const FileStamp& b) { return !(a == b); }
};

} // namespace Files
