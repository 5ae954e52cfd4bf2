#include "tests/repository/FileLines.h"
#include "tests/support/Columns.h"
#include "tests/support/RepositoryTest.h"

#include <QDirIterator>
#include <QElapsedTimer>
#include <QMap>
#include <QRegularExpression>
#include <QSet>

using namespace FrameworkCore::AppConfig;
using namespace FileLines;

// Renames, moves, copies, inserts and removes at many places of many files, and looks at the lines of the
// file alone: none changes that has nothing to do with it, no comment is lost, and undo brings the bytes
// back.
class StructureWalkTest : public TestSupport::RepositoryTest
{
    Q_OBJECT

private slots:
    // Of thousands of saves each waits for the disk, where there is one.
    void initTestCase()
    {
        if (QFileInfo(QStringLiteral("/dev/shm")).isWritable())
            qputenv("TMPDIR", "/dev/shm");
    }

    void walks_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("file");
        QTest::addColumn<QByteArray>("text");
        const auto row = [](const char* name, const char* type, const char* text) {
            QTest::addRow("%s: %s", type, name) << type << QString() << QByteArray(text);
        };
        row("nested", "json",
            "{\n  // of a\n  \"a\": {\"x\": 1e5, \"y\": [1, 0.10]}, // after a\n\n  /* of b */\n  \"b\": {\n"
            "    // inside\n    \"c\": \"\\u0041\",\n    \"d\": [\n      \"p\",\n      \"q\"\n    ]\n  },\n"
            "  \"e\": true // last\n}\n");
        row("nested", "xml",
            "<r>\n  <!-- of a -->\n  <a k='1' l=\"&lt;\">\n    <b><![CDATA[x]]></b> <!-- after b -->\n"
            "    <?keep me?>\n    <c/>\n  </a>\n\n  <d>Some <i>mixed</i> text</d>\n  <e>1.0</e>\n</r>\n");
        row("sections", "ini",
            "; of the file\n\ntop=1\n\n; of a\n[a]\nlong.name  =  0x10 ; after\n# of k\nk          =  1.0\n\n"
            "[a.b]\n; inside\nx=\"q\"\n\n; of c\n[c]\ny = 1e5\n");
        row("paths", "txt",
            "# of the file\n\n# of x\na.b.x = 1.0\na.b.y   = 0x10\nprose here.\n\n# of z\na.z = \"q\"\n"
            "c = long \\\n  value\nd.e.f = 1\n");
        row("tables", "toml",
            "# of the file\n\n# of x\na.x = 0x1F # after\n\n# of b\n[b]\nl = [\n  'p', # of p\n  \"q\",\n]\n"
            "[b.c]\n# inside\ny = 1e5\n\n# of t\n[[t]]\nk = { z = 1 }\n[[t]]\nk = \"\"\"m\"\"\"\n");
        row("blocks", "yaml",
            "# of the file\n\n# of x\na:\n  x: 0x1F # after\n\n# of b\nb:\n  l:\n  - p # of p\n  - \"q\"\n  "
            "c:\n"
            "    # inside\n    y: 1e5\n\n# of t\nt:\n- k: {z: 1}\n- k: |\n    m\n");
        const QVector<QPair<const char*, const char*>> kinds{
            {"ini", "ini"},
            {"txt", "txt"},
            {"json", "json"},
            {"xml", "xml"},
            {"toml", "toml"},
            {"yaml", "yaml"},
            {"ini:git", "ini-dialects/git-config"},
            {"ini:desktop", "ini-dialects/desktop"},
            {"ini:systemd", "ini-dialects/systemd"},
            {"ini:kde", "ini-dialects/kde"},
            {"ini:samba", "ini-dialects/smb-conf"},
            {"ini:mysql", "ini-dialects/my-cnf"},
            {"ini:php", "ini-dialects/php-ini"},
            {"ini:python", "ini-dialects/python-setup"},
            {"ini:editorconfig", "ini-dialects/editorconfig"},
            {"txt:properties", "ini-dialects/properties"}};
        for (const auto& [type, place] : kinds) {
            const QString corpus = TestSupport::corporaPath(QLatin1String(place));
            QDirIterator files(corpus.isEmpty() ? QStringLiteral("/nowhere") : corpus, QDir::Files);
            for (int taken = 0; taken < 300 && files.hasNext();) {
                files.next();
                if (files.fileInfo().size() > mostBytes)
                    continue;
                ++taken;
                QTest::addRow("%s: %s", type, qPrintable(files.fileName()))
                    << type << files.filePath() << QByteArray();
            }
        }
    }

    void walks()
    {
        QFETCH(QString, type);
        QFETCH(QString, file);
        QFETCH(QByteArray, text);
        mountedType = type;
        ownName = file.section(QLatin1Char('/'), -1).section(QStringLiteral("__"), -1);
        ownName = ownName.contains(QLatin1Char('.')) ? ownName : QString();
        bytes = file.isEmpty() ? text : TestSupport::contentOf(file);
        if (bytes.contains('\0') || !mountText(bytes).ok()) // lines of UTF-16 are not looked at
            return;
        QVERIFY(mountFile(type, "n", put(QStringLiteral("n-") + fileName(), {})));
        const QString other = QLatin1String(kind == QLatin1String("json") ? "xml" : "json");
        QVERIFY(mountFile(other, "o", put(QStringLiteral("o.") + other, {})));
        history()->recordThisThread();
        const QStringList all = paths("m.*");
        const int places =
            std::max(file.isEmpty() ? 40 : 3, qEnvironmentVariableIntValue("VANTRY_WALK_PLACES"));
        const int step = std::max(all.size() / places, 1);
        for (int i = step / 2; i < all.size(); i += step) {
            // Also groups, which begin between the attributes.
            const QString path = i % 2 == 0 || above(all[i]) == QLatin1String("m") ? all[i] : above(all[i]);
            rename(path);
            moveUp(path);
            copyBeside(path);
            copyAcross("copy to a file", path, QStringLiteral("n"));
            copyAcross("copy to a format", path, QStringLiteral("o"));
            importBeside(path);
            insertBeside(path);
            removeThere(path);
            if (QTest::currentTestFailed()) {
                qWarning("at '%s'", qPrintable(path));
                return;
            }
        }
    }

    void writes_data()
    {
        const auto row = TestSupport::columns<QString, QString, QString, bool, QByteArray, QByteArray>(
            "type", "from", "to", "isMove", "before", "expected");
        row("json: key", "json", "m.a.b", "m.a.c", true, "{\"a\": {\"\\u0062\" : 1e5, // x\n\"z\":1}}",
            "{\"a\": {\"c\" : 1e5, // x\n\"z\":1}}");
        row("json: types follow", "json", "m.a", "m.c", true,
            "{\n  \"a\": {\"b\": \"2024-02-29\"},\n  \"$types\": {\"a.b\": \"date\"}\n}\n",
            "{\n  \"c\": {\"b\": \"2024-02-29\"},\n  \"$types\": {\"c.b\": \"date\"}\n}\n");
        row("json: move", "json", "m.a.b", "m.b", true,
            "{\n  \"a\": {\n    \"x\": 1, // of x\n    // of b\n    \"b\": [\n      1.0\n    ], // after b\n"
            "    \"y\": 2\n  },\n  \"c\": 3 // of c\n}\n",
            "{\n  \"a\": {\n    \"x\": 1, // of x\n    \"y\": 2\n  },\n  \"c\": 3, // of c\n  // of b\n"
            "  \"b\": [\n    1.0\n  ] // after b\n}\n");
        row("json: copy", "json", "m.a", "m.b", false, "{\n  \"a\": [ 0.10, {\"k\":\"\\u0041\"} ]\n}\n",
            "{\n  \"a\": [ 0.10, {\"k\":\"\\u0041\"} ],\n  \"b\": [ 0.10, {\"k\":\"\\u0041\"} ]\n}\n");
        row("json: copy with a date", "json", "m.a", "m.b", false,
            "{\n  \"a\": [\"2024-02-29\", 1],\n  \"$types\": {\"a.0\": \"date\"}\n}\n",
            "{\n  \"a\": [\"2024-02-29\", 1],\n  \"b\": [\"2024-02-29\", 1],\n"
            "  \"$types\": {\"a.0\": \"date\", \"b.0\": \"date\"}\n}\n");
        row("xml: element", "xml", "m.r.a", "m.r.c", true, "<r>\n <a\n  k='1'>1.0</a >\n <a/>\n</r>",
            "<r>\n <c\n  k='1'>1.0</c >\n <a/>\n</r>");
        row("xml: attribute", "xml", "m.r.@a", "m.r.@c", true, "<r  a = '&lt;' b=\"2\"/>",
            "<r  c = '&lt;' b=\"2\"/>");
        row("xml: root", "xml", "m.r", "m.s", true, "<!-- c -->\n<r>x</r>\n", "<!-- c -->\n<s>x</s>\n");
        row("xml: move", "xml", "m.r.a.b", "m.r.b", true,
            "<r>\n  <a>\n    <x/> <!-- of x -->\n    <!-- of b -->\n    <b k='1'>\n      <?p i?>\n"
            "      <c><![CDATA[ c ]]></c>\n    </b> <!-- after b -->\n    <y/>\n  </a>\n  <z/>\n</r>\n",
            "<r>\n  <a>\n    <x/> <!-- of x -->\n    <y/>\n  </a>\n  <z/>\n  <!-- of b -->\n  <b k='1'>\n"
            "    <?p i?>\n    <c><![CDATA[ c ]]></c>\n  </b> <!-- after b -->\n</r>\n");
        row("xml: mixed", "xml", "m.r.p", "m.r.q", false, "<r>\n  <p>One <i>two</i>\n  three</p>\n</r>\n",
            "<r>\n  <p>One <i>two</i>\n  three</p>\n  <q>One <i>two</i>\n  three</q>\n</r>\n");
        row("xml: move with comments into mixed content", "xml", "m.r.a.b", "m.r.b", true,
            "<r>t\n <a>\n  <!-- of\n b -->\n  <?p\ni?>\n  <b/>\n </a>\n</r>\n",
            "<r>t\n <a>\n </a><!-- of\n b --><?p\ni?><b/>\n</r>\n");
        row("xml: copy of an attribute", "xml", "m.r.a.@k", "m.r.@k", false, "<r>\n <a k='&#65;&lt;'/>\n</r>",
            "<r k='&#65;&lt;'>\n <a k='&#65;&lt;'/>\n</r>");
        row("toml: key", "toml", "m.a.b", "m.a.c", true, "a.'b' = 0x1F # d\n", "a.'c' = 0x1F # d\n");
        row("toml: table", "toml", "m.s", "m.t", true, "[s]\na=1\n\n[s.u] # c\na=2\n\n[su]\na=3\n",
            "[t]\na=1\n\n[t.u] # c\na=2\n\n[su]\na=3\n");
        row("toml: move", "toml", "m.s.b", "m.t.c", true,
            "[s]\na = 1\n\n# of b\n# too\nb = 1.0 # after\n\n[t]\nx = 1\n# end\n",
            "[s]\na = 1\n\n[t]\nx = 1\n# of b\n# too\nc = 1.0 # after\n# end\n");
        row("toml: copy", "toml", "m.s", "m.t", false,
            "# of s\n[s]\n# in s\na = 0x10\n\n# of u\n[s.u]\nb = 'q'\n",
            "# of s\n[s]\n# in s\na = 0x10\n\n# of u\n[s.u]\nb = 'q'\n\n# of s\n[t]\n# in s\na = 0x10\n\n"
            "# of u\n[t.u]\nb = 'q'\n");
        row("toml: text of a list", "toml", "m.l.0", "m.t.c", true,
            "l = [\n  \"p\", # of p\n  \"q\",\n]\n[t]\n", "l = [\n  \"q\",\n]\n[t]\nc = \"p\" # of p\n");
        row("toml: comments without a place", "toml", "m.s", "m.t.s", true, "t = {}\n\n# of s\n[s]\nk = 1\n",
            "t = { s = { k = 1 } }\n\n# of s\n");
        const QByteArray ends =
            "x = 1\n# y = 2\n\n# of a\n[a]\nx = 1\n# y = 2\n\n# z = 3\n\n# of c\n# [c]\n\n"
            "# Of b\n\n# too\n[b]\n# nothing\n\n[a.d]\nk = 1\n# end of d\n\n# end\n";
        const QByteArray movedEnds =
            "x = 1\n# y = 2\n\n# of c\n# [c]\n\n# Of b\n\n# too\n[b]\n# nothing\n\n# of a\n[b.e]\nx = 1\n"
            "# y = 2\n\n# z = 3\n\n[b.e.d]\nk = 1\n# end of d\n\n# end\n";
        row("toml: move with ends", "toml", "m.a", "m.b.e", true, ends, movedEnds);
        row("ini: move with ends", "ini", "m.a", "m.b.e", true, ends,
            "x = 1\n# y = 2\n\n\n# of c\n# [c]\n\n# Of b\n\n# too\n[b]\n# nothing\n\n\n# end\n\n# of "
            "a\n[b.e]\nx = 1\n"
            "# y = 2\n\n# z = 3\n\n[b.e.d]\nk = 1\n# end of d\n");
        row("yaml: key", "yaml", "m.a.b", "m.a.c", true, "a:\n  'b' : 0x1F # d\n", "a:\n  'c' : 0x1F # d\n");
        row("yaml: move", "yaml", "m.s.b", "m.t.c", true,
            "s:\n  a: 1\n\n  # of b\n  # too\n  b: # in b\n  - 1.0 # after\n\nt:\n    x: 1\n# end\n",
            "s:\n  a: 1\n\nt:\n    x: 1\n    # of b\n    # too\n    c: # in b\n    - 1.0 # after\n# end\n");
        row("yaml: copy", "yaml", "m.s", "m.t", false,
            "# of s\ns:\n  # in s\n  a: 0x10\n\n  u: 'q'\n\n# end\n",
            "# of s\ns:\n  # in s\n  a: 0x10\n\n  u: 'q'\n# of s\nt:\n  # in s\n  a: 0x10\n\n  u: 'q'\n\n# "
            "end\n");
        row("ini: key", "ini", "m.s.a", "m.s.b", true, "[s]\n; c\na   =  0x10 ; d\nz=1\n",
            "[s]\n; c\nb   =  0x10 ; d\nz=1\n");
        row("ini: section", "ini", "m.s", "m.t", true, "[s]\na=1\n\n[s.u] ; c\na=2\n\n[su]\na=3\n",
            "[t]\na=1\n\n[t.u] ; c\na=2\n\n[su]\na=3\n");
        row("ini: move", "ini", "m.s.b", "m.t.c", true,
            "[s]\na=1\n\n; of b\n# too\nb = 1.0\n\n[t]\nx=1\n; end\n",
            "[s]\na=1\n\n\n[t]\nx=1\n; of b\n# too\nc = 1.0\n; end\n");
        row("ini: copy", "ini", "m.s", "m.t", false, "; of s\n[s]\n; in s\na = 0x10\n\n; of u\n[s.u]\nb=q\n",
            "; of s\n[s]\n; in s\na = 0x10\n\n; of u\n[s.u]\nb=q\n\n; of s\n[t]\n; in s\na = 0x10\n\n"
            "; of u\n[t.u]\nb=q\n");
        row("git: subsection", "ini:git", "m.remote.a%2Eb", "m.remote.c\"d", true,
            "[remote \"a.b\"]\n\turl = x # y\n[Remote]\n\tz\n",
            "[remote \"c\\\"d\"]\n\turl = x # y\n[Remote]\n\tz\n");
        row("git: section", "ini:git", "m.remote", "m.branch", true,
            "[remote \"a.b\"]\n\turl = x\n[remote]\n\tz\n[remotes]\n\tk = 1\n",
            "[branch \"a.b\"]\n\turl = x\n[branch]\n\tz\n[remotes]\n\tk = 1\n");
        row("git: copy", "ini:git", "m.a.b", "m.c.d", false, "[a \"b\"]\n\t# of k\n\tk = \"v;\" ; c\n",
            "[a \"b\"]\n\t# of k\n\tk = \"v;\" ; c\n\n[c \"d\"]\n\t# of k\n\tk = \"v;\" ; c\n");
        row("kde: group", "ini:kde", "m.a.b%2Ec", "m.a.d", true, "[a][b.c][$i]\nk[$e]=\\s1\n[a][b]\nl=2\n",
            "[a][d][$i]\nk[$e]=\\s1\n[a][b]\nl=2\n");
        row("kde: key", "ini:kde", "m.a.k", "m.a.l=", true, "[a]\nk[$e]=\\s1\n", "[a]\nl\\x3d[$e]=\\s1\n");
        row("desktop: section", "ini:desktop", "m.Desktop Action x%2Ey", "m.Desktop Action z", true,
            "[Desktop Action x.y]\nName[de]=z\n", "[Desktop Action z]\nName[de]=z\n");
        row("krb5: group", "ini:krb5", "m.r.A%2EB", "m.r.C", true, "[r]\n  A.B = { \n   k = \"v\"\n  }\n",
            "[r]\n  C = { \n   k = \"v\"\n  }\n");
        row("krb5: move", "ini:krb5", "m.r.A.B", "m.s.C", true,
            "[r]\n  A = {\n    # of B\n    B = {\n      k = \"v\"\n    }\n    l = 1\n  }\n[s]\n  x = 1\n",
            "[r]\n  A = {\n    l = 1\n  }\n[s]\n  x = 1\n  # of B\n  C = {\n    k = \"v\"\n  }\n");
        row("properties: group", "txt:properties", "m.a b", "m.c:d", true, "# c\na\\ b.x : \\u0041\\\n  y\n",
            "# c\nc\\:d.x : \\u0041\\\n  y\n");
        row("txt: group", "txt", "m.a.b", "m.a.c", true, "# a.b\na.b.x   = 1\nz=2\na.b.y: 3\na.bx=4\n",
            "# a.b\na.c.x   = 1\nz=2\na.c.y: 3\na.bx=4\n");
        row("txt: move", "txt", "m.a", "m.b.a", true, "# x\n\n# of a\na.x = 1.0\na.y=0x10\nb.c = 1\n# z\n",
            "# x\n\nb.c = 1\n# of a\nb.a.x = 1.0\nb.a.y=0x10\n# z\n");
    }

    void writes()
    {
        QFETCH(QString, type);
        QFETCH(QString, from);
        QFETCH(QString, to);
        QFETCH(bool, isMove);
        QFETCH(QByteArray, before);
        mountedType = type;
        ownName.clear();
        QVERIFY(mountText(before));
        history()->recordThisThread();
        const QString dot(QLatin1Char('.'));
        const QStringList expected = content(from + dot);
        const QVariant value = read(from);
        const Outcome outcome = isMove ? move(from, to) : copy(from, to);
        QVERIFY2(outcome.ok(), qPrintable(outcome.toText()));
        QTEST(savedText(), "expected");
        QCOMPARE(content(to + dot), expected);
        QCOMPARE(read(to), value);
        const QStringList whole = content() + inOrder("m");
        QVERIFY(history()->undo());
        QCOMPARE(savedText(), before);
        QVERIFY(history()->redo());
        QTEST(savedText(), "expected");
        QCOMPARE(content() + inOrder("m"), whole);
        restart();
        QVERIFY(mountFile(type, "m", fileOf(fileName())));
        QCOMPARE(content() + inOrder("m"), whole);
    }

    // What an edit leaves around a value, once the file was read again.
    void undoesByteForByte_data()
    {
        const auto row =
            TestSupport::columns<QString, QByteArray, QString, QVariant>("type", "text", "path", "value");
        row("list with comments", "yaml", "l:\n  - p # p\n  # of q\n  - q\nz: 1\n", "m.l",
            QStringList{QStringLiteral("x")});
        row("nothing", "yaml", "d:\nz: 1\n", "m.d", QStringLiteral("x"));
        row("nothing but a blank", "yaml", "d: \nz: 1\n", "m.d", QStringLiteral("x"));
        row("null", "toml", "a.b = 1\n# @type null\na.d = ''\nz = 1\n", "m.a.d", QStringLiteral("x"));
        row("null below a comment", "toml", "# c\n\n# @type null\nd = \"\"\n", "m.d", QStringLiteral("x"));
        row("null in xml", "xml", "<r><?vantry type=\"null\"?><d></d></r>\n", "m.r.d", QStringLiteral("x"));
        row("null in ini", "ini", "# @type null\nd = \n", "m.d", QStringLiteral("x"));
        row("list", "toml", "l = [\n  'p', # p\n  # of q\n  'q'\n]\n", "m.l",
            QStringList{QStringLiteral("x")});
    }

    void undoesByteForByte()
    {
        QFETCH(QString, type);
        QFETCH(QByteArray, text);
        QFETCH(QString, path);
        QFETCH(QVariant, value);
        mountedType = type;
        QVERIFY(mountText(text));
        history()->recordThisThread();
        QVERIFY(write(path, value));
        const QByteArray written = savedText();
        QVERIFY(create("m.r.n.k", 5));
        QVERIFY(history()->undo());
        QVERIFY(history()->undo());
        QCOMPARE(savedText(), text);
        QVERIFY(history()->redo());
        QCOMPARE(savedText(), written);
    }

    void cleanupTestCase()
    {
        for (auto each = counts.cbegin(); each != counts.cend(); ++each)
            qInfo("%s: %d done, %d refused", qPrintable(each.key()), each->first, each->second);
    }

