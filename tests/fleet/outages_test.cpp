#include "tests/fleet/FleetTest.h"
#include "tests/support/Columns.h"

#include <QCoreApplication>

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

// A store whose servers are killed, frozen, out of reach, compacted or emptied while machines work on it.
// What they saw is compared with the server's own history. VANTRY_FLEET_SECONDS is how long the kills go on.
class OutagesTest : public FleetTest
{
    Q_OBJECT

private slots:
    // Two keys a transaction, and removals, by another program and by a machine; a second machine listens.
    void losesAndDoublesNothing()
    {
        constexpr int kills = 5;
        const int seconds = qEnvironmentVariableIsSet("VANTRY_FLEET_SECONDS")
                                ? qEnvironmentVariableIntValue("VANTRY_FLEET_SECONDS")
                                : 10;
        FleetMachine writer(location());
        FleetMachine follower(location());
        QCOMPARE(refusalOf(writer.create(QStringLiteral("m.machine"), 0)), QString());
        QTRY_VERIFY(follower.exists(QStringLiteral("m.machine")));
        const std::size_t before = outside().readHistory(prefix()).size();
        follower.listen(QStringLiteral("m.*"));
        std::atomic<bool> isOver{false};
        std::thread program([&] { writeUntil(isOver, outside()); });
        std::thread machine([&] {
            for (qlonglong value = 1; !isOver; ++value)
                writer.write(QStringLiteral("m.machine"), value);
        });
        const auto end = [&] {
            isOver = true;
            program.join();
            machine.join();
        };
        for (int kill = 0; kill < kills; ++kill) {
            QTest::qWait(seconds * 1000 / kills); // under load, for as long as was asked for
            server.kill();
            if (!server.restart()) {
                end();
                QFAIL(qPrintable(server.getFailure()));
            }
        }
        end();
        QTRY_COMPARE_WITH_TIMEOUT(refusalOf(writer.save()), QString(), longWait);
        verifyHistory(follower, outside(), before);
    }

    // What was reported as stored is stored, once; what was not is stored later, or replaced by a later
    // value.
    void knowsWhatBecameOfWrites()
    {
        FleetMachine writer(location());
        QCOMPARE(refusalOf(writer.create(QStringLiteral("m.a"), 0)), QString());
        std::atomic<bool> isOver{false};
        std::vector<qlonglong> reported;
        qlonglong last = 0; // that was not refused because the store was away
        std::thread machine([&] {
            for (qlonglong value = 1; !isOver; ++value) {
                if (!writer.write(QStringLiteral("m.a"), value).ok())
                    continue;
                last = value;
                if (writer.save().ok())
                    reported.push_back(value);
            }
        });
        for (int kill = 0; kill < 4; ++kill) {
            QTest::qWait(300); // some hundred writes
            server.kill();
            server.restart();
        }
        isOver = true;
        machine.join();
        QTRY_COMPARE_WITH_TIMEOUT(refusalOf(writer.save()), QString(), longWait);
        std::vector<qlonglong> stored;
        for (const auto& change : outside().readHistory(prefix()))
            stored.push_back(valueOf(change).toLongLong());
        QVERIFY(std::is_sorted(stored.begin(), stored.end()));
        QVERIFY2(std::adjacent_find(stored.begin(), stored.end()) == stored.end(),
                 "a value was stored twice");
        QVERIFY(std::includes(stored.begin(), stored.end(), reported.begin(), reported.end()));
        QCOMPARE(stored.back(), last);
        QVERIFY(reported.size() > 100);
    }

    void survivesTheLeader_data()
    {
        const auto row = TestSupport::columns<bool>("isKilled");
        row("killed", true);
        row("frozen", false);
    }

