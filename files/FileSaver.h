#pragma once

#include "files/FileDigest.h"
#include "files/FileLocation.h"
#include "files/SystemCalls.h"

#include <functional>
#include <string>

namespace Files {

// Paths are bytes as the system has them. Messages are for a person and name the file and, where there is
// one, the system's own reason.
struct ReadFileResult
{
    std::string error;    // empty on success; otherwise the path and the reason
    std::string reason;   // the same without the path
    bool missing = false; // the error is that there is no such file
    std::string warning;  // read, but the person should know: what a crash had left was put right; no path
    std::string bytes;
    FileDigest digest; // that of a missing file when there is none
    mode_t mode = 0;   // the permissions of the file; 0 when it is missing

    bool ok() const { return error.empty(); }
};

struct SaveFileResult
{
    std::string error;   // empty on success; otherwise the path and the reason, and the file is as it was
    std::string reason;  // the same without the path
    std::string warning; // saved, but something beside the content was not kept or assured; no path
    bool written = false;
    FileDigest digest; // of the file after a success

    bool ok() const { return error.empty(); }
};

// What is to be written over a file that another program has changed, or why nothing may be.
struct MergedContent
{
    std::string bytes;
    std::string refusal; // empty when there is none
};

// Given what the file holds now and its digest. Called again when another program writes meanwhile, with what
// that wrote; it must not save that file itself.
using MergeContent = std::function<MergedContent(const std::string& found, const FileDigest& digest)>;

// Reads files, and replaces them so that at every moment, a power cut included, the old or the new content is
// there whole: by a second file, which takes over owner, mode and extended attributes and then exchanges its
// place with the first. What another program wrote up to the exchange is put back and merged. A file that
// cannot be replaced without loss is written in place, and a warning says so. Links are followed, once:
// everything is done in the folder that was opened then. Only regular files up to the SizeLimit are read and
// saved. A success means that the content is on the disk. No lock that another user could hold is waited for.
// Any thread.
class VANTRY_FILES_EXPORT FileSaver
{
public:
    explicit FileSaver(SystemCalls& systemCalls = SystemCalls::system()) : calls(systemCalls) {}

    // Needs no right to write. What an interrupted save of this user has left is cleared up, and the warning
    // says so; nothing is written for other users.
    ReadFileResult read(const std::string& path) const;

    // The same where the path was found to lead a moment ago.
    ReadFileResult read(const std::string& path, const FileLocation& location) const;

    // When the file is no longer what the digest says, merge gives what to write instead; without one the
    // save is refused. A file that holds already what is to be written is not touched. A file that was
    // missing is created, with this mode less the process's mask; one that has gone since is a refusal.
    SaveFileResult save(const std::string& path, const std::string& bytes, const FileDigest& digest,
                        const MergeContent& merge = {}, mode_t newFileMode = 0666) const;

    // Writes over whatever the file holds, or creates it.
    SaveFileResult overwrite(const std::string& path, const std::string& bytes,
                             mode_t newFileMode = 0666) const;

private:
    SystemCalls& calls; // not owned
};

} // namespace Files
