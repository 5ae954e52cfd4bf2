#include "tests/fleet/FleetTest.h"
#include "tests/support/Columns.h"

#include <QCoreApplication>
#include <QTcpServer>
#include <QTcpSocket>

#include <atomic>
#include <future>
#include <thread>

namespace {

// A program of another kind at a port: it says what it says to whoever comes, or nothing at all.
class Stranger
{
public:
    explicit Stranger(const QByteArray& greeting)
    {
        QTcpServer listener;
        listener.listen(QHostAddress::LocalHost);
        port = listener.serverPort();
        listener.close();
        thread = std::thread([this, greeting] { greet(greeting); });
        while (!isListening)
            std::this_thread::yield();
    }

    ~Stranger()
    {
        isOver = true;
        thread.join();
    }
    Q_DISABLE_COPY(Stranger)

    QString getEndpoint() const { return QStringLiteral("127.0.0.1:%1").arg(port); }

private:
    void greet(const QByteArray& greeting)
    {
        constexpr int patience = 20; // milliseconds
        QTcpServer server;
        server.listen(QHostAddress::LocalHost, port);
        isListening = true;
        while (!isOver) {
            if (!server.waitForNewConnection(patience))
                continue;
            QTcpSocket* const guest = server.nextPendingConnection(); // its server's child
            guest->write(greeting);
            guest->flush();
        }
    }

    quint16 port = 0;
    std::atomic<bool> isListening{false};
    std::atomic<bool> isOver{false};
    std::thread thread;
};

} // namespace

// Servers that are none, or full, or silent, and stores that are closed at a bad moment.
class FailuresTest : public FleetTest
{
    Q_OBJECT

private slots:
    void saysWhatAnswersInstead_data()
    {
        const auto row = TestSupport::columns<QByteArray>("greeting");
        row("a web server", "HTTP/1.1 400 Bad Request\r\nContent-Length: 0\r\n\r\n");
        row("a shell", "SSH-2.0-OpenSSH_9.2\r\n");
        row("silence", "");
    }

    void saysWhatAnswersInstead()
    {
        QFETCH(QByteArray, greeting);
        const Stranger stranger(greeting);
        const FleetMachine machine(QStringLiteral("etcd://%1/s").arg(stranger.getEndpoint()));
        QVERIFY(!machine.getMounted().ok());
        const QString text = machine.getMounted().toText();
        QVERIFY2(text.contains(stranger.getEndpoint()), qPrintable(text));
        QVERIFY2(text.contains(QLatin1String("no etcd answers there")), qPrintable(text));
        // With the right one beside it, it does no harm.
        const FleetMachine other(
            QStringLiteral("etcd://%1,%2/s").arg(stranger.getEndpoint(), server.getEndpoints().first()));
        QCOMPARE(refusalOf(other.getMounted()), QString());
    }

    // As the first one does now and then where machines are busy.
    void loadsThoughAConnectionFails()
    {
        QTcpServer door;
        QVERIFY(door.listen(QHostAddress::LocalHost));
        int guests = 0;
        QObject::connect(&door, &QTcpServer::newConnection, &door, [&] {
            QTcpSocket* const guest = door.nextPendingConnection(); // its server's child
            if (++guests == 1)
                guest->abort();
            else
                connectThrough(*guest);
        });
        const QString place = QStringLiteral("etcd://127.0.0.1:%1/%2").arg(door.serverPort()).arg(store);
        auto mounting = std::async(std::launch::async, [&] { return FleetMachine(place).getMounted(); });
        QTRY_COMPARE_WITH_TIMEOUT(mounting.wait_for(std::chrono::seconds(0)), std::future_status::ready,
                                  longWait);
        QCOMPARE(refusalOf(mounting.get()), QString());
        QVERIFY(guests > 1);
    }

    void namesTheHostThatIsUnknown()
    {
        const FleetMachine machine(QStringLiteral("etcd://nowhere.invalid:2379/s"));
        QVERIFY(!machine.getMounted().ok());
        const QString text = machine.getMounted().toText();
        QVERIFY2(text.contains(QLatin1String("nowhere.invalid:2379: the name of its host is not known")),
                 qPrintable(text));
    }

