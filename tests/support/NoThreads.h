#pragma once

#include <cstddef>
#include <pthread.h>

namespace TestSupport {

// While it lives, the system starts no thread: each would take a stack as large as all addresses.
class NoThreads
{
public:
    NoThreads()
    {
        pthread_getattr_default_np(&before);
        pthread_attr_t none;
        pthread_getattr_default_np(&none);
        pthread_attr_setstacksize(&none, std::size_t(1) << 47);
        pthread_setattr_default_np(&none);
        pthread_attr_destroy(&none);
    }

    ~NoThreads()
    {
        pthread_setattr_default_np(&before);
        pthread_attr_destroy(&before);
    }

    NoThreads(const NoThreads&) = delete;
    NoThreads& operator=(const NoThreads&) = delete;

private:
    pthread_attr_t before;
};

} // namespace TestSupport
