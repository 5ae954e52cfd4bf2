#include "repository/merge/DocumentChanges.h"
#include "tests/repository/EditedTexts.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

using Repository::DocumentChange;
using namespace EditedTexts;

// Bringing together what two sides made of arrays, whose elements are identified by what they are.
class ArrayMergeTest : public QObject
{
    Q_OBJECT

private slots:
    void mergesElements_data()
    {
        const auto row = TestSupport::columns<QByteArray, QByteArray, QByteArray, QByteArray, QByteArray>(
            "type", "base", "mine", "theirs", "merged");
        row("removed here, others changed there", "yaml", "l:\n- a: 1\n- b: 2 # of b\n- c: 3\n",
            "l:\n- b: 2 # of b\n- c: 3\n", "l:\n- a: 1\n- b: 2 # of b\n  d: 4\n- c: 5 # new\n",
            "l:\n- b: 2 # of b\n  d: 4\n- c: 5 # new\n");
        row("removed on both sides", "json", "{\"n\": [10, 20, 30, 40]}\n", "{\"n\": [20, 30, 40]}\n",
            "{\"n\": [10, 20, 40]}\n", "{\"n\": [20, 40]}\n");
        row("inserted here, others changed there", "toml",
            "[[t]]\nn = \"a\"\n# of b\n[[t]]\nn = \"b\"\nv = 1\n",
            "[[t]]\nn = \"a\"\n# new\n[[t]]\nn = \"c\"\n# of b\n[[t]]\nn = \"b\"\nv = 1\n",
            "[[t]]\nn = \"a\"\n# of b\n[[t]]\nn = \"b\"\nv = 2\n",
            "[[t]]\nn = \"a\"\n\n# new\n[[t]]\nn = \"c\"\n\n# of b\n[[t]]\nn = \"b\"\nv = 2\n");
        row("inserted there, edited here", "yaml", "l:\n# of a\n- n: a\n  v: 1\n- n: b\n",
            "l:\n# of a\n- n: a\n  v: 2\n- n: b\n", "l:\n- n: c # new\n# of a\n- n: a\n  v: 1\n- n: b\n",
            "l:\n- n: c # new\n# of a\n- n: a\n  v: 2\n- n: b\n");
        row("added at the end on both sides", "yaml", "l:\n- a\n", "l:\n- a\n- m # mine\n",
            "l:\n- a # of a\n- t\n", "l:\n- a # of a\n- t\n- m # mine\n");
        row("added at the end on both sides, json", "json", "{\"l\": [\n  {\"n\": 1}\n]}\n",
            "{\"l\": [\n  {\"n\": 1},\n  // mine\n  {\"n\": 2}\n]}\n",
            "{\"l\": [\n  {\"n\": 1}, // one\n  {\"n\": 3}\n]}\n",
            "{\"l\": [\n  {\"n\": 1}, // one\n  {\"n\": 3},\n  // mine\n  {\"n\": 2}\n]}\n");
        row("the same added on both sides", "toml", "l = [\n  \"a\",\n]\n",
            "l = [\n  \"a\",\n  \"x\",\n  \"m\",\n]\n", "l = [\n  \"a\", # of a\n  \"t\",\n  \"x\",\n]\n",
            "l = [\n  \"a\", # of a\n  \"t\",\n  \"x\",\n  \"m\",\n]\n");
        row("added first, above the comment of the first", "json", "{\"l\": [\n  // of a\n  1,\n  2\n]}\n",
            "{\"l\": [\n  0,\n  // of a\n  1,\n  2\n]}\n", "{\"l\": [\n  // of a\n  1,\n  2,\n  3\n]}\n",
            "{\"l\": [\n  0,\n  // of a\n  1,\n  2,\n  3\n]}\n");
        row("texts edited on both sides", "toml", "l = [\n  \"a\", # of a\n  \"b\",\n  \"c\",\n]\n",
            "l = [\n  \"x\", # of a\n  \"b\",\n  \"c\",\n]\n",
            "l = [\n  \"a\", # of a\n  \"b\",\n  # new\n  \"y\",\n]\n",
            "l = [\n  \"x\", # of a\n  \"b\",\n  # new\n  \"y\",\n]\n");
        row("a text removed here, commented there", "toml",
            "l = [\n  \"a\",\n  # of b\n  \"b\", # b\n  \"c\",\n]\n", "l = [\n  \"a\",\n  \"c\",\n]\n",
            "l = [\n  \"a\", # new\n  # of b\n  \"b\", # b\n  \"c\",\n  \"d\",\n]\n",
            "l = [\n  \"a\", # new\n  \"c\",\n  \"d\",\n]\n");
        row("moved here, edited there", "yaml", "l:\n# of a\n- n: a\n  v: 1\n- n: b\n- n: c\n",
            "l:\n- n: b\n- n: c\n# of a\n- n: a\n  v: 1\n",
            "l:\n# of a\n- n: a\n  v: 2 # new\n- n: b\n- n: c\n",
            "l:\n- n: b\n- n: c\n# of a\n- n: a\n  v: 2 # new\n");
        row("moved there, edited here, added on both sides", "json",
            "{\"l\": [{\"n\": 1, \"v\": 1}, {\"n\": 2}, {\"n\": 3}]}\n",
            "{\"l\": [{\"n\": 1, \"v\": 2}, {\"n\": 2}, {\"n\": 3}, {\"m\": 0}]}\n",
            "{\"l\": [{\"t\": 0}, {\"n\": 2}, {\"n\": 3}, {\"n\": 1, \"v\": 1}]}\n",
            "{\"l\": [{\"t\": 0}, {\"n\": 2}, {\"n\": 3}, {\"n\": 1, \"v\": 2}, {\"m\": 0}]}\n");
        row("moved and edited here, with its comment", "toml",
            "[[t]]\nn = \"a\"\n\n# of b\n[[t]]\nn = \"b\"\nv = 1\n\n[[t]]\nn = \"c\"\n",
            "[[t]]\nn = \"a\"\n\n[[t]]\nn = \"c\"\n\n# of b\n[[t]]\nn = \"b\"\nv = 2\n",
            "[[t]]\nn = \"x\"\n\n[[t]]\nn = \"a\"\n\n# of b\n[[t]]\nn = \"b\"\nv = 1\n\n[[t]]\nn = \"c\"\n",
            "[[t]]\nn = \"x\"\n\n[[t]]\nn = \"a\"\n\n[[t]]\nn = \"c\"\n\n# of b\n[[t]]\nn = \"b\"\nv = 2\n");
        row("replaced here, added behind it there", "yaml", "l:\n- n: a\n  v: 1\n", "l:\n- m: 1\n- m: 2\n",
            "l:\n- n: t\n- n: a\n  v: 1\n- n: u\n", "l:\n- n: t\n- m: 1\n- m: 2\n- n: u\n");
        row("alike numbers, edited in place", "json", "{\"l\": [0, 0, 0, 0]}\n", "{\"l\": [0, 5, 0, 0]}\n",
            "{\"l\": [0, 0, 0, 7]}\n", "{\"l\": [0, 5, 0, 7]}\n");
        row("in an array of an element that moved up", "yaml", "l:\n- n: a\n- n: b\n  i:\n  - x\n  - y\n",
            "l:\n- n: b\n  i:\n  - x\n", "l:\n- n: a\n- n: b\n  i:\n  - x\n  - y\n  - z # new\n",
            "l:\n- n: b\n  i:\n  - x\n  - z # new\n");
        row("an array at the root", "json", "[{\"n\": 1}, {\"n\": 2}]\n", "[{\"n\": 2}]\n",
            "[{\"n\": 1}, {\"n\": 2, \"m\": 3}]\n", "[{\"n\": 2, \"m\": 3}]\n");
        row("an element with a comment below moves up here", "yaml", "l:\n- d: 1\n- d: 2\n  # c\n",
            "l:\n- d: 2\n  # c\n", "l:\n- d: 1\n- d: 2\n  # c\nk: 1\n", "l:\n- d: 2\n  # c\nk: 1\n");
        row("another one with another comment in its place", "toml", "l = [\n  \"a\", # of a\n  \"b\",\n]\n",
            "l = [\n  \"m\",\n  \"a\", # of a\n  # of n\n  \"n\",\n]\n",
            "l = [\n  \"t\",\n  \"a\", # of a\n  \"b\",\n]\n",
            "l = [\n  \"t\",\n  \"m\",\n  \"a\", # of a\n  # of n\n  \"n\",\n]\n");
        row("moved and edited there, edited here", "yaml", "l:\n- n: a\n  v: 1\n- n: b\n- n: c\n",
            "l:\n- n: a\n  v: 2\n- n: c\n", "l:\n- n: b\n- n: c\n- n: a\n  v: 1\n  w: 3\n",
            "l:\n- n: c\n- n: a\n  v: 2\n  w: 3\n");
    }

