#include "tests/support/TestFiles.h"
#include "tests/support/TestRun.h"

#include <QCoreApplication>
#include <QDir>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

namespace {

struct Run
{
    int code = -1; // negative when it did not end by itself
    QString output;
    QString errors;
};

} // namespace

// The program as it is started by a person or a script on a machine without a display.
class DeskProgramTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        folder = std::make_unique<QTemporaryDir>();
        QVERIFY(folder->isValid());
        write("good.json", "{\"pump\": {\"speed\": 1200}}");
        write("other.ini", "[valve]\nopen = true\n");
        write("broken.json", "{\"a\": }");
    }

    void drawsItsWindow()
    {
        const QImage good = picture({QStringLiteral("good.json")});
        QVERIFY(good.width() >= 800 && good.height() >= 600);
        const QImage other = picture({QStringLiteral("other.ini")});
        QCOMPARE(other.size(), good.size());
        QVERIFY2(other != good, "the content of the file is not seen");
        const QImage withProblem = picture({QStringLiteral("good.json"), QStringLiteral("broken.json")}, 1);
        QCOMPARE(withProblem.size(), good.size());
        QVERIFY2(withProblem != good, "the broken file is not told");
        QVERIFY2(picture({QStringLiteral("good.json")}) == good, "the same call draws something else");
        const QImage large = picture({QStringLiteral("good.json")}, 0, QStringLiteral("2"));
        QCOMPARE(large.size(), good.size() * 2);
        const QImage withoutFile = picture({});
        QCOMPARE(withoutFile.size(), good.size());
    }

    void drawsOverAnOldPictureOnlyWhenItCan()
    {
        write("out.jpg", "old");
        QCOMPARE(run({QStringLiteral("--picture"), inFolder("out.jpg")}).code, 0);
        QVERIFY(!QImage(inFolder("out.jpg")).isNull());
        write("out.xyz", "old");
        QCOMPARE(run({QStringLiteral("--picture"), inFolder("out.xyz")}).code, 1);
        QCOMPARE(TestSupport::contentOf(inFolder("out.xyz")), QByteArray("old"));
    }

    void answersTheCommandLine_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QStringList>("variables"); // NAME=value
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("output"); // what is said on each channel, among other things
        QTest::addColumn<QString>("errors");
        const auto row = [](const char* name, const char* arguments, const char* variables, int code,
                            const char* output, const char* errors) {
            const QLatin1Char blank(' ');
            QTest::newRow(name) << QString::fromLatin1(arguments).split(blank, Qt::SkipEmptyParts)
                                << QString::fromLatin1(variables).split(blank, Qt::SkipEmptyParts) << code
                                << QString::fromLatin1(output) << QString::fromLatin1(errors);
        };
        row("help", "--help", "", 0, "--picture", "");
        row("help on plug-ins", "--help", "", 0, "--safe", "");
        row("help on shared plug-ins", "--help", "", 0, "--shared-plugin-dir", "");
        row("version", "--version", "", 0, "vantry-desk " VANTRY_VERSION, "");
        row("version, in short", "-V", "", 0, "vantry-desk " VANTRY_VERSION, "");
        row("no display", "good.json", "", 1, "", "without a display.*--picture OUT.png");
        row("no display, empty", "", "DISPLAY= WAYLAND_DISPLAY=", 1, "", "without a display");
        row("platform without its display", "", "QT_QPA_PLATFORM=xcb", 1, "", "without a display");
        row("unknown option", "--pictures a.png", "", 2, "", "pictures.*--help");
        row("unknown option, offscreen", "--pictures a.png", "QT_QPA_PLATFORM=offscreen", 2, "",
            "pictures.*--help");
        row("picture without a name", "--picture", "", 2, "", "picture");
        row("picture with an empty name", "--picture=", "", 2, "", "picture");
        row("unknown option with a picture", "--picture a.png --bogus", "", 2, "", "bogus");
        row("picture without a file", "--picture a.png none.ini", "", 1, "", "none.ini: .*[Nn]o such file");
        row("picture of a broken file", "--picture a.png broken.json good.json", "", 1, "",
            "broken.json:1:7: ");
        row("picture in no folder", "--picture none/a.png", "", 1, "", "none/a.png: .*[Nn]o such file");
        row("picture over a folder", "--picture folder.png", "", 1, "", "folder.png: .+");
        row("picture of no kind", "--picture a.xyz", "", 1, "", "a.xyz: .*\\.png");
        row("no plug-in file", "--try-plugin good.json", "", 1, "refused: ", "");
        row("plug-in file", "--try-plugin " VANTRY_MODULE, "", 0, "passed", "");
    }

    void answersTheCommandLine()
    {
        QVERIFY(QDir(folder->path()).mkdir(QStringLiteral("folder.png")));
        QFETCH(QStringList, arguments);
        QFETCH(QStringList, variables);
        const Run result = run(arguments, variables);
        QTEST(result.code, "code");
        QFETCH(QString, output);
        QFETCH(QString, errors);
        QVERIFY2(result.output.contains(output), qPrintable(result.output));
        const QRegularExpression told(errors, QRegularExpression::DotMatchesEverythingOption);
        QVERIFY2(told.match(result.errors).hasMatch(), qPrintable(result.errors));
    }

private:
    QString inFolder(const char* name) const { return folder->filePath(QLatin1String(name)); }

    void write(const char* name, const QByteArray& content) const
    {
        QFile file(inFolder(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(content), content.size());
    }

    Run run(const QStringList& arguments, const QStringList& variables = {}) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "QT_SCALE_FACTOR"})
            environment.remove(QLatin1String(name));
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), inFolder("settings"));
        for (const QString& variable : variables)
            environment.insert(variable.section(QLatin1Char('='), 0, 0),
                               variable.section(QLatin1Char('='), 1));
        QProcess program;
        program.setProcessEnvironment(environment);
        program.setWorkingDirectory(folder->path());
        program.start(QStringLiteral(VANTRY_DESK), arguments);
        if (!program.waitForFinished(60000)) {
            program.kill();
            program.waitForFinished();
        }
        return {program.exitStatus() == QProcess::NormalExit ? program.exitCode() : -1,
                QString::fromUtf8(program.readAllStandardOutput()),
                QString::fromUtf8(program.readAllStandardError())};
    }

    // Null when there is none.
    QImage picture(const QStringList& files, int code = 0, const QString& scale = QStringLiteral("1")) const
    {
        const QString out = inFolder("out.png");
        QFile::remove(out);
        const Run result = run(QStringList{QStringLiteral("--picture"), out} + files,
                               {QLatin1String("QT_SCALE_FACTOR=") + scale});
        return result.code == code ? QImage(out, "PNG") : QImage();
    }

    std::unique_ptr<QTemporaryDir> folder;
};

VANTRY_TEST_MAIN(QCoreApplication, DeskProgramTest)

#include "desk_program_test.moc"
