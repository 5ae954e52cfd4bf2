#pragma once

#include <csignal>
#include <functional>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace TestSupport {

// A process of its own that runs a function, for what would change or end the test's process. It dies with
// the test's object.
class ChildProcess
{
public:
    // The function writes its output into the descriptor; its result is the process's.
    explicit ChildProcess(const std::function<int(int output)>& work)
    {
        int ends[2] = {-1, -1};
        if (::pipe(ends) != 0)
            return;
        process = ::fork();
        if (process == 0) {
            ::close(ends[0]);
            ::_exit(work(ends[1]));
        }
        ::close(ends[1]);
        input = ends[0];
    }
    ~ChildProcess()
    {
        kill();
        wait();
        ::close(input);
    }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    // What a function gives that has to run in a process of its own.
    static std::string outputOf(const std::function<std::string()>& work)
    {
        ChildProcess child([&work](int output) {
            const std::string text = work();
            return ::write(output, text.data(), text.size()) == ssize_t(text.size()) ? 0 : 1;
        });
        const std::string text = child.readAll();
        const int status = child.wait();
        return status == 0 ? text : text + " (the process ended with " + std::to_string(status) + ')';
    }

    bool readByte(char& byte) const { return ::read(input, &byte, 1) == 1; }

    std::string readAll() const
    {
        std::string text;
        for (char byte = 0; readByte(byte);)
            text += byte;
        return text;
    }

    void kill() const
    {
        if (process > 0)
            ::kill(process, SIGKILL);
    }

    // As waitpid tells it.
    int wait()
    {
        int status = 0;
        if (process > 0)
            ::waitpid(process, &status, 0);
        process = 0;
        return status;
    }

private:
    pid_t process = 0;
    int input = -1;
};

} // namespace TestSupport
