#include "cli/Output.h"
#include "cli/Records.h"
#include "cli/Session.h"
#include "cli/TreeWalk.h"
#include "cli/TypedText.h"
#include "cli/commands/Commands.h"
#include "host/FrameworkCore/AppConfig/AttributePath.h"

namespace CommandLine::Commands {

using FrameworkCore::AppConfig::joinedPath;

namespace {

// Nothing for a group and for what must not be read.
std::optional<QVariant> valueAt(Session& session, const QString& fullPath)
{
    const auto attribute = session.getRepository().getReaderInterface()->getAttribute(fullPath);
    return attribute && isReadable(attribute->getAccessMode()) ? std::optional(attribute->getValue())
                                                               : std::nullopt;
}

ExitCode runLs(Session& session, const Invocation& invocation)
{
    const auto place = session.locate(Session::Opening::Read);
    if (!place)
        return session.getFailure();
    auto& repository = session.getRepository();
    Records records(invocation);
    const QStringList names = repository.getTreeInterface()->getChildNames(place->path);
    for (const QString& name : names)
        records.addNode(repository, *place->source, joinedPath(place->path, name));
    if (names.isEmpty() && place->node.isAttribute)
        records.addNode(repository, *place->source, place->path);
    return ExitCode::Done;
}

// A node and all below it, a line each, or in json as an object with those below in it.
class TreePrinter
{
public:
    TreePrinter(Session& printedSession, Records& printedRecords)
        : session(printedSession), records(printedRecords)
    {
    }

    void print(const QString& fullPath, const QString& name, int depth)
    {
        if (records.areJson()) {
            records.addJson(toJson(fullPath, name));
            return;
        }
        const auto value = valueAt(session, fullPath);
        records.add(QString(2 * depth, QLatin1Char(' ')) + name +
                    (value ? QStringLiteral(" = ") + records.valueText(*value) : QString()));
        printChildren(fullPath, depth + 1);
    }

    void printChildren(const QString& fullPath, int depth)
    {
        const QStringList names = childNames(fullPath);
        for (const QString& name : names)
            print(joinedPath(fullPath, name), name, depth);
    }

private:
    QStringList childNames(const QString& fullPath)
    {
        return session.getRepository().getTreeInterface()->getChildNames(fullPath);
    }

    QString toJson(const QString& fullPath, const QString& name)
    {
        Records::Fields fields{{"name", name}};
        Records::appendValue(fields, session.getRepository(), fullPath);
        QString json = Records::objectOf(fields);
        QStringList children;
        const QStringList names = childNames(fullPath);
        for (const QString& child : names)
            children.append(toJson(joinedPath(fullPath, child), child));
        if (children.isEmpty())
            return json;
        json.chop(1);
        return json + QStringLiteral(", \"children\": [") + children.join(QStringLiteral(", ")) +
               QStringLiteral("]}");
    }

    Session& session; // not owned
    Records& records; // not owned
};

ExitCode runTree(Session& session, const Invocation& invocation)
{
    const auto place = session.locate(Session::Opening::Read);
    if (!place)
        return session.getFailure();
    Records records(invocation);
    TreePrinter printer(session, records);
    if (place->path != place->source->root)
        printer.print(place->path, place->source->relativePath(place->path), 0);
    else
        printer.printChildren(place->path, 0);
    return ExitCode::Done;
}

ExitCode runList(Session& session, const Invocation& invocation)
{
    const auto place = session.locate(Session::Opening::Read);
    if (!place)
        return session.getFailure();
    auto& repository = session.getRepository();
    Records records(invocation);
    const auto print = [&](const QString& path) {
        const auto value = valueAt(session, path);
        const QString shown = place->source->relativePath(path);
        if (value && records.areJson())
            records.addNode(repository, *place->source, path);
        else if (value && invocation.has("--null"))
            records.add(shown + QLatin1Char('\n') + records.valueText(*value));
        else if (value)
            records.add(shown + QStringLiteral(" = ") + TypedText::asShellWord(*value));
        return true;
    };
    print(place->path);
    visitBelow(*repository.getTreeInterface(), place->path, print);
    return ExitCode::Done;
}

const Command::Form form{{"FILE", Word::File}, {"PATH", Word::Path, Argument::Count::Optional}};

} // namespace

Command ls()
{
    return {
        "ls",
        QT_TRANSLATE_NOOP("CommandLine", "list what is in a group"),
        QT_TRANSLATE_NOOP(
            "CommandLine",
            "Prints the paths right below PATH, one a line, in the order of the file; without PATH, those at "
            "the top. An attribute with nothing below it lists itself.\n"
            "With --json: an array of objects with \"path\", \"type\" and, where there is one, \"value\"; "
            "the "
            "type of a group is group."),
        {form},
        {jsonOption, nullOption},
        {"vantry ls app.ini", "vantry ls app.ini server"},
        runLs};
}

Command tree()
{
    return {"tree",
            QT_TRANSLATE_NOOP("CommandLine", "print names and values as a tree"),
            QT_TRANSLATE_NOOP("CommandLine", "Prints PATH and all below it, a line each, two blanks deeper "
                                             "for each level, values after \" = \".\n"
                                             "With --json: an array of objects with \"name\", \"type\" and, "
                                             "where there are any, \"value\" and "
                                             "\"children\", an array of such objects."),
            {form},
            {jsonOption, nullOption},
            {"vantry tree app.ini"},
            runTree};
}

Command list()
{
    return {
        "list",
        QT_TRANSLATE_NOOP("CommandLine", "print all paths with their values"),
        QT_TRANSLATE_NOOP(
            "CommandLine",
            "Prints \"PATH = VALUE\" for each attribute at and below PATH, in the order of the file. VALUE "
            "is a "
            "word of the shell, in quotes where it needs them, so that it can be given to \"set\" again, "
            "after "
            "\"--\" where it begins with \"-\".\n"
            "With --null: PATH, a line break, and the value as \"get\" prints it. With --json: an array of "
            "objects with \"path\", \"type\" and \"value\"."),
        {form},
        {jsonOption, nullOption},
        {"vantry list app.ini", "vantry list app.ini server --json"},
        runList};
}

} // namespace CommandLine::Commands
