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
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home.path());
        environment.insert(QStringLiteral("XDG_STATE_HOME"), home.path());
        program.setProcessEnvironment(environment);
        program.start(QStringLiteral(VANTRY_DESK), QStringList());
        QVERIFY2(program.waitForStarted(), qPrintable(program.errorString()));

        // What the plug-in logs when it is loaded: the program listens, and its window is yet to come.
        QByteArray said;
        QTRY_VERIFY_WITH_TIMEOUT((said += program.readAllStandardError()).contains("registered validation"),
                                 20000);
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
};

VANTRY_TEST_MAIN(QCoreApplication, QuitSignalsTest)

#include "quit_signals_test.moc"
