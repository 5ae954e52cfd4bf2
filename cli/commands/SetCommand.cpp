#include "cli/Session.h"
#include "cli/TypedText.h"
#include "cli/commands/Commands.h"
#include "host/FrameworkCore/Values/VariantValue.h"

#include <optional>

namespace CommandLine::Commands {

namespace {

using FrameworkCore::Values::Type;

// The value to write: read as the type that is asked for, or as that of the attribute, so that what "get"
// prints can be set again.
std::optional<QVariant> readValue(const QString& text, std::optional<Type> wanted, const QVariant& present,
                                  QString& reason)
{
    if (!wanted && !present.isValid())
        return TypedText::readPlain(text);
    return TypedText::read(text, wanted ? *wanted : FrameworkCore::Values::toValue(present).type, reason);
}

ExitCode run(Session& session, const Invocation& invocation)
{
    std::optional<Type> wanted;
    if (invocation.has("--type")) {
        wanted = TypedText::typeNamed(invocation.valueOf("--type"));
        if (!wanted)
            return ExitCode::Usage;
    }
    const auto place = session.locate(Session::Opening::Edit, QStringLiteral("; 'vantry create' adds it"));
    if (!place)
        return session.getFailure();
    const QString& path = invocation.arguments.at(1);
    if (!place->node.isAttribute)
        return Session::fail(
            ExitCode::Negative,
            QStringLiteral("%1: '%2' is a group without a value of its own").arg(place->source->given, path));

    auto& repository = session.getRepository();
    QVariant present;
    repository.getReaderInterface()->readAttributeValue(place->path, present, 0);
    QString reason;
    const auto value = readValue(invocation.arguments.at(2), wanted, present, reason);
    if (!value)
        return Session::fail(ExitCode::Refused,
                             QStringLiteral("%1: '%2': %3").arg(place->source->given, path, reason));
    constexpr int allPoints = 15;
    return session.finish(repository.getWriterInterface()->write(place->path, *value, allPoints),
                          *place->source);
}

} // namespace

Command set()
{
    return {
        "set",
        "change the value of an attribute",
        "VALUE is read as the type that the attribute has, in the form in which \"get\" prints it; the type "
        "itself stays. Only the bytes of the value change in the file. When another program has changed "
        "other attributes since the file was read, both changes are in it; when it has changed the same one, "
        "nothing is written and the exit code is 3. An attribute that is not there is not created.",
        {{{"FILE", Word::File}, {"PATH", Word::Path}, {"VALUE", Word::Text}}},
        {{"--type", "T", Word::Type, "read VALUE as this type, then convert it without loss"}, dryRunOption},
        {"vantry set app.ini server.port 8080", "vantry set app.ini log.prefix -- '-> '"},
        run};
}

} // namespace CommandLine::Commands
