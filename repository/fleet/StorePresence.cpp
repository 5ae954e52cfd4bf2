#include "repository/fleet/StorePresence.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSysInfo>

#include <pwd.h>
#include <unistd.h>
#include <vector>

namespace Repository {

using namespace std::chrono_literals;

namespace {

constexpr auto timeToLive = 10s;
constexpr auto keepingEach = 3s;
constexpr auto retryingAfter = 60s; // of a store that does not allow it

// By the number where the system has no name for it, as it may be in a container.
QString userName()
{
    constexpr std::size_t mostBytes = 16384;
    std::vector<char> buffer(mostBytes);
    passwd entry{};
    passwd* found = nullptr;
    ::getpwuid_r(::geteuid(), &entry, buffer.data(), buffer.size(), &found);
    return found ? QString::fromLocal8Bit(found->pw_name) : QString::number(::geteuid());
}

std::string ownValue()
{
    const QJsonObject presence{
        {QStringLiteral("who"), userName() + QLatin1Char('@') + QSysInfo::machineHostName()},
        {QStringLiteral("pid"), QCoreApplication::applicationPid()},
        {QStringLiteral("since"), QDateTime::currentDateTimeUtc().toString(Qt::ISODate)}};
    return QJsonDocument(presence).toJson(QJsonDocument::Compact).toStdString();
}

} // namespace

void StorePresence::keep()
{
    if (Clock::now() < due)
        return;
    due = Clock::now() + keepingEach;
    bool isAlive = false;
    if (lease != 0 && context.transport->keepLease(lease, isAlive).ok() && !isAlive)
        lease = 0;
    if (lease == 0)
        begin();
}

void StorePresence::begin()
{
    if (!context.transport->grantLease(timeToLive, lease).ok()) {
        lease = 0;
        return;
    }
    StoreReply reply;
    const StoreResult result = context.transport->write(
        {{context.sessionKey(), ownValue(), StoreChange::anyRevision, lease}}, reply);
    if (result.ok())
        return;
    end();
    if (result.status == StoreResult::Status::Refused)
        due = Clock::now() + retryingAfter;
}

void StorePresence::end()
{
    if (lease != 0)
        context.transport->revokeLease(lease);
    lease = 0;
}

QString StorePresence::userIn(const std::string& value)
{
    const QJsonObject presence = QJsonDocument::fromJson(QByteArray::fromStdString(value)).object();
    const QString who = presence[QStringLiteral("who")].toString();
    return who.isEmpty() ? who
                         : QStringLiteral("%1 (%2)").arg(who).arg(presence[QStringLiteral("pid")].toInt());
}

} // namespace Repository
