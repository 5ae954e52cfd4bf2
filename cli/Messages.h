#pragma once

#include <QString>
#include <QStringList>

#include <string>

namespace CommandLine {

// The program's messages on stderr, one line each: "vantry: ...". What steers a terminal is written as
// printableLine does. Any thread.
class Messages
{
public:
    static void tell(const QString& text);

    // A reason of a library below, with the file called as the command line calls it.
    static QString withNameAsGiven(const std::string& reason, const std::string& path, const QString& given);

    // Keeps the repository's log off stderr, whose form is not that of this program's messages.
    static void takeOverLog();

    // What the repository has logged as refused or failed since the last call.
    static QStringList takeRefusals();
};

} // namespace CommandLine
