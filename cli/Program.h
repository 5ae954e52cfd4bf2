#pragma once

#include "cli/Command.h"

namespace CommandLine {

// The program from its arguments to its exit code. What it prints is flushed.
ExitCode runProgram(int argc, char** argv);

} // namespace CommandLine
