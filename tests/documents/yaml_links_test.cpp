#include "tests/documents/DocumentEdits.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

using namespace DocumentEdits;
using namespace Repository::Documents;

Q_DECLARE_METATYPE(Edit)

// What aliases and merges of YAML show, and edits of that.
class YamlLinksTest : public QObject
{
    Q_OBJECT

private slots:
    void shows_data()
    {
        const auto row = TestSupport::columns<QByteArray, QByteArray>("yaml", "lines");
        row("merge", "b: &b {x: 1, y: 2}\nm:\n  <<: *b\n  y: own\n  z: 3\n",
            "m.<< = '*b'|m.y = 'own'|m.z = 3|m.x = 1");
        row("own key first", "b: &b {x: 1}\nm:\n  x: own\n  <<: *b\n", "m.x = 'own'|m.<< = '*b'");
        row("first of a list", "a: &a {x: a}\nb: &b {x: b, y: b}\nm:\n  <<: [*a, *b]\n",
            "m.<< = '[*a, *b]'|m.x = 'a'|m.y = 'b'");
        row("last of two", "a: &a {x: a, y: a}\nb: &b {x: b}\nm:\n  <<: *a\n  <<: *b\n",
            "m.<< = '*a'|m.<<[2] = '*b'|m.x = 'b'|m.y = 'a'");
        row("over another", "a: &a {x: 1}\nb: &b\n  <<: *a\n  y: 2\nm: {<<: *b}\n",
            "m.<< = '*b'|m.y = 2|m.x = 1");
        row("inline", "m:\n  <<: {x: 1, y: 2}\n  x: own\n", "m.<<.x = 1|m.<<.y = 2|m.x = 'own'|m.y = 2");
        row("inline in a list", "a: &a {x: 1}\nm:\n  <<: [{y: 2}, *a]\n",
            "m.<< = '[{y: 2}, *a]'|m.y = 2|m.x = 1");
        row("list behind an alias", "a: &a {x: 1}\nl: &l [*a, {y: 2}]\nm:\n  <<: *l\n",
            "m.<< = '*l'|m.x = 1|m.y = 2");
        row("groups and lists", "b: &b\n  g: {k: {l: 1}}\n  t: [p, q]\n  s: [1, p]\nm: {<<: *b}\n",
            "m.<< = '*b'|m.g.k.l = 1|m.t = ['p','q']|m.s.0 = 1|m.s.1 = 'p'");
        row("alias of a map with a merge", "b: &b {x: 1}\nc: &c {<<: *b, y: 2}\nm: *c\n", "m.y = 2|m.x = 1");
        row("a key twice", "b: &b {x: 1, x: 2}\nm: {<<: *b}\n", "m.<< = '*b'|m.x = 1|m.x[2] = 2");
        row("many keys",
            "b: &b {a: 1, b: 2, c: 3, d: 4, e: 5, f: 6, g: 7, h: 8, i: 9, j: 10}\nm: {<<: *b, j: 0}\n",
            "m.<< = '*b'|m.j = 0|m.a = 1|m.b = 2|m.c = 3|m.d = 4|m.e = 5|m.f = 6|m.g = 7|m.h = 8|m.i = 9");
        row("a text", "b: &b x\nm:\n  <<: *b\n", "m.<< = '*b'");
        row("itself", "m: &m\n  <<: *m\n  x: 1\n", "m.<< = '*m'|m.x = 1");
        row("quoted", "b: &b {x: 1}\nm:\n  \"<<\": *b\n", "m.<<.x = 1");
        row("keys", "a: &x {p: 1}\nm:\n  &x k: *x\n  &y l: *x\n  n: [*x, *y]\n",
            "m.k = 'k'|m.l = 'k'|m.n = ['k','l']");
        row("anchor given again", "- &b {x: 1}\n- m: {<<: *b}\n- &b {x: 2}\n- m: {<<: *b}\n",
            "3.m.<< = '*b'|3.m.x = 2");
    }

