#include "repository/documents/Formats.h"
#include "tests/support/Columns.h"
#include "tests/support/RepositoryTest.h"

#include <QDate>
#include <QFile>
#include <QTextCodec>
#include <QTime>

using namespace FrameworkCore::AppConfig;

class SubtreeTransferTest : public TestSupport::RepositoryTest
{
    Q_OBJECT

private slots:
    void copiesBetweenFormats_data()
    {
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        for (const std::string& from : Repository::Documents::getDocumentTypes()) {
            for (const std::string& to : Repository::Documents::getDocumentTypes())
                QTest::addRow("%s to %s", from.c_str(), to.c_str())
                    << QString::fromStdString(from) << QString::fromStdString(to);
            QTest::addRow("%s to memory", from.c_str()) << QString::fromStdString(from) << QString();
        }
    }

    // The copy holds the same, in memory and after the destination was saved and loaded; a move also empties
    // the source.
    void copiesBetweenFormats()
    {
        QFETCH(QString, from);
        QFETCH(QString, to);
        QVERIFY(mount(from, "a", {}));
        QVERIFY(create("a.r.s.flag", true));
        QVERIFY(create("a.r.s.count", -5));
        create("a.r.s.name", QStringLiteral("x = \"y\"; #z"));
        QVERIFY(create("a.r.s.deep.er", 7));
        QVERIFY(create("a.r.t.big", 18446744073709551615ULL));
        const QStringList expected = content("a.r.s");
        if (!to.isEmpty())
            QVERIFY(mount(to, "b", {}));
        QCOMPARE(copy("a.r.s", "b.r.copy"), Success);
        QCOMPARE(content("b.r.copy"), expected);
        QCOMPARE(move("a.r.s", "b.r.moved"), Success);
        QCOMPARE(content("b.r.moved"), expected);
        QCOMPARE(content("a.r.s"), QStringList());
        if (to.isEmpty())
            return;
        saved("b");
        restart();
        QVERIFY(mountFile(to, "b", fileOf("b")));
        QCOMPARE(content("b.r.copy"), expected);
        QCOMPARE(content("b.r.moved"), expected);
    }

    void refusesAsAWhole_data()
    {
        const auto row = TestSupport::columns<QString, QString, int, int, QString>("from", "to", "copied",
                                                                                   "moved", "where");
        row("nothing there", "j.none", "i.x", NotFound, NotFound, "'j.none'");
        row("exists", "j.a", "i.s.k", AlreadyExists, AlreadyExists, "'i.s.k'");
        row("into itself", "j.a", "j.a.b.c", InvalidPath, InvalidPath, "'j.a.b.c'");
        row("onto itself", "j.a", "j.a", InvalidPath, InvalidPath, "'j.a'");
        row("no path", "j.a", "i..x", InvalidPath, InvalidPath, "'i..x'");
        row("read-only", "j.a", "r.x", NotWritable, NotWritable, "'r.x.first'");
        row("rule", "j.a", "i.ruled", RefusedByValidation, RefusedByValidation, "'i.ruled.last'");
        row("format", "j.a", "list.x", BackendFailure, BackendFailure, "'list.x.first'");
        row("own", "j.a", "internal.x", NotWritable, NotWritable, "'internal.x.first'");
        row("hidden", "w.s", "i.x", NotReadable, NotReadable, "'w.s.k'");
        row("from read-only", "r.s", "i.x", Success, NotWritable, "'r.s'");
        row("a root", "r", "i.x", Success, NotWritable, "'r'");
        row("partly hidden", "mixed", "i.x", Success, NotReadable, "'mixed.hidden'");
    }

