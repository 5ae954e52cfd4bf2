#pragma once

#include <QString>

namespace CommandLine {

// The manual page vantry(1), made from the table of commands.
class ManPage
{
public:
    static QString text();
};

} // namespace CommandLine
