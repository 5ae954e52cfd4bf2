#include "cli/Session.h"
#include "cli/Texts.h"
#include "cli/commands/Commands.h"

namespace CommandLine::Commands {

namespace {

const std::vector<Command::Form> forms{
    {{"FILE", Word::File}, {"PATH", Word::Path}, {"PATH", Word::Path}},
    {{"FILE", Word::File}, {"PATH", Word::Path}, {"FILE", Word::File}, {"PATH", Word::Path}}};

// FILE PATH PATH within a file, or FILE PATH FILE PATH.
struct Transfer
{
    Transfer(Session& session, const QStringList& words, Session::Opening opening)
    {
        const bool isWithinFile = words.size() == 3;
        // The one that is written first: should both be one file, it is opened once.
        to = isWithinFile ? session.open(words.at(0), Session::Opening::Edit)
                          : session.open(words.at(2), Session::Opening::Create, "--to-format");
        if (to)
            from = isWithinFile ? to : session.open(words.at(0), opening);
        if (!from || !session.find(*from, words.at(1)).exists)
            return;
        isOpen = true;
        fromPath = from->fullPath(words.at(1));
        toPath = to->fullPath(words.last());
    }

    bool isOpen = false; // otherwise the session has the exit code
    const Source* from = nullptr;
    const Source* to = nullptr;
    QString fromPath; // in the repository, as the next
    QString toPath;
};

ExitCode runCopy(Session& session, const Invocation& invocation)
{
    const Transfer transfer(session, invocation.arguments, Session::Opening::Read);
    if (!transfer.isOpen)
        return session.getFailure();
    FrameworkCore::AppConfig::Interfaces::TransferReport report;
    const ExitCode code = session.finish(
        session.getRepository().getTransferInterface()->copyTree(transfer.fromPath, transfer.toPath, report),
        *transfer.to);
    if (code == ExitCode::Done)
        Session::tellLeftOut(transfer.to->given, report);
    return code;
}

ExitCode runMove(Session& session, const Invocation& invocation)
{
    const Transfer transfer(session, invocation.arguments, Session::Opening::Edit);
    if (!transfer.isOpen)
        return session.getFailure();
    // The new place first: should the second save fail, the attributes are in both files and not in none.
    ExitCode code = session.finish(
        session.getRepository().getTransferInterface()->moveTree(transfer.fromPath, transfer.toPath),
        *transfer.to);
    if (code != ExitCode::Done || transfer.from == transfer.to)
        return code;
    code = session.save(*transfer.from);
    if (code != ExitCode::Done)
        return Session::fail(code, Texts::tr("%1: what was moved is in %2, and still here, too")
                                       .arg(transfer.from->given, transfer.to->given));
    return code;
}

} // namespace

Command copy()
{
    return {
        "cp",
        QT_TRANSLATE_NOOP("CommandLine", "copy an attribute or a group, also into a file of another format"),
        QT_TRANSLATE_NOOP("CommandLine",
                          "The second PATH is that of the copy. What is there already is not overwritten, "
                          "and what the format "
                          "cannot hold is refused; nothing is written then. The second FILE is created when "
                          "it is not there. "
                          "Within one format the copy is written as the original is, with the comments in "
                          "it, right above it "
                          "and after it on its line; otherwise names and values are copied, and comments as "
                          "far as the format has any."),
        forms,
        {toFormatOption, dryRunOption},
        {"vantry cp app.ini server server2", "vantry cp app.ini server app.json network.server"},
        runCopy};
}

Command move()
{
    return {
        "mv",
        QT_TRANSLATE_NOOP("CommandLine", "move or rename an attribute or a group, also into another file"),
        QT_TRANSLATE_NOOP(
            "CommandLine",
            "The second PATH is the new one. What is there already is not overwritten, and what the format "
            "cannot hold is refused; nothing is written then. Of two files, the second is written first. A "
            "new name in the same group changes only the name in the file. Elsewhere, within one format, it "
            "is written as it was, and the comments in it, right above it and after it on its line go "
            "along. Into another format names and values go with the comments; where that has no place for "
            "one of them, it is refused."),
        forms,
        {toFormatOption, dryRunOption},
        {"vantry mv app.ini server.prot server.port"},
        runMove};
}

} // namespace CommandLine::Commands
