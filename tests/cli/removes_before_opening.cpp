// Loaded into the program ahead of the system's library: the file that is named goes in the last moment, just
// before it is opened in its folder.
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

extern "C" __attribute__((visibility("default"))) int openat(int folder, const char* name, int flags, ...)
{
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    const char* const vanishing = std::getenv("VANISHING_FILE");
    if (vanishing && folder != AT_FDCWD && std::strcmp(name, vanishing) == 0)
        ::unlinkat(folder, name, 0);
    return int(::syscall(SYS_openat, folder, name, flags, mode));
}
