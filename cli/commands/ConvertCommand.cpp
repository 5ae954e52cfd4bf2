#include "cli/OutputFile.h"
#include "cli/commands/Commands.h"

namespace CommandLine::Commands {

namespace {

ExitCode run(Session& session, const Invocation& invocation)
{
    OutputFile target = OutputFile::prepare(invocation, invocation.arguments.at(1), "--to-format");
    if (!target.ok())
        return target.getFailure();
    const Source* source = session.open(invocation.arguments.at(0), Session::Opening::Read);
    if (!source)
        return session.getFailure();
    QByteArray text;
    FrameworkCore::AppConfig::Interfaces::TransferReport report;
    const ExitCode code = session.finish(session.getRepository().getTransferInterface()->exportTree(
        source->root, target.getFormat(), text, report));
    return code == ExitCode::Done ? target.write(text.toStdString(), report.isPrivate(), session.isDryRun())
                                  : code;
}

} // namespace

Command convert()
{
    return {"convert",
            "write what a file holds as a file of another format",
            "The second FILE is written anew, in the format that its name tells. Comments and spelling stay "
            "behind; types come along, in marks where the format has no form of its own for them. What the "
            "format cannot hold is refused, and nothing is written.",
            {{{"FILE", Word::File}, {"FILE", Word::File}}},
            {toFormatOption, forceOption, dryRunOption},
            {"vantry convert app.ini app.json"},
            run};
}

} // namespace CommandLine::Commands
