#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

// Runs the program in a shell as its users do. A transcript is a text of commands ("$ ..."), each followed by
// what it prints: lines on stdout, then those on stderr ("! ..."), then its exit code if it is not 0 ("[1]").
class TranscriptsTest : public QObject
{
    Q_OBJECT

    struct Step
    {
        QString command;
        QString printed;
    };

private slots:
    void runsAsWritten_data()
    {
        const auto row = TestSupport::columns<QString>("text");
        const QDir folder(project().filePath(QStringLiteral("tests/cli/transcripts")));
        const QStringList names = folder.entryList(QDir::Files);
        QVERIFY(!names.isEmpty());
        for (const QString& name : names)
            row(qPrintable(name), read(folder.filePath(name)));
        row("README.md", examplesOf(read(project().filePath(QStringLiteral("README.md")))));
    }

    void runsAsWritten()
    {
        QTemporaryDir scratch;
        QVERIFY(scratch.isValid());
        copyExamples(scratch.path());
        QFETCH(QString, text);
        const QVector<Step> steps = stepsOf(text);
        QVERIFY(steps.size() > 4);
        for (const Step& step : steps)
            QCOMPARE(step.command + QLatin1Char('\n') + run(step.command, scratch.path()),
                     step.command + QLatin1Char('\n') + step.printed);
    }

private:
    static QDir project() { return QDir(QStringLiteral(VANTRY_SOURCE_DIR)); }

    static QString read(const QString& fileName)
    {
        QFile file(fileName);
        if (!file.open(QIODevice::ReadOnly))
            qFatal("%s: %s", qPrintable(fileName), qPrintable(file.errorString()));
        return QString::fromUtf8(file.readAll());
    }

    // The indented lines of the chapter.
    static QString examplesOf(const QString& readme)
    {
        const QString chapter = readme.section(QStringLiteral("\n## The command line\n"), 1)
                                    .section(QStringLiteral("\n## "), 0, 0);
        QString examples;
        const QStringList lines = chapter.split(QLatin1Char('\n'));
        for (const QString& line : lines) {
            if (line.startsWith(QLatin1String("    ")))
                examples += line.mid(4) + QLatin1Char('\n');
        }
        return examples;
    }

    static void copyExamples(const QString& folder)
    {
        const QString path = QStringLiteral("docs/examples");
        QVERIFY(QDir(folder).mkpath(path));
        const QFileInfoList files = QDir(project().filePath(path)).entryInfoList(QDir::Files);
        for (const QFileInfo& file : files)
            QVERIFY(QFile::copy(file.filePath(),
                                QDir(folder).filePath(path + QLatin1Char('/') + file.fileName())));
    }

    static QVector<Step> stepsOf(const QString& text)
    {
        QVector<Step> steps;
        const QStringList lines = text.split(QLatin1Char('\n'));
        for (const QString& line : lines.mid(0, lines.size() - 1)) {
            if (line.startsWith(QLatin1String("$ ")))
                steps.append({line.mid(2), {}});
            else if (!steps.isEmpty())
                steps.last().printed += line + QLatin1Char('\n');
        }
        return steps;
    }

    static QString run(const QString& command, const QString& folder)
    {
        QProcess shell;
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
        environment.insert(QStringLiteral("HOME"), folder);
        environment.insert(QStringLiteral("PATH"), QFileInfo(QStringLiteral(VANTRY_PROGRAM)).path() +
                                                       QLatin1Char(':') + qEnvironmentVariable("PATH"));
        shell.setProcessEnvironment(environment);
        shell.setWorkingDirectory(folder);
        shell.start(QStringLiteral("bash"), {QStringLiteral("-c"), command});
        if (!shell.waitForFinished())
            return QStringLiteral("it did not end");
        QString printed = QString::fromUtf8(shell.readAllStandardOutput());
        const QStringList messages =
            QString::fromUtf8(shell.readAllStandardError()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        for (const QString& message : messages)
            printed += QStringLiteral("! ") + message + QLatin1Char('\n');
        if (shell.exitStatus() != QProcess::NormalExit || shell.exitCode() != 0)
            printed += QStringLiteral("[%1]\n").arg(shell.exitCode());
        return printed;
    }
};

VANTRY_TEST_MAIN(QCoreApplication, TranscriptsTest)

#include "transcripts_test.moc"
