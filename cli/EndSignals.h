#pragma once

namespace CommandLine {

// The signals that ask a program to end, as Ctrl+C does, for a command that goes on until one comes. Those
// that whoever started the program has ignored, as nohup does, stay ignored. One thread, once in a program.
class EndSignals
{
public:
    // From here on one of them ends the program at once, with exit code 0.
    static void begin();

    // From here on the first of them only ends the wait, and the next the program.
    static void keep();
    static void wait();
};

} // namespace CommandLine
