#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTemporaryDir>

#include <csignal>

// The program when the session or the terminal ends it.
class QuitSignalsTest : public QObject
{
    Q_OBJECT

private slots:
    void endsInOrder_data()
    {
        const auto row = TestSupport::columns<int>("number");
        row("SIGTERM", SIGTERM);
        row("SIGINT", SIGINT);
        row("SIGHUP", SIGHUP);
    }

    void endsInOrder()
    {
        QFETCH(int, number);
        const QTemporaryDir home;
        QProcess program;
        start(program, QStringLiteral(VANTRY_DESK), {}, home);
        const QString settings = home.filePath(QStringLiteral("Vantry/vantry-desk.conf"));
        const auto hasPage = [&settings] {
            QFile file(settings);
            return file.open(QIODevice::ReadOnly) && file.readAll().contains("[pages]");
        };
        QVERIFY(!hasPage());
        ::kill(pid_t(program.processId()), number);
        QTRY_COMPARE_WITH_TIMEOUT(program.state(), QProcess::NotRunning, 20000);
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), 0);
        QVERIFY2(hasPage(), "what the window remembers was not kept");
    }

    void leavesIgnoredSignalsAlone()
    {
        const QTemporaryDir home;
        QProcess program;
        start(program, QStringLiteral("nohup"), {QStringLiteral(VANTRY_DESK)}, home);
        QFile status(QStringLiteral("/proc/%1/status").arg(program.processId()));
        QVERIFY(status.open(QIODevice::ReadOnly));
        const QByteArray text = status.readAll();
        const QByteArray ignored = text.mid(text.indexOf("SigIgn:") + 8, 16);
        QVERIFY2((ignored.toULongLong(nullptr, 16) & 1ULL << (SIGHUP - 1)) != 0, ignored.constData());
        ::kill(pid_t(program.processId()), SIGTERM);
        QTRY_COMPARE_WITH_TIMEOUT(program.state(), QProcess::NotRunning, 20000);
    }

private:
    // Until it listens, and its window is yet to come, as what the plug-in logs when it is loaded tells.
    static void start(QProcess& program, const QString& file, const QStringList& arguments,
                      const QTemporaryDir& home)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home.path());
        environment.insert(QStringLiteral("XDG_STATE_HOME"), home.path());
        program.setProcessEnvironment(environment);
        program.start(file, arguments);
        QVERIFY2(program.waitForStarted(), qPrintable(program.errorString()));
        QByteArray said;
        QTRY_VERIFY_WITH_TIMEOUT((said += program.readAllStandardError()).contains("registered validation"),
                                 20000);
    }
};

VANTRY_TEST_MAIN(QCoreApplication, QuitSignalsTest)

#include "quit_signals_test.moc"
