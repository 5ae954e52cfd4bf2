#include "desk/session/SessionState.h"

#include "files/StateFolder.h"
#include "host/Utilities/ModelViews/TextFile.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace Vantry {

using Utilities::ModelViews::TextFile;

namespace {

QString fileName()
{
    return QFile::decodeName(Files::StateFolder::path().c_str()) + QStringLiteral("/session.json");
}

QStringList texts(const QJsonValue& value)
{
    QStringList found;
    const QJsonArray array = value.toArray();
    for (const QJsonValue& each : array)
        found.append(each.toString());
    return found;
}

} // namespace

SessionState SessionState::read()
{
    SessionState state;
    std::string reason;
    bool isAbsent = false;
    QByteArray bytes;
    if (!Files::StateFolder::open(Files::SystemCalls::system(), reason, isAbsent) ||
        !TextFile::readBytes(fileName(), bytes).isEmpty())
        return state;
    const QJsonObject object = QJsonDocument::fromJson(bytes).object();
    const QJsonArray files = object[QStringLiteral("files")].toArray();
    for (const QJsonValue& file : files)
        state.files.append({file[QStringLiteral("type")].toString(), file[QStringLiteral("name")].toString(),
                            file[QStringLiteral("location")].toString()});
    state.expanded = texts(object[QStringLiteral("expanded")]);
    state.current = object[QStringLiteral("current")].toString();
    state.scroll = object[QStringLiteral("scroll")].toInt();
    state.monitored = texts(object[QStringLiteral("monitored")]);
    return state;
}

QByteArray SessionState::toJson() const
{
    QJsonArray list;
    for (const File& file : files)
        list.append(QJsonObject{{QStringLiteral("type"), file.type},
                                {QStringLiteral("name"), file.name},
                                {QStringLiteral("location"), file.location}});
    return QJsonDocument(QJsonObject{{QStringLiteral("files"), list},
                                     {QStringLiteral("expanded"), QJsonArray::fromStringList(expanded)},
                                     {QStringLiteral("current"), current},
                                     {QStringLiteral("scroll"), scroll},
                                     {QStringLiteral("monitored"), QJsonArray::fromStringList(monitored)}})
        .toJson();
}

QString SessionState::write() const
{
    std::string reason;
    if (!Files::StateFolder::make(Files::SystemCalls::system(), reason))
        return QString::fromStdString(reason);
    return TextFile::writeBytes(fileName(), toJson(), TextFile::Readers::OwnerOnly);
}

} // namespace Vantry
