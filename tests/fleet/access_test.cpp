#include "host/Shared/Logging/LogRecord.h"
#include "tests/fleet/FleetTest.h"
#include "tests/support/Columns.h"
#include "tests/support/TestFiles.h"

#include <QCoreApplication>
#include <QFile>

#include <sys/stat.h>

using TestSupport::TestCertificates;

namespace {

TestSupport::EtcdServer::Options securedOptions()
{
    TestSupport::EtcdServer::Options options;
    options.usesTls = true;
    options.tokenSeconds = 2;
    return options;
}

const char password[] = "secret-of-the-desk";

} // namespace

// A store with TLS and users: who gets in, and that nothing secret gets out.
class AccessTest : public FleetTest
{
    Q_OBJECT

public:
    AccessTest() : FleetTest(securedOptions()) {}

private slots:
    void initTestCase()
    {
        FleetTest::initTestCase();
        if (QTest::currentTestFailed() || !EtcdServer::findObstacle().isEmpty())
            return;
        QVERIFY(
            server.addUser(QStringLiteral("desk"), QLatin1String(password), QStringLiteral("vantry/1/s")));
        QVERIFY(server.requireUsers());
        folder = std::make_unique<QTemporaryDir>();
    }

    void letsUsersIn_data()
    {
        const auto row = TestSupport::columns<QByteArray, int, QString>("credentials", "mode", "refusal");
        row("right", "user=desk\npassword=secret-of-the-desk\n", 0600, "");
        row("wrong password", "user=desk\npassword=wrong\n", 0600, "password");
        row("unknown user", "user=nobody\npassword=secret-of-the-desk\n", 0600, "password");
        row("readable for others", "user=desk\npassword=secret-of-the-desk\n", 0644, "600");
    }

    void letsUsersIn()
    {
        QFETCH(QByteArray, credentials);
        QFETCH(int, mode);
        QFETCH(QString, refusal);
        FleetMachine machine(location(queryOf(credentials, mode)));
        if (!refusal.isEmpty()) {
            QVERIFY(!machine.getMounted().ok());
            const QString text = machine.getMounted().toText();
            QVERIFY2(text.contains(refusal), qPrintable(text));
            QVERIFY2(!text.contains(QLatin1String(password)), qPrintable(text));
            return;
        }
        QCOMPARE(refusalOf(machine.getMounted()), QString());
        QCOMPARE(refusalOf(machine.create(QStringLiteral("m.a"), 1)), QString());
        QCOMPARE(refusalOf(machine.save()), QString());
        const FleetMachine other(location(queryOf(credentials, mode)));
        QCOMPARE(other.read(QStringLiteral("m.a")).toInt(), 1);
    }

    void refusesWithoutAUser()
    {
        const FleetMachine machine(location());
        QVERIFY(!machine.getMounted().ok());
        QVERIFY2(machine.getMounted().toText().contains(QLatin1String("user")),
                 qPrintable(machine.getMounted().toText()));
    }

    // A token that nobody uses for two seconds ends; so does every one when the server starts again.
    void outlivesItsToken_data()
    {
        const auto row = TestSupport::columns<bool>("isRestarted");
        row("expired", false);
        row("of a server that was started again", true);
    }

    void outlivesItsToken()
    {
        QFETCH(bool, isRestarted);
        FleetMachine machine(location(validQuery()));
        FleetMachine other(location(validQuery()));
        QCOMPARE(refusalOf(machine.create(QStringLiteral("m.a"), 1)), QString());
        QCOMPARE(refusalOf(machine.save()), QString());
        if (isRestarted) {
            server.kill();
            QVERIFY(server.restart());
        } else {
            QTest::qWait(5000); // the server's clock ends tokens
        }
        QTRY_COMPARE_WITH_TIMEOUT(refusalOf(machine.write(QStringLiteral("m.a"), 2)), QString(), longWait);
        QTRY_COMPARE_WITH_TIMEOUT(other.read(QStringLiteral("m.a")).toInt(), 2, longWait);
    }