    void refusesAsAWhole()
    {
        QVERIFY(mount("json", "j", "{\"a\": {\"first\": 1, \"last\": 2}}\n"));
        QVERIFY(mount("ini", "i", "[s]\nk=1\n"));
        QVERIFY(mount("ini", "r", "[s]\nk=1\n", AccessMode::ReadOnly));
        QVERIFY(mount("ini", "w", "[s]\nk=1\n", AccessMode::WriteOnly));
        QVERIFY(mount("json", "list", "[1]\n"));
        QVERIFY(create("mixed.open", 1));
        QVERIFY(create("mixed.hidden", 2, 2));
        validations()->addValidation(QStringLiteral("i.ruled.last"), QStringLiteral("range(0,1)"));
        QFETCH(QString, from);
        QFETCH(QString, to);
        QFETCH(int, copied);
        QFETCH(int, moved);
        QFETCH(QString, where);
        const QStringList before = content("");
        int heard = 0;
        listen(
            "*", [&heard](auto&&...) { ++heard; }, 15);
        if (moved != Success) {
            const Outcome refusal = move(from, to);
            QCOMPARE(int(refusal.getStatus()), moved);
            QVERIFY2(refusal.toText().contains(where), qPrintable(refusal.toText()));
            QCOMPARE(heard, 0);
            QCOMPARE(content(""), before);
        }
        QCOMPARE(int(copy(from, to).getStatus()), copied);
        QCOMPARE(heard > 0, copied == Success);
        if (copied == Success)
            return;
        QCOMPARE(content(""), before);
        QCOMPARE(saved("i"), QByteArray("[s]\nk=1\n"));
    }

    void exportsAndImports_data()
    {
        const auto row = TestSupport::columns<QString>("type");
        for (const std::string& type : Repository::Documents::getDocumentTypes())
            row(type.c_str(), QString::fromStdString(type));
    }

    // Types, order and a node's own value beside children come through the text of each format.
    void exportsAndImports()
    {
        QFETCH(QString, type);
        QVERIFY(create("a.r.flag", true));
        if (type != QLatin1String("xml")) // an element holds either a text or elements
            QVERIFY(create("a.r.s", QStringLiteral("own")));
        QVERIFY(create("a.r.s.count", -5));
        QVERIFY(create("a.r.s.when", QDate(2024, 2, 29)));
        QVERIFY(create("a.r.hidden", 1, 2));
        const QByteArray text = exported("a", type);
        QVERIFY(!text.contains("hidden"));
        QVERIFY(create("b.r.flag", 0));
        QCOMPARE(import("b", type, text), Success);
        remove("a.r.hidden");
        QStringList expected = content("a");
        QVERIFY(expected.removeOne(QStringLiteral(".r.flag = true bool 3 0")));
        QStringList imported = content("b");
        QVERIFY(imported.removeOne(QStringLiteral(".r.flag = 1 qlonglong 3 0"))); // its type stays
        QCOMPARE(imported, expected);
    }

    void refusesTextsAsAWhole()
    {
        QVERIFY(mount("ini", "i", "[s]\nk=1\n"));
        const QStringList before = content("");
        const auto refused = [&](const QString& path, const char* type, const QByteArray& text,
                                 StatusCode status, const char* reason) {
            const Outcome refusal = import(path, type, text);
            QVERIFY2(refusal.toText().contains(QLatin1String(reason)), qPrintable(refusal.toText()));
            QCOMPARE(refusal, status);
            QCOMPARE(content(""), before);
            QCOMPARE(saved("i"), QByteArray("[s]\nk=1\n"));
        };
        refused(QStringLiteral("i"), "json", "{\n  \"a\" 5}", BackendFailure, "line 2, column 7");
        refused(QStringLiteral("i"), "yml", "", BackendFailure, "unknown backend type 'yml'");
        refused(QString(), "json", "5", InvalidPath, "needs a path");
        refused(QString(), "json", "{\"i\": {\"new\": 1}, \"internal\": {\"x\": 1}}", NotWritable,
                "'internal.x'");
        refused(QStringLiteral("i"), "json", "{\"new\": 1, \"s\": {\"k\": \"no number\"}}", WrongType,
                "'i.s.k'");
        QByteArray text("kept");
        QCOMPARE(transfer()->exportTree(QStringLiteral("none"), QStringLiteral("json"), text), NotFound);
        QCOMPARE(text, QByteArray("kept"));
    }