    void survivesTheLeader()
    {
        QFETCH(bool, isKilled);
        EtcdServer::Options options;
        options.members = 3;
        EtcdServer cluster(options);
        QVERIFY2(cluster.start(), qPrintable(cluster.getFailure()));
        const EtcdClient others(cluster.getEndpoints().join(QLatin1Char(',')).toStdString());
        FleetMachine writer(cluster.getLocation(store));
        FleetMachine follower(cluster.getLocation(store));
        QCOMPARE(refusalOf(writer.create(QStringLiteral("m.machine"), 0)), QString());
        QTRY_VERIFY(follower.exists(QStringLiteral("m.machine")));
        const std::size_t before = others.readHistory(prefix()).size();
        follower.listen(QStringLiteral("m.*"));
        std::atomic<bool> isOver{false};
        std::thread program([&] { writeUntil(isOver, others); });
        const int leader = cluster.findLeader();
        QTest::qWait(500); // under load
        if (isKilled)
            cluster.kill(leader);
        else
            cluster.freeze(leader);
        const bool isElected = cluster.waitUntilReady((leader + 1) % 3);
        QTest::qWait(2000); // the rest goes on without it
        if (isKilled)
            cluster.restart(leader);
        else
            cluster.thaw(leader);
        cluster.waitUntilReady(leader);
        isOver = true;
        program.join();
        QVERIFY2(isElected, qPrintable(cluster.getFailure()));
        verifyHistory(follower, others, before);
        QVERIFY(writer.write(QStringLiteral("m.machine"), 1).ok());
    }

    void findsWhatChangedBeforeACompaction()
    {
        FleetMachine machine(location());
        for (const char* path : {"stays", "changes", "goes", "replaced"})
            outside().put(keyOf(path), R"({"t":"i64","v":"1"})");
        QTRY_COMPARE(machine.paths().size(), 4);
        machine.listen(QStringLiteral("m.*"));
        server.kill();
        QVERIFY(server.restart(0, EtcdServer::Place::Hidden));
        {
            const EtcdClient other(server.getEndpoints().first().toStdString());
            other.put(keyOf("stays"), R"({"t":"i64","v":"2"})");
            other.put(keyOf("stays"), R"({"t":"i64","v":"1"})");
            other.put(keyOf("changes"), R"({"t":"i64","v":"2"})");
            other.remove(keyOf("goes"));
            other.remove(keyOf("replaced"));
            other.put(keyOf("comes"), R"({"t":"i64","v":"3"})");
            const auto last = other.put(keyOf("replaced"), R"({"t":"s","v":"4"})");
            QVERIFY(server.compact(last));
        }
        QVERIFY(machine.exists(QStringLiteral("m.goes"))); // readable while away
        server.kill();
        QVERIFY(server.restart());
        QTRY_VERIFY_WITH_TIMEOUT(machine.exists(QStringLiteral("m.comes")), longWait);
        QTRY_VERIFY(!machine.exists(QStringLiteral("m.goes")));
        QTRY_COMPARE(machine.read(QStringLiteral("m.replaced")), QVariant(QStringLiteral("4")));
        QStringList heard = machine.getHeard();
        heard.sort();
        QCOMPARE(heard, QStringList({QStringLiteral("m.changes = 2"), QStringLiteral("m.comes = 3"),
                                     QStringLiteral("m.goes removed"), QStringLiteral("m.replaced = 4")}));
        outside().put(keyOf("stays"), R"({"t":"i64","v":"5"})");
        QTRY_COMPARE(machine.read(QStringLiteral("m.stays")).toInt(), 5);
    }

    // As after a restore from a backup: revisions begin again, and may have come as far as before.
    void readsAnEmptiedStoreAnew_data()
    {
        const auto row = TestSupport::columns<int>("writes");
        row("empty", 0);
        row("some writes", 20);
        row("more writes than before", 1000);
    }

    void readsAnEmptiedStoreAnew()
    {
        QFETCH(int, writes);
        FleetMachine machine(location());
        for (int i = 0; i < 50; ++i)
            machine.create(QStringLiteral("m.k%1").arg(i), i);
        QCOMPARE(refusalOf(machine.save()), QString());
        // By this it knows the store again; the first who mounts a store writes it within a second.
        QTRY_VERIFY(outside().get("vantry/1/" + store.toStdString() + "/meta").revision > 0);
        machine.listen(QStringLiteral("m.*"));
        QVERIFY(server.wipe(EtcdServer::Place::Hidden));
        for (int i = 0; i < writes; ++i)
            EtcdClient(server.getEndpoints().first().toStdString()).put("other", "1");
        server.kill();
        QVERIFY(server.restart());
        QTRY_COMPARE_WITH_TIMEOUT(machine.paths().size(), 0, longWait);
        QCOMPARE(machine.getHeard().size(), 50);
        outside().put(keyOf("k1"), R"({"t":"i64","v":"7"})");
        QTRY_COMPARE(machine.read(QStringLiteral("m.k1")).toInt(), 7);
        QCOMPARE(refusalOf(machine.write(QStringLiteral("m.k1"), 8)), QString());
        QCOMPARE(refusalOf(machine.save()), QString());
        QCOMPARE(valueOf(outside().get(keyOf("k1")).value).toInt(), 8);
    }

