#include "cli/DocumentFile.h"
#include "cli/Session.h"
#include "cli/commands/Commands.h"

namespace CommandLine::Commands {

namespace {

ExitCode run(Session& session, const Invocation& invocation)
{
    const DocumentFile file =
        DocumentFile::read(invocation.arguments.at(2), invocation.valueOf("--from-format"));
    if (!file.document)
        return Session::fail(ExitCode::BadFile, file.explain());
    const Source* target = session.open(invocation.arguments.at(0), Session::Opening::Create);
    if (!target)
        return session.getFailure();
    FrameworkCore::AppConfig::Interfaces::TransferReport report;
    const QString path = target->fullPath(invocation.arguments.at(1));
    const ExitCode code =
        session.finish(session.getRepository().getTransferInterface()->importTree(
                           path, file.format, QByteArray::fromStdString(file.bytes), report),
                       *target);
    if (code == ExitCode::Done)
        Session::tellLeftOut(target->given, report);
    return code;
}

} // namespace

Command importTree()
{
    return {
        "import",
        QT_TRANSLATE_NOOP("CommandLine", "add what another file holds below a path"),
        QT_TRANSLATE_NOOP(
            "CommandLine",
            "JSON is a file of json, or of any other format that its name tells. Its attributes are created "
            "below PATH (\"\" is the whole file); those that are there already are written. Groups are "
            "merged by "
            "name; an array or list replaces what is in its place, whole. Comments come along with what is "
            "new. All of them or none."),
        {{{"FILE", Word::File}, {"PATH", Word::Path}, {"JSON", Word::File}}},
        {{"--from-format", "FORMAT", Word::Format,
          QT_TRANSLATE_NOOP("CommandLine", "the format of JSON, when its name does not decide it")},
         dryRunOption},
        {"vantry import app.ini server server.json"},
        run};
}

} // namespace CommandLine::Commands
