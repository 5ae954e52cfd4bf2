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

QByteArray bytes(const QJsonValue& value)
{
    return QByteArray::fromBase64(value.toString().toLatin1());
}

QString text(const QByteArray& bytes)
{
    return QString::fromLatin1(bytes.toBase64());
}

SessionState::View viewOf(const QJsonObject& object)
{
    SessionState::View view;
    view.expanded = texts(object[QStringLiteral("expanded")]);
    view.current = object[QStringLiteral("current")].toString();
    view.scroll = object[QStringLiteral("scroll")].toInt();
    view.monitored = texts(object[QStringLiteral("monitored")]);
    view.geometry = bytes(object[QStringLiteral("geometry")]);
    view.docks = bytes(object[QStringLiteral("docks")]);
    const QJsonObject pages = object[QStringLiteral("pages")].toObject();
    for (auto page = pages.begin(); page != pages.end(); ++page)
        view.pages.insert(page.key(), page.value().toString());
    return view;
}

QJsonObject toObject(const SessionState::View& view)
{
    QJsonObject pages;
    for (auto page = view.pages.begin(); page != view.pages.end(); ++page)
        pages.insert(page.key(), page.value());
    return {{QStringLiteral("expanded"), QJsonArray::fromStringList(view.expanded)},
            {QStringLiteral("current"), view.current},
            {QStringLiteral("scroll"), view.scroll},
            {QStringLiteral("monitored"), QJsonArray::fromStringList(view.monitored)},
            {QStringLiteral("geometry"), text(view.geometry)},
            {QStringLiteral("docks"), text(view.docks)},
            {QStringLiteral("pages"), pages}};
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
    state.locked = texts(object[QStringLiteral("locked")]);
    const QJsonArray windows = object[QStringLiteral("windows")].toArray();
    for (const QJsonValue& window : windows)
        state.windows.append(viewOf(window.toObject()));
    if (windows.isEmpty()) // there was one only, once
        state.windows.append(viewOf(object));
    return state;
}

QByteArray SessionState::toJson() const
{
    QJsonArray list;
    for (const File& file : files)
        list.append(QJsonObject{{QStringLiteral("type"), file.type},
                                {QStringLiteral("name"), file.name},
                                {QStringLiteral("location"), file.location}});
    QJsonArray views;
    for (const View& view : windows)
        views.append(toObject(view));
    return QJsonDocument(QJsonObject{{QStringLiteral("files"), list},
                                     {QStringLiteral("locked"), QJsonArray::fromStringList(locked)},
                                     {QStringLiteral("windows"), views}})
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
