#include "desk/places/AttributeCopy.h"
#include "tests/support/Columns.h"
#include "tests/support/RepositoryTest.h"

#include <QFileInfo>
#include <QProcess>

using Vantry::AttributeCopy;

// What is taken along of an attribute; commands are run by a shell.
class AttributeCopyTest : public TestSupport::RepositoryTest
{
    Q_OBJECT

private slots:
    void givesACommandThatSetsTheValue_data()
    {
        // command: without the folder
        const auto row = TestSupport::columns<QString, QString, QByteArray, QString, QVariant, QString>(
            "type", "file", "text", "path", "other", "command");
        row("plain", "ini", "m.ini", "[s]\nport = 80\n", "m.s.port", 81, "vantry set m.ini s.port 80");
        row("words", "ini", "m.ini", "[s]\ntext = it's $HOME \\ `ls`\n", "m.s.text", QStringLiteral("x"),
            "vantry set m.ini s.text 'it'\\''s $HOME \\ `ls`'");
        row("an option", "ini", "m.ini", "k = -x\n", "m.k", QStringLiteral("x"), "vantry set -- m.ini k -x");
        row("nothing", "ini", "m.ini", "k =\n", "m.k", QStringLiteral("x"), "vantry set m.ini k ''");
        row("lines", "json", "m.json", "{\"k\": \"a\\nb'\\\\\"}", "m.k", QStringLiteral("x"),
            "vantry set m.json k $'a\\nb\\'\\\\'");
        row("a list", "json", "m.json", "{\"k\": [\"a;b\", \"c\"]}", "m.k", QStringList(QStringLiteral("x")),
            "vantry set m.json k 'a\\;b;c'");
        row("a name with blanks", "json", "my file", "{\"a b\": 1}", "m.a b", 2,
            "vantry set 'my file' 'a b' 1");
        row("another format than its name says", "txt", "m.conf", "k.a = 1\n", "m.k.a", 2,
            "vantry set --format txt m.conf k.a 1");
    }

    void givesACommandThatSetsTheValue()
    {
        QFETCH(QString, type);
        QFETCH(QString, file);
        QFETCH(QByteArray, text);
        QFETCH(QString, path);
        QFETCH(QVariant, other);
        QFETCH(QString, command);
        put(file, text);
        QVERIFY(mountFile(type, "m", fileOf(file)));
        const QVariant value = read(path);
        QString given = AttributeCopy(*repository, path).getCommand();
        QCOMPARE(QString(given).remove(folder->path() + QLatin1Char('/')), command);

        QVERIFY(write(path, other));
        QVERIFY(save());
        given.replace(QLatin1String("vantry "), QStringLiteral(VANTRY " "));
        QProcess shell;
        shell.start(QStringLiteral("bash"), {QStringLiteral("-c"), given});
        QVERIFY(shell.waitForFinished());
        QCOMPARE(shell.readAllStandardError(), QByteArray());
        QVERIFY(reload());
        QCOMPARE(read(path), value);
    }

    void givesWhatThereIs()
    {
        QVERIFY(mount("ini", "m", "[s]\nport = 80\n"));
        QVERIFY(mount("ini", "secret", "k = 1\n", AccessMode::WriteOnly));
        QVERIFY(create("memory.a", 1));
        QCOMPARE(AttributeCopy(*repository, Name("m.s")).getCommand(),
                 QStringLiteral("vantry list %1 s").arg(fileOf("m")));
        QVERIFY(!AttributeCopy(*repository, Name("m.s")).hasValue());
        QVERIFY(!AttributeCopy(*repository, Name("secret.k")).hasValue());
        QCOMPARE(AttributeCopy(*repository, Name("secret.k")).getFile(), fileOf("secret"));
        QCOMPARE(AttributeCopy(*repository, Name("memory.a")).getCommand(), QString());
        QCOMPARE(AttributeCopy(*repository, Name("memory.a")).getValue(), QStringLiteral("1"));
    }
};

VANTRY_TEST_MAIN(QCoreApplication, AttributeCopyTest)

#include "attribute_copy_test.moc"
