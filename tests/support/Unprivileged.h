#pragma once

#include <unistd.h>

namespace TestSupport {

// Takes the administrator's rights from the process for as long as this lives, since permissions of files do
// not stop him. Does nothing for other users.
class Unprivileged
{
public:
    Unprivileged()
    {
        if (geteuid() == 0)
            isDropped = setresgid(nobody, nobody, 0) == 0 && setresuid(nobody, nobody, 0) == 0;
    }

    ~Unprivileged()
    {
        if (isDropped)
            isDropped = setresuid(0, 0, 0) != 0 || setresgid(0, 0, 0) != 0;
    }

    Unprivileged(const Unprivileged&) = delete;
    Unprivileged& operator=(const Unprivileged&) = delete;

private:
    static constexpr unsigned nobody = 65534;
    bool isDropped = false;
};

} // namespace TestSupport
