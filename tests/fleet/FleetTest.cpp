#include "tests/fleet/FleetTest.h"

#include <QJsonDocument>
#include <QJsonObject>

void FleetTest::initTestCase()
{
    const QString obstacle = EtcdServer::findObstacle();
    if (!obstacle.isEmpty())
        QSKIP(qPrintable(obstacle));
    QVERIFY2(server.start(), qPrintable(server.getFailure()));
    client = std::make_unique<EtcdClient>(server.getEndpoints().join(QLatin1Char(',')).toStdString());
}

void FleetTest::init()
{
    static int number = 0;
    store = QStringLiteral("s%1").arg(++number);
}

QVariant FleetTest::valueOf(const std::string& stored)
{
    const QJsonDocument json = QJsonDocument::fromJson(QByteArray::fromStdString(stored));
    return json.object().value(QLatin1String("v")).toVariant();
}
