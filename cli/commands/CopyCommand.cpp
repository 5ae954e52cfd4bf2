#include "cli/TransferArguments.h"
#include "cli/commands/Commands.h"

namespace CommandLine::Commands {

namespace {

ExitCode run(Session& session, const Invocation& invocation)
{
    const auto transfer = TransferArguments::open(session, invocation, Session::Opening::Read);
    if (!transfer.ok())
        return session.getFailure();
    if (!session.find(*transfer.from, invocation.arguments.at(1)).exists)
        return ExitCode::Negative;
    const ExitCode code = session.finish(
        session.getRepository().getTransferInterface()->copyTree(transfer.fromPath, transfer.toPath));
    return code == ExitCode::Done ? session.save(*transfer.to) : code;
}

} // namespace

Command copy()
{
    return {
        "cp",
        "copy an attribute or a group, also into a file of another format",
        "The second PATH is that of the copy. What is there already is not overwritten, and what the format "
        "cannot hold is refused; nothing is written then. The second FILE is created when it is not there.",
        {{{"FILE", Word::File}, {"PATH", Word::Path}, {"PATH", Word::Path}},
         {{"FILE", Word::File}, {"PATH", Word::Path}, {"FILE", Word::File}, {"PATH", Word::Path}}},
        {toFormatOption, dryRunOption},
        {"vantry cp app.ini server server2", "vantry cp app.ini server app.json network.server"},
        run};
}

} // namespace CommandLine::Commands
