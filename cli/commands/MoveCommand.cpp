#include "cli/TransferArguments.h"
#include "cli/commands/Commands.h"

namespace CommandLine::Commands {

namespace {

ExitCode run(Session& session, const Invocation& invocation)
{
    const auto transfer = TransferArguments::open(session, invocation, Session::Opening::Edit);
    if (!transfer.ok())
        return session.getFailure();
    if (!session.find(*transfer.from, invocation.arguments.at(1)).exists)
        return ExitCode::Negative;
    ExitCode code = session.finish(
        session.getRepository().getTransferInterface()->moveTree(transfer.fromPath, transfer.toPath));
    // The new place first: should the second save fail, the attributes are in both files and not in none.
    if (code == ExitCode::Done)
        code = session.save(*transfer.to);
    if (code != ExitCode::Done || transfer.from == transfer.to)
        return code;
    code = session.save(*transfer.from);
    if (code != ExitCode::Done)
        return Session::fail(code, QStringLiteral("%1: what was moved is in %2, and still here, too")
                                       .arg(transfer.from->given, transfer.to->given));
    return code;
}

} // namespace

Command move()
{
    return {"mv",
            "move or rename an attribute or a group, also into another file",
            "The second PATH is the new one. What is there already is not overwritten, and what the format "
            "cannot "
            "hold is refused; nothing is written then. Of two files, the second is written first.",
            {{{"FILE", Word::File}, {"PATH", Word::Path}, {"PATH", Word::Path}},
             {{"FILE", Word::File}, {"PATH", Word::Path}, {"FILE", Word::File}, {"PATH", Word::Path}}},
            {toFormatOption, dryRunOption},
            {"vantry mv app.ini server.prot server.port"},
            run};
}

} // namespace CommandLine::Commands