    void saysWhatIsNotAllowed()
    {
        store = QStringLiteral("other");
        const FleetMachine machine(location(validQuery()));
        QVERIFY(!machine.getMounted().ok());
        QVERIFY2(machine.getMounted().toText().contains(QLatin1String("permission")),
                 qPrintable(machine.getMounted().toText()));
    }

    // A server's role decides, also where Vantry would write: what it refuses stays unsaved, with the reason.
    void writesWhatItsRoleAllows_data()
    {
        const auto row = TestSupport::columns<QString, QStringList>("writable", "stored");
        row("nothing", "", {});
        row("what lies below a group", "line1.", {QStringLiteral("line1.new"), QStringLiteral("line1.old")});
    }

    void writesWhatItsRoleAllows()
    {
        QFETCH(QString, writable);
        QFETCH(QStringList, stored);
        FleetMachine owner(location(validQuery()));
        for (const char* path : {"m.line1.old", "m.line2.old"})
            QCOMPARE(refusalOf(owner.create(QLatin1String(path), 1)), QString());
        QCOMPARE(refusalOf(owner.save()), QString());
        const QString role = QStringLiteral("of-") + store;
        addRestrictedUser(role, writable);
        FleetMachine machine(
            location(queryOf("user=" + role.toUtf8() + "\npassword=" + password + '\n', 0600)));
        QCOMPARE(refusalOf(machine.getMounted()), QString());
        machine.write(QStringLiteral("m.line1.old"), 2);
        machine.create(QStringLiteral("m.line1.new"), 2);
        machine.write(QStringLiteral("m.line2.old"), 2);
        machine.create(QStringLiteral("m.line2.new"), 2);
        const Outcome outcome = machine.save();
        QVERIFY2(outcome.toText().contains(QLatin1String("permission")), qPrintable(outcome.toText()));
        QCOMPARE(machine.unsaved().size(), 4 - stored.size());
        for (const QString& path : stored)
            QTRY_COMPARE(owner.read(QStringLiteral("m.") + path).toInt(), 2);
        QCOMPARE(owner.read(QStringLiteral("m.line2.old")).toInt(), 1);
        owner.write(QStringLiteral("m.line2.old"), 3);
        QCOMPARE(refusalOf(owner.save()), QString());
        QTRY_VERIFY(machine.unsaved().last().isConflict);
        QCOMPARE(refusalOf(machine.getRepository().getChangesInterface()->revert(QStringLiteral("m"))),
                 QString());
        QTRY_COMPARE(machine.read(QStringLiteral("m.line2.old")).toInt(), 3);
        QCOMPARE(refusalOf(machine.save()), QString());
    }

    void asksMachinesForCertificates_data()
    {
        const auto row = TestSupport::columns<QString, bool, QString>("certificate", "hasUsers", "refusal");
        row("of its authority", "client", false, "");
        row("none", "", false, "certificate");
        row("that names the user", "desk", true, "");
        row("that names nobody, where users are asked for", "client", true, "permission");
    }

    void asksMachinesForCertificates()
    {
        QFETCH(QString, certificate);
        QFETCH(bool, hasUsers);
        QFETCH(QString, refusal);
        EtcdServer::Options options;
        options.usesTls = options.asksForCertificates = true;
        EtcdServer strict(options);
        QVERIFY2(strict.start(), qPrintable(strict.getFailure()));
        if (hasUsers) {
            QVERIFY(strict.addUser(QStringLiteral("desk"), QLatin1String(password),
                                   QStringLiteral("vantry/1/s")));
            QVERIFY(strict.requireUsers());
        }
        const TestCertificates& certificates = *strict.getCertificates();
        const QString query =
            QStringLiteral("cert=%1&key=%2")
                .arg(certificates.certificateOf(certificate), certificates.keyOf(certificate));
        FleetMachine machine(strict.getLocation(store, certificate.isEmpty() ? QString() : query));
        const QString text = refusalOf(machine.getMounted());
        QVERIFY2(refusal.isEmpty() ? text.isEmpty() : text.contains(refusal), qPrintable(text));
        if (refusal.isEmpty()) {
            QCOMPARE(refusalOf(machine.create(QStringLiteral("m.a"), 1)), QString());
            QCOMPARE(refusalOf(machine.save()), QString());
        }
    }

