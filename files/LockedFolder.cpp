#include "files/LockedFolder.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/file.h>
#include <thread>

namespace Files {

LockedFolder::LockedFolder(FileOps& fileOps, const std::string& path)
    : ops(fileOps), folder(ops, ops.open(path, O_RDONLY | O_DIRECTORY | O_CLOEXEC))
{
}

std::string LockedFolder::lock(Access access)
{
    using namespace std::chrono;
    const int operation = access == Access::Shared ? LOCK_SH : LOCK_EX;
    const auto deadline = steady_clock::now() + seconds(5);
    auto pause = microseconds(100);
    while (ops.lock(folder.get(), operation | LOCK_NB) != 0) {
        if (errno == EINTR)
            continue;
        if (errno != EWOULDBLOCK || steady_clock::now() > deadline)
            return "its folder cannot be locked: " + systemReason();
        std::this_thread::sleep_for(pause);
        pause = std::min<microseconds>(pause * 2, milliseconds(10));
    }
    return {};
}

} // namespace Files
