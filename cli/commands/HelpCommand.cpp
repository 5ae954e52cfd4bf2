#include "cli/CommandTable.h"
#include "cli/Output.h"
#include "cli/Session.h"
#include "cli/Suggestion.h"
#include "cli/Texts.h"
#include "cli/Usage.h"
#include "cli/commands/Commands.h"

namespace CommandLine::Commands {

namespace {

ExitCode run(Session&, const Invocation& invocation)
{
    if (invocation.has("--man")) {
        Output::bytes(Usage::manPage().toStdString());
        return ExitCode::Done;
    }
    if (invocation.arguments.isEmpty()) {
        Output::bytes(Usage::overview().toStdString());
        return ExitCode::Done;
    }
    const QString& name = invocation.arguments.first();
    const Command* command = CommandTable::find(name.toStdString());
    if (!command)
        return Session::fail(
            ExitCode::Usage,
            Texts::tr("unknown command '%1'%2").arg(name, suggestionFor(name, CommandTable::names())));
    Output::bytes(Usage::helpFor(*command).toStdString());
    return ExitCode::Done;
}

} // namespace

Command help()
{
    return {"help",
            QT_TRANSLATE_NOOP("CommandLine", "show this help, or that of a command"),
            QT_TRANSLATE_NOOP("CommandLine", "The same as --help."),
            {{{"COMMAND", Word::Command, Argument::Count::Optional}}},
            {{"--man", {}, Word::Text, QT_TRANSLATE_NOOP("CommandLine", "print the manual page")}},
            {"vantry help set"},
            run};
}

} // namespace CommandLine::Commands
