#include "cli/Session.h"
#include "cli/TypedText.h"
#include "cli/commands/Commands.h"
#include "host/FrameworkCore/Values/VariantValue.h"

#include <optional>

namespace CommandLine::Commands {

namespace {

ExitCode run(Session& session, const Invocation& invocation)
{
    std::optional<FrameworkCore::Values::Type> wanted;
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
    const auto backend = repository.getBackendInterface()->getBackendInformation(place->source->root);
    const bool isGuessed = !wanted && !backend->namesType(place->path);
    const bool isPlain = isGuessed || (!wanted && !present.isValid());
    const QString& text = invocation.arguments.at(2);
    const auto type = wanted ? *wanted : FrameworkCore::Values::toValue(present).type;
    QString reason;
    const auto value = isPlain ? TypedText::readPlain(text) : TypedText::read(text, type, reason);
    if (!value)
        return Session::fail(ExitCode::Refused,
                             QStringLiteral("%1: '%2': %3").arg(place->source->given, path, reason));
    constexpr int allPoints = 15;
    const auto writer = repository.getWriterInterface();
    return session.finish(wanted || isGuessed ? writer->retype(place->path, *value)
                                              : writer->write(place->path, *value, allPoints),
                          *place->source);
}

} // namespace

Command set()
{
    return {
        "set",
        "change the value of an attribute",
        "Where the file says of which type the attribute is, as json does, by quotes or by a type tag, VALUE "
        "is read as that type, in the form in which \"get\" prints it, and the type stays. Elsewhere VALUE "
        "is "
        "written as it is, and its type is what it looks like: true and false, whole numbers, or else a "
        "text. "
        "With --type, the attribute gets that type, if the file can hold it. Only the bytes of the value "
        "change in the file, and those of its type tag with the type. When another program has changed other "
        "attributes since the file was read, both changes are in it; when it has changed the same one, "
        "nothing "
        "is written and the exit code is 3. An attribute that is not there is not created.",
        {{{"FILE", Word::File}, {"PATH", Word::Path}, {"VALUE", Word::Text}}},
        {{"--type", "T", Word::Type, "the type of VALUE, and of the attribute from then on"}, dryRunOption},
        {"vantry set app.ini server.port 8080", "vantry set app.ini log.prefix -- '-> '"},
        run};
}

} // namespace CommandLine::Commands