    // The entries of "m", or of the last map of that name.
    void shows()
    {
        QFETCH(QByteArray, yaml);
        QFETCH(QByteArray, lines);
        const QString top = QString::fromUtf8(lines).section(QLatin1Char('m'), 0, 0) + QStringLiteral("m.");
        QStringList found;
        for (const QString& line : toLines("yaml", yaml.toStdString())) {
            if (line.startsWith(top) && !line.endsWith(QStringLiteral(" = {}")))
                found += line;
        }
        QCOMPARE(found.join(QLatin1Char('|')), QString::fromUtf8(lines));
    }

    void edits_data()
    {
        const auto row = TestSupport::columns<QByteArray, Edit, QByteArray>("before", "edit", "after");
        row("anchored value", "a: &x 1 # c\nb: *x\n", setTo("a", text("no")), "a: &x \"no\" # c\nb: *x\n");
        row("in an anchored map", "a: &x {k: 1}\nb: *x\n", setTo("a.k", integer(2)), "a: &x {k: 2}\nb: *x\n");
        row("type of a list", "a: &x t\nb: [*x, u]\n", setTo("a", integer(2)), "a: &x 2\nb: [*x, u]\n");
        row("type of an aliased list", "a: &x [&y 1, t]\nb: *x\nc: [*y]\n", setTo("a.0", boolean(true)),
            "a: &x [&y true, t]\nb: *x\nc: [*y]\n");
        row("value that becomes a list", "a: &x 1\nb: [*x]\nc: *x\n", setTo("a", list({"p", "q"})),
            "a: &x [p, q]\nb: [*x]\nc: *x\n");
        row("alias", "a: &x 1\nb: *x # c\n", setTo("b", integer(2)), "a: &x 1\nb: 2 # c\n");
        row("new in an anchored map", "a: &x\n  k: 1\nb: *x\n", add("a.l", integer(2)),
            "a: &x\n  k: 1\n  l: 2\nb: *x\n");
        row("alias in an anchored map", "n: &n 1\na: &x\n  k: *n # c\nb: *x\nm: {<<: *x}\n",
            setTo("a.k", text("no")), "n: &n 1\na: &x\n  k: \"no\" # c\nb: *x\nm: {<<: *x}\n");
        row("alias in an anchored list", "n: &n 1\na: &x\n- 0\n- *n\nb: *x\n", setTo("a.1", integer(2)),
            "n: &n 1\na: &x\n- 0\n- 2\nb: *x\n");
        row("last element below a comment", "n: &n q\ni:\n- *n\n# c\n- a # d\n", setTo("i", list({"q"})),
            "n: &n q\ni:\n- *n\n# c\n");
        row("copied within an anchored list", "a: &x\n- 'p'\n- q\nb: *x\nc: [*x]\n", copyTo("a.0", "a.2"),
            "a: &x\n- 'p'\n- q\n- 'p'\nb: *x\nc: [*x]\n");
        row("moved within an anchored list", "a: &x\n- 'p'\n- q\n- r\nb: *x\nc: [*x]\n", move("a.0", "a.2"),
            "a: &x\n- q\n- r\n- 'p'\nb: *x\nc: [*x]\n");
        row("removed from an anchored map", "a: &x\n  k: 1\n  l: 2\nb: *x\n", drop("a.k"),
            "a: &x\n  l: 2\nb: *x\n");
        row("renamed in a merged map", "b: &b\n  x: 1\nm: {<<: *b}\n", renameTo("b.x", "z"),
            "b: &b\n  z: 1\nm: {<<: *b}\n");
        row("merged value", "b: &b {x: 1}\nm: {<<: *b}\n", setTo("b.x", integer(2)),
            "b: &b {x: 2}\nm: {<<: *b}\n");
        row("override", "b: &b {x: 1}\nm:\n  <<: *b # c\n  y: 1 # d\n\n# e\nn: 1\n", setTo("m.x", integer(2)),
            "b: &b {x: 1}\nm:\n  <<: *b # c\n  y: 1 # d\n  x: 2\n\n# e\nn: 1\n");
        row("override in brackets", "b: &b {x: 1}\nm: {<<: *b}\n", setTo("m.x", text("no")),
            "b: &b {x: 1}\nm: {<<: *b, x: \"no\"}\n");
        row("override in a list", "- &b {x: 1}\n- <<: *b\n", setTo("1.x", integer(2)),
            "- &b {x: 1}\n- <<: *b\n  x: 2\n");
        row("override of a group", "b: &b\n  g: {k: 1}\nm:\n  <<: *b\n",
            addAll("m.g", {{"", group()}, {"l", integer(2)}}),
            "b: &b\n  g: {k: 1}\nm:\n  <<: *b\n  g:\n    l: 2\n");
        row("the same value", "b: &b {x: 1}\nm: {<<: *b}\n", setTo("m.x", integer(1)),
            "b: &b {x: 1}\nm: {<<: *b}\n");
        row("override removed", "b: &b {x: 1}\nm:\n  <<: *b\n  x: 2\n", drop("m.x"),
            "b: &b {x: 1}\nm:\n  <<: *b\n");
        row("merge removed", "b: &b {x: 1}\nm:\n  <<: *b\n  y: 2\n", drop("m.<<"),
            "b: &b {x: 1}\nm:\n  y: 2\n");
        row("only a merge", "b: &b {x: 1}\nm:\n  <<: *b\n", drop("m.<<"), "b: &b {x: 1}\nm: {}\n");
        row("a copy", "b: &b {x: 1}\nm:\n  # c\n  k:\n    <<: *b\n    y: *b\n", copyTo("m.k", "m.l"),
            "b: &b {x: 1}\nm:\n  # c\n  k:\n    <<: *b\n    y: *b\n  # c\n  l:\n    <<: *b\n    y: *b\n");
    }