    void mergesElements() { mergeRow(); }

    void tellsOfElementsInConflict_data()
    {
        const auto row =
            TestSupport::columns<QByteArray, QByteArray, QByteArray, QByteArray, QByteArray, Texts>(
                "type", "base", "mine", "theirs", "merged", "conflicts");
        const auto list = [](const char* paths) { return QString::fromUtf8(paths).split(QLatin1Char('|')); };
        row("removed here, changed there", "yaml", "l:\n- n: a\n  v: 1\n- n: b\n", "l:\n- n: b\n",
            "l:\n- n: a\n  v: 2\n- n: b\n", "l:\n- n: b\n", list("l.0.n|l.0.v|l.1|l.1.n"));
        row("removed here, commented there", "yaml", "l:\n- n: a\n- n: b\n", "l:\n- n: b\n",
            "l:\n# new\n- n: a\n- n: b\n", "l:\n# new\n- n: b\n", list("l.0.n|l.1|l.1.n"));
        row("changed here, removed there", "json", "{\"l\": [1, 2, 3]}\n", "{\"l\": [1, 5, 3]}\n",
            "{\"l\": [1, 3]}\n", "{\"l\": [1, 5, 3]}\n", list("l.1|l.2"));
        row("one of several alike removed, one changed", "json", "{\"l\": [0, 0, 0]}\n", "{\"l\": [0, 0]}\n",
            "{\"l\": [0, 1, 0]}\n", "{\"l\": [0, 1]}\n", list("l.2"));
        row("ordered anew on both sides", "json", "{\"l\": [1, 2, 3]}\n", "{\"l\": [3, 1, 2]}\n",
            "{\"l\": [2, 1, 3]}\n", "{\"l\": [3, 1, 2]}\n", list("l.0|l.2"));
        row("changed on both sides, further down there", "yaml", "l:\n- n: a\n- n: b\n  v: 1\n",
            "l:\n- n: a\n- n: b\n  v: 2\n", "l:\n- n: x\n- n: a\n- n: b\n  v: 3\n",
            "l:\n- n: x\n- n: a\n- n: b\n  v: 2\n", list("l.2.v"));
        row("changed on both sides, further down here", "yaml", "l:\n- n: a\n- n: b\n  v: 1\n",
            "l:\n- n: x\n- n: a\n- n: b\n  v: 2\n", "l:\n- n: a\n- n: b\n  v: 3\n",
            "l:\n- n: x\n- n: a\n- n: b\n  v: 2\n", list("l.0.n|l.1.n|l.1.v|l.2|l.2.n|l.2.v"));
        row("another one in its place here, changed there", "yaml", "l:\n- n: a\n  v: 1\n  w: 1\n",
            "l:\n- n: b\n  v: 2\n  w: 3\n", "l:\n- n: a\n  v: 1\n  w: 4\n", "l:\n- n: b\n  v: 2\n  w: 3\n",
            list("l.0.n|l.0.v|l.0.w"));
        row("a text changed on both sides", "toml", "l = [\"a\", \"b\"]\n", "l = [\"a\", \"x\"]\n",
            "l = [\"a\", \"y\", \"c\"]\n", "l = [\"a\", \"x\"]\n", list("l"));
        row("added to another one in its place", "yaml", "l:\n- n: a\n  v: 1\n", "l:\n- n: b\n  v: 2\n",
            "l:\n- n: a\n  v: 1\n  w: 3\n", "l:\n- n: b\n  v: 2\n  w: 3\n", list("l.0.n|l.0.v"));
    }

