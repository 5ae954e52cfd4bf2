#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include <csignal>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

// The program beside others that write the same file.
class OtherProgramsTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        folder = std::make_unique<QTemporaryDir>();
        QVERIFY(folder->isValid());
        file = folder->filePath(QStringLiteral("app.ini"));
    }

    void losesNoEditOfDifferentKeys()
    {
        write("[k]\na = 0\nb = 0\nc = 0\n");
        const QStringList keys{QStringLiteral("k.a"), QStringLiteral("k.b"), QStringLiteral("k.c")};
        for (int round = 1; round <= 12; ++round) {
            const auto ends = setAtOnce(keys, {number(round), number(round), number(round)});
            QCOMPARE(ends, QVector<int>({0, 0, 0}));
            const QByteArray value = QByteArray::number(round);
            QCOMPARE(read(), "[k]\na = " + value + "\nb = " + value + "\nc = " + value + "\n");
        }
    }

    // One wins, and another that had read the same file is refused; one that read it afterwards follows.
    void letsOneOfTheSameKeyWin()
    {
        write("k = 0\n");
        const QStringList keys{QStringLiteral("k"), QStringLiteral("k"), QStringLiteral("k")};
        for (int round = 1; round <= 12; ++round) {
            const QStringList values{number(10 * round), number(10 * round + 1), number(10 * round + 2)};
            const auto ends = setAtOnce(keys, values);
            QVERIFY(ends.contains(0));
            const int winner = values.indexOf(QString::fromLatin1(read().mid(4).trimmed()));
            QVERIFY2(winner >= 0 && ends.at(winner) == 0, read().constData());
            for (const int end : ends)
                QVERIFY(end == 0 || end == 3);
        }
    }

    void mergesOrRefusesWhatChangesWhileItRuns_data()
    {
        const auto row =
            TestSupport::columns<QByteArray, int, QByteArray>("meanwhile", "exitCode", "afterwards");
        row("another key", "; new\na = 1\nb = 7\n", 0, "; new\na = 2\nb = 7\n");
        row("the same key", "a = 5\nb = 1\n", 3, "a = 5\nb = 1\n");
    }

    // The program reads the file, then waits to save it, since another of its user's programs saves.
    void mergesOrRefusesWhatChangesWhileItRuns()
    {
        write("a = 1\nb = 1\n");
        const QTemporaryDir runtime;
        const QByteArray lockFile = QFile::encodeName(runtime.filePath(QStringLiteral("vantry-saves.lock")));
        const int lock = ::open(lockFile.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
        struct flock all = {};
        all.l_type = F_WRLCK;
        QCOMPARE(::fcntl(lock, F_OFD_SETLK, &all), 0);
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtime.path());
        program.setProcessEnvironment(environment);
        program.start(QStringLiteral(VANTRY_PROGRAM),
                      {QStringLiteral("set"), file, QStringLiteral("a"), QStringLiteral("2")});
        QVERIFY(program.waitForStarted());
        int looks = 0; // it has the folder open for a moment as it reads, too
        QTRY_VERIFY((looks = hasOpen(program.processId(), folder->path()) ? looks + 1 : 0) >= 4);
        QFETCH(QByteArray, meanwhile);
        write(meanwhile);
        ::close(lock);
        QVERIFY(program.waitForFinished());
        QTEST(program.exitCode(), "exitCode");
        QTEST(read(), "afterwards");
        const QByteArray message = program.readAllStandardError();
        QCOMPARE(message.count('\n'), program.exitCode() == 0 ? 0 : 1);
        QVERIFY2(message.isEmpty() || (message.contains("'5'") && message.contains("'2'")),
                 message.constData());
    }

    void watchesUntilItIsInterrupted_data()
    {
        const auto row = TestSupport::columns<QStringList, QByteArrayList>("options", "expected");
        row("lines", {}, {"changed a = ", "removed a\n", "created a2 = x\\\\y\n"});
        row("json", {QStringLiteral("--json")},
            {R"({"change": "changed", "path": "a", "type": "integer", "value": )",
             R"({"change": "removed", "path": "a"})"
             "\n",
             R"({"change": "created", "path": "a2", "type": "text", "value": "x\\y"})"
             "\n"});
        row("NUL", {QStringLiteral("-0")},
            {"changed a = ", QByteArray("removed a\0", 10), QByteArray("created a2 = x\\y\0", 17)});
    }

    void watchesUntilItIsInterrupted()
    {
        QFETCH(QStringList, options);
        QFETCH(QByteArrayList, expected);
        write("a = 1\nb = 1\n");
        QProcess program;
        program.start(QStringLiteral(VANTRY_PROGRAM),
                      QStringList{QStringLiteral("watch"), file, QStringLiteral("a*")} + options);
        QVERIFY(program.waitForStarted());
        // What changes before it watches, it cannot tell; so the file changes until it does.
        int value = 1;
        QByteArray printed;
        QTRY_VERIFY2(
            [&] {
                write("a = " + QByteArray::number(++value) + "\nb = 2\n");
                program.waitForReadyRead(100);
                printed += program.readAllStandardOutput();
                return printed.contains(expected.at(0));
            }(),
            printed.constData());
        write("b = 2\na2 = x\\y\n");
        QTRY_VERIFY2((program.waitForReadyRead(100), printed += program.readAllStandardOutput(),
                      printed.contains(expected.at(1)) && printed.contains(expected.at(2))),
                     printed.constData());
        QVERIFY(!printed.contains(" b") && !printed.contains("\"b\""));
        QCOMPARE(::kill(pid_t(program.processId()), SIGINT), 0);
        QVERIFY(program.waitForFinished());
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), 0);
    }

    void leavesIgnoredSignalsAlone()
    {
        write("a = 1\n");
        QProcess program;
        program.start(QStringLiteral("nohup"),
                      {QStringLiteral(VANTRY_PROGRAM), QStringLiteral("watch"), file});
        QVERIFY(program.waitForStarted());
        QByteArray printed;
        const auto read = [&] {
            program.waitForReadyRead(100);
            return printed += program.readAllStandardOutput();
        };
        int value = 1;
        QTRY_VERIFY((write("a = " + QByteArray::number(++value) + "\n"), read().contains("changed a")));
        QCOMPARE(::kill(pid_t(program.processId()), SIGHUP), 0);
        write("a = 0\n");
        QTRY_VERIFY2(read().contains("changed a = 0\n"), printed.constData());
        QCOMPARE(::kill(pid_t(program.processId()), SIGTERM), 0);
        QVERIFY(program.waitForFinished());
        QCOMPARE(program.exitCode(), 0);
    }

    // As "vantry find ... | head -1" does; also when whoever started it has the signal ignored.
    void endsQuietlyWhenNobodyReads()
    {
        QByteArray many;
        for (int number = 0; number < 20000; ++number)
            many += "key" + QByteArray::number(number) + " = 1\n";
        write(many);
        QProcess shell;
        shell.start(QStringLiteral("bash"),
                    {QStringLiteral("-c"),
                     QStringLiteral("trap '' PIPE; \"$0\" tree \"$1\" | head -n 1; exit "
                                    "${PIPESTATUS[0]}"),
                     QStringLiteral(VANTRY_PROGRAM), file});
        QVERIFY(shell.waitForFinished());
        QCOMPARE(shell.readAllStandardError(), QByteArray());
        QCOMPARE(shell.readAllStandardOutput(), QByteArray("key0 = 1\n"));
        QCOMPARE(shell.exitCode(), 128 + SIGPIPE);
    }

