#include "cli/Edits.h"
#include "cli/Texts.h"
#include "cli/commands/Commands.h"
#include "repository/documents/Formats.h"

namespace CommandLine::Commands {

namespace {

// The elements of a list, or of an array that holds more than texts and is a group therefore.
class Elements
{
public:
    Elements(Session& editedSession, const Session::Place& editedPlace)
        : session(editedSession), place(editedPlace), edits(session, *place.source)
    {
    }

    ExitCode append(const QStringList& values) const
    {
        if (isArray())
            return insertIntoArray(names().size(), values);
        const auto list = read();
        return list ? write(*list + values) : ExitCode::Refused;
    }

    ExitCode insert(const QString& index, const QString& value) const
    {
        const auto list = isArray() ? std::optional(names()) : read();
        if (!list)
            return ExitCode::Refused;
        bool isNumber = false;
        const uint at = index.toUInt(&isNumber);
        if (!isNumber || at > uint(list->size()))
            return refuse(
                ExitCode::Usage,
                Texts::tr("'%1' is not an index from 0 to %2").arg(index, QString::number(list->size())));
        if (isArray())
            return insertIntoArray(int(at), {value});
        QStringList changed = *list;
        changed.insert(int(at), value);
        return write(changed);
    }

private:
    QStringList names() const
    {
        return session.getRepository().getTreeInterface()->getChildNames(place.path);
    }

    bool isArray() const
    {
        if (place.node.isAttribute)
            return false;
        const auto backend =
            session.getRepository().getBackendInterface()->getBackendInformation(place.node.backend);
        const auto document = Repository::Documents::makeDocument(backend->getBackendType().toStdString());
        if (!document || !document->isArray({})) // of a format without any
            return false;
        const QStringList found = names();
        for (int at = 0; at < found.size(); ++at) {
            if (found.at(at) != QString::number(at))
                return false;
        }
        return !found.isEmpty();
    }

    std::optional<QStringList> read() const
    {
        const auto value = place.node.isAttribute ? edits.read(place.path) : QVariant();
        if (value && value->userType() == QMetaType::QStringList)
            return value->toStringList();
        if (value)
            refuse(ExitCode::Refused, Texts::tr("it is not a list, which alone has elements"));
        return {};
    }

    ExitCode write(const QStringList& list) const
    {
        const ExitCode code = edits.write(place.path, list);
        return code == ExitCode::Done ? session.save(*place.source) : code;
    }

    ExitCode insertIntoArray(int index, const QStringList& values) const
    {
        const QString path = place.source->relativePath(place.path);
        for (const QString& value : values) {
            const QString element = QString::number(index++);
            const ExitCode code =
                edits.create(path.isEmpty() ? element : path + QLatin1Char('.') + element, value, {});
            if (code != ExitCode::Done)
                return code;
        }
        return session.save(*place.source);
    }

    ExitCode refuse(ExitCode code, const QString& reason) const
    {
        return Session::fail(code,
                             Texts::tr("%1: '%2': %3")
                                 .arg(place.source->given, place.source->relativePath(place.path), reason));
    }

    Session& session;            // not owned
    const Session::Place& place; // not owned
    const Edits edits;
};

std::optional<Session::Place> locate(Session& session)
{
    return session.locate(Session::Opening::Edit, Texts::tr("; 'vantry create --type list' adds it"));
}

ExitCode runAppend(Session& session, const Invocation& invocation)
{
    const auto place = locate(session);
    return place ? Elements(session, *place).append(invocation.arguments.mid(2)) : session.getFailure();
}

ExitCode runInsert(Session& session, const Invocation& invocation)
{
    const auto place = locate(session);
    return place ? Elements(session, *place).insert(invocation.arguments.at(2), invocation.arguments.at(3))
                 : session.getFailure();
}

} // namespace

Command append()
{
    return {"append",
            QT_TRANSLATE_NOOP("CommandLine", "add elements at the end of a list"),
            QT_TRANSLATE_NOOP(
                "CommandLine",
                "PATH is a list or an array. The other elements stay as they are written. In an array "
                "that holds more than texts, VALUE is what \"create\" makes of it."),
            {{{"FILE", Word::File}, {"PATH", Word::Path}, {"VALUE", Word::Text, Argument::Count::OneOrMore}}},
            {dryRunOption},
            {"vantry append package.json files src docs"},
            runAppend};
}

Command insert()
{
    return {
        "insert",
        QT_TRANSLATE_NOOP("CommandLine", "add an element to a list before another"),
        QT_TRANSLATE_NOOP(
            "CommandLine",
            "The element with the number INDEX, of which the first is 0, and those after it move by one. The "
            "number of elements is the index after the last. In an array that holds more than texts, VALUE "
            "is "
            "what \"create\" makes of it."),
        {{{"FILE", Word::File}, {"PATH", Word::Path}, {"INDEX", Word::Text}, {"VALUE", Word::Text}}},
        {dryRunOption},
        {"vantry insert package.json files 0 src"},
        runInsert};
}

} // namespace CommandLine::Commands
