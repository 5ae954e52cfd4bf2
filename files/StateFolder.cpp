#include "files/StateFolder.h"

#include "files/Reason.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace Files {

namespace {

constexpr mode_t onlyMine = 0700;

std::string absolutePath(const char* variable)
{
    const char* const value = std::getenv(variable);
    return value && *value == '/' ? value : std::string();
}

// The person may have put a link in its place.
int openLinked(SystemCalls& calls, const std::string& path)
{
    std::string resolved;
    return path.empty() || calls.resolve(path, resolved) != 0 ? -1 : calls.openFolder(resolved, O_RDONLY);
}

// With all that leads to it, each made durable before anything relies on it.
bool makeFolders(SystemCalls& calls, const std::string& path)
{
    const std::string parent = path.substr(0, path.rfind('/'));
    if (calls.makeFolder(path, onlyMine) != 0) {
        if (errno != ENOENT || parent.empty())
            return errno == EEXIST;
        if (!makeFolders(calls, parent) || calls.makeFolder(path, onlyMine) != 0)
            return false;
    }
    const FileDescriptor above(calls, openLinked(calls, parent.empty() ? "/" : parent));
    return above.isOpen() && calls.sync(above.get()) == 0;
}

} // namespace

std::string StateFolder::path()
{
    const std::string state = absolutePath("XDG_STATE_HOME");
    if (!state.empty())
        return state + "/vantry";
    const std::string home = absolutePath("HOME");
    return home.empty() ? home : home + "/.local/state/vantry";
}

std::unique_ptr<FileDescriptor> StateFolder::open(SystemCalls& calls, std::string& error, bool& isAbsent)
{
    const auto refuse = [&error](const std::string& reason) {
        error = reason;
        return nullptr;
    };
    const std::string place = path();
    isAbsent = place.empty();
    if (isAbsent)
        return refuse(Reason::tr("neither XDG_STATE_HOME nor HOME names a place"));
    const int opened = openLinked(calls, place);
    int failure = opened < 0 ? errno : 0; // asking for memory may set it
    // The home that the environment names may be another user's.
    isAbsent = failure == ENOENT || failure == ENOTDIR || failure == EACCES;
    auto folder = std::make_unique<FileDescriptor>(calls, opened);
    struct stat status = {};
    if (folder->isOpen() && calls.stat(folder->get(), status) != 0)
        failure = errno;
    if (failure != 0)
        return refuse(Reason::tr("%1 cannot be opened: %2", {place, systemReason(failure)}));
    isAbsent = status.st_uid != ::geteuid();
    if (isAbsent)
        return refuse(Reason::tr("%1 belongs to another user", {place}));
    if ((status.st_mode & 07777) != onlyMine && calls.changeMode(folder->get(), onlyMine) != 0)
        return refuse(Reason::tr("%1 cannot be closed to other users: %2", {place, systemReason()}));
    return folder;
}

std::unique_ptr<FileDescriptor> StateFolder::make(SystemCalls& calls, std::string& error)
{
    const std::string place = path();
    if (!place.empty() && !makeFolders(calls, place)) {
        error = Reason::tr("%1 cannot be made: %2", {place, systemReason()});
        return nullptr;
    }
    bool isAbsent = false;
    return open(calls, error, isAbsent);
}

int StateFolder::openForLocks(SystemCalls& calls)
{
    const int runtime = openLinked(calls, absolutePath("XDG_RUNTIME_DIR"));
    return runtime >= 0 ? runtime : openLinked(calls, path());
}

} // namespace Files
