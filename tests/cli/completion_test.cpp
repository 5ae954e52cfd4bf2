#include "tests/cli/TerminalRun.h"
#include "tests/support/Columns.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestRun.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTemporaryDir>

// The completion that an interactive bash makes of the printed script.
class CompletionTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(folder.isValid());
        const auto write = [this](const char* name, const QByteArray& bytes) {
            TestSupport::writeFile(folder.filePath(QLatin1String(name)), bytes);
        };
        write("app.ini", "[server]\nport = 1\n$v w = 2\na:b:c = 3\n");
        write("n.xml", "<r><c v='1'/></r>");
        write("odd=name.ini", "k = 1\n");
        qputenv("PATH",
                QFile::encodeName(QFileInfo(QStringLiteral(VANTRY_PROGRAM)).path()) + ':' + qgetenv("PATH"));
        for (const char* name : {"PS1", "PROMPT_COMMAND", "HISTFILE", "LC_ALL"})
            qunsetenv(name);
        qputenv("INPUTRC", "/dev/null");
        qputenv("TERM", "dumb");
    }

    void completesInBash_data()
    {
        // typed: up to the tabulator; words: that the line consists of then
        const auto row = TestSupport::columns<QByteArray, QByteArrayList>("typed", "words");
        row("command", "vantry conv", {"convert"});
        row("option", "vantry set --dr", {"set", "--dry-run"});
        row("value of an option", "vantry get --format js", {"get", "--format", "json"});
        row("value after =", "vantry get --format=js", {"get", "--format=json"});
        row("type after =", "vantry set app.ini server.port --type=dou",
            {"set", "app.ini", "server.port", "--type=double"});
        row("file", "vantry get ap", {"get", "app.ini"});
        row("file with =", "vantry get odd=na", {"get", "odd=name.ini"});
        row("file of a backend", "vantry --backend n=ap", {"--backend", "n=app.ini"});
        row("file of a backend after =", "vantry --backend=n=ap", {"--backend=n=app.ini"});
        row("access of a backend", "vantry --backend n=app.ini:w", {"--backend", "n=app.ini:wo"});
        row("backend", "vantry --backend=name=app.ini get na", {"--backend=name=app.ini", "get", "name"});
        row("path in a backend", "vantry --backend=n=app.ini:ro get n server.p",
            {"--backend=n=app.ini:ro", "get", "n", "server.port"});
        row("path", "vantry get app.ini server.p", {"get", "app.ini", "server.port"});
        row("path with :", "vantry get app.ini server.a:b", {"get", "app.ini", "server.a:b:c"});
        row("path with a blank", "vantry get app.ini server.\\$v", {"get", "app.ini", "server.$v w"});
        row("path in quotes", "vantry get app.ini 'server.$v", {"get", "app.ini", "server.$v w"});
        row("path with @", "vantry get n.xml r.c.@", {"get", "n.xml", "r.c.@v"});
        row("rule", "vantry validate app.ini --rule=server.port=ipv4",
            {"validate", "app.ini", "--rule=server.port=ipv4"});
    }

    void completesInBash()
    {
        QFETCH(QByteArray, typed);
        QFETCH(QByteArrayList, words);
        TerminalRun bash("bash", {"--norc", "--noprofile", "-i"}, QFile::encodeName(folder.path()));
        QVERIFY(bash.write("eval \"$(vantry completion bash)\"; echo rea''dy\n"));
        QVERIFY(bash.read("ready").contains("ready"));
        // Back at the beginning of the line, it becomes one that prints its words.
        QVERIFY(bash.write(typed + "\t\x01printf '<%s>' \x05\n"));
        const QByteArray expected = "<vantry><" + words.join("><") + '>';
        const QByteArray shown = bash.read(expected, 5'000);
        QVERIFY2(shown.contains(expected), shown.constData());
    }

private:
    QTemporaryDir folder;
};

VANTRY_TEST_MAIN(QCoreApplication, CompletionTest)

#include "completion_test.moc"