    // The document shows what the file is read to be.
    void edits()
    {
        QFETCH(QByteArray, before);
        QFETCH(Edit, edit);
        QFETCH(QByteArray, after);
        const auto document = makeDocument("yaml");
        QVERIFY(document->parse(before.toStdString()).ok());
        const Outcome outcome = edit(*document);
        QVERIFY2(outcome.ok(), outcome.error.c_str());
        QCOMPARE(QByteArray::fromStdString(document->getBytes()), after);
        QCOMPARE(toLines(*document), toLines("yaml", after.toStdString()));
    }

    void keepsTargetsApart_data()
    {
        const auto row = TestSupport::columns<QByteArray, QByteArray, QByteArray>("yaml", "from", "to");
        row("an alias across a new anchor", "- &x {p: 1}\n- &x {p: 2}\n- *x\n", "2", "1");
        row("of a map across one of a text", "- &x {p: 1}\n- [&x a, 1]\n- *x\n", "2", "1");
        row("a merge across a new anchor", "- &x {p: 1}\n- &x {p: 2}\n- q: 1\n  <<: *x\n", "2", "1");
        row("an anchor across an alias", "- &x {p: 1}\n- *x\n- &x {p: 2}\n", "2", "1");
    }

    // An alias leads to the last anchor of its name above it, which a move must not change.
    void keepsTargetsApart()
    {
        QFETCH(QByteArray, yaml);
        QFETCH(QByteArray, from);
        QFETCH(QByteArray, to);
        const auto document = makeDocument("yaml");
        QVERIFY(document->parse(yaml.toStdString()).ok());
        const auto outcome = document->moveElement(from.toStdString(), to.toStdString());
        QVERIFY(!outcome || !outcome->ok());
        QCOMPARE(QByteArray::fromStdString(document->getBytes()), yaml);
    }

