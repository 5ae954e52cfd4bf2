#include "cli/CommandTable.h"

#include "cli/Usage.h"
#include "cli/commands/Commands.h"

#include <algorithm>

namespace CommandLine {

namespace {

Command ofFolders(Command command)
{
    command.takesFolders = true;
    command.options.push_back(
        {"--include", "GLOB", Word::Text,
         QT_TRANSLATE_NOOP("CommandLine",
                           "of a folder, only files whose names match, as '*.conf'; may be repeated"),
         true});
    command.options.push_back(
        {"--exclude", "GLOB", Word::Text,
         QT_TRANSLATE_NOOP("CommandLine",
                           "of a folder, no files and folders whose names match, or with a / their paths "
                           "below it; may be repeated"),
         true});
    return command;
}

} // namespace

const std::vector<Command>& CommandTable::commands()
{
    static const std::vector<Command> table{
        ofFolders(Commands::get()),
        ofFolders(Commands::set()),
        ofFolders(Commands::create()),
        ofFolders(Commands::append()),
        ofFolders(Commands::insert()),
        ofFolders(Commands::remove()),
        ofFolders(Commands::move()),
        ofFolders(Commands::copy()),
        ofFolders(Commands::ls()),
        ofFolders(Commands::tree()),
        ofFolders(Commands::list()),
        ofFolders(Commands::find()),
        ofFolders(Commands::replace()),
        ofFolders(Commands::locate()),
        Commands::diff(),
        Commands::convert(),
        Commands::validate(),
        ofFolders(Commands::watch()),
        Commands::roundtrip(),
        Commands::importTree(),
        Commands::exportTree(),
        Commands::completion(),
        Commands::help(),
        Commands::complete(),
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
         QT_TRANSLATE_NOOP(
             "CommandLine",
             "let NAME stand for FILE, read-only, write-only or (as without) read-write; may be repeated"),
         true},
        {"--format", "FORMAT", Word::Format,
         QT_TRANSLATE_NOOP("CommandLine", "the format of FILE, when its name does not decide it")},
        {"--max-size", "MIB", Word::Text,
         QT_TRANSLATE_NOOP("CommandLine", "read and write files of up to so many MiB instead of 256")},
        {"--language", "LANGUAGE", Word::Language,
         QT_TRANSLATE_NOOP("CommandLine", "show help and messages in English (en) or German (de)")},
        {"--help", {}, Word::Text, QT_TRANSLATE_NOOP("CommandLine", "show help"), false, "-h"},
        {"--version", {}, Word::Text, QT_TRANSLATE_NOOP("CommandLine", "show the version"), false, "-V"},
    };
    return options;
}

const Option* CommandTable::findOption(const Command* command, std::string_view name)
{
    const std::vector<Option> none;
    for (const auto* options : {command ? &command->options : &none, &commonOptions()}) {
        for (const Option& option : *options) {
            if (option.name == name || (!name.empty() && option.shortName == name))
                return &option;
        }
    }
    return nullptr;
}

} // namespace CommandLine
