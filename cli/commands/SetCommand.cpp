#include "cli/Edits.h"
#include "cli/Texts.h"
#include "cli/TreeWalk.h"
#include "cli/commands/Commands.h"

namespace CommandLine::Commands {

namespace {

// All attributes that match, or none.
ExitCode setMatches(Session& session, const Source& source, const Invocation& invocation, const QString& text,
                    WantedType type)
{
    const QString& pattern = invocation.arguments.at(1);
    if (invocation.has("--create"))
        return Session::fail(
            ExitCode::Usage,
            Texts::tr("'%1' is a pattern, and --create needs the path of the attribute").arg(pattern));
    const auto tree = session.getRepository().getTreeInterface();
    const Edits edits(session, source);
    int count = 0;
    const QStringList paths = findMatches(*tree, source, pattern);
    for (const QString& path : paths) {
        if (!tree->getNodeInformation(path).isAttribute)
            continue;
        const ExitCode code = edits.set(path, text, type);
        if (code != ExitCode::Done)
            return code;
        ++count;
    }
    return edits.saveAll(count, pattern, session.isDryRun() ? Texts::tr("would be set") : Texts::tr("set"));
}

ExitCode run(Session& session, const Invocation& invocation)
{
    WantedType type;
    if (!Edits::readType(invocation, type))
        return ExitCode::Usage;
    const bool creates = invocation.has("--create");
    const QString& path = invocation.arguments.at(1);
    QString text;
    const ExitCode reading = Edits::readText(invocation, text);
    if (reading != ExitCode::Done)
        return reading;
    const Source* source =
        session.open(invocation.arguments.at(0), creates ? Session::Opening::Create : Session::Opening::Edit);
    if (!source)
        return session.getFailure();
    if (isPattern(path))
        return setMatches(session, *source, invocation, text, type);
    const QString fullPath = source->fullPath(path);
    const auto node = creates
                          ? session.getRepository().getTreeInterface()->getNodeInformation(fullPath)
                          : session.find(*source, path, Texts::tr("; 'vantry create' or --create adds it"));
    if (!creates && !node.exists)
        return session.getFailure();
    if (!creates && !node.isAttribute)
        return Session::fail(
            ExitCode::Negative,
            Texts::tr("%1: '%2' is a group without a value of its own").arg(source->given, path));
    const Edits edits(session, *source);
    const ExitCode code = node.isAttribute ? edits.set(fullPath, text, type) : edits.create(path, text, type);
    return code == ExitCode::Done ? session.save(*source) : code;
}

} // namespace

Command set()
{
    return {
        "set",
        QT_TRANSLATE_NOOP("CommandLine", "change the value of an attribute"),
        QT_TRANSLATE_NOOP(
            "CommandLine",
            "Where the file says of which type the attribute is, as json does, by quotes or by a type tag, "
            "VALUE is read as that type, in the form in which \"get\" prints it, and the type stays. "
            "Elsewhere VALUE is written as it is, and its type is what it looks like: true and false, "
            "numbers, or else a text; so it is for a null, which the word null leaves as it is. With --type, "
            "the attribute gets that type, if the file can hold it. "
            "Only the bytes of the value change in the file, and those of its type tag with the type. When "
            "another program has changed other attributes since the file was read, both changes are in it; "
            "when it has changed the same one, nothing is written and the exit code is 3. An attribute that "
            "is not there is not created, unless --create is given; then PATH, VALUE and T are those of "
            "\"create\".\n"
            "With \"*\" in PATH, which stands for any run of characters, all attributes that match are set, "
            "in "
            "one write of the file, or none of them. How many there are is said on stderr; the exit code is "
            "1 "
            "when there is none."),
        {{{"FILE", Word::File}, {"PATH", Word::Path}, valueArgument}},
        {{"--type", "T", Word::Type,
          QT_TRANSLATE_NOOP("CommandLine", "the type of VALUE, and of the attribute from then on")},
         {"--create",
          {},
          Word::Text,
          QT_TRANSLATE_NOOP("CommandLine", "create the attribute when it is not there")},
         stdinOption,
         dryRunOption},
        {"vantry set app.ini server.port 8080", "vantry set app.ini log.prefix -- '-> '",
         "vantry set app.ini '*.enabled' false --dry-run"},
        run};
}

} // namespace CommandLine::Commands
