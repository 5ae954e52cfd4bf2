#include "cli/Output.h"
#include "cli/Session.h"
#include "cli/commands/Commands.h"
#include "host/FrameworkCore/AppConfig/AttributePath.h"
namespace CommandLine::Commands {

namespace {

ExitCode runList(Session& session, const Invocation&)
{
    const auto place = session.locate(Session::Opening::Read);
    if (!place)
        return session.getFailure();
    const QStringList names = session.getRepository().getTreeInterface()->getChildNames(place->path);
    for (const QString& name : names)
        Output::line(place->source->relativePath(FrameworkCore::AppConfig::joinedPath(place->path, name)));
    if (names.isEmpty() && place->node.isAttribute)
        Output::line(place->source->relativePath(place->path));
    return ExitCode::Done;
}

void printChildren(Session& session, const QString& fullPath, int depth);

void print(Session& session, const QString& fullPath, const QString& name, int depth)
{
    QString line = QString(2 * depth, QLatin1Char(' ')) + name;
    auto& repository = session.getRepository();
    const auto attribute = repository.getReaderInterface()->getAttribute(fullPath);
    if (attribute && isReadable(attribute->getAccessMode()))
        line += QStringLiteral(" = ") + Output::valueInLine(attribute->getValue());
    Output::line(line);
    printChildren(session, fullPath, depth + 1);
}

void printChildren(Session& session, const QString& fullPath, int depth)
{
    const QStringList names = session.getRepository().getTreeInterface()->getChildNames(fullPath);
    for (const QString& name : names)
        print(session, FrameworkCore::AppConfig::joinedPath(fullPath, name), name, depth);
}

ExitCode runTree(Session& session, const Invocation&)
{
    const auto place = session.locate(Session::Opening::Read);
    if (!place)
        return session.getFailure();
    if (place->path != place->source->root)
        print(session, place->path, place->source->relativePath(place->path), 0);
    else
        printChildren(session, place->path, 0);
    return ExitCode::Done;
}

} // namespace

Command list()
{
    return {"ls",
            "list what is in a group",
            "Prints the paths right below PATH, one a line, in the order of the file; without PATH, those at "
            "the top. An attribute with nothing below it lists itself.",
            {{{"FILE", Word::File}, {"PATH", Word::Path, Argument::Count::Optional}}},
            {},
            {"vantry ls app.ini", "vantry ls app.ini server"},
            runList};
}

Command tree()
{
    return {
        "tree",
        "print names and values as a tree",
        "Prints PATH and all below it, a line each, two blanks deeper for each level, values after \" = \".",
        {{{"FILE", Word::File}, {"PATH", Word::Path, Argument::Count::Optional}}},
        {},
        {"vantry tree app.ini"},
        runTree};
}

} // namespace CommandLine::Commands
