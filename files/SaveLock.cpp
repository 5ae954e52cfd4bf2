#include "files/SaveLock.h"

#include "files/StateFolder.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <thread>
#include <unistd.h>

namespace Files {

namespace {

// Folders that share a number merely wait for each other.
off_t placeOf(const struct stat& folder)
{
    const auto number =
        static_cast<std::uint64_t>(folder.st_ino) * 31 + static_cast<std::uint64_t>(folder.st_dev);
    return static_cast<off_t>(number & 0x3fffffff);
}

bool isOursAlone(SystemCalls& calls, const FileDescriptor& file)
{
    struct stat status = {};
    return file.isOpen() && calls.stat(file.get(), status) == 0 && status.st_uid == ::geteuid() &&
           (status.st_mode & 022) == 0;
}

} // namespace

void SaveLock::open(SystemCalls& calls, const FileDescriptor& place, const std::string& name)
{
    if (place.isOpen())
        file.emplace(calls, calls.openAt(place.get(), name, O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600));
}

SaveLock::SaveLock(SystemCalls& calls, const struct stat& folder)
{
    using namespace std::chrono;
    const FileDescriptor place(calls, StateFolder::openForLocks(calls));
    if (isOursAlone(calls, place)) {
        open(calls, place, "vantry-saves.lock");
    } else {
        // Others may keep this user from having a file of that name there, but cannot lock this user's.
        const FileDescriptor common(calls, calls.openFolder("/tmp", O_RDONLY));
        open(calls, common, ".vantry-saves-" + std::to_string(::geteuid()) + ".lock");
    }
    if (!file || !isOursAlone(calls, *file))
        return;
    const auto deadline = steady_clock::now() + seconds(2);
    auto pause = microseconds(100);
    while (calls.lockByte(file->get(), placeOf(folder)) != 0 &&
           (errno == EAGAIN || errno == EACCES || errno == EINTR) && steady_clock::now() < deadline) {
        std::this_thread::sleep_for(pause);
        pause = std::min<microseconds>(pause * 2, milliseconds(10));
    }
}

} // namespace Files