    void tellsOfElementsInConflict()
    {
        QFETCH(QByteArray, type);
        QFETCH(QByteArray, base);
        QFETCH(QByteArray, mine);
        QFETCH(QByteArray, theirs);
        QFETCH(Texts, conflicts);
        EditedDocument edited(type.toStdString());
        QVERIFY(edited.load(base.toStdString()).ok());
        QVERIFY(edited.replaceText(mine.toStdString()).ok());
        QCOMPARE(merge(edited, theirs.toStdString()), QByteArray());
        QCOMPARE(conflictsOf(edited), conflicts);
        QTEST(QByteArray::fromStdString(edited.getText()), "merged");
        std::vector<std::string> paths;
        for (const QString& path : conflicts)
            paths.push_back(path.toStdString());
        QCOMPARE(QByteArray::fromStdString(edited.revert(paths)), QByteArray());
        EditedDocument expected(type.toStdString());
        QVERIFY(expected.load(theirs.toStdString()).ok());
        const auto left = Repository::compareDocuments(expected.getDocument(), edited.getDocument());
        for (const DocumentChange& change : left)
            QVERIFY2(!conflicts.contains(QString::fromStdString(change.path)), change.path.c_str());
    }

    // A conflict stays at its element when others come before it.
    void conflictsFollowElements()
    {
        EditedDocument edited("yaml");
        QVERIFY(edited.load("l:\n- n: a\n  v: 1\n").ok());
        applyAll(edited, {QStringLiteral("l.0.v = 2")});
        QCOMPARE(merge(edited, "l:\n- n: a\n  v: 3\n"), QByteArray());
        QCOMPARE(merge(edited, "l:\n- n: x\n- n: a\n  v: 3\n"), QByteArray());
        QCOMPARE(conflictsOf(edited), Texts{QStringLiteral("l.1.v")});
        QCOMPARE(QByteArray::fromStdString(edited.revert({"l.1.v"})), QByteArray());
        QCOMPARE(QByteArray::fromStdString(edited.getText()), QByteArray("l:\n- n: x\n- n: a\n  v: 3\n"));
        QCOMPARE(conflictsOf(edited), Texts());
    }

