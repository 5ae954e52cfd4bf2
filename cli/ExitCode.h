#pragma once

namespace CommandLine {

// What a command ends with; scripts rely on the numbers.
enum class ExitCode : int {
    Done = 0,
    Negative = 1, // not found, or there is a difference
    Usage = 2,
    Refused = 3, // type, validation, access or conflict
    BadFile = 4  // it cannot be read, parsed or written
};

} // namespace CommandLine
