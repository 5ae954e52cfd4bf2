#include "tests/support/Columns.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestRun.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

// A file that goes between the look at it and its opening is not taken for one that is yet to come.
class VanishingFileTest : public QObject
{
    Q_OBJECT

private slots:
    void isAnErrorOfThatFile_data()
    {
        const auto row = TestSupport::columns<QStringList>("arguments");
        for (const QString& words :
             {QStringLiteral("get gone.ini k.a"), QStringLiteral("ls gone.ini"),
              QStringLiteral("set gone.ini k.a 2"), QStringLiteral("create gone.ini k.b 2"),
              QStringLiteral("rm gone.ini k.a"), QStringLiteral("mv gone.ini k.a k.b"),
              QStringLiteral("cp gone.ini k other.json l"), QStringLiteral("cp other.json l gone.ini k.c"),
              QStringLiteral("import gone.ini k other.json"), QStringLiteral("diff other.json gone.ini"),
              QStringLiteral("convert gone.ini new.json")})
            row(qPrintable(words), words.split(QLatin1Char(' ')));
    }

    void isAnErrorOfThatFile()
    {
        QFETCH(QStringList, arguments);
        const QTemporaryDir folder;
        const auto path = [&](const char* name) { return folder.filePath(QLatin1String(name)); };
        TestSupport::writeFile(path("gone.ini"), "[k]\na = 1\n");
        TestSupport::writeFile(path("other.json"), "{\"l\": 3}\n");
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("LD_PRELOAD"), QStringLiteral(REMOVES_BEFORE_OPENING));
        environment.insert(QStringLiteral("VANISHING_FILE"), QStringLiteral("gone.ini"));
        program.setProcessEnvironment(environment);
        program.setWorkingDirectory(folder.path());
        program.start(QStringLiteral(VANTRY_PROGRAM), arguments);
        QVERIFY(program.waitForFinished());
        QCOMPARE(program.exitCode(), 4);
        QCOMPARE(program.readAllStandardOutput(), QByteArray());
        const QByteArray message = program.readAllStandardError();
        QCOMPARE(message.count('\n'), 1);
        QVERIFY2(message.contains("gone.ini"), message.constData());
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden),
                 QStringList({QStringLiteral("other.json")}));
        QCOMPARE(TestSupport::contentOf(path("other.json")), QByteArray("{\"l\": 3}\n"));
    }
};

VANTRY_TEST_MAIN(QCoreApplication, VanishingFileTest)

#include "vanishing_file_test.moc"
