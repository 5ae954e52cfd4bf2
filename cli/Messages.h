#pragma once

#include <QString>

namespace CommandLine {

// The program's messages on stderr, one line each: "vantry: ...". What steers a terminal is written as
// printableLine does. Any thread.
class Messages
{
public:
    static void tell(const QString& text);

    // Keeps the repository's log off stderr, whose form is not that of this program's messages.
    static void takeOverLog();
};

} // namespace CommandLine