    void refuses_data()
    {
        const auto row =
            TestSupport::columns<QByteArray, Edit, QByteArray, int>("before", "edit", "error", "line");
        const QByteArray alias = "a: &x\n  k: 1\nb: *x\n";
        const QByteArray merge = "b: &b\n  x: 1\n  g: {k: 1}\nm: &m\n  <<: *b\n  y: *b\nn: *m\n";
        const char* const fromAlias =
            "\"b.k\" is shown by the alias *x at line 3 and comes from \"a.k\" at line 2; "
            "change that instead, or remove the alias \"b\" and create it anew";
        row("below an alias", alias, setTo("b.k", integer(2)), fromAlias, 3);
        row("removed below an alias", alias, drop("b.k"), fromAlias, 3);
        row("new below an alias", alias, add("b.l", integer(2)), "from \"a\" at line 1", 3);
        row("renamed below an alias", alias, renameTo("b.k", "l"), "the alias *x at line 3", 3);
        row("used", alias, drop("a"), "is used at line 3; remove what uses it", 3);
        row("inherited", merge, drop("m.x"),
            "\"m.x\" comes with \"<<\" from \"b.x\" at line 2; change or remove that instead", 2);
        row("below an inherited one", merge, setTo("m.g.k", integer(2)), "from \"b.g.k\" at line 3", 3);
        row("new below an inherited one", merge, add("m.g.l", integer(2)), "from \"b.g\" at line 3", 3);
        row("renamed", merge, renameTo("m.x", "z"), "from \"b.x\" at line 2", 2);
        row("inherited below an alias", merge, setTo("n.x", integer(2)), "the alias *m at line 7", 7);
        row("inherited by what is merged", "b: &b {x: 1}\nm:\n  <<: {<<: *b, y: 2}\n",
            setTo("m.<<.x", integer(2)), "\"m.<<.x\" comes with \"<<\" from \"b.x\" at line 1", 1);
        row("merged", merge, setTo("m.<<", integer(2)), "names what is merged", 5);
        row("comment of elements that go", "n: &n q\ni:\n- *n\n- a # c\n # d\n- b\nz: 1\n",
            setTo("i", list({"q"})), "this comment is between elements that would go", 5);
        row("merged map", merge, drop("b"), "is used at line 5", 5);
        row("last element, used, below a comment", "i:\n- a\n# c\n- &s b\nd: *s\n", setTo("i", list({"a"})),
            "the anchor of element 1 is used at line 5", 4);
    }

    void refuses()
    {
        QFETCH(QByteArray, before);
        QFETCH(Edit, edit);
        QFETCH(QByteArray, error);
        QFETCH(int, line);
        const auto document = makeDocument("yaml");
        QVERIFY(document->parse(before.toStdString()).ok());
        const Outcome outcome = edit(*document);
        QVERIFY2(outcome.error.find(error.toStdString()) != std::string::npos, outcome.error.c_str());
        QCOMPARE(int(outcome.line), line);
        QCOMPARE(QByteArray::fromStdString(document->getBytes()), before);
    }

    void takesAListBack_data()
    {
        const auto row = TestSupport::columns<QByteArray>("yaml");
        row("of lines", "n: &n t\ni:\n- *n\n- u\nz: 1\n");
        row("in brackets", "n: &n t\ni: [*n, u] # c\n");
        row("at the end of a file", "n: &n t\ni:\n- a\n- *n\n- u");
        row("before blanks", "n: &n t\ni:\n- *n\n- u\n- v ");
        row("with mixed line ends", "n: &n t\ni:\n- *n\rz: 1\n");
        row("with comments", "n: &n t\ni:\n- *n # a\n- u # b\n- v # c \n\nz: 1\n");
        row("with a block", "n: &n t\ni:\n- *n\n- |\n  a\n- v\nz: 1\n");
        row("of a block", "n: &n |\n  a\n  b\ni:\n- *n\n- u\n");
    }