private:
    static QString number(int value) { return QString::number(value); }

    void write(const QByteArray& content) const
    {
        QFile target(file);
        if (!target.open(QIODevice::WriteOnly) || target.write(content) != content.size())
            qFatal("%s: %s", qPrintable(file), qPrintable(target.errorString()));
    }

    QByteArray read() const
    {
        QFile source(file);
        return source.open(QIODevice::ReadOnly) ? source.readAll() : QByteArray("the file is gone");
    }

    // Exit codes of programs that run at once, one for each key.
    QVector<int> setAtOnce(const QStringList& keys, const QStringList& values) const
    {
        std::vector<std::unique_ptr<QProcess>> programs;
        for (int at = 0; at < keys.size(); ++at) {
            programs.push_back(std::make_unique<QProcess>());
            programs.back()->start(QStringLiteral(VANTRY_PROGRAM),
                                   {QStringLiteral("set"), file, keys.at(at), values.at(at)});
        }
        QVector<int> ends;
        for (const auto& program : programs)
            ends.append(program->waitForFinished() ? program->exitCode() : -1);
        return ends;
    }

    static bool hasOpen(qint64 process, const QString& path)
    {
        const QDir open(QStringLiteral("/proc/%1/fd").arg(process));
        const QStringList names = open.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
        for (const QString& name : names) {
            if (QFile::symLinkTarget(open.filePath(name)) == QFileInfo(path).canonicalFilePath())
                return true;
        }
        return false;
    }

    std::unique_ptr<QTemporaryDir> folder;
    QString file;
};

VANTRY_TEST_MAIN(QCoreApplication, OtherProgramsTest)

#include "other_programs_test.moc"
