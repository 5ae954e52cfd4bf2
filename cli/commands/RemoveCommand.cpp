#include "cli/Session.h"
#include "cli/commands/Commands.h"

namespace CommandLine::Commands {

namespace {

ExitCode run(Session& session, const Invocation& invocation)
{
    const Source* source = session.open(invocation.arguments.at(0), Session::Opening::Edit);
    if (!source)
        return session.getFailure();
    const QString& path = invocation.arguments.at(1);
    const QString fullPath = source->fullPath(path);
    if (fullPath == source->root)
        return Session::fail(ExitCode::Usage, QStringLiteral("%1: the path is empty").arg(source->given));
    if (!session.find(*source, path).exists)
        return ExitCode::Negative;
    const ExitCode code = session.finish(session.getRepository().getTreeInterface()->removeTree(fullPath));
    return code == ExitCode::Done ? session.save(*source) : code;
}

} // namespace

Command remove()
{
    return {"rm",
            "remove an attribute or a group with all that is in it",
            "The entry's own lines go, and a comment only when it is on one of them.",
            {{{"FILE", Word::File}, {"PATH", Word::Path}}},
            {dryRunOption},
            {"vantry rm app.ini server.timeout", "vantry rm app.ini server --dry-run"},
            run};
}

} // namespace CommandLine::Commands
