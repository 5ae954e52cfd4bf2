#include "cli/Output.h"
#include "cli/Session.h"
#include "cli/commands/Commands.h"

namespace CommandLine::Commands {

namespace {

ExitCode run(Session& session, const Invocation& invocation)
{
    const Source* source = session.open(invocation.arguments.at(0), Session::Opening::Read);
    if (!source)
        return session.getFailure();
    const QString path = invocation.arguments.value(1);
    const auto node = session.find(*source, path);
    if (!node.exists)
        return ExitCode::Negative;
    const QString fullPath = source->fullPath(path);
    const QStringList names = session.getRepository().getTreeInterface()->getChildNames(fullPath);
    for (const QString& name : names)
        Output::line(source->relativePath(fullPath + QLatin1Char('.') + name));
    if (names.isEmpty() && node.isAttribute)
        Output::line(source->relativePath(fullPath));
    return ExitCode::Done;
}

} // namespace

Command list()
{
    return {
        "ls",
        "list what is in a group",
        "Prints the paths right below PATH, one a line, in the order of the file; without PATH, those at the "
        "top. An attribute with nothing below it lists itself.",
        {{{"FILE", Word::File}, {"PATH", Word::Path, Argument::Count::Optional}}},
        {},
        {"vantry ls app.ini", "vantry ls app.ini server"},
        run};
}

} // namespace CommandLine::Commands
