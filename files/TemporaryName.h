#pragma once

#include "files/FilesExport.h"

#include <optional>
#include <string>

namespace Files {

// The names of the files that a save has beside the one it saves: short and not made from the file's name,
// which may have the longest length already, and such that nobody else gives them by chance.
class VANTRY_FILES_EXPORT TemporaryName
{
public:
    enum class Kind {
        Replacement, // new content that has not taken its place yet
        Journal      // old content of a file that is written in place
    };

    static constexpr const char* prefix = ".vantry-";

    static std::string make(Kind kind);
    // Nothing for a name that is none of ours.
    static std::optional<Kind> kindOf(const std::string& name);
};

} // namespace Files