    // The one that a machine is connected with stops in the middle of everything, and never comes back.
    void leavesAFrozenMember()
    {
        EtcdServer::Options options;
        options.members = 3;
        EtcdServer cluster(options);
        QVERIFY2(cluster.start(), qPrintable(cluster.getFailure()));
        const EtcdClient others(cluster.getEndpoints().at(1).toStdString());
        FleetMachine machine(cluster.getLocation(store));
        QCOMPARE(refusalOf(machine.create(QStringLiteral("m.mine"), 1)), QString());
        QCOMPARE(refusalOf(machine.save()), QString());
        machine.listen(QStringLiteral("m.theirs"));
        cluster.freeze(0);
        QVERIFY(cluster.waitUntilReady(1));
        QTRY_VERIFY_WITH_TIMEOUT(others.put(keyOf("theirs"), R"({"t":"i64","v":"1"})") > 0, longWait);
        // Edits do not wait until the silence of news is long enough.
        QTRY_COMPARE_WITH_TIMEOUT(refusalOf(machine.write(QStringLiteral("m.mine"), 2)), QString(), longWait);
        QTRY_COMPARE_WITH_TIMEOUT(refusalOf(machine.save()), QString(), longWait);
        QCOMPARE(valueOf(others.get(keyOf("mine")).value).toInt(), 2);
        QTRY_COMPARE_WITH_TIMEOUT(machine.getHeard(), QStringList({QStringLiteral("m.theirs = 1")}),
                                  2 * longWait);
    }

    // What does not fit stays here, unsaved; what is there can be read, and made smaller.
    void bearsAFullServer()
    {
        EtcdServer::Options options;
        options.arguments = QStringList{QStringLiteral("--quota-backend-bytes"), QStringLiteral("3000000")};
        EtcdServer small(options);
        QVERIFY2(small.start(), qPrintable(small.getFailure()));
        FleetMachine machine(small.getLocation(store));
        FleetMachine other(small.getLocation(store));
        const QString path = QStringLiteral("m.large");
        QCOMPARE(refusalOf(machine.create(path, QString())), QString());
        Outcome outcome;
        for (int round = 0; round < 20 && outcome.ok(); ++round) {
            QCOMPARE(refusalOf(machine.write(path, QString(500000, QChar('a' + round)))), QString());
            outcome = machine.save();
        }
        QVERIFY(!outcome.ok());
        QVERIFY2(outcome.toText().contains(QLatin1String("space")), qPrintable(outcome.toText()));
        QCOMPARE(machine.unsaved().size(), 1);
        QTRY_COMPARE(other.read(path).toString().size(), 500000);
        const auto revision =
            EtcdClient(small.getEndpoints().first().toStdString()).get(prefix() + "large").revision;
        QVERIFY(small.compact(revision));
        small.control({QStringLiteral("defrag")});
        small.control({QStringLiteral("alarm"), QStringLiteral("disarm")});
        QTRY_COMPARE_WITH_TIMEOUT(refusalOf(machine.save()), QString(), longWait);
        QTRY_COMPARE(other.read(path), machine.read(path));
    }

    // A server that takes less at once than Vantry sends: what is too much for it is told, the rest stored.
    void saysWhatIsTooMuchForTheServer()
    {
        EtcdServer::Options options;
        options.arguments = QStringList{QStringLiteral("--max-request-bytes"), QStringLiteral("10000")};
        EtcdServer strict(options);
        QVERIFY2(strict.start(), qPrintable(strict.getFailure()));
        FleetMachine machine(strict.getLocation(store));
        QCOMPARE(refusalOf(machine.create(QStringLiteral("m.large"), QString(50000, QLatin1Char('x')))),
                 QString());
        QCOMPARE(refusalOf(machine.create(QStringLiteral("m.small"), 1)), QString());
        const Outcome outcome = machine.save();
        QVERIFY2(outcome.toText().contains(QLatin1String("too large")), qPrintable(outcome.toText()));
        QTRY_COMPARE(machine.unsaved().size(), 1);
        QCOMPARE(machine.unsaved().first().path, QStringLiteral("m.large"));
        QCOMPARE(refusalOf(machine.remove(QStringLiteral("m.large"))), QString());
        QCOMPARE(refusalOf(machine.save()), QString());
    }

