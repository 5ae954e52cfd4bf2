#include "cli/Output.h"
#include "cli/Session.h"
#include "cli/commands/Commands.h"

namespace CommandLine::Commands {

namespace {

void print(Session& session, const QString& fullPath, const QString& name, int depth)
{
    QString line = QString(2 * depth, QLatin1Char(' ')) + name;
    auto& repository = session.getRepository();
    const auto attribute = repository.getReaderInterface()->getAttribute(fullPath);
    if (attribute && isReadable(attribute->getAccessMode()))
        line += QStringLiteral(" = ") + Output::valueInLine(attribute->getValue());
    Output::line(line);
    const QStringList names = repository.getTreeInterface()->getChildNames(fullPath);
    for (const QString& child : names)
        print(session, fullPath + QLatin1Char('.') + child, child, depth + 1);
}

ExitCode run(Session& session, const Invocation& invocation)
{
    const Source* source = session.open(invocation.arguments.at(0), Session::Opening::Read);
    if (!source)
        return session.getFailure();
    const QString path = invocation.arguments.value(1);
    if (!session.find(*source, path).exists)
        return ExitCode::Negative;
    const QString fullPath = source->fullPath(path);
    if (fullPath != source->root) {
        print(session, fullPath, source->relativePath(fullPath), 0);
    } else {
        const QStringList names = session.getRepository().getTreeInterface()->getChildNames(fullPath);
        for (const QString& name : names)
            print(session, fullPath + QLatin1Char('.') + name, name, 0);
    }
    return ExitCode::Done;
}

} // namespace

Command tree()
{
    return {
        "tree",
        "print names and values as a tree",
        "Prints PATH and all below it, a line each, two blanks deeper for each level, values behind \" = \".",
        {{{"FILE", Word::File}, {"PATH", Word::Path, Argument::Count::Optional}}},
        {},
        {"vantry tree app.ini"},
        run};
}

} // namespace CommandLine::Commands