    void trustsOnlyItsAuthority_data()
    {
        const auto row = TestSupport::columns<QString, QString>("location", "refusal");
        const QString plain = QStringLiteral("etcd://%1/s").arg(server.getEndpoints().first());
        const QString secured = QStringLiteral("etcds://%1/s?ca=").arg(server.getEndpoints().first());
        row("another authority", secured + stranger.authority(), "certificate");
        row("no TLS", plain, "");
        row("no such file", secured + QStringLiteral("/nowhere/ca.pem"), "/nowhere/ca.pem");
    }

    void trustsOnlyItsAuthority()
    {
        QFETCH(QString, location);
        QFETCH(QString, refusal);
        const FleetMachine machine(location);
        QVERIFY(!machine.getMounted().ok());
        QVERIFY2(machine.getMounted().toText().contains(refusal), qPrintable(machine.getMounted().toText()));
    }

    void tellsNoSecrets()
    {
        const quint64 before = Shared::Logging::LogRecord::instance().getLastNumber();
        FleetMachine machine(location(validQuery()));
        QCOMPARE(refusalOf(machine.getMounted()), QString());
        machine.create(QStringLiteral("m.a"), 1);
        const FleetMachine refused(location(queryOf("user=desk\npassword=another-secret\n", 0600)));
        QStringList told{machine.description(), refused.getMounted().toText()};
        const auto backends = machine.getRepository().getBackendInterface();
        told.append(backends->getBackendInformation(QStringLiteral("m"))->getBackendLocation());
        for (const auto& line : Shared::Logging::LogRecord::instance().getLines(before))
            told.append(line.text);
        const QStringList internal =
            machine.getRepository().getTreeInterface()->findPaths({QStringLiteral("internal*")});
        for (const QString& path : internal)
            told.append(machine.read(path).toString());
        QVERIFY(told.size() > 4);
        for (const QString& text : told)
            QVERIFY2(!text.contains(QLatin1String("secret")), qPrintable(text));
    }

private:
    // Who may read the store and write what begins so, with a role of the same name.
    void addRestrictedUser(const QString& name, const QString& writable) const
    {
        const auto control = [this](const QStringList& words) { server.control(words); };
        const auto grant = [&](const QString& right, const QString& keys) {
            control({QStringLiteral("role"), QStringLiteral("grant-permission"), name,
                     QStringLiteral("--prefix=true"), right, keys});
        };
        const QString keys = QStringLiteral("vantry/1/%1/").arg(store);
        control({QStringLiteral("role"), QStringLiteral("add"), name});
        grant(QStringLiteral("read"), keys);
        if (!writable.isEmpty())
            grant(QStringLiteral("write"), keys + QStringLiteral("a/") + writable);
        control({QStringLiteral("user"), QStringLiteral("add"),
                 name + QLatin1Char(':') + QLatin1String(password)});
        control({QStringLiteral("user"), QStringLiteral("grant-role"), name, name});
    }

    QString queryOf(const QByteArray& credentials, int mode) const
    {
        const QString file =
            TestSupport::writeFile(folder->filePath(QStringLiteral("credentials-%1").arg(mode)), credentials);
        ::chmod(QFile::encodeName(file).constData(), mode_t(mode));
        return QStringLiteral("credentials=") + file;
    }

    QString validQuery() const { return queryOf(QByteArray("user=desk\npassword=") + password + '\n', 0600); }

    std::unique_ptr<QTemporaryDir> folder;
    const TestCertificates stranger;
};

VANTRY_TEST_MAIN(QCoreApplication, AccessTest)
#include "access_test.moc"