    // A part of a new array is one, too.
    void savesAPartOfAnArray_data()
    {
        const auto row = TestSupport::columns<QByteArray, QByteArray, QByteArray, QByteArray>("type", "base",
                                                                                              "mine", "part");
        row("yaml", "yaml", "k: 1\n", "k: 2\nl:\n- x: 1\n  y: 2\n", "k: 1\nl:\n  - x: 1\n");
        row("toml", "toml", "k = 1\n", "k = 2\n\n[[l]]\nx = 1\ny = 2\n", "k = 1\n\n[[l]]\nx = 1\n");
        row("json", "json", "{\n  \"k\": 1\n}\n", "{\n  \"k\": 2,\n  \"l\": [{\"x\": 1, \"y\": 2}]\n}\n",
            "{\n  \"k\": 1,\n  \"l\": [\n    {\n      \"x\": 1\n    }\n  ]\n}\n");
    }

    void savesAPartOfAnArray()
    {
        QFETCH(QByteArray, type);
        QFETCH(QByteArray, base);
        QFETCH(QByteArray, mine);
        EditedDocument edited(type.toStdString());
        QVERIFY(edited.load(base.toStdString()).ok());
        QVERIFY(edited.replaceText(mine.toStdString()).ok());
        std::string reason;
        QTEST(QByteArray::fromStdString(edited.baseWith({"l.0.x"}, reason).value_or(reason)), "part");
    }
};

VANTRY_TEST_MAIN(QCoreApplication, ArrayMergeTest)

#include "array_merge_test.moc"
