#pragma once

#include "files/FileDescriptor.h"
#include "files/TemporaryName.h"

#include <optional>
#include <string>

namespace Files {

// A second file in the folder of the one that it is to replace, locked to the end of its scope, which tells
// CrashRecovery that somebody is at work. Its name is gone again by then unless it was published. The steps
// are taken in their order here; each gives an empty text or why it failed. For one thread.
class FileReplacement
{
public:
    FileReplacement(SystemCalls& systemCalls, int openFolder) : calls(systemCalls), folder(openFolder) {}
    ~FileReplacement();
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    // Without a mode for others, until it has taken over that of the old file, or with that of a new file.
    std::string create(TemporaryName::Kind kind, mode_t mode);
    std::string fill(const std::string& bytes);
    // Owner and mode are taken over or it fails; extended attributes that cannot be are named in the warning.
    // After filling, since writing takes the set-id bits away.
    std::string adopt(int original, const struct stat& status, std::string& warning);
    // Puts it onto the disk and closes.
    std::string finish();
    // Takes a name that nobody has. When somebody has it by now, nothing is replaced and isTaken is set.
    std::string publish(const std::string& name, bool& isTaken);

    // Takes the name of the file that had the status and the expected content, and looks at what it held:
    // when another program has changed it in the last moment, everything is put back and isChanged is set.
    // What lies under the temporary name after a crash is known by that name.
    std::string exchange(const std::string& name, const struct stat& status, const std::string& expected,
                         const std::string& exchangeName, bool& isChanged, std::string& warning);

    // Whether the step that failed did so because this file may not be replaced here by this user, which says
    // nothing about writing it.
    bool isBarred() const { return barred; }

private:
    std::string adoptAttributes(int original);
    bool keepLocked();
    std::string judge(const std::string& name, const std::string& expected, bool& isChanged,
                      std::string& warning);
    std::string replaceUnseen(const std::string& name, const std::string& expected, bool& isChanged);
    std::string putBack(const std::string& name, bool& isChanged, std::string& warning);
    std::string failure(const std::string& what, bool barring);

    SystemCalls& calls; // not owned
    const int folder;
    std::string temporaryName; // empty while there is no such file
    std::optional<FileDescriptor> file;
    std::optional<FileDescriptor> keeper; // holds the lock that says that the save goes on
    struct stat identity = {};            // of the file
    bool barred = false;
};

} // namespace Files