    // Its aliases are read with their file only.
    void takesAListBack()
    {
        QFETCH(QByteArray, yaml);
        const auto document = makeDocument("yaml");
        QVERIFY(document->parse(yaml.toStdString()).ok());
        const auto value = document->valueAt("i");
        const std::string spelling = document->spell("i").value();
        QVERIFY(document->set("i", list({"p", "q: r"})).ok());
        QVERIFY(document->respell("i", spelling).ok());
        QCOMPARE(QByteArray::fromStdString(document->getBytes()), yaml);
        QVERIFY(isSame(*document->valueAt("i"), *value));
    }

    // What an entry shows, where that is written, and its comment there.
    void leadsToTheSource()
    {
        const std::string bytes = "b: &b\n  # above\n  x: 1 # c\nm:\n  <<: *b\n  y: 2\na: &s 3\nc: *s\n"
                                  "v:\n  \"#value\": &v 5\n  k: 6\nw: *v\n";
        const auto document = makeDocument("yaml");
        QVERIFY(document->parse(bytes).ok());
        const auto row = [&](const char* path, Document::Origin origin, const char* source, bool isLinked) {
            return document->originOf(path) == origin && document->sourceOf(path) == source &&
                   document->isLinked(path) == isLinked;
        };
        QVERIFY(row("b.x", Document::Origin::Own, "b.x", true));
        QVERIFY(row("m.x", Document::Origin::Copy, "b.x", true));
        QVERIFY(row("m.y", Document::Origin::Own, "m.y", false));
        QVERIFY(row("m.<<", Document::Origin::Reference, "m.<<", false));
        QVERIFY(row("a", Document::Origin::Own, "a", true));
        QVERIFY(row("c", Document::Origin::Alias, "a", true));
        QVERIFY(row("w", Document::Origin::Alias, "v", true));
        QCOMPARE(document->followersOf("v"), std::vector<std::string>{"w"});
        QCOMPARE(document->locate("m.x")->offset, bytes.find("1 # c"));
        QCOMPARE(document->comment("m.x"), document->comment("b.x"));
        QVERIFY(!document->comment("m.x").empty());
        QVERIFY(document->isLinked({}));
        QVERIFY(document->set("a", list({"p", "q"})).ok());
        QCOMPARE(document->isArray("c"), std::optional(true));
        QVERIFY(document->set("c", integer(4)).ok());
        QVERIFY(row("c", Document::Origin::Own, "c", false));
    }

    // Each map merges all before it, and a map of many entries is merged often.
    void boundsMerges_data()
    {
        const auto row = TestSupport::columns<QByteArray, QByteArray>("yaml", "line");
        QByteArray chain = "m0: &m0 {k0: 1}\n";
        for (int i = 1; i < 600; ++i)
            chain += QByteArray("m%1: &m%1 {<<: *m%2, k%1: 1}\n")
                         .replace("%1", QByteArray::number(i))
                         .replace("%2", QByteArray::number(i - 1));
        row("chain", chain, "m400.k0 = 1");
        QByteArray wide = "b: &b\n";
        for (int i = 0; i < 20000; ++i)
            wide += "  k" + QByteArray::number(i) + ": 1\n";
        for (int i = 0; i < 2000; ++i)
            wide += "m" + QByteArray::number(i) + ": {<<: *b}\n";
        row("wide", wide, "m4.k19999 = 1");
    }

    void boundsMerges()
    {
        QFETCH(QByteArray, yaml);
        QFETCH(QByteArray, line);
        const QStringList lines = toLines("yaml", yaml.toStdString());
        QVERIFY(lines.contains(QString::fromLatin1(line)));
        QVERIFY(lines.size() < 130000);
        QCOMPARE(QByteArray::fromStdString([&] {
                     const auto document = makeDocument("yaml");
                     document->parse(yaml.toStdString());
                     return document->getBytes();
                 }()),
                 yaml);
    }
};

VANTRY_TEST_MAIN(QCoreApplication, YamlLinksTest)

#include "yaml_links_test.moc"
