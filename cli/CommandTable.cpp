#include "cli/CommandTable.h"

#include "cli/Usage.h"
#include "cli/commands/Commands.h"

#include <algorithm>

namespace CommandLine {

const std::vector<Command>& CommandTable::commands()
{
    static const std::vector<Command> table{
        Commands::get(),        Commands::set(),       Commands::create(),     Commands::remove(),
        Commands::move(),       Commands::copy(),      Commands::list(),       Commands::tree(),
        Commands::find(),       Commands::diff(),      Commands::convert(),    Commands::validate(),
        Commands::watch(),      Commands::roundtrip(), Commands::importTree(), Commands::exportTree(),
        Commands::completion(), Commands::help(),      Commands::complete(),
    };
    return table;
}

const Command* CommandTable::find(std::string_view name)
{
    const auto& table = commands();
    const auto found = std::find_if(table.begin(), table.end(),
                                    [name](const Command& command) { return command.name == name; });
    return found == table.end() ? nullptr : &*found;
}

QStringList CommandTable::names()
{
    QStringList names;
    for (const Command& command : commands()) {
        if (!command.isHidden)
            names.append(toText(command.name));
    }
    return names;
}

const std::vector<Option>& CommandTable::commonOptions()
{
    static const std::vector<Option> options{
        {"--backend", "NAME=FILE[:ro|wo|rw]", Word::Backend,
         "let NAME stand for FILE, read-only, write-only or (as without) read-write; may be repeated", true},
        {"--format", "FORMAT", Word::Format, "the format of FILE, when its name does not tell it"},
        {"--max-size", "MIB", Word::Text, "read and write files of up to so many MiB instead of 256"},
        {"--help", {}, Word::Text, "show help"},
        {"--version", {}, Word::Text, "show the version"},
    };
    return options;
}

const Option* CommandTable::findOption(const Command* command, std::string_view name)
{
    const std::vector<Option> none;
    for (const auto* options : {command ? &command->options : &none, &commonOptions()}) {
        for (const Option& option : *options) {
            if (option.name == name)
                return &option;
        }
    }
    return nullptr;
}

const std::vector<Topic>& CommandTable::topics()
{
    static const std::vector<Topic> topics{
        {"Files",
         {"FILE is the name of a file, or that of a backend which --backend declares; a file of that very "
          "name "
          "is given as ./NAME. A new file is created by the commands that add to it.",
          "The format is told by the file's name: .json and .jsonc are json; .ini, .conf, .cfg, .desktop, "
          ".service and the like ini; .xml, .svg, .ui, .ts, .pom and the like xml; .txt and .properties txt. "
          "A "
          ".conf that begins as json or xml does is that, and so is a file whose name tells nothing; "
          "anything "
          "else is ini. --format has the last word.",
          "Files are replaced whole, at one moment, with their owner, mode and symbolic links kept. What "
          "another "
          "program "
          "has changed meanwhile is kept, too, or the command ends with exit code 3.",
          "A file of more than 256 MiB is refused, so that none takes all memory. --max-size, or the "
          "variable "
          "VANTRY_MAX_FILE_SIZE of the environment, sets another limit, up to 2047 MiB."}},
        {"Paths",
         {"A path is the names that lead to an attribute, joined by \".\", as in server.port; \"\" or \".\" "
          "is the "
          "whole file. In a name \".\", \"*\", \"%\" and \";\" are written as %2E, %2A, %25 and %3B. The "
          "elements "
          "of a json array are 0, 1, 2 ...; the second of several entries of one name is name[2]; @name is "
          "an "
          "attribute of xml, #text and #value are the text or value of an entry that has others below it."}},
        {"Output",
         {"Results are on stdout, in UTF-8, paths relative to the file's root. Messages are on stderr, a "
          "line "
          "each: \"vantry: FILE:LINE:COLUMN: REASON\", as far as there is a place.",
          "Where a value shares its line with a path, a backslash is written as \"\\\\\". In messages and "
          "in output by lines a line break is written as \"\\n\", another control character as \"\\x\" and "
          "two hex digits; control characters beyond ASCII, overrides of writing direction and characters "
          "without width as \"\\u\" and four, or \"\\U\" and eight hex digits. \"get\" and diffs are "
          "printed as they are, and with these escapes only on a terminal.",
          "Words behind \"--\" are no options: vantry set app.ini offset -- --5. A negative number needs "
          "none."}},
        {"Exit codes",
         {"0: done.", "1: not found, or there are differences.", "2: the command line is wrong.",
          "3: refused for its type, a rule, access, or a conflict with another program.",
          "4: a file cannot be read, parsed or written."}},
    };
    return topics;
}

} // namespace CommandLine
