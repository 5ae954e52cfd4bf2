#include "cli/Output.h"
#include "cli/Session.h"
#include "cli/Suggestion.h"
#include "cli/commands/Commands.h"

#include <QFile>

namespace CommandLine::Commands {

namespace {

ExitCode run(Session&, const Invocation& invocation)
{
    const QString& shell = invocation.arguments.first();
    QFile script(QStringLiteral(":/completion/vantry.") + shell);
    if (!script.open(QIODevice::ReadOnly)) {
        const QStringList known{QStringLiteral("bash"), QStringLiteral("zsh"), QStringLiteral("fish")};
        return Session::fail(ExitCode::Usage, QStringLiteral("there is no completion for '%1'%2")
                                                  .arg(shell, Suggestion::forTypo(shell, known)));
    }
    Output::bytes(script.readAll().toStdString());
    return ExitCode::Done;
}

} // namespace

Command completion()
{
    return {"completion",
            "print a script for completion in a shell",
            "Commands, options, files and the paths in a file are completed then. For bash, add this line to "
            "~/.bashrc: eval \"$(vantry completion bash)\"",
            {{{"bash|zsh|fish", Word::Shell}}},
            {},
            {"eval \"$(vantry completion bash)\""},
            run};
}

} // namespace CommandLine::Commands