    // A file of lines may come back to a group; the groups of json are in one place.
    void importsInterleavedGroups()
    {
        QByteArray lines;
        for (int i = 0; i < 600; ++i)
            lines += "a.k" + QByteArray::number(i) + " = 1\nb.k" + QByteArray::number(i) + " = 1\n";
        lines += "a.k0.below = 2\n";
        QCOMPARE(import("m", "txt", lines), Success);
        QVERIFY(mount("json", "j", "{}"));
        QCOMPARE(import("j.new", "txt", lines), Success);
        const QStringList expected = content("m");
        QCOMPARE(content("j.new"), expected);
        const QByteArray text = saved("j");
        restart();
        QVERIFY(mount("json", "j", text));
        QCOMPARE(content("j.new"), expected);
    }

    // Comments at the end of a group are at its end in another format, too.
    void carriesEnds_data()
    {
        const auto row =
            TestSupport::columns<QString, QByteArray, QString, QByteArray>("from", "text", "to", "expected");
        const QByteArray toml =
            "[a]\nx = 1\n# y = 2\n\n# z = 3\n\n[a.b]\n# k = 1\n\n[[a.t]]\nq = 1\n# last\n\n"
            "# the file\n";
        row("toml to yaml", "toml", toml, "yaml",
            "new:\n  x: 1\n  # y = 2\n  # z = 3\n  b: {}\n  # k = 1\n  t:\n    - q: 1\n      # last\n");
        row("toml to ini", "toml", toml, "ini",
            "[new]\nx=1\n# y = 2\n# z = 3\n\n[new.b]\n# k = 1\n\n[new.t.0]\nq=1\n# last\n");
        row("dots in braces of toml", "toml", "# head\n\nk = 1\n[a]\nb = { c.d = 2, e = 3 } # f\n", "yaml",
            "new:\n  b:\n    c:\n      d: 2\n    e: 3 # f\n");
        row("arrays of toml", "toml",
            "[a]\nl = [\n  # of x\n  'x', # x\n  # end\n]\nm = [\n  1,\n  # last\n]\nn = [\n  # "
            "none\n]\n\n[c]\n",
            "yaml",
            "new:\n  l:\n    - x # x\n  # of x\n  # end\n  m:\n    - 1\n    # last\n  \"n\": []\n  # none\n");
        row("ini to toml", "ini", "; top\n\n[a]\nx=1\n; y=2\n\n; of c\n[c]\n", "toml",
            "[new]\nx = 1\n# y=2\n");
        row("yaml to toml", "yaml", "a:\n  x: 1\n  b:\n    y: 1\n    # in b\n  # in a\n# all\n", "toml",
            "[new]\nx = 1\n\n[new.b]\ny = 1\n# in b\n# in a\n");
    }

    void carriesEnds()
    {
        QFETCH(QString, from);
        QFETCH(QByteArray, text);
        QFETCH(QString, to);
        QVERIFY(mount(from, "f", text));
        QVERIFY(mount(to, "g", {}));
        history()->recordThisThread();
        QCOMPARE(copy("f.a", "g.new"), Success);
        QTEST(saved("g"), "expected");
        QVERIFY(history()->undo());
        QCOMPARE(move("f.a", "g.new"), Success);
        QTEST(saved("g"), "expected");
        QVERIFY(history()->undo());
        QCOMPARE(saved("f"), text);
    }

