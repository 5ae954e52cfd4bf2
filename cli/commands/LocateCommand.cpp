#include "cli/Output.h"
#include "cli/Records.h"
#include "cli/Session.h"
#include "cli/Texts.h"
#include "cli/commands/Commands.h"

namespace CommandLine::Commands {

namespace {

using FrameworkCore::AppConfig::FilePosition;
using FrameworkCore::AppConfig::Interfaces::TextPlace;

ExitCode print(Session& session, const Invocation& invocation, const Source& source, const QString& path,
               bool printsPath)
{
    TextPlace place;
    const Session::Outcome outcome = session.getRepository().getTextInterface()->locate(path, place);
    if (!outcome.ok())
        return session.finish(outcome);
    Records records(invocation);
    place.position.file = source.recordedFile(place.position.file);
    if (records.areJson())
        records.add({{"path", source.relativePath(path)},
                     {"file", place.position.file},
                     {"line", qlonglong(place.position.line)},
                     {"column", qlonglong(place.position.column)},
                     {"comment", place.comment}});
    else if (printsPath)
        records.add(source.relativePath(path));
    else
        records.add(place.position.toText());
    return ExitCode::Done;
}

ExitCode printPlace(Session& session, const Invocation& invocation)
{
    const auto place = session.locate(Session::Opening::Read);
    return place ? print(session, invocation, *place->source, place->path, false) : session.getFailure();
}

ExitCode printPath(Session& session, const Invocation& invocation)
{
    const QString& given = invocation.arguments.first();
    const auto place = FilePosition::parse(given);
    if (!place)
        return Session::fail(
            ExitCode::Usage,
            Texts::tr("'%1' names no line of a file; give FILE:LINE, or FILE and PATH").arg(given));
    const Source* const source = session.open(place->file, Session::Opening::Read);
    if (!source)
        return session.getFailure();
    QString path;
    const Session::Outcome outcome =
        session.getRepository().getTextInterface()->findAt(source->root, place->line, place->column, path);
    return outcome.ok() ? print(session, invocation, *source, path, true) : session.finish(outcome);
}

ExitCode run(Session& session, const Invocation& invocation)
{
    return invocation.arguments.size() == 2 ? printPlace(session, invocation)
                                            : printPath(session, invocation);
}

} // namespace

Command locate()
{
    return {
        "locate",
        QT_TRANSLATE_NOOP("CommandLine", "print where in its file a value is, or which value is there"),
        QT_TRANSLATE_NOOP(
            "CommandLine",
            "With FILE and PATH: prints \"FILE:LINE:COLUMN\", where the value of the attribute begins; of a "
            "group "
            "the first value in it. Lines and columns count from 1, columns in characters.\n"
            "With FILE:LINE:COLUMN or FILE:LINE: prints the path of the attribute whose value is there. "
            "Where "
            "none is, it is the next one on the line, or else the last one on it; on a line without any, as "
            "that "
            "of a comment, the next one in the file. The exit code is 1 when there is none.\n"
            "With --json: an array of an object with \"path\", \"file\", \"line\", \"column\" and "
            "\"comment\", "
            "which is the lines of comments above the attribute and the one after it on its line."),
        {{{"FILE", Word::File}, {"PATH", Word::Path}}, {{"FILE:LINE[:COLUMN]", Word::File}}},
        {jsonOption, nullOption},
        {"vantry locate app.ini server.port", "vantry locate app.ini:12",
         "vantry locate app.ini:12:9 --json"},
        run};
}

} // namespace CommandLine::Commands
