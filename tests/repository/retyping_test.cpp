#include "tests/support/Columns.h"
#include "tests/support/RepositoryTest.h"

#include <QDate>

using namespace FrameworkCore::AppConfig;
using TestSupport::text;

// Attributes that get a value of another type, and their type with it.
class RetypingTest : public TestSupport::RepositoryTest
{
    Q_OBJECT

    Outcome retype(const Name& path, const QVariant& value)
    {
        return repository->getWriterInterface()->retype(path, value);
    }

private slots:
    void init()
    {
        RepositoryTest::init();
        history()->recordThisThread();
    }

    // A null of yaml becomes the group of what is created or pasted below it, and undo brings it back.
    void becomesAGroup()
    {
        const QByteArray file("a: # c\nb: ~\nc: {k: 1}\n");
        QVERIFY(mount("yaml", "m", file));
        const QStringList before = content();
        QList<FrameworkCore::Notification::UpdateResult> heard;
        listen(QStringLiteral("m.a"), [&heard](const auto&, auto, auto result, const QVariant&, const auto&) {
            heard.append(result);
        });
        QVERIFY(create(QStringLiteral("m.a.k.l"), 5));
        QVERIFY(transfer()->copyTree(QStringLiteral("m.c"), QStringLiteral("m.b.d")));
        QCOMPARE(heard, {FrameworkCore::Notification::UpdateResult::Removed});
        const QStringList after = content();
        QCOMPARE(saved(), "a: # c\n  k:\n    l: 5\nb:\n  d:\n    k: 1\nc: {k: 1}\n");
        QVERIFY(history()->undo() && history()->undo());
        QCOMPARE(content(), before);
        QCOMPARE(saved(), file);
        QVERIFY(history()->redo() && history()->redo());
        QCOMPARE(content(), after);
        QVERIFY(saved() != file);
        restart();
        QVERIFY(mountFile("yaml", "m", fileOf("m")));
        QCOMPARE(content(), after);
    }

    void changesTheType_data()
    {
        const auto row = TestSupport::columns<QString, QByteArray, QString, bool, QVariant, QByteArray>(
            "type", "file", "path", "isNamed", "value", "after");
        const QDate day(2024, 2, 29);
        row("ini, a number", "ini", "[s]\nt = 30 ; c\n", "m.s.t", false, text("30s"), "[s]\nt = 30s ; c\n");
        row("ini, a text", "ini", "[s]\nt = input\n", "m.s.t", false, true, "[s]\nt = true\n");
        row("ini, a tag goes", "ini", "[s]\na=1\n; @type date\nt=2024-01-01\n", "m.s.t", true, 4915,
            "[s]\na=1\nt=4915\n");
        row("ini, a tag changes", "ini", "; @type text\nt=5\n", "m.t", true, day,
            "; @type date\nt=2024-02-29\n");
        row("ini, quotes", "ini", "t = \"x\"\n", "m.t", true, 5, "t = 5\n");
        row("txt, a number", "txt", "s.t: 30\n", "m.s.t", false, text("30s"), "s.t: 30s\n");
        row("txt, a tag goes", "txt", "# @type double\ns.t: 2.5\n", "m.s.t", true, text("much"),
            "s.t: much\n");
        row("xml, an attribute", "xml", "<r t='30'/>", "m.r.@t", false, text("30s"), "<r t='30s'/>");
        row("xml, an element", "xml", "<r><t>4915</t></r>", "m.r.t", false, text("infinity"),
            "<r><t>infinity</t></r>");
        row("xml, a tag goes", "xml", "<r><?vantry type=\"date\"?><t>2024-01-01</t></r>", "m.r.t", true,
            false, "<r><t>false</t></r>");
        row("xml, a section", "xml", "<r><![CDATA[5]]></r>", "m.r", true, 6, "<r>6</r>");
        row("yaml, a number", "yaml", "t: 30 # s\n", "m.t", true, text("30"), "t: \"30\" # s\n");
        row("yaml, a text", "yaml", "- k: 'x'\n", "m.0.k", true, 3.0, "- k: 3.0\n");
        row("yaml, a block", "yaml", "t: |\n  x\nu: 1\n", "m.t", true, true, "t: true\nu: 1\n");
        row("yaml, a tag goes", "yaml", "t: !!str 5\n", "m.t", true, 5, "t: 5\n");
        row("yaml, a comment tags", "yaml", "# @type date\nt: \"2024-01-01\"\nu: 1\n", "m.t", true, 5,
            "t: 5\nu: 1\n");
        row("toml, a tag goes", "toml", "# c\n# @type bytes\nt = \"x\"\nu=1\n", "m.t", true, 5,
            "# c\nt = 5\nu=1\n");
        row("json, a number", "json", "{ \"t\": 30 }", "m.t", true, text("30"), "{ \"t\": \"30\" }");
        row("json, a double", "json", "{ \"t\": \"x\" }", "m.t", true, 3.0, "{ \"t\": 3.0 }");
        row("json, a list", "json", "{\"t\":\"x\"}", "m.t", true, QStringList(text("x")), "{\"t\":[\"x\"]}");
        row("json, a tag goes", "json", R"({"t":"2024-01-01","$types":{"t":"date"}})", "m.t", true,
            text("soon"), R"({"t":"soon"})");
    }

