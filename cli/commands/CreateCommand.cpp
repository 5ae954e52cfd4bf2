#include "cli/Edits.h"
#include "cli/commands/Commands.h"

namespace CommandLine::Commands {

namespace {

ExitCode run(Session& session, const Invocation& invocation)
{
    WantedType type;
    if (!Edits::readType(invocation, type))
        return ExitCode::Usage;
    QString text;
    const ExitCode reading = Edits::readText(invocation, text);
    if (reading != ExitCode::Done)
        return reading;
    const Source* source = session.open(invocation.arguments.at(0), Session::Opening::Create);
    if (!source)
        return session.getFailure();
    const ExitCode code = Edits(session, *source).create(invocation.arguments.at(1), text, type);
    return code == ExitCode::Done ? session.save(*source) : code;
}

} // namespace

Command create()
{
    return {
        "create",
        QT_TRANSLATE_NOOP("CommandLine", "add an attribute, and the groups that lead to it"),
        QT_TRANSLATE_NOOP(
            "CommandLine",
            "The new entry comes after its siblings, in the manner of the file. Without --type, VALUE is "
            "what "
            "a file would hold by that text: true and false, numbers, or else a text. A type which the "
            "file's format has no form of its own for is kept in a type tag that other programs take for a "
            "comment. "
            "An attribute that is there already is refused; a file that is not there is created. In an array "
            "the "
            "new element gets the index that PATH ends in, and those from there on move up; the number of "
            "its "
            "elements is the index after the last."),
        {{{"FILE", Word::File}, {"PATH", Word::Path}, valueArgument}},
        {{"--type", "T", Word::Type, QT_TRANSLATE_NOOP("CommandLine", "the type of the attribute")},
         {"--parents",
          {},
          Word::Text,
          QT_TRANSLATE_NOOP("CommandLine", "add the groups that lead to it, which is done without it, too")},
         stdinOption,
         dryRunOption},
        {"vantry create app.ini server.timeout 30", "vantry create app.json hosts.0 first",
         "vantry create app.json start 2024-05-31 --type date"},
        run};
}

} // namespace CommandLine::Commands
