#include "cli/Session.h"
#include "cli/commands/Commands.h"

namespace CommandLine::Commands {

namespace {

ExitCode run(Session& session, const Invocation&)
{
    const auto place = session.locate(Session::Opening::Edit);
    if (!place)
        return session.getFailure();
    const Source& source = *place->source;
    if (place->path == source.root)
        return Session::fail(ExitCode::Usage, QStringLiteral("%1: the path is empty").arg(source.given));
    return session.finish(session.getRepository().getTreeInterface()->removeTree(place->path), source);
}

} // namespace

Command remove()
{
    return {"rm",
            "remove an attribute or a group with all that is in it",
            "The entry's own lines go, and comments only when they are on these or, of a group, between its "
            "first line and its last. Those above it stay, and in txt those between its entries, too.",
            {{{"FILE", Word::File}, {"PATH", Word::Path}}},
            {dryRunOption},
            {"vantry rm app.ini server.timeout", "vantry rm app.ini server --dry-run"},
            run};
}

} // namespace CommandLine::Commands