    // The watchers hear of it, undo brings back text and type, and a fresh load shows what was written.
    void changesTheType()
    {
        QFETCH(QString, type);
        QFETCH(QByteArray, file);
        QFETCH(QString, path);
        QFETCH(QVariant, value);
        QFETCH(QByteArray, after);
        QVERIFY(mount(type, "m", file));
        QTEST(backends()->getBackendInformation(text("m"))->namesType(path), "isNamed");
        const QStringList before = content();
        QVariantList heard;
        listen(path, [&heard](const auto&, auto, auto result, const QVariant& told, const auto&) {
            QCOMPARE(result, FrameworkCore::Notification::UpdateResult::Changed);
            heard.append(told);
        });
        QVERIFY(retype(path, value));
        const QVariant present = read(path);
        QCOMPARE(present, value);
        QCOMPARE(heard, QVariantList{present});
        const QStringList changed = content();
        QCOMPARE(saved(), after);

        QCOMPARE(history()->undo(), Success);
        QCOMPARE(content(), before);
        QCOMPARE(saved(), file);
        QCOMPARE(history()->redo(), Success);
        QCOMPARE(saved(), after);
        restart();
        QVERIFY(mountFile(type, "m", fileOf("m")));
        QCOMPARE(content(), changed);
    }

    // What others change meanwhile is kept; the same attribute in conflict, and reverted, is as theirs.
    void mergesTheType()
    {
        QVERIFY(mount("ini", "m", "; @type date\nd=2024-01-01\nt=30\nn=1\n"));
        QVERIFY(retype("m.d", text("soon")) && retype("m.t", text("30s")));
        put("m", "; @type date\nd=2024-01-01\nt=30\nn=none\n");
        QCOMPARE(saved(), QByteArray("d=soon\nt=30s\nn=none\n"));
        QCOMPARE(read("m.n"), QVariant(text("none")));
        put("m", "; @type date\nd=2024-01-01\nt=30s\nn=none\n");
        QVERIFY(reload() && retype("m.d", 5) && write("m.n", text("some")));
        QCOMPARE(changes()->revert(text("m.d")), Success);
        QCOMPARE(read("m.d"), QVariant(QDate(2024, 1, 1)));
        QCOMPARE(saved(), QByteArray("t=30s\nn=some\n; @type date\nd=2024-01-01\n"));

        QVERIFY(retype("m.t", 40));
        put("m", "t=true\nn=none\n");
        QVERIFY(!save());
        QCOMPARE(changes()->revert(text("m.t")), Success);
        QCOMPARE(read("m.t"), QVariant(true));
        QCOMPARE(saved(), QByteArray("t=true\nn=none\n"));
    }
};

VANTRY_TEST_MAIN(QCoreApplication, RetypingTest)

#include "retyping_test.moc"
