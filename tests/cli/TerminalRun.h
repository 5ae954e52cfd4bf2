#pragma once

#include <QByteArray>
#include <QByteArrayList>

#include <csignal>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

// A program with a terminal of its own, as people start it.
class TerminalRun
{
public:
    TerminalRun(const char* program, const QByteArrayList& arguments, const QByteArray& folder)
    {
        process = ::forkpty(&terminal, nullptr, nullptr, nullptr);
        if (process != 0)
            return;
        std::vector<char*> words{const_cast<char*>(program)};
        for (const QByteArray& argument : arguments)
            words.push_back(const_cast<char*>(argument.constData()));
        words.push_back(nullptr);
        if (::chdir(folder.constData()) == 0)
            ::execvp(program, words.data());
        ::_exit(127);
    }

    ~TerminalRun()
    {
        ::close(terminal);
        ::kill(process, SIGKILL);
        ::waitpid(process, nullptr, 0);
    }

    Q_DISABLE_COPY(TerminalRun)

    // Up to the end, or until the text has come, or nothing for so many milliseconds.
    QByteArray read(const QByteArray& awaited = {}, int patience = 20'000)
    {
        QByteArray shown;
        pollfd source{terminal, POLLIN, 0};
        while ((awaited.isEmpty() || !shown.contains(awaited)) && ::poll(&source, 1, patience) > 0) {
            char bytes[4096];
            const ssize_t got = ::read(terminal, bytes, sizeof bytes);
            if (got <= 0)
                break;
            shown.append(bytes, int(got));
        }
        return shown;
    }

    // As if typed.
    bool write(const QByteArray& keys) const
    {
        return ::write(terminal, keys.constData(), std::size_t(keys.size())) == keys.size();
    }

private:
    int terminal = -1;
    pid_t process = -1;
};