    // A file has other bytes than its text: a mark in front of it, or another encoding.
    void carriesIntoEncodings_data()
    {
        const auto row =
            TestSupport::columns<QString, QByteArray, QString, QString>("to", "codec", "there", "expected");
        const QString mark(QChar(0xFEFF));
        const QString ini = mark + QStringLiteral("[ä]\nk=ö\n");
        const QString madeIni = ini + QStringLiteral("\n[new]\n# of k\nk=1 # behind ü\nl=2\n# end\n");
        const QString yaml = mark + QStringLiteral("ä:\n  k: ö\n");
        const QString madeYaml =
            yaml + QStringLiteral("new:\n  # of k\n  k: 1 # behind ü\n  l: 2\n  # end\n");
        for (const char* codec : {"UTF-8", "UTF-16LE", "UTF-16BE"}) {
            row(QByteArray("ini, ") + codec, "ini", codec, ini, madeIni);
            row(QByteArray("yaml, ") + codec, "yaml", codec, yaml, madeYaml);
        }
        const QString toml = mark + QStringLiteral("[a]\nk = \"ö\"\n");
        row("toml, UTF-8", "toml", "UTF-8", toml,
            toml + QStringLiteral("\n[new]\n# of k\nk = 1 # behind ü\nl = 2\n# end\n"));
        const QString xml =
            QStringLiteral("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<r>\n  <ä>ö</ä>\n%1</r>\n");
        row("xml, ISO-8859-1", "xml", "ISO-8859-1", xml.arg(QString()),
            xml.arg(QStringLiteral(
                "  <new>\n    <!-- of k -->\n    <!-- behind ü -->\n    <k>1</k>\n    <l>2</l>\n"
                "    <!-- end -->\n  </new>\n")));
    }

    void carriesIntoEncodings()
    {
        QFETCH(QString, to);
        QFETCH(QByteArray, codec);
        QFETCH(QString, there);
        QFETCH(QString, expected);
        const auto encoded = [&](const QString& text) {
            QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
            return QTextCodec::codecForName(codec)->fromUnicode(text.constData(), text.size(), &state);
        };
        QVERIFY(mount(to, "g", encoded(there)));
        const QString path = to == QLatin1String("xml") ? QStringLiteral("g.r.new") : QStringLiteral("g.new");
        const QString from = to == QLatin1String("toml") ? QStringLiteral("ini") : QStringLiteral("toml");
        QCOMPARE(import(path, from, "# of k\nk = 1 # behind ü\nl = 2\n# end\n"), Success);
        QCOMPARE(saved("g"), encoded(expected));
    }

    // What goes with a document has no place, though all in it has one.
    void refusesToLoseWhatFollowsADocument()
    {
        const QByteArray text = "--- 1\n--- {a: 2}\n...\n# end\n--- 3\n";
        QVERIFY(mount("yaml", "f", text));
        QVERIFY(mount("toml", "g", {}));
        QVERIFY(!move("f.1", "g.new").ok());
        QCOMPARE(saved("f"), text);
    }

    // What a tag says is no part of a value.
    void keepsTags_data()
    {
        const auto row =
            TestSupport::columns<QByteArray, QString, QString, QByteArray>("text", "from", "to", "expected");
        row("as it is written", "a: !secret x\nb: {c: 1}\n", "f.a", "f.b.new", "b: {c: 1, new: !secret x}\n");
        row("of a type", "a:\n  k: !!str 5\nb: {c: 1}\n", "f.a", "f.b.new", "b: {c: 1, new: {k: \"5\"}}\n");
        row("block into brackets", "a: !secret |\n  x\nb: {c: 1}\n", "f.a", "f.b.new", {});
        row("group into brackets", "a:\n  k: !secret x\nb: {c: 1}\n", "f.a", "f.b.new", {});
        row("element into brackets", "a:\n- k: !secret x\n- 1\nb: [1]\n", "f.a.0", "f.b.0", {});
        row("into another format", "a:\n  k: !secret x\n", "f.a", "g.new", {});
        row("element into another format", "a:\n- !secret x\n- 1\n", "f.a.0", "g.new", {});
        row("in brackets with an anchor", "a: &x {k: !secret x}\nb:\n  c: 1\n", "f.a", "f.b.new", {});
    }

