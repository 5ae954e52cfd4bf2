#pragma once

#include "files/FilesExport.h"

#include <string>

namespace Files {

// What a file held when it was last read or saved, to recognise a change from outside by: by its content,
// since times are coarse and can be set. It is quick and tells accidents apart, not forgeries: who
// can write the file needs none.
struct VANTRY_FILES_EXPORT FileDigest
{
    bool exists = false;
    std::string hash; // of the content; empty for a file that does not exist

    // Of a file that holds these bytes.
    static FileDigest of(const std::string& bytes);

    friend bool operator==(const FileDigest& a, const FileDigest& b)
    {
        return a.exists == b.exists && a.hash == b.hash;
    }
    friend bool operator!=(const FileDigest& a, const FileDigest& b) { return !(a == b); }
};

} // namespace Files
