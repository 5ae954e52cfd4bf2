#pragma once

#include "cli/Command.h"

#include <QStringList>

#include <string_view>
#include <vector>

namespace CommandLine {

// The one place that knows all commands and options. Parser, help, man page and completion are made from it.
class CommandTable
{
public:
    static const std::vector<Command>& commands();
    static const Command* find(std::string_view name); // null for an unknown one
    static QStringList names();                        // of those that are for people

    // Options of all commands.
    static const std::vector<Option>& commonOptions();

    // The option among the command's and the common ones, by either of its names; null for an unknown one.
    // The command may be null.
    static const Option* findOption(const Command* command, std::string_view name);
};

} // namespace CommandLine
