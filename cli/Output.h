#pragma once

#include <QString>
#include <QVariant>

#include <string>

namespace CommandLine {

// What the program writes, in UTF-8: results to stdout, by one thread at a time, and messages to stderr.
// Nothing that steers a terminal reaches one; see printableLine.
class Output
{
public:
    // One line of stderr, "vantry: ...", with escapes. Any thread.
    static void message(const QString& text);

    static void line(const QString& text); // with escapes, wherever it goes

    // As they are, so that programs can read them; to a terminal with escapes.
    static void bytes(const std::string& bytes);

    // A value as "get" prints it.
    static std::string valueText(const QVariant& value);

    // A value that shares its line with other things: a backslash is written as "\\", and what
    // printableLine escapes as it does.
    static QString valueInLine(const QVariant& value);

    // Writes out what is waiting; false, and said so, when that or an earlier writing failed.
    static bool flush();
};

} // namespace CommandLine
