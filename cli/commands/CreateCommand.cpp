#include "cli/Session.h"
#include "cli/TypedText.h"
#include "cli/commands/Commands.h"
#include "repository/common/PathRules.h"

#include <optional>

namespace CommandLine::Commands {

namespace {

ExitCode run(Session& session, const Invocation& invocation)
{
    const QString& path = invocation.arguments.at(1);
    const QString& text = invocation.arguments.at(2);
    std::optional<QVariant> value = TypedText::readPlain(text);
    if (invocation.has("--type")) {
        const auto type = TypedText::typeNamed(invocation.valueOf("--type"));
        if (!type)
            return ExitCode::Usage;
        QString reason;
        value = TypedText::read(text, *type, reason);
        if (!value)
            return Session::fail(ExitCode::Refused, QStringLiteral("'%1': %2").arg(path, reason));
    }
    if (!Repository::isValidPath(path) && !Repository::isTooDeep(path)) // of which the repository tells
        return Session::fail(
            ExitCode::Usage,
            QStringLiteral(
                "'%1' is not a path: names joined by \".\", none of them empty, and none with \"*\" in it")
                .arg(path));
    const Source* source = session.open(invocation.arguments.at(0), Session::Opening::Create);
    if (!source)
        return session.getFailure();
    constexpr int createOnly = 2;
    constexpr int readWrite = 3;
    const auto outcome = session.getRepository().getWriterInterface()->create(source->fullPath(path), *value,
                                                                              createOnly, readWrite);
    session.tell(outcome);
    return outcome.ok() ? session.save(*source) : ExitCode::Refused;
}

} // namespace

Command create()
{
    return {
        "create",
        "add an attribute, and the groups that lead to it",
        "The new entry comes after its siblings, in the manner of the file. Without --type, VALUE is what "
        "a file would hold by that text: true and false, whole numbers, or else a text. A type which the "
        "file's format has no form of its own for is kept in a type tag that other programs take for a "
        "comment. "
        "An attribute that is there already is refused; a file that is not there is created.",
        {{{"FILE", Word::File}, {"PATH", Word::Path}, {"VALUE", Word::Text}}},
        {{"--type", "T", Word::Type, "the type of the attribute"},
         {"--parents", {}, Word::Text, "add the groups that lead to it, which is done without it, too"},
         dryRunOption},
        {"vantry create app.ini server.timeout 30", "vantry create app.json start 2024-05-31 --type date"},
        run};
}

} // namespace CommandLine::Commands
