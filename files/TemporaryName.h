#pragma once

#include "files/FileDigest.h"
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
        Exchange,    // new content that is complete, or the content whose name it has taken
        Journal      // old content of a file that is written in place
    };

    static constexpr const char* prefix = ".vantry-";

    // A name for a Replacement or a Journal.
    static std::string make(Kind kind);
    // The name under which new content exchanges its place with the old one. Since it says both, whoever
    // finds the file later knows whether it holds one of them or what a third program wrote.
    static std::string makeExchange(const FileDigest& oldContent, const FileDigest& newContent);

    // Nothing for a name that is none of ours.
    static std::optional<Kind> kindOf(const std::string& name);

    // Whether the name of an Exchange says that this is its old, or its new, content.
    static bool saysOld(const std::string& name, const FileDigest& content);
    static bool saysNew(const std::string& name, const FileDigest& content);
};

} // namespace Files