    // After some seconds, within which another leader would be found.
    void refusesWritesWhileAway()
    {
        FleetMachine machine(location());
        QCOMPARE(refusalOf(machine.create(QStringLiteral("m.a"), 1)), QString());
        QCOMPARE(refusalOf(machine.save()), QString());
        machine.listen(QStringLiteral("internal.backends.states.m"));
        server.kill();
        QTRY_VERIFY_WITH_TIMEOUT(state(machine).startsWith(QLatin1String("stale since")), longWait);
        QTRY_VERIFY(!machine.getHeard().isEmpty());
        QVERIFY(machine.description().contains(state(machine)));
        QVERIFY2(!machine.save().ok(), "nobody can say that all is stored");
        QCOMPARE(machine.read(QStringLiteral("m.a")).toInt(), 1);
        QTRY_VERIFY_WITH_TIMEOUT(!machine.create(QStringLiteral("m.b"), 2).ok(), longWait);
        QVERIFY(!machine.save().ok());
        QTRY_COMPARE_WITH_TIMEOUT(machine.write(QStringLiteral("m.a"), 2).getStatus(),
                                  FrameworkCore::AppConfig::BackendFailure, longWait);
        const Outcome outcome = machine.write(QStringLiteral("m.a"), 2);
        QVERIFY2(outcome.toText().contains(QLatin1String("m.a")), qPrintable(outcome.toText()));
        QVERIFY2(outcome.toText().contains(QLatin1String("not connected")), qPrintable(outcome.toText()));
        QVERIFY(!machine.remove(QStringLiteral("m.a")).ok());
        QVERIFY(machine.exists(QStringLiteral("m.a")));
        QVERIFY(server.restart());
        QTRY_COMPARE_WITH_TIMEOUT(state(machine), QStringLiteral("connected"), longWait);
        QCOMPARE(refusalOf(machine.write(QStringLiteral("m.a"), 3)), QString());
        QCOMPARE(refusalOf(machine.save()), QString());
    }

    // The one that a machine is connected with stops while it saves; the others have another leader soon.
    void savesWhileTheLeaderIsReplaced()
    {
        EtcdServer::Options options;
        options.members = 3;
        EtcdServer cluster(options);
        QVERIFY2(cluster.start(), qPrintable(cluster.getFailure()));
        const int leader = cluster.findLeader();
        QStringList endpoints = cluster.getEndpoints();
        endpoints.move(leader, 0);
        FleetMachine machine(QStringLiteral("etcd://%1/%2").arg(endpoints.join(QLatin1Char(',')), store));
        QCOMPARE(refusalOf(machine.create(QStringLiteral("m.a"), 1)), QString());
        QCOMPARE(refusalOf(machine.save()), QString());
        cluster.freeze(leader);
        QCOMPARE(refusalOf(machine.write(QStringLiteral("m.a"), 2)), QString());
        const Outcome saved = machine.save();
        cluster.thaw(leader);
        QCOMPARE(refusalOf(saved), QString());
        const EtcdClient reader(endpoints.join(QLatin1Char(',')).toStdString());
        QCOMPARE(valueOf(reader.get(keyOf("a")).value).toInt(), 2);
    }