    void keepsTags()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, from);
        QFETCH(QString, to);
        QFETCH(QByteArray, expected);
        QVERIFY(mount("yaml", "f", text));
        QVERIFY(mount("json", "g", {}));
        const Outcome outcome = move(from, to);
        QCOMPARE(outcome.ok(), !expected.isEmpty());
        QVERIFY2(outcome.ok() || outcome.toText().contains(QLatin1String("tags")),
                 qPrintable(outcome.toText()));
        QCOMPARE(saved("f"), expected.isEmpty() ? text : expected);
    }

    // Within a format: spelling, comments and layout. What has no place there comes by its values.
    void exportsAsWritten_data()
    {
        const auto row = TestSupport::columns<QString, QByteArray, QString, QString, QByteArray>(
            "from", "text", "path", "to", "expected");
        const QByteArray ini =
            "; top\n\n; a server\n[s]\n; hex\nport = 1.50  ; why\n\n[s.t]\nk=\"v\"\n[u]\nk=2\n";
        row("ini: all", "ini", ini, "f", "ini", ini);
        row("ini: a section", "ini", ini, "f.s", "ini",
            "; a server\n\n; hex\nport = 1.50  ; why\n\n[t]\nk=\"v\"\n");
        row("ini: a key", "ini", ini, "f.s.port", "ini", "; hex\nport = 1.50  ; why\n");
        const QByteArray git = "[user]\n\tname = a ; b\n[remote \"x\"]\n\turl = u ; c\n";
        row("git: all", "ini:git", git, "f", "ini:git", git);
        row("git: for no program", "ini:git", "[user]\n\tname = a\\tb ; c\n", "f", "ini",
            "[user]\nname=a\tb # c\n");
        row("ini: comments of a repeated key", "ini:systemd", "[U]\n# 1\nk=a\n# 2\nk=b\n# end\n", "f", "toml",
            "\"$names\" = \"encoded\"\n\n[U]\n# 1\nk = \"a\"\n# 2\n\"k[2]\" = \"b\"\n# end\n");
        row("txt: a group", "txt", "# n\na.b = 1\n# c\na.d.e = 1.50\nz=1\n", "f.a", "txt",
            "# n\nb = 1\n# c\nd.e = 1.50\n");
        const QByteArray json =
            "{\n  // why\n  \"a\": {\"k\": 1.50, // in\n    \"l\": [1,2]},\n  \"d\": \"2024-02-29\",\n"
            "  \"$types\": {\"d\": \"date\"}\n}\n";
        row("json: all", "json", json, "f", "json", json);
        row("json: an object", "json", json, "f.a", "json", "// why\n{\"k\": 1.50, // in\n  \"l\": [1,2]}\n");
        row("json: a value", "json", json, "f.a.k", "json", "1.50\n");
        row("json: a type", "json", json, "f.d", "json",
            "{\n    \"d\": \"2024-02-29\",\n    \"$types\": {\n        \"d\": \"date\"\n    }\n}\n");
        const QByteArray xml =
            "<?xml version='1.0'?>\n<r xmlns:p='u'><!-- in -->\n  <w id='1'>H<sub>2</sub>O <p:i/>.</w>\n  "
            "<q><k>1.50</k><!-- c --></q>\n</r>\n<!-- end -->\n";
        const QByteArray head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
        row("xml: all", "xml", xml, "f", "xml", xml);
        row("xml: mixed content", "xml", xml, "f.r.w", "xml",
            head + "<w id='1' xmlns:p='u'>H<sub>2</sub>O <p:i/>.</w>\n");
        row("xml: around one element", "xml", xml, "f.r.q", "xml", head + "<k>1.50</k>\n");
    }

    void exportsAsWritten()
    {
        QFETCH(QString, from);
        QFETCH(QByteArray, text);
        QFETCH(QString, path);
        QFETCH(QString, to);
        QVERIFY(mount(from, "f", text));
        QTEST(exported(path, to), "expected");
    }

    // The same for what is new; groups that are there are merged by name.
    void importsAsWritten_data()
    {
        const auto row = TestSupport::columns<QString, QByteArray, QString, QByteArray, QByteArray>(
            "type", "there", "path", "text", "expected");
        const QByteArray ini = "[s]\n; why\nport = 1.50 ; in\n; u\n[u]\nk='1'\n";
        row("ini: into a new group", "ini", "[a]\nx=1\n", "f.n", ini,
            "[a]\nx=1\n\n[n.s]\n; why\nport = 1.50 ; in\n\n; u\n[n.u]\nk='1'\n");
        row("ini: merged", "ini", "[s]\nx=1\n[z]\n", "f", ini,
            "[s]\nx=1\n; why\nport = 1.50 ; in\n[z]\n\n; u\n[u]\nk='1'\n");
        row("txt", "txt", "s.x=1\n", "f", "s.port = 1.50\n# why\nu.k = '1'\n",
            "s.x=1\ns.port = 1.50\n# why\nu.k = '1'\n");
        row("json: into a new group", "json", "{\n  \"a\": 1\n}\n", "f.n",
            "{\"k\": 1.50, // in\n  \"l\": [1,2]}\n",
            "{\n  \"a\": 1,\n  \"n\": {\"k\": 1.50, // in\n    \"l\": [1,2]}\n}\n");
        row("json: merged", "json", "{\n  \"s\": {\n    \"k\": 5\n  }\n}\n", "f",
            "{\n  \"s\": {\n    \"k\": 6,\n    // why\n    \"v\": 1.50\n  }\n}\n",
            "{\n  \"s\": {\n    \"k\": 6,\n    // why\n    \"v\": 1.50\n  }\n}\n");
        row("json: into a list", "json", "{\"l\":[\"a\",\"b\"]}", "f.l.1", "{\"k\":1}",
            "{\"l\":[\"a\",{\"k\":1},\"b\"]}");
        row("xml", "xml", "<r>\n  <a/>\n</r>\n", "f",
            "<r>\n  <!-- why -->\n  <w id='1'>H<sub>2</sub>O</w>\n</r>\n",
            "<r>\n  <a/>\n  <!-- why -->\n  <w id='1'>H<sub>2</sub>O</w>\n</r>\n");
        row("ini: nothing but a comment", "ini", "x=1\n", "f.n", "; why\n", "x=1\n\n[n]\n# why\n");
        row("toml: nothing but a comment", "toml", "x=1\n", "f.n", "# why\n", "x=1\n\n[n]\n# why\n");
        row("json: nothing", "json", "{\"x\":1}", "f.n", "{}", "{\"x\":1,\"n\":{}}");
        row("toml: nothing into a group", "toml", "[n]\n", "f.n", "", "[n]\n");
    }

    void importsAsWritten()
    {
        QFETCH(QString, type);
        QFETCH(QByteArray, there);
        QFETCH(QString, path);
        QFETCH(QByteArray, text);
        QVERIFY(mount(type, "f", there));
        history()->recordThisThread();
        QCOMPARE(import(path, type, text), Success);
        QVERIFY(exists(path));
        const QStringList imported = content();
        QTEST(saved("f"), "expected");
        restart();
        QVERIFY(mountFile(type, "f", fileOf("f")));
        QCOMPARE(content(), imported);
    }

    // The document type names the root element, and an undo gives it its name back.
    void renamesTheRootOfXml_data()
    {
        const auto row = TestSupport::columns<QByteArray, QByteArray>("before", "after");
        row("plain", "<!DOCTYPE r>\n<r/>\n", "<!DOCTYPE s>\n<s/>\n");
        row("external", "<?xml version='1.0'?><!-- <!DOCTYPE r> -->\n<!DOCTYPE\n r SYSTEM 'r.dtd'><r>r</r>",
            "<?xml version='1.0'?><!-- <!DOCTYPE r> -->\n<!DOCTYPE\n s SYSTEM 'r.dtd'><s>r</s>");
        row("entities", "<!DOCTYPE r[<!ENTITY r 'r'>]>\n<r>&r;</r>\n",
            "<!DOCTYPE s[<!ENTITY r 'r'>]>\n<s>&r;</s>\n");
        row("of another name", "<!DOCTYPE rr>\n<r/>\n", "<!DOCTYPE rr>\n<s/>\n");
    }

    void renamesTheRootOfXml()
    {
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, after);
        QVERIFY(mount("xml", "x", before));
        history()->recordThisThread();
        QCOMPARE(move("x.r", "x.s"), Success);
        QCOMPARE(saved("x"), after);
        QCOMPARE(history()->undo(), Success);
        QCOMPARE(saved("x"), before);
    }

    void carriesAllDigits_data() { exportsAndImports_data(); }

    // The tree shows three digits of a second; what goes by its values into another file has all, and brings
    // them back.
    void carriesAllDigits()
    {
        QFETCH(QString, type);
        const QByteArray digits =
            "t = 07:30:00.123456\nz = 2024-05-01 12:34:56.7890123Z\nl = 2024-05-01t12:34:56.0001\n";
        QVERIFY(mount("toml", "f", "[s]\n" + digits));
        QCOMPARE(read("f.s.t"), QVariant(QTime(7, 30, 0, 123)));
        QVERIFY(mount(type, "g", {}));
        QCOMPARE(copy("f.s", "g.r.s"), Success);
        QCOMPARE(content("g.r.s"), content("f.s"));
        const QByteArray text = saved("g");
        for (const char* const shown : {"07:30:00.123456", "12:34:56.7890123Z", "12:34:56.0001"})
            QVERIFY2(text.contains(shown), text.constData());
        restart();
        QVERIFY(mount(type, "g", text));
        QVERIFY(mount("toml", "f", {}));
        const QByteArray exportedText = exported("g.r.s", type);
        QVERIFY2(exportedText.contains("12:34:56.7890123Z"), exportedText.constData());
        for (const char* const name : {"t", "z", "l"})
            QCOMPARE(copy(QStringLiteral("g.r.s.") + QLatin1String(name),
                          QStringLiteral("f.") + QLatin1String(name)),
                     Success);
        QByteArray spelled = digits;
        if (type != QLatin1String("toml")) // in which it is as it was written
            spelled.replace("01 12", "01T12").replace("01t12", "01T12");
        QCOMPARE(saved("f"), spelled);
        QCOMPARE(write("f.t", QTime(7, 30, 0, 123)), Success); // what is shown already
        QCOMPARE(saved("f"), spelled);
    }

    // Arrays stay arrays, as they are written.
    void copiesArrays()
    {
        QVERIFY(mount("json", "j", "{\n  \"a\": [1, [2.50, \"x\"]],\n  \"c\": {\"d\": 1}\n}\n"));
        QCOMPARE(copy("j.a", "j.b"), Success);
        QCOMPARE(copy("j.a.1", "j.c.e"), Success);
        QCOMPARE(copy("j.c.d", "j.c.f"), Success);
        QCOMPARE(saved("j"), QByteArray("{\n  \"a\": [1, [2.50, \"x\"]],\n  \"c\": {\"d\": "
                                        "1, \"e\": [2.50, \"x\"], \"f\": 1},\n"
                                        "  \"b\": [1, [2.50, \"x\"]]\n}\n"));
    }

    void copiesManyAttributes()
    {
        QByteArray json = "{\"from\": {";
        for (int i = 0; i < 100000; ++i)
            json += "\"k" + QByteArray::number(i) + "\": " + QByteArray::number(i) + ", ";
        QVERIFY(mount("json", "j", json + "\"last\": true}}"));
        QStringList heard;
        const auto hear = [&heard](const QString& path, auto&&...) { heard.append(path); };
        listen("j.to.k77", hear);
        QCOMPARE(copy("j.from", "j.to"), Success);
        QCOMPARE(heard, QStringList(QStringLiteral("j.to.k77")));
        listen("j.second.*", hear);
        QCOMPARE(copy("j.from", "j.second"), Success);
        QCOMPARE(heard.size(), 100002);
        QCOMPARE(heard.mid(1), tree()->findPaths({QStringLiteral("j.second.*")})); // in tree order
        const QByteArray from = exported("j.from", "json");
        QVERIFY(from == exported("j.to", "json") && from.contains("\"k99999\": 99999"));
    }
};

VANTRY_TEST_MAIN(QCoreApplication, SubtreeTransferTest)

#include "subtree_transfer_test.moc"
