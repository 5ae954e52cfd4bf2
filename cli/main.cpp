#include "cli/Program.h"

#include <csignal>

int main(int argc, char** argv)
{
    // Who starts the program may have it ignored; then a reader that goes away would not end it.
    std::signal(SIGPIPE, SIG_DFL);
    return int(CommandLine::runProgram(argc, argv));
}
