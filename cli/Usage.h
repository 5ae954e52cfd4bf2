#pragma once

#include "cli/Command.h"

#include <QString>

namespace CommandLine {

// The texts of the table are UTF-8.
QString toText(std::string_view utf8);

// The texts of help, made from the table of commands: those for the screen, and the manual page.
class Usage
{
public:
    // One way to call a command, as in "vantry get FILE PATH".
    static QString ofForm(const Command& command, const Command::Form& form);

    // Of an option, as in "--type T".
    static QString ofOption(const Option& option);

    static QString helpFor(const Command& command);
    static QString overview();
    static QString manPage(); // vantry(1)
};

} // namespace CommandLine
