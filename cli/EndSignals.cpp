#include "cli/EndSignals.h"

#include "cli/Command.h"

#include <atomic>
#include <csignal>
#include <semaphore.h>
#include <unistd.h>

namespace CommandLine {

namespace {

// A handler may do next to nothing.
sem_t arrived;
std::atomic<bool> areKept{false};
static_assert(std::atomic<bool>::is_always_lock_free);

extern "C" void takeEndSignal(int)
{
    if (!areKept)
        ::_exit(int(ExitCode::Done));
    ::sem_post(&arrived);
}

} // namespace

void EndSignals::begin()
{
    ::sem_init(&arrived, 0, 0);
    struct sigaction action = {};
    action.sa_handler = takeEndSignal;
    action.sa_flags = SA_RESTART | int(SA_RESETHAND);
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction before = {};
        if (::sigaction(number, nullptr, &before) == 0 && before.sa_handler != SIG_IGN)
            ::sigaction(number, &action, nullptr);
    }
}

void EndSignals::keep()
{
    areKept = true;
}

void EndSignals::wait()
{
    while (::sem_wait(&arrived) != 0) { // interrupted by another signal
    }
}

} // namespace CommandLine
