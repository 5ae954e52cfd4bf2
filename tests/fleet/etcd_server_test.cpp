#include "tests/support/EtcdClient.h"
#include "tests/support/EtcdServer.h"
#include "tests/support/TestRun.h"

#include <QCoreApplication>

#include <mutex>

using TestSupport::EtcdClient;
using TestSupport::EtcdServer;

// What all other tests of this folder rely on: that servers fail as told, and that the bare client sees the
// truth.
class EtcdServerTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        const QString obstacle = EtcdServer::findObstacle();
        if (!obstacle.isEmpty())
            QSKIP(qPrintable(obstacle));
    }

    void keepsWhatItStoredWhenKilled()
    {
        EtcdServer server;
        QVERIFY2(server.start(), qPrintable(server.getFailure()));
        const EtcdClient client(endpointsOf(server));
        QVERIFY(client.put("a", "1") > 0);
        server.kill();
        QVERIFY(!server.isReady());
        QVERIFY(server.restart());
        QCOMPARE(client.get("a").value, std::string("1"));
        QVERIFY(server.wipe());
        QCOMPARE(client.get("a").revision, std::int64_t(0));
    }

    void seesAllOfTheHistory()
    {
        EtcdServer server;
        QVERIFY2(server.start(), qPrintable(server.getFailure()));
        const EtcdClient client(endpointsOf(server));
        std::vector<EtcdClient::Change> seen;
        {
            std::mutex mutex;
            const auto watch = client.watch("a/", [&](const EtcdClient::Change& change) {
                const std::lock_guard lock(mutex);
                seen.push_back(change);
            });
            const std::int64_t first = client.commit({{"a/1", "1"}, {"a/2", "2"}, {"b", "3"}});
            QVERIFY(first > 0);
            QCOMPARE(client.putIf("a/1", "4", first - 1), std::int64_t(0));
            QVERIFY(client.putIf("a/1", "4", first) > first);
            QVERIFY(client.remove("a/2") > 0);
            QTRY_COMPARE(sizeOf(seen, mutex), std::size_t(4));
        }
        const auto history = client.readHistory("a/");
        QCOMPARE(history.size(), seen.size());
        for (std::size_t i = 0; i < history.size(); ++i) {
            QCOMPARE(history[i].key, seen[i].key);
            QCOMPARE(history[i].value, seen[i].value);
            QCOMPARE(history[i].isRemoved, seen[i].isRemoved);
            QCOMPARE(history[i].revision, seen[i].revision);
        }
        QVERIFY(server.compact(history.back().revision));
        QVERIFY(client.readHistory("a/").empty());
    }

    void electsAnotherLeader()
    {
        EtcdServer::Options options;
        options.members = 3;
        EtcdServer server(options);
        QVERIFY2(server.start(), qPrintable(server.getFailure()));
        const EtcdClient client(endpointsOf(server));
        QVERIFY(client.put("a", "1") > 0);
        const int leader = server.findLeader();
        QVERIFY(leader >= 0);
        server.kill(leader);
        const int other = (leader + 1) % 3;
        QVERIFY2(server.waitUntilReady(other), qPrintable(server.getFailure()));
        QVERIFY(server.findLeader() != leader);
        server.freeze(other);
        QTRY_VERIFY_WITH_TIMEOUT(!server.isReady((leader + 2) % 3), 20000);
        server.thaw(other);
        QVERIFY2(server.waitUntilReady((leader + 2) % 3), qPrintable(server.getFailure()));
        QVERIFY(server.restart(leader));
        QCOMPARE(client.get("a").value, std::string("1"));
    }

    void asksForCertificatesAndUsers()
    {
        EtcdServer::Options options;
        options.usesTls = true;
        EtcdServer server(options);
        QVERIFY2(server.start(), qPrintable(server.getFailure()));
        QVERIFY(server.requireUsers());
        QVERIFY(server.addUser(QStringLiteral("desk"), QStringLiteral("secret"), QStringLiteral("vantry/")));
        const auto putAs = [&server](const char* user, const char* key) {
            return server.control({QStringLiteral("--user"), QLatin1String(user), QStringLiteral("put"),
                                   QLatin1String(key), QStringLiteral("1")});
        };
        QCOMPARE(putAs("desk:secret", "vantry/a"), QByteArray("OK\n"));
        QVERIFY(putAs("desk:secret", "other").contains("permission denied"));
        QVERIFY(putAs("desk:wrong", "vantry/a").contains("invalid user ID or password"));
        QCOMPARE(EtcdClient(endpointsOf(server)).get("vantry/a").revision, std::int64_t(0)); // without TLS
    }

private:
    static std::string endpointsOf(const EtcdServer& server)
    {
        return server.getEndpoints().join(QLatin1Char(',')).toStdString();
    }

    static std::size_t sizeOf(const std::vector<EtcdClient::Change>& seen, std::mutex& mutex)
    {
        const std::lock_guard lock(mutex);
        return seen.size();
    }
};

VANTRY_TEST_MAIN(QCoreApplication, EtcdServerTest)
#include "etcd_server_test.moc"
