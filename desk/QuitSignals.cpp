#include "desk/QuitSignals.h"

#include <QSocketNotifier>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace Vantry {

namespace {

constexpr int watchedSignals[] = {SIGTERM, SIGINT, SIGHUP};

// A handler may do next to nothing; it writes a byte, and the event loop reads it.
int pipeEnds[2] = {-1, -1};

extern "C" void passOn(int)
{
    const char byte = 0;
    const ssize_t written = write(pipeEnds[1], &byte, 1);
    static_cast<void>(written); // when the pipe is full, enough bytes are in it
}

void handleSignals(void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int number : watchedSignals) {
        struct sigaction before = {};
        const bool isIgnored = sigaction(number, nullptr, &before) == 0 && before.sa_handler == SIG_IGN;
        if (!isIgnored) // by whoever started the program, as nohup does
            sigaction(number, &action, nullptr);
    }
}

} // namespace

QuitSignals::QuitSignals(QObject* parent) : QObject(parent)
{
    if (pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    auto* const notifier = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] {
        char bytes[16];
        while (read(pipeEnds[0], bytes, sizeof bytes) > 0)
            continue;
        emit quitRequested();
    });
    handleSignals(passOn);
}

QuitSignals::~QuitSignals()
{
    if (pipeEnds[0] < 0)
        return;
    handleSignals(SIG_DFL);
    for (int& end : pipeEnds) {
        close(end);
        end = -1;
    }
}

} // namespace Vantry