    void queuesWritesOnRequest()
    {
        FleetMachine machine(location(QStringLiteral("offline=queue")));
        FleetMachine other(location());
        for (const char* path : {"m.mine", "m.both", "m.gone"})
            QCOMPARE(refusalOf(machine.create(QLatin1String(path), 1)), QString());
        QTRY_COMPARE_WITH_TIMEOUT(other.paths().size(), 3, longWait);
        server.kill();
        QVERIFY(server.restart(0, EtcdServer::Place::Hidden));
        QTRY_VERIFY_WITH_TIMEOUT(state(machine).startsWith(QLatin1String("stale since")), longWait);
        QCOMPARE(refusalOf(machine.write(QStringLiteral("m.mine"), 2)), QString());
        QCOMPARE(refusalOf(machine.write(QStringLiteral("m.both"), 2)), QString());
        QCOMPARE(refusalOf(machine.remove(QStringLiteral("m.gone"))), QString());
        QCOMPARE(refusalOf(machine.create(QStringLiteral("m.new"), 2)), QString());
        QCOMPARE(machine.unsaved().size(), 4);
        QVERIFY(!machine.save().ok());
        EtcdClient(server.getEndpoints().first().toStdString()).put(keyOf("both"), R"({"t":"i64","v":"3"})");
        server.kill();
        QVERIFY(server.restart());
        QTRY_COMPARE_WITH_TIMEOUT(other.read(QStringLiteral("m.mine")).toInt(), 2, longWait);
        QTRY_COMPARE(other.read(QStringLiteral("m.new")).toInt(), 2);
        QTRY_VERIFY(!other.exists(QStringLiteral("m.gone")));
        QTRY_COMPARE(machine.unsaved().size(), 1);
        const auto conflict = machine.unsaved().first();
        QCOMPARE(conflict.path, QStringLiteral("m.both"));
        QVERIFY(conflict.isConflict);
        QCOMPARE(conflict.before.toInt(), 3);
        QCOMPARE(conflict.after.toInt(), 2);
        QCOMPARE(other.read(QStringLiteral("m.both")).toInt(), 3);
        QVERIFY(!machine.save().ok());
        const auto changes = machine.getRepository().getChangesInterface();
        QCOMPARE(refusalOf(changes->resolveConflicts(
                     QStringLiteral("m.both"), FrameworkCore::AppConfig::Interfaces::ConflictSide::Mine)),
                 QString());
        QCOMPARE(refusalOf(machine.save()), QString());
        QTRY_COMPARE(other.read(QStringLiteral("m.both")).toInt(), 2);
    }

    void refusesToMountWhatIsNotThere()
    {
        server.kill();
        const FleetMachine machine(location());
        server.restart();
        QVERIFY(!machine.getMounted().ok());
        const QString text = machine.getMounted().toText();
        QVERIFY2(text.contains(server.getEndpoints().first()), qPrintable(text));
    }

private:
    static QString state(const FleetMachine& machine)
    {
        return machine.read(QStringLiteral("internal.backends.states.m")).toString();
    }

    // Transactions of two keys, every third with a removal, until it is over and some were taken. Numbers
    // say in which order.
    void writeUntil(const std::atomic<bool>& isOver, const EtcdClient& program) const
    {
        int taken = 0;
        for (int number = 1; !isOver || taken < 60; ++number) {
            const std::string value = "{\"t\":\"i64\",\"v\":\"" + std::to_string(number) + "\"}";
            const std::string one = keyOf("program.k") + std::to_string(number % 7);
            const std::string other = keyOf("program.l") + std::to_string(number % 5);
            const bool removes = number % 3 == 0;
            const std::int64_t revision = removes ? program.commit({{one, value}}, {other})
                                                  : program.commit({{one, value}, {other, value}});
            taken += revision > 0 ? 1 : 0;
        }
    }

    // That the follower heard what the server says it changed from then on, once each and in its order; what
    // one transaction has changed comes together.
    void verifyHistory(const FleetMachine& follower, const EtcdClient& witness, std::size_t first) const
    {
        const auto history = witness.readHistory(prefix());
        const int count = int(history.size() - first);
        QVERIFY(count >= 100);
        QTRY_COMPARE_WITH_TIMEOUT(follower.getHeard().size(), count, longWait);
        QStringList heard = follower.getHeard();
        QStringList expected;
        int begin = 0; // of the transaction
        for (std::size_t i = first; i < history.size(); ++i) {
            const QString path =
                QStringLiteral("m.") + QString::fromStdString(history[i].key.substr(prefix().size()));
            expected.append(path + (history[i].isRemoved
                                        ? QStringLiteral(" removed")
                                        : QStringLiteral(" = ") + valueOf(history[i]).toString()));
            if (i + 1 < history.size() && history[i + 1].revision == history[i].revision)
                continue;
            std::sort(expected.begin() + begin, expected.end());
            std::sort(heard.begin() + begin, heard.begin() + expected.size());
            begin = expected.size();
        }
        QCOMPARE(heard, expected);
        QCOMPARE(follower.getHeard().size(), count); // and nothing after it
        qInfo("%d changes, as the server has them", count);
    }
};

VANTRY_TEST_MAIN(QCoreApplication, OutagesTest)
#include "outages_test.moc"
