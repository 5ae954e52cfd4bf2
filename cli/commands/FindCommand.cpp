#include "cli/Output.h"
#include "cli/Session.h"
#include "cli/commands/Commands.h"
#include "host/FrameworkCore/AppConfig/PathPattern.h"

namespace CommandLine::Commands {

namespace {

ExitCode run(Session& session, const Invocation& invocation)
{
    const Source* source = session.open(invocation.arguments.at(0), Session::Opening::Read);
    if (!source)
        return session.getFailure();
    auto& repository = session.getRepository();
    const QStringList paths =
        repository.getTreeInterface()->findPaths({source->fullPath(invocation.arguments.at(1))});
    const bool asksForValue = invocation.has("--value");
    const FrameworkCore::AppConfig::PathPattern wanted(invocation.valueOf("--value"));
    const auto reader = repository.getReaderInterface();
    bool isFound = false;
    for (const QString& path : paths) {
        const auto attribute = asksForValue ? reader->getAttribute(path) : nullptr;
        const bool matches =
            !asksForValue ||
            (attribute && isReadable(attribute->getAccessMode()) &&
             wanted.matches(QString::fromStdString(Output::valueText(attribute->getValue()))));
        if (matches && path != source->root) {
            Output::line(source->relativePath(path));
            isFound = true;
        }
    }
    return isFound ? ExitCode::Done : ExitCode::Negative;
}

} // namespace

Command find()
{
    return {"find",
            "print the paths that match a pattern",
            "In PATTERN and TEXT \"*\" stands for any run of characters, \".\" included; everything else "
            "stands for itself. Groups are found as attributes are, unless --value is given. The exit code "
            "is 1 when there is none.",
            {{{"FILE", Word::File}, {"PATTERN", Word::Pattern}}},
            {{"--value", "TEXT", Word::Text, "only attributes whose value matches TEXT"}},
            {"vantry find app.ini '*.port'", "vantry find app.ini '*' --value '*localhost*'"},
            run};
}

} // namespace CommandLine::Commands