private:
    static constexpr qint64 mostBytes = 60000;

    // All nodes below one as the tree lists them.
    QStringList inOrder(const Name& path) const
    {
        QStringList all;
        for (const QString& name : tree()->getChildNames(path)) {
            all += path + QLatin1Char('.') + name;
            all += inOrder(all.last());
        }
        return all;
    }

    // One that tells the type, whatever an edit leaves of the text.
    QString fileName() const
    {
        static const QMap<QString, QString> names{
            {QStringLiteral("ini:git"), QStringLiteral(".gitconfig")},
            {QStringLiteral("ini:desktop"), QStringLiteral("m.desktop")},
            {QStringLiteral("ini:systemd"), QStringLiteral("m.service")},
            {QStringLiteral("ini:kde"), QStringLiteral("kdeglobals")},
            {QStringLiteral("ini:samba"), QStringLiteral("smb.conf")},
            {QStringLiteral("ini:mysql"), QStringLiteral("my.cnf")},
            {QStringLiteral("ini:php"), QStringLiteral("php.ini")},
            {QStringLiteral("ini:python"), QStringLiteral("setup.cfg")},
            {QStringLiteral("ini:editorconfig"), QStringLiteral(".editorconfig")},
            {QStringLiteral("txt:properties"), QStringLiteral("m.properties")}};
        return names.value(mountedType, ownName.isEmpty() ? QStringLiteral("m.") + kind : ownName);
    }

    Outcome mountText(const QByteArray& content)
    {
        kind = mountedType.section(QLatin1Char(':'), 0, 0);
        return mountFile(mountedType, "m", put(fileName(), content));
    }

    QByteArray savedText()
    {
        const Outcome outcome = save();
        return outcome.ok() ? TestSupport::contentOf(fileOf(fileName())) : outcome.toText().toUtf8();
    }

    // Whether it was done; what is undone then has been looked at. A file is not saved which nothing would
    // tell the format of any more.
    bool done(const char* what, const Outcome& outcome)
    {
        const bool isSaved = outcome.ok() && save().ok();
        auto& count = counts[mountedType + QLatin1Char(' ') + QLatin1String(what)];
        ++(isSaved ? count.first : count.second);
        if (outcome.ok() && !isSaved && !history()->undo())
            QTest::qVerify(false, what, "cannot be undone", __FILE__, __LINE__);
        after = isSaved ? savedText() : QByteArray();
        return isSaved;
    }

    void undo(const char* what)
    {
        if (QTest::currentTestFailed())
            qWarning("%s\n--- before\n%s\n--- after\n%s", what, bytes.left(3000).constData(),
                     after.left(3000).constData());
        const Outcome outcome = history()->undo();
        QVERIFY2(outcome.ok(), qPrintable(outcome.toText()));
        QCOMPARE(savedText(), bytes);
    }

    void keepsComments(const char* what)
    {
        QMap<QString, int> present = countsOf(commentsIn(after, kind));
        for (const QString& comment : commentsIn(bytes, kind)) {
            if (--present[comment] < 0)
                QFAIL(
                    qPrintable(QStringLiteral("%1 lost the comment: %2").arg(QLatin1String(what), comment)));
        }
    }

    static bool isPlain(const QString& name)
    {
        static const QRegularExpression plain(QStringLiteral("^@?[A-Za-z_][A-Za-z0-9_]*$"));
        return plain.match(name).hasMatch();
    }

    // Without the attributes of that name, which share a line with others.
    static QByteArray without(const QString& name, const QByteArray& text)
    {
        if (!name.startsWith(QLatin1Char('@')))
            return text;
        const QString form = QStringLiteral("\\s+%1\\s*=\\s*(\"[^\"]*\"|'[^']*')")
                                 .arg(QRegularExpression::escape(name.mid(1)));
        return QString::fromUtf8(text).remove(QRegularExpression(form)).toUtf8();
    }

    void rename(const QString& path)
    {
        const QString name = lastOf(path);
        const QString to = above(path) + QLatin1String(name.startsWith(QLatin1Char('@')) ? ".@" : ".") +
                           QStringLiteral("renamed1");
        if (!isPlain(name) || !done("rename", move(path, to)))
            return;
        const QList<QByteArray> old = bytes.split('\n');
        const QList<QByteArray> now = after.split('\n');
        QByteArray plainName = name.toUtf8();
        plainName.replace("@", "");
        if (old.size() != now.size())
            QTest::qVerify(false, "lines", "a rename changes the number of lines", __FILE__, __LINE__);
        for (int i = 0; i < std::min(old.size(), now.size()); ++i) {
            QByteArray taken = old[i];
            QByteArray put = now[i];
            if (taken != put &&
                taken.replace(plainName, "") != put.replace("renamed1", "").replace(plainName, ""))
                QTest::qVerify(false, "name", old[i] + " -> " + now[i], __FILE__, __LINE__);
        }
        undo("rename");
    }

    // To the group around its own.
    void moveUp(const QString& path)
    {
        const QString name = lastOf(path);
        const QString group = above(path);
        const int least = kind == QLatin1String("xml") ? 3 : 2;
        if (!isPlain(name) || path.count(QLatin1Char('.')) < least)
            return;
        const QString to = above(group) + QLatin1Char('.') + name;
        if (exists(to) || !done("move", move(path, to)))
            return;
        keepsComments("a move");
        check(lost(without(name, bytes), without(name, after)), linesOf(after), name, "a move");
        undo("move");
    }

    void copyBeside(const QString& path)
    {
        const QString name = lastOf(path);
        if (!isPlain(name) || !done("copy", copy(path, path + QStringLiteral("Copy"))))
            return;
        keepsComments("a copy");
        check(lost(bytes, after), linesOf(after), {}, "a copy");
        undo("copy");
    }

    static bool hasMerge(const QString& path)
    {
        static const QRegularExpression merge(QStringLiteral("(^|\\.)<<(\\[\\d+\\])?(\\.|$)"));
        return merge.match(path).hasMatch();
    }

    // What is below a node, without the merges of YAML, which are not taken elsewhere, and numbers of
    // children.
    QStringList withoutMerges(const QString& path)
    {
        QStringList found;
        for (const QString& line : content(path + QLatin1Char('.'))) {
            if (!hasMerge(line.section(QLatin1String(" = "), 0, 0)))
                found += line.section(QLatin1Char(' '), 0, -2);
        }
        return found;
    }

    // What is copied is the same there, here nothing changes, and undo leaves nothing of it.
    void copyAcross(const char* what, const QString& path, const QString& target)
    {
        const QString to = target + QLatin1Char('.') + lastOf(path);
        if (!done(what, copy(path, to)))
            return;
        QCOMPARE(after, bytes);
        QCOMPARE(read(to), read(path));
        QCOMPARE(withoutMerges(to), withoutMerges(path));
        QVERIFY(history()->undo());
        QCOMPARE(tree()->getChildNames(target), QStringList());
    }

    // What was exported of a group is imported as another one.
    void importBeside(const QString& path)
    {
        const QString to = above(path) + QStringLiteral(".imported1");
        QByteArray text;
        const bool isGroup =
            !tree()->getNodeInformation(path).isAttribute && !paths(path + QStringLiteral(".*")).isEmpty();
        if (!isGroup || !transfer()->exportTree(path, mountedType, text).ok() ||
            !done("import", import(to, mountedType, text)))
            return;
        keepsComments("an import");
        check(lost(bytes, after), linesOf(after), {}, "an import");
        const QString inside = to + QLatin1Char('.') + lastOf(path).section(QLatin1Char('['), 0, 0);
        // The root element of xml is that of the group, unless the group has but one.
        const QString top = kind == QLatin1String("xml") && exists(inside) ? inside : to;
        // A text of xml declares the prefixes that are in it.
        const auto withoutPrefixes = [](QStringList lines) {
            lines.erase(
                std::remove_if(lines.begin(), lines.end(),
                               [](const QString& line) { return line.startsWith(QLatin1String("@xmlns")); }),
                lines.end());
            return lines;
        };
        if (withoutPrefixes(withoutMerges(top)) != withoutPrefixes(withoutMerges(path)))
            QTest::qVerify(false, "import", qPrintable(path + QLatin1String(" is another there")), __FILE__,
                           __LINE__);
        undo("import");
    }

    void insertBeside(const QString& path)
    {
        if (!done("insert", create(above(path) + QStringLiteral(".inserted1"), 5)))
            return;
        keepsComments("an insertion");
        check(lost(bytes, after), linesOf(after), {}, "an insertion");
        undo("insert");
    }

    void removeThere(const QString& path)
    {
        if (!done("remove", remove(path)))
            return;
        const QByteArray before = without(lastOf(path), bytes);
        check(lost(without(lastOf(path), after), before), linesOf(before), {}, "a removal");
        undo("remove");
    }

    // Whether a line is left when something between two places is taken out of the others.
    static bool isCutOf(const QString& line, const QStringList& others)
    {
        int most = -1; // of its characters that begin a line
        for (const QString& other : others) {
            const auto ends = std::mismatch(line.begin(), line.end(), other.begin(), other.end());
            most = std::max(most, int(ends.first - line.begin()));
            const int least = line.size() - most;
            if (least <= other.size() && other.endsWith(line.right(least)))
                return true;
        }
        return false;
    }

    // Only lines with the name may be other ones; and those that shared a line with it, and that of a group
    // which is opened or closed on it.
    void check(const QStringList& changed, const QStringList& present, const QString& name, const char* what)
    {
        static const QString ends = QStringLiteral("{}[]/>");
        int others = 0;
        for (const QString& line : changed) {
            const bool isNamed = (!name.isEmpty() && line.contains(name)) || isCutOf(line, present);
            others += isNamed ? 0 : 1;
            if (!isNamed && (others > 2 || !std::any_of(line.begin(), line.end(),
                                                        [](QChar c) { return ends.contains(c); })))
                QTest::qVerify(false, what, qPrintable(QLatin1String("changes the line: ") + line), __FILE__,
                               __LINE__);
        }
    }

    QString mountedType;
    QString kind; // its format
    QString ownName;
    QByteArray bytes;
    QByteArray after;
    QMap<QString, QPair<int, int>> counts;
};

VANTRY_TEST_MAIN(QCoreApplication, StructureWalkTest)

#include "structure_walk_test.moc"
