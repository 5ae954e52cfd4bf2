#include "cli/Edits.h"
#include "cli/Texts.h"
#include "cli/TreeWalk.h"
#include "cli/commands/Commands.h"

#include <algorithm>

namespace CommandLine::Commands {

namespace {

// All that match, or none.
ExitCode removeMatches(Session& session, const Source& source, const QString& pattern)
{
    const auto tree = session.getRepository().getTreeInterface();
    QStringList paths = findMatches(*tree, source, pattern, true);
    std::reverse(paths.begin(), paths.end()); // so that an element does not give its number to the next
    for (const QString& path : paths) {
        const ExitCode code = session.finish(tree->removeTree(path));
        if (code != ExitCode::Done)
            return code;
    }
    return Edits(session, source)
        .saveAll(paths.size(), pattern,
                 session.isDryRun() ? Texts::tr("would be removed") : Texts::tr("removed"));
}

ExitCode run(Session& session, const Invocation& invocation)
{
    const QString& pattern = invocation.arguments.at(1);
    if (isPattern(pattern)) {
        const Source* source = session.open(invocation.arguments.first(), Session::Opening::Edit);
        return source ? removeMatches(session, *source, pattern) : session.getFailure();
    }
    const auto place = session.locate(Session::Opening::Edit);
    if (!place)
        return session.getFailure();
    const Source& source = *place->source;
    if (place->path == source.root)
        return Session::fail(ExitCode::Usage, Texts::tr("%1: the path is empty").arg(source.given));
    return session.finish(session.getRepository().getTreeInterface()->removeTree(place->path), source);
}

} // namespace

Command remove()
{
    return {
        "rm",
        QT_TRANSLATE_NOOP("CommandLine", "remove an attribute or a group with all that is in it"),
        QT_TRANSLATE_NOOP(
            "CommandLine",
            "The entry's own lines go, and comments only when they are on these or, of a group, between its "
            "first line and its last. Those above it stay, and in txt those between its entries, too.\n"
            "With \"*\" in PATH, which stands for any run of characters, all that matches is removed, in one "
            "write of the file, or nothing. How many there are is said on stderr, where a group counts as "
            "one; the exit code is 1 when there is none."),
        {{{"FILE", Word::File}, {"PATH", Word::Path}}},
        {dryRunOption},
        {"vantry rm app.ini server.timeout", "vantry rm app.ini server --dry-run",
         "vantry rm app.ini '*.debug'"},
        run};
}

} // namespace CommandLine::Commands
