#pragma once

#include "files/FileDescriptor.h"

#include <memory>
#include <string>

namespace Files {

// The folders of this user alone in which saves keep what cannot lie beside the file. Any thread.
class VANTRY_FILES_EXPORT StateFolder
{
public:
    // $XDG_STATE_HOME/vantry, by default ~/.local/state/vantry; empty when the environment names no place.
    static std::string path();

    // Opens it, and closes it to others. Null, with the reason, when there is none that belongs to this user;
    // isAbsent says that then nothing of this user can be there.
    static std::unique_ptr<FileDescriptor> open(SystemCalls& calls, std::string& error, bool& isAbsent);

    // Makes it where it is missing, for this user alone. Null, with the reason.
    static std::unique_ptr<FileDescriptor> make(SystemCalls& calls, std::string& error);

    // Opens the folder for locks: $XDG_RUNTIME_DIR, else the state folder if it is there. Negative when
    // neither is.
    static int openForLocks(SystemCalls& calls);
};

} // namespace Files
