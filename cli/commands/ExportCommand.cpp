#include "cli/OutputFile.h"
#include "cli/commands/Commands.h"

namespace CommandLine::Commands {

namespace {

ExitCode run(Session& session, const Invocation& invocation)
{
    OutputFile target = OutputFile::prepare(invocation, invocation.arguments.at(2), "--to-format");
    if (!target.ok())
        return target.getFailure();
    const Source* source = session.open(invocation.arguments.at(0), Session::Opening::Read);
    if (!source)
        return session.getFailure();
    const QString& path = invocation.arguments.at(1);
    if (!session.find(*source, path).exists)
        return ExitCode::Negative;
    QByteArray text;
    FrameworkCore::AppConfig::Interfaces::TransferReport report;
    const ExitCode code = session.finish(session.getRepository().getTransferInterface()->exportTree(
        source->fullPath(path), target.getFormat(), text, report));
    return code == ExitCode::Done ? target.write(text.toStdString(), report.isPrivate(), session.isDryRun())
                                  : code;
}

} // namespace

Command exportTree()
{
    return {"export",
            "write a group as a file of its own",
            "OUT is written anew, in the format that its name tells; the paths in it are relative to PATH. "
            "\"\" is "
            "the path of the whole file.",
            {{{"FILE", Word::File}, {"PATH", Word::Path}, {"OUT", Word::File}}},
            {toFormatOption, forceOption, dryRunOption},
            {"vantry export app.ini server server.json"},
            run};
}

} // namespace CommandLine::Commands
