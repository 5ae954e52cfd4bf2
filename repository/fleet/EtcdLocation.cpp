#include "repository/fleet/EtcdLocation.h"

#include "repository/common/Texts.h"
#include "repository/fleet/KeyCodec.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUrl>
#include <QUrlQuery>

#include <algorithm>

namespace Repository {

namespace {

const QLatin1String plainScheme("etcd://");
const QLatin1String securedScheme("etcds://");

// What names a file.
bool isFileOption(const QString& name)
{
    return name == QLatin1String("credentials") || name == QLatin1String("ca") ||
           name == QLatin1String("cert") || name == QLatin1String("key");
}

// As it can stand in a location again.
QString escaped(QString value)
{
    return value.replace(QLatin1Char('%'), QLatin1String("%25"))
        .replace(QLatin1Char('&'), QLatin1String("%26"));
}

// Why it cannot be read; empty when it could be.
QString readFile(const QString& name, std::string& text)
{
    if (name.isEmpty())
        return {};
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        return Texts::tr("'%1' cannot be read: %2").arg(name, file.errorString());
    text = file.readAll().toStdString();
    return {};
}

} // namespace

EtcdLocation::EtcdLocation(const QString& location)
{
    usesTls = location.startsWith(securedScheme);
    const int start = usesTls ? securedScheme.size() : plainScheme.size();
    if (!usesTls && !location.startsWith(plainScheme)) {
        error = Texts::tr("a store is given as etcd://HOST:PORT/NAME, or etcds://HOST:PORT/NAME with TLS");
        return;
    }
    const int mark = location.indexOf(QLatin1Char('?'));
    const QString place = location.mid(start, mark < 0 ? -1 : mark - start);
    const int slash = place.indexOf(QLatin1Char('/'));
    store = slash < 0 ? QString() : place.mid(slash + 1);
    const QString hosts = place.left(slash);
    const int at = hosts.lastIndexOf(QLatin1Char('@'));
    // Of what is secret, it stays to be seen that it was there, so that it is refused again.
    text = location.left(start) + hosts.mid(std::max(at, 0)) + QLatin1Char('/') + store;
    if (at >= 0)
        error = Texts::tr("it must not hold a user or a password; give the user by ?user=NAME and the "
                          "password in a file by ?credentials=FILE");
    readEndpoints(hosts.mid(at + 1));
    if (store.isEmpty())
        error = Texts::tr("the name of the store is missing, as in etcd://HOST:PORT/NAME");
    else if (store.contains(QLatin1Char('/')))
        error = Texts::tr("the name of a store has no \"/\" in it, as '%1' has").arg(store);
    const auto items =
        QUrlQuery(mark < 0 ? QString() : location.mid(mark + 1)).queryItems(QUrl::FullyDecoded);
    QStringList shown;
    for (const auto& [name, given] : items) {
        const QString value =
            isFileOption(name) && !given.isEmpty() ? QFileInfo(given).absoluteFilePath() : given;
        readOption(name, value);
        shown.append(escaped(name) + QLatin1Char('=') +
                     (name == QLatin1String("password") ? QString() : escaped(value)));
    }
    if (!shown.isEmpty())
        text += QLatin1Char('?') + shown.join(QLatin1Char('&'));
}

bool EtcdLocation::isMeant(const QString& text)
{
    return text.startsWith(plainScheme) || text.startsWith(securedScheme);
}

void EtcdLocation::readEndpoints(const QString& list)
{
    const QStringList hosts = list.split(QLatin1Char(','));
    for (const QString& host : hosts) {
        const int colon = host.lastIndexOf(QLatin1Char(':'));
        bool isNumber = false;
        const int port = host.mid(colon + 1).toInt(&isNumber);
        if (colon <= 0 || !isNumber || port < 1 || port > 65535)
            error = Texts::tr("'%1' is not HOST:PORT").arg(host);
        else if (host.left(colon).contains(QLatin1Char(':')) && !host.startsWith(QLatin1Char('[')))
            error = Texts::tr("'%1': an IPv6 address stands in brackets, as in [::1]:2379").arg(host);
        endpoints.push_back(host.toStdString());
    }
}

void EtcdLocation::readOption(const QString& name, const QString& value)
{
    if (name == QLatin1String("user"))
        user = value;
    else if (name == QLatin1String("credentials"))
        credentials = value;
    else if (name == QLatin1String("ca"))
        authority = value;
    else if (name == QLatin1String("cert"))
        certificate = value;
    else if (name == QLatin1String("key"))
        key = value;
    else if (name == QLatin1String("offline") &&
             (value == QLatin1String("queue") || value == QLatin1String("refuse")))
        queues = value == QLatin1String("queue");
    else if (name == QLatin1String("offline"))
        error = Texts::tr("offline is queue or refuse, not '%1'").arg(value);
    else if (name == QLatin1String("password"))
        error = Texts::tr("it must not hold a password; give a file with it by ?credentials=FILE");
    else
        error = Texts::tr("unknown option '%1'; valid are user, credentials, ca, cert, key and offline")
                    .arg(name);
}

std::string EtcdLocation::getPrefix() const
{
    return "vantry/1/" + KeyCodec::keyOf(store.toStdString()) + '/';
}

QString EtcdLocation::readCredentials(StoreSettings& settings) const
{
    if (credentials.isEmpty())
        return {};
    const auto othersMay =
        QFile::permissions(credentials) & (QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                           QFile::ReadOther | QFile::WriteOther | QFile::ExeOther);
    if (QFileInfo::exists(credentials) && othersMay)
        return Texts::tr("others than you may use '%1'; take that from them by chmod 600").arg(credentials);
    std::string content;
    const QString refusal = readFile(credentials, content);
    if (!refusal.isEmpty())
        return refusal;
    EtcdLocation files(*this);
    const QDir folder = QFileInfo(credentials).absoluteDir();
    const QStringList lines = QString::fromStdString(content).split(QLatin1Char('\n'));
    for (const QString& line : lines) {
        const QString name = line.section(QLatin1Char('='), 0, 0).trimmed();
        const QString value = line.section(QLatin1Char('='), 1).trimmed();
        if (name.isEmpty() || name.startsWith(QLatin1Char('#')))
            continue;
        if (name == QLatin1String("password"))
            settings.password = value.toStdString();
        else
            files.readOption(name, isFileOption(name) ? folder.absoluteFilePath(value) : value);
    }
    files.credentials.clear();
    return files.error.isEmpty() ? files.read(settings)
                                 : QStringLiteral("'%1': %2").arg(credentials, files.error);
}

QString EtcdLocation::read(StoreSettings& settings) const
{
    settings.endpoints = endpoints;
    settings.usesTls = usesTls;
    settings.user = user.toStdString();
    const std::pair<QString, std::string*> files[] = {
        {authority, &settings.authority}, {certificate, &settings.certificate}, {key, &settings.key}};
    for (const auto& [name, content] : files) {
        const QString refusal = readFile(name, *content);
        if (!refusal.isEmpty())
            return refusal;
    }
    return readCredentials(settings);
}

} // namespace Repository