    // Nor does it have to take as many keys at once as it does by default.
    void storesInSmallerPieces()
    {
        EtcdServer::Options options;
        options.arguments = QStringList{QStringLiteral("--max-txn-ops"), QStringLiteral("20")};
        EtcdServer strict(options);
        QVERIFY2(strict.start(), qPrintable(strict.getFailure()));
        FleetMachine machine(strict.getLocation(store));
        QByteArray text;
        for (int i = 0; i < 300; ++i)
            text += "k" + QByteArray::number(i) + " = 1\n";
        const auto transfer = machine.getRepository().getTransferInterface();
        QCOMPARE(refusalOf(transfer->importTree(QStringLiteral("m"), QStringLiteral("txt"), text)),
                 QString());
        QCOMPARE(refusalOf(machine.save()), QString());
        const EtcdClient reader(strict.getEndpoints().first().toStdString());
        QCOMPARE(reader.readAll(prefix()).size(), std::size_t(300));
    }

    // They are two machines, as it were.
    void mountsAStoreTwice()
    {
        FleetMachine machine(location());
        const auto backends = machine.getRepository().getBackendInterface();
        QCOMPARE(refusalOf(backends->mount(QStringLiteral("etcd"), QStringLiteral("n"),
                                           {location(), QString(), AccessMode::ReadWrite}, 2)),
                 QString());
        QCOMPARE(refusalOf(machine.create(QStringLiteral("m.a"), 1)), QString());
        QTRY_COMPARE(machine.read(QStringLiteral("n.a")).toInt(), 1);
        QCOMPARE(refusalOf(machine.write(QStringLiteral("n.a"), 2)), QString());
        QTRY_COMPARE(machine.read(QStringLiteral("m.a")).toInt(), 2);
        QCOMPARE(refusalOf(backends->closeBackend(QStringLiteral("n"), false)), QString());
        QCOMPARE(refusalOf(machine.write(QStringLiteral("m.a"), 3)), QString());
        QCOMPARE(refusalOf(machine.save()), QString());
    }

    // Nothing of it is left in the tree, and it can be opened again.
    void closesAtAnyMoment_data()
    {
        const auto row = TestSupport::columns<bool, bool>("isFrozen", "isLoading");
        row("while it loads", false, true);
        row("while it loads from a server that is silent", true, true);
        row("while the server is silent", true, false);
    }

    void closesAtAnyMoment()
    {
        QFETCH(bool, isFrozen);
        QFETCH(bool, isLoading);
        constexpr int count = 5000;
        for (int first = 0; first < count; first += 100) {
            EtcdClient::Pairs pairs;
            for (int i = first; i < first + 100; ++i)
                pairs.emplace_back(keyOf("k") + std::to_string(i), R"({"t":"i64","v":"1"})");
            QVERIFY(outside().commit(pairs) > 0);
        }
        FleetMachine machine(location());
        const auto backends = machine.getRepository().getBackendInterface();
        const auto mount = [&] {
            return backends->mount(QStringLiteral("etcd"), QStringLiteral("n"),
                                   {location(), QString(), AccessMode::ReadWrite}, 2);
        };
        if (!isLoading)
            QCOMPARE(refusalOf(mount()), QString());
        if (isFrozen)
            server.freeze();
        std::thread opening;
        if (isLoading) {
            opening = std::thread(mount);
            while (!backends->getBackendNames().contains(QStringLiteral("n")))
                std::this_thread::yield();
        }
        const Outcome closed = backends->closeBackend(QStringLiteral("n"), false);
        if (opening.joinable())
            opening.join();
        if (isFrozen)
            server.thaw();
        QCOMPARE(refusalOf(closed), QString());
        const auto tree = machine.getRepository().getTreeInterface();
        QVERIFY(!tree->getNodeInformation(QStringLiteral("n")).exists);
        QCOMPARE(tree->findPaths({QStringLiteral("internal.backends.*.n")}), QStringList());
        Outcome again;
        QVERIFY2(QTest::qWaitFor([&] { return (again = mount()).ok(); }, longWait),
                 qPrintable(again.toText()));
        QCOMPARE(tree->getChildCount(QStringLiteral("n")), count);
    }

private:
    // To the server, both ways.
    void connectThrough(QTcpSocket& guest) const
    {
        const QStringList address = server.getEndpoints().first().split(QLatin1Char(':'));
        auto* const host = new QTcpSocket(&guest);
        host->connectToHost(address.first(), quint16(address.last().toUInt()));
        const auto pass = [](QTcpSocket& from, QTcpSocket& to) {
            const auto write = [&from, &to] { to.write(from.readAll()); };
            QObject::connect(&from, &QTcpSocket::readyRead, &to, write);
            write(); // what has come before
        };
        pass(guest, *host);
        pass(*host, guest);
    }
};

VANTRY_TEST_MAIN(QCoreApplication, FailuresTest)
#include "failures_test.moc"
