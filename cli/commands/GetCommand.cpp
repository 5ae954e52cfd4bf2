#include "cli/Output.h"
#include "cli/Session.h"
#include "cli/Texts.h"
#include "cli/TypedText.h"
#include "cli/commands/Commands.h"
#include "repository/documents/json/PlainJson.h"

namespace CommandLine::Commands {

namespace {

ExitCode run(Session& session, const Invocation& invocation)
{
    const auto place = session.locate(Session::Opening::Read);
    if (!place)
        return session.getFailure();
    const char end = invocation.has("--null") ? '\0' : '\n';
    if (invocation.has("--json") && place->node.childCount > 0) {
        QByteArray text;
        const ExitCode code = session.finish(session.getRepository().getTransferInterface()->exportTree(
            place->path, QStringLiteral("json"), text));
        if (code == ExitCode::Done)
            Output::bytes(Repository::Documents::plainJson(text.trimmed().toStdString()) + end);
        return code;
    }
    const QString& path = invocation.arguments.at(1);
    if (!place->node.isAttribute)
        return Session::fail(
            ExitCode::Negative,
            Texts::tr("%1: '%2' is a group without a value of its own; 'vantry ls' shows what is in it")
                .arg(place->source->given, path));
    QVariant value;
    const int status =
        session.getRepository().getReaderInterface()->readAttributeValue(place->path, value, 0);
    if (status == Session::StatusCode::NotReadable)
        return Session::fail(ExitCode::Refused,
                             Texts::tr("%1: '%2' is write-only").arg(place->source->given, path));
    if (invocation.has("--type"))
        Output::bytes(TypedText::nameOf(value).toStdString() + end);
    else if (invocation.has("--json"))
        Output::bytes(TypedText::toJson(value).toStdString() + end);
    else
        Output::bytes(Output::valueText(value) + end);
    return ExitCode::Done;
}

} // namespace

Command get()
{
    return {
        "get",
        QT_TRANSLATE_NOOP("CommandLine", "print the value of an attribute"),
        QT_TRANSLATE_NOOP(
            "CommandLine",
            "The value is printed as it is, followed by a line break. A list is printed with \";\" "
            "between its elements, \"\\\" before a \";\" or \"\\\" of an element; bytes with \"\\x\" and two "
            "hex digits where they are not text; dates and times in ISO 8601.\n"
            "A group has no value: the exit code is 1. With --json it is an object of all that is in it, "
            "and a value is one of json; bytes, dates and times are texts."),
        {{{"FILE", Word::File}, {"PATH", Word::Path}}},
        {{"--type", {}, Word::Text, QT_TRANSLATE_NOOP("CommandLine", "print the name of its type instead")},
         jsonOption,
         nullOption},
        {"vantry get app.ini server.port", "vantry get package.json scripts --json"},
        run};
}

} // namespace CommandLine::Commands
