#pragma once

#include <QString>
#include <QVariant>

#include <string>

namespace CommandLine {

// What the program writes to stdout, in UTF-8. One thread at a time.
class Output
{
public:
    static void line(const QString& text);
    static void bytes(const std::string& bytes); // as they are

    // A value as "get" prints it.
    static std::string valueText(const QVariant& value);

    // A value that shares its line with other things: a backslash is written as "\\", a line break as "\n",
    // other control characters as "\x" and two hex digits.
    static QString valueInLine(const QVariant& value);

    // Writes out what is waiting; false, and said so, when that or an earlier writing failed.
    static bool flush();
};

} // namespace CommandLine
