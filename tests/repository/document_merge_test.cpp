#include "repository/merge/UnifiedDiff.h"
#include "tests/documents/EntryLines.h"
#include "tests/repository/EditedTexts.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>

#include <map>

using Repository::DocumentChange;
using namespace EditedTexts;

namespace {

const char* const oven = "; oven\n[oven]\nhot = true\nlimit=250 \n\n[fan]\nspeed = 3\n";
const char* const bench =
    "{\n  // comment\n  \"a\": 1,\n  \"b\": {\"x\": 1, \"y\": 2},\n  \"n\": [10, 20, 30]\n}\n";

} // namespace

// Bringing together what two sides made of one text.
class DocumentMergeTest : public QObject
{
    Q_OBJECT

private slots:
    void merges_data()
    {
        TestSupport::columns<QByteArray, QByteArray, Texts, QByteArray, QByteArray, Texts>(
            "type", "base", "edits", "theirs", "merged", "conflicts");
        const auto row = [](const char* tag, const char* type, const QByteArray& base, const char* edits,
                            const QByteArray& theirs, const QByteArray& merged, const char* conflicts = "") {
            const auto lines = [](const char* text) {
                return QString::fromUtf8(text).split(QLatin1Char('|'), Qt::SkipEmptyParts);
            };
            QTest::newRow(tag) << QByteArray(type) << base << lines(edits) << theirs << merged
                               << lines(conflicts);
        };
        const QByteArray i(oven);
        const QByteArray j(bench);
        const auto with = [](QByteArray text, const char* from, const char* to) {
            return text.replace(from, to);
        };
        row("ini: both sides' values", "ini", i, "oven.limit = 300", with(i, "= 3\n", "= 4\n"),
            with(with(i, "250", "300"), "= 3\n", "= 4\n"));
        row("ini: mine over their comments", "ini", i, "oven.limit = 300", "; new\r\n" + i,
            "; new\r\n" + with(i, "250", "300"));
        row("ini: the same on both sides", "ini", i, "oven.limit = 300|- fan.speed",
            "[oven]\nhot = true\nlimit = 300\n[fan]\n", "[oven]\nhot = true\nlimit = 300\n[fan]\n");
        row("ini: different values", "ini", i, "oven.limit = 300|oven.hot = false", with(i, "250", "260"),
            with(with(i, "250", "300"), "true", "false"), "oven.limit");
        row("ini: edited and removed there", "ini", i, "fan.speed = 5", with(i, "speed = 3\n", ""),
            with(i, "= 3\n", "= 5\n"), "fan.speed");
        row("ini: removed and edited there", "ini", i, "- fan.speed", with(i, "= 3\n", "= 4\n"),
            with(i, "speed = 3\n", ""), "fan.speed");
        row("ini: new on both sides", "ini", i, "fan.auto = true", i + "auto = false\n", i + "auto = true\n",
            "fan.auto");
        row("ini: new here, section gone there", "ini", i, "fan.auto = true", i.left(i.indexOf("\n[fan")),
            i.left(i.indexOf("\n[fan")) + "\n[fan]\nauto = true\n");
        row("ini: section gone here, grown there", "ini", i, "- fan", i + "auto = true\n",
            with(i, "speed = 3\n", "auto = true\n"));
        row("ini: emptied there", "ini", i, "oven.limit = 300", "", "[oven]\nlimit=300 \n", "oven.limit");
        row("ini: siblings of one name", "ini", "k=1\nk=2\nk=3\n", "k[2] = 5", "k=1\nk=2\nk=3\nk=4\n",
            "k=1\nk=5\nk=3\nk=4\n");
        row("ini: siblings move there", "ini", "k=1\nk=2\nk=2\n", "k[3] = 5", "k=1\nk=2\n", "k=1\nk=2\nk=5\n",
            "k[3]");
        row("json: both sides' values", "json", j, "b.x = 7", with(j, "\"y\": 2", "\"y\": 3"),
            with(with(j, "\"x\": 1", "\"x\": 7"), "\"y\": 2", "\"y\": 3"));
        row("json: keeps their order and looks", "json", j, "a = 5", "{\"b\":{\"y\":2,\"x\":1},\"a\":1}",
            "{\"b\":{\"y\":2,\"x\":1},\"a\":5}");
        row("json: subtree gone here, grown there", "json", j, "- b",
            with(j, "\"y\": 2", "\"y\": 2, \"z\": 3"), with(j, "\"x\": 1, \"y\": 2", "\"z\": 3"));
        row("json: array longer there, value here", "json", j, "n.1 = 21", with(j, "30]", "30, 40]"),
            with(j, "20, 30]", "21, 30, 40]"));
        row("json: array shifted here, value there", "json", j, "- n.0", with(j, "30", "31"),
            with(j, "10, 20, 30", "20, 31"));
        row("json: array shifted on both sides", "json", j, "- n.0", with(j, ", 30", ""),
            with(j, "10, 20, 30", "20"));
        row("xml: new ones that need each other", "xml", "<r>\n  <k>1</k>\n</r>\n",
            "r.a:i.@xmlns:a = u|r.m.#text = t|r.m.b = 5", "<r>\n  <k>2</k>\n</r>\n",
            "<r>\n  <k>2</k>\n  <a:i xmlns:a=\"u\"/>\n  <m>t <b>5</b></m>\n</r>\n");
        const QByteArray y("# top\na: 1 # of a\nb:\n  # x\n  x: 1\n  y: 2\nn:\n- 10\n- 20\n- 30\n");
        row("yaml: both sides' values", "yaml", y, "b.x = 7", with(y, "y: 2", "y: 3"),
            with(with(y, "x: 1", "x: 7"), "y: 2", "y: 3"));
        row("yaml: keeps their order and looks", "yaml", y, "a = 5",
            "{b: {y: 2, x: 1}, a: 1, n: [10, 20, 30]}", "{b: {y: 2, x: 1}, a: 5, n: [10, 20, 30]}");
        row("yaml: subtree gone here, grown there", "yaml", y, "- b", with(y, "y: 2", "y: 2\n  z: 3"),
            with(y, "  x: 1\n  y: 2\n", "  z: 3\n"));
        row("yaml: array longer there, value here", "yaml", y, "n.1 = 21", y + "- 40\n",
            with(y, "20", "21") + "- 40\n");
        row("yaml: beside an anchor", "yaml", "a: &x {k: 1}\nb: *x\nc: 1\n", "c = 2",
            "a: &x {k: 3}\nb: *x\nc: 1\n", "a: &x {k: 3}\nb: *x\nc: 2\n");
        row("yaml: what an alias shows", "yaml", "a: &x 1\nb: *x\nc: 1\n", "a = 2", "a: &x 1\nb: *x\nc: 3\n",
            "a: &x 2\nb: *x\nc: 3\n");
        row("yaml: a merge that an alias shows", "yaml", "a: &x {k: 1}\nb: &y {<<: *x, l: 2}\nc: *y\nd: 1\n",
            "- b.<<", "a: &x {k: 1}\nb: &y {<<: *x, l: 2}\nc: *y\nd: 3\n",
            "a: &x {k: 1}\nb: &y {l: 2}\nc: *y\nd: 3\n");
        row("yaml: what is merged in its place", "yaml", "a:\n  <<: {x: 1}\nc: 1\n", "a.<<.x = 2",
            "a:\n  <<: {x: 1}\nc: 3\n", "a:\n  <<: {x: 2}\nc: 3\n");
        row("toml: both sides' values", "toml", "[a]\nx = 0x01 # c\ny = 2\n", "a.x = 3",
            "[a]\nx = 0x01 # c\n\n# of y\ny = 4\n", "[a]\nx = 0x03 # c\n\n# of y\ny = 4\n");
        row("json: a value there, a group here", "json", j, "b.z = 3", with(j, "{\"x\": 1, \"y\": 2}", "5"),
            with(j, "{\"x\": 1, \"y\": 2}", "{\n    \"#value\": 5,\n    \"z\": 3\n  }"));
    }

    void merges()
    {
        QFETCH(QByteArray, type);
        QFETCH(QByteArray, base);
        QFETCH(Texts, edits);
        QFETCH(QByteArray, theirs);
        QFETCH(QByteArray, merged);
        QFETCH(Texts, conflicts);
        EditedDocument edited(type.toStdString());
        QVERIFY(edited.load(base.toStdString()).ok());
        applyAll(edited, edits);
        QCOMPARE(merge(edited, theirs.toStdString()), QByteArray());
        QCOMPARE(QByteArray::fromStdString(edited.getText()), merged);
        QCOMPARE(conflictsOf(edited), conflicts);
        QCOMPARE(QByteArray::fromStdString(edited.getBase()), theirs);
        // Taking theirs everywhere gives the very bytes that were found.
        QCOMPARE(QByteArray::fromStdString(edited.revert({std::string()})), QByteArray());
        QCOMPARE(QByteArray::fromStdString(edited.getText()), theirs);
    }

    // What one side wrote comes into the other's text as it is.
    void mergesWhatIsWritten_data()
    {
        const auto row = TestSupport::columns<QByteArray, QByteArray, QByteArray, QByteArray, QByteArray>(
            "type", "base", "mine", "theirs", "merged");
        row("ini", "ini", "[a]\nx=1\n", "[a]\nx=1\n; why\ny = 1.50 ; in\n\n; of b\n[b]\nz='1'\n",
            "[a]\nx=2\n", "[a]\nx=2\n; why\ny = 1.50 ; in\n\n; of b\n[b]\nz='1'\n");
        row("txt", "txt", "x=1\n", "x=1\n# why\ny.z = 1.50\n", "x=2\n", "x=2\n# why\ny.z = 1.50\n");
        row("json", "json", "{\n  \"x\": 1\n}\n",
            "{\n  \"x\": 1,\n  // why\n  \"y\": {\"z\": [1.50,2]} // in\n}\n", "{\n  \"x\": 2\n}\n",
            "{\n  \"x\": 2,\n  // why\n  \"y\": {\"z\": [1.50,2]} // in\n}\n");
        row("xml", "xml", "<r>\n  <x>1</x>\n</r>\n",
            "<r>\n  <x>1</x>\n  <!-- why -->\n  <y>H<sub id='1'>2</sub>O</y>\n</r>\n",
            "<r>\n  <x>2</x>\n</r>\n",
            "<r>\n  <x>2</x>\n  <!-- why -->\n  <y>H<sub id='1'>2</sub>O</y>\n</r>\n");
        row("toml", "toml", "x = 1\n", "x = 1\n# why\ny = [0x0F, 2] # in\n\n# of t\n[[t]]\nz = 1_0\n",
            "x = 2\n", "x = 2\n# why\ny = [0x0F, 2] # in\n\n# of t\n[[t]]\nz = 1_0\n");
        row("a comment that stayed", "ini", "[a]\n; why\nx = 1\n[b]\n", "[a]\n[b]\n; why\ny = 1.50\n",
            "[a]\n; why\nx = 1\n[b]\nk=1\n", "[a]\n; why\n[b]\nk=1\ny = 1.50\n");
        row("a renamed entry", "toml", "# c\na = 1\nb = 2\n", "# c\nz = 1\nb = 2\n",
            "# c\r\n# d\r\na = 1 # e\r\nb = 2\r\n", "# c\r\n# d\r\nz = 1 # e\r\nb = 2\r\n");
        row("a renamed table", "toml", "[a]\nx = 1\n[b]\ny = 1\n", "[z]\nx = 1\n[b]\ny = 1\n",
            "[a]\n# why\nx = 1\n[b]\ny = 1\n", "[z]\n# why\nx = 1\n[b]\ny = 1\n");
        row("a renamed map", "yaml", "a:\n  x: 1\nb: 1\n", "z:\n  x: 1\nb: 1\n",
            "a:\n  # why\n  x: 1\nb: 3\n", "z:\n  # why\n  x: 1\nb: 3\n");
        row("a moved entry", "yaml", "a:\n  w: 0\n  x: 1\nb:\n  y: 2\n", "a:\n  w: 0\nb:\n  y: 2\n  x: 1\n",
            "a:\n  w: 0\n  # why\n  x: 1 # in\nb:\n  y: 2\n",
            "a:\n  w: 0\nb:\n  y: 2\n  # why\n  x: 1 # in\n");
        row("a moved section", "ini", "[a]\nx=1\n[b]\ny=1\n", "[b]\ny=1\n[c]\nx=1\n",
            "[a]\n; why\nx=1\n[b]\ny=1\n", "[c]\n; why\nx=1\n[b]\ny=1\n");
        row("a renamed root", "xml", "<r>\n  <k>1</k>\n</r>\n", "<s>\n  <k>1</k>\n</s>\n",
            "<r>\n  <!-- why -->\n  <k>1</k>\n</r>\n", "<s>\n  <!-- why -->\n  <k>1</k>\n</s>\n");
        row("an element at another place", "json", "[\"a\", {\"x\": 1}, 5]\n", "[{\"x\": 1}, \"a\", 5]\n",
            "[\"a\", {\"x\": 1}, 5] // c\n", "[{\"x\": 1}, \"a\", 5] // c\n");
        row("a list that they commented, json", "json", "{\"l\": [\n  \"a\",\n  \"b\"\n]}\n",
            "{\"l\": [\n  \"a\",\n  \"c\"\n]}\n", "{\"l\": [\n  // why\n  \"a\",\n  \"b\"\n]}\n",
            "{\"l\": [\n  // why\n  \"a\",\n  \"c\"\n]}\n");
        row("a list that they commented, toml", "toml", "l = [\n  \"a\",\n  \"b\",\n]\n",
            "l = [\n  \"a\",\n  \"c\",\n]\n", "l = [\n  \"a\", # why\n  \"b\",\n]\n",
            "l = [\n  \"a\", # why\n  \"c\",\n]\n");
        row("a list that they commented, yaml", "yaml", "l:\n- a\n- b\n", "l:\n- a\n- c\n",
            "l:\n# why\n- a\n- b\n", "l:\n# why\n- a\n- c\n");
        row("a value that they commented", "ini", "[a]\nx=1\n", "[a]\nx=2\n", "[a]\nx=1 ; why\n",
            "[a]\nx=2 ; why\n");
        row("a list that I commented", "toml", "l = [\n  \"a\",\n  \"b\",\n]\n",
            "l = [\n  \"a\", # why\n  \"c\",\n]\n", "# up\nl = [\n  \"a\",\n  \"b\",\n]\n",
            "# up\nl = [\n  \"a\", # why\n  \"c\",\n]\n");
        row("the same key with other comments", "toml", "[a]\nx = 1\n", "[a]\nx = 1\n# mine\nn = 3 # m\n",
            "[a]\nx = 1\n# theirs\nn = 3\n", "[a]\nx = 1\n# theirs\n# mine\n# m\nn = 3\n");
        row("the same map with other comments", "yaml", "a: 1\n", "a: 1\n# mine\nb:\n  x: 1\n",
            "a: 1\n# both\nb: # theirs\n  x: 1\n", "a: 1\n# both\n# mine\nb: # theirs\n  x: 1\n");
        row("the only element goes", "yaml", "l:\n- x: 1\nk: 1\n", "l: []\nk: 1\n", "l:\n- x: 1\nk: 2\n",
            "l: []\nk: 2\n");
    }

    void mergesWhatIsWritten() { mergeRow(); }

    // What was written as a comment is in the result, or in a conflict.
    void tellsOfLostComments_data()
    {
        const auto row = TestSupport::columns<QByteArray, QByteArray, QByteArray, QByteArray, Texts>(
            "type", "base", "mine", "theirs", "conflicts");
        const Texts none;
        row("mine, a table is inline there", "toml", "[p]\nx = 1\n", "[p]\nx = 1\n# why\nn = 3\n",
            "p = {x = 1}\n", Texts{QStringLiteral("p.n")});
        row("mine, a map is in brackets there", "yaml", "p:\n  x: 1\n", "p:\n  x: 1\n  n: 3 # why\n",
            "p: {x: 1}\n", Texts{QStringLiteral("p.n")});
        row("theirs in what goes here, toml", "toml", "[a]\nx = 1\n[b]\ny = 1\n", "[b]\ny = 1\n",
            "[a]\n# keep\nx = 1\n[b]\ny = 1\n", Texts{QStringLiteral("a")});
        row("theirs in what goes here, yaml", "yaml", "a:\n  x: 1\nb: 1\n", "b: 1\n",
            "a:\n  # keep\n  x: 1\nb: 1\n", Texts{QStringLiteral("a")});
        row("theirs in what goes here, ini", "ini", "[a]\nx=1\n[b]\ny=1\n", "[b]\ny=1\n",
            "[a]\n; keep\nx=1\n[b]\ny=1\n", Texts{QStringLiteral("a")});
        row("theirs in what goes here, json", "json", "{\"a\": {\"x\": 1}, \"b\": 1}\n", "{\"b\": 1}\n",
            "{\"a\": {\"x\": 1 /* keep */}, \"b\": 1}\n", Texts{QStringLiteral("a")});
        row("theirs behind what goes here", "yaml", "a: 1\nb: 1\n", "b: 1\n", "a: 1 # keep\nb: 1\n",
            Texts{QStringLiteral("a")});
        row("theirs above what goes here stays", "yaml", "a: 1\nb: 1\n", "b: 1\n", "# up\na: 1\nb: 1\n",
            none);
        row("known ones that go", "yaml", "a: 1 # c\nb: 1\n", "b: 1\n", "a: 1 # c\nb: 2\n", none);
    }

    void tellsOfLostComments()
    {
        QFETCH(QByteArray, type);
        QFETCH(QByteArray, base);
        QFETCH(QByteArray, mine);
        QFETCH(QByteArray, theirs);
        EditedDocument edited(type.toStdString());
        QVERIFY(edited.load(base.toStdString()).ok());
        QVERIFY(edited.replaceText(mine.toStdString()).ok());
        QCOMPARE(merge(edited, theirs.toStdString()), QByteArray());
        QTEST(conflictsOf(edited), "conflicts");
    }

    // What one side has taken out and the other has changed, and what cannot be told, is in conflict, by the
    // numbers that it has now.
    // Comments that belong to no entry that is in conflict make a merge refused.
    void refusesToLoseComments_data()
    {
        const auto row = TestSupport::columns<QByteArray, QByteArray, QByteArray, QByteArray, QByteArray>(
            "type", "base", "mine", "theirs", "comment");
        row("both added the same, with one in it", "yaml", "a: 1\n", "a: 1\nb:\n  # mine\n  x: 1\n",
            "a: 1\nb:\n  x: 1\n", "# mine");
    }

    void refusesToLoseComments()
    {
        QFETCH(QByteArray, type);
        QFETCH(QByteArray, base);
        QFETCH(QByteArray, mine);
        QFETCH(QByteArray, theirs);
        QFETCH(QByteArray, comment);
        EditedDocument edited(type.toStdString());
        QVERIFY(edited.load(base.toStdString()).ok());
        QVERIFY(edited.replaceText(mine.toStdString()).ok());
        const QByteArray refusal = merge(edited, theirs.toStdString());
        QVERIFY2(refusal.contains("the comment " + comment + " has no place"), refusal.constData());
        QCOMPARE(QByteArray::fromStdString(edited.getText()), mine);
    }

    // A list with comments does not become another value by way of being taken out.
    void refusesToLoseCommentsOfAList()
    {
        EditedDocument edited("toml");
        QVERIFY(edited.load("l = [\n  \"a\",\n]\n").ok());
        QVERIFY(edited.replaceText("l = true\n").ok());
        QVERIFY(merge(edited, "l = [ # why\n  \"a\",\n]\n").contains("comments"));
        QCOMPARE(QByteArray::fromStdString(edited.getText()), QByteArray("l = true\n"));
    }

    void revertsToTheSpelling()
    {
        EditedDocument edited("json");
        QVERIFY(edited.load("{\"a\": \"\\u0041\", \"b\": [1e3, 7], \"c\": 2}").ok());
        applyAll(edited, {QStringLiteral("a = x"), QStringLiteral("b.0 = 5"), QStringLiteral("c = 3")});
        QCOMPARE(QByteArray::fromStdString(edited.revert({"a", "b"})), QByteArray());
        QCOMPARE(QByteArray::fromStdString(edited.getText()),
                 QByteArray("{\"a\": \"\\u0041\", \"b\": [1e3, 7], \"c\": 3}"));
    }

    void refusesWhatHasNoPlace()
    {
        EditedDocument edited("json");
        QVERIFY(edited.load("{\"a\": {\"x\": 1}}").ok());
        applyAll(edited, {QStringLiteral("a.x = 2"), QStringLiteral("a.y = 3")});
        QVERIFY(merge(edited, "{\"a\": [1, 2]}").contains("'a."));
        QCOMPARE(QByteArray::fromStdString(edited.getText()), QByteArray("{\"a\": {\"x\": 2, \"y\": 3}}"));
        QVERIFY(!conflictsOf(edited).isEmpty());
    }

    // A conflict lasts over further changes there, and ends when the sides agree, however they come to.
    void endsConflicts()
    {
        EditedDocument edited("ini");
        const std::string theirs = "[a]\nx = 2\ny = 1\n";
        const auto quarrel = [&] {
            QVERIFY(edited.load("[a]\nx = 1\ny = 1\n").ok());
            applyAll(edited, {QStringLiteral("a.x = 5")});
            QCOMPARE(merge(edited, theirs), QByteArray());
            QCOMPARE(conflictsOf(edited), Texts{QStringLiteral("a.x")});
            QCOMPARE(merge(edited, "[a]\nx = 2\ny = 7\n"), QByteArray());
            QCOMPARE(conflictsOf(edited), Texts{QStringLiteral("a.x")});
        };
        quarrel();
        applyAll(edited, {QStringLiteral("a.x = 2")});
        QCOMPARE(conflictsOf(edited), Texts());
        edited.setSaved(edited.getText(), edited.getRevision());
        applyAll(edited, {QStringLiteral("a.x = 9")});
        QCOMPARE(conflictsOf(edited), Texts()); // the file held the same when it was saved
        quarrel();
        QCOMPARE(merge(edited, "[a]\nx = 1\ny = 7\n"), QByteArray());
        QCOMPARE(conflictsOf(edited), Texts());
        quarrel();
        edited.settleConflicts({"a"});
        QCOMPARE(conflictsOf(edited), Texts());
        QVERIFY(edited.hasEdits());
        QCOMPARE(merge(edited, "[a]\nx = 3\ny = 7\n"), QByteArray());
        QCOMPARE(conflictsOf(edited), Texts{QStringLiteral("a.x")}); // they have changed it once more
        quarrel();
        QVERIFY(edited.revert({"a.x"}).empty());
        QCOMPARE(conflictsOf(edited), Texts());
        QVERIFY(!edited.hasEdits());
    }

    // Entries stay, move, change, come and go, alone and in long pieces.
    void comparesWhatHasMoved()
    {
        QRandomGenerator random(7);
        for (int round = 0; round < 300; ++round) {
            Texts before;
            for (int i = random.bounded(400); i > 0; --i)
                before += QStringLiteral("k%1.x = %2").arg(i).arg(random.bounded(3));
            Texts after = before;
            for (int edits = random.bounded(6); edits > 0 && !after.isEmpty(); --edits) {
                const int at = random.bounded(after.size());
                const int length = random.bounded(qMin(after.size() - at, round % 2 == 0 ? 3 : 300) + 1);
                const Texts piece = after.mid(at, length);
                const int kind = random.bounded(4);
                after.erase(after.begin() + at, after.begin() + at + length);
                const int to = random.bounded(after.size() + 1);
                for (int i = 0; i < length && kind > 0; ++i)
                    after.insert(to + i, kind == 1 ? piece[i]
                                                   : piece[i].section(QLatin1Char(' '), 0, 0) +
                                                         (kind == 2 ? QStringLiteral(" = 8")
                                                                    : QStringLiteral("-%1 = 9").arg(edits)));
            }
            const auto was = parsedLines(before);
            const auto is = parsedLines(after);
            QCOMPARE(told(Repository::compareDocuments(*was, *is)), told(compareByPath(*was, *is)));
        }
    }

    // Two sides edit values of a real file that are not the same: nobody's edit is lost, and when one side's
    // are taken back, the other's text is left to the byte.
    void mergesEditsOfRealFiles()
    {
        int merged = 0;
        for (const std::string& type : Repository::Documents::getDocumentTypes()) {
            const QString corpus = TestSupport::corporaPath(QString::fromStdString(type));
            const Texts names = corpus.isEmpty() ? Texts() : QDir(corpus).entryList(QDir::Files);
            for (int i = 0; i < names.size(); i += 5) {
                QFile file(corpus + QLatin1Char('/') + names[i]);
                QVERIFY(file.open(QIODevice::ReadOnly));
                EditedDocument mine(type);
                if (mine.load(file.readAll().toStdString()).ok())
                    merged += mergeSides(mine, type) ? 1 : 0;
                QVERIFY2(!QTest::currentTestFailed(), qPrintable(names[i]));
            }
        }
        qInfo("merged the edits of %d real files", merged);
    }

    void tellsDifference_data()
    {
        const auto row = TestSupport::columns<QByteArray, QByteArray, QByteArray>("before", "after", "hunks");
        row("same", "a\n", "a\n", "");
        row("from nothing", "", "a\n", "@@ -0,0 +1,1 @@\n+a\n");
        row("to nothing", "a\nb", "", "@@ -1,2 +0,0 @@\n-a\n-b\n\\ No newline at end of file\n");
        row("last line end comes", "a\nb", "a\nb\n",
            "@@ -1,2 +1,2 @@\n a\n-b\n\\ No newline at end of file\n+b\n");
        row("last line end stays away", "a\nb", "c\nb",
            "@@ -1,2 +1,2 @@\n-a\n+c\n b\n\\ No newline at end of file\n");
        row("changes six lines apart are one hunk", "1\n2\n3\n4\n5\n6\n7\n8\n", "a\n2\n3\n4\n5\n6\n7\nb\n",
            "@@ -1,8 +1,8 @@\n-1\n+a\n 2\n 3\n 4\n 5\n 6\n 7\n-8\n+b\n");
        row("changes seven lines apart are two", "1\n2\n3\n4\n5\n6\n7\n8\n9\n", "2\n3\n4\n5\n6\n7\n8\nb\n",
            "@@ -1,4 +1,3 @@\n-1\n 2\n 3\n 4\n@@ -6,4 +5,4 @@\n 6\n 7\n 8\n-9\n+b\n");
    }

    void tellsDifference()
    {
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, after);
        QFETCH(QByteArray, hunks);
        const std::string diff = Repository::unifiedDiff(before.toStdString(), after.toStdString(), "/a b");
        QCOMPARE(QByteArray::fromStdString(diff), hunks.isEmpty() ? hunks : "--- /a b\n+++ /a b\n" + hunks);
    }

    // A part of the hunks leads to a text from which the others lead on, whatever they are.
    void takesHunksApart()
    {
        QRandomGenerator random(5);
        int taken = 0;
        for (int round = 0; round < 300; ++round) {
            std::string before;
            std::string after;
            const bool endsLine = random.bounded(2) == 0;
            for (int line = 0; line < 60; ++line) {
                const int fate = random.bounded(15);
                const std::string end = line < 59 || endsLine ? "\n" : "";
                before += std::to_string(line) + end;
                if (fate == 0)
                    after += "new " + std::to_string(line) + "\n";
                if (fate > 1)
                    after += std::to_string(line) + (fate == 2 ? " other" : "") + end;
            }
            Texts others;
            const std::string part = Repository::withHunks(before, after, [&](const std::string& hunk) {
                const bool isTaken = random.bounded(2) == 0;
                taken += isTaken ? 1 : 0;
                if (!isTaken)
                    others.append(QString::fromStdString(hunk.substr(hunk.find('\n'))));
                return isTaken;
            });
            const auto isAny = [](const std::string&) { return true; };
            QCOMPARE(QByteArray::fromStdString(Repository::withHunks(before, after, isAny)),
                     QByteArray::fromStdString(after));
            Texts left;
            Repository::withHunks(part, after, [&left](const std::string& hunk) {
                left.append(QString::fromStdString(hunk.substr(hunk.find('\n'))));
                return true;
            });
            QCOMPARE(left, others);
        }
        QVERIFY(taken > 300);
    }

private:
    static std::unique_ptr<Repository::Documents::Document> parsedLines(const Texts& lines)
    {
        auto document = Repository::Documents::makeDocument("txt");
        document->parse(lines.join(QLatin1Char('\n')).toStdString());
        return document;
    }

    // What the comparison is by its definition.
    static std::vector<DocumentChange> compareByPath(const Repository::Documents::Document& before,
                                                     const Repository::Documents::Document& after)
    {
        std::map<std::string, Repository::Documents::Entry> old;
        std::map<std::string, Repository::Documents::Entry> present;
        before.visit([&old](const auto& entry) { old[entry.path] = entry; });
        after.visit([&present](const auto& entry) { present[entry.path] = entry; });
        std::vector<DocumentChange> changes;
        before.visit([&](const auto& entry) {
            if (present.count(entry.path) == 0)
                changes.push_back({entry.path, DocumentChange::Kind::Removed, entry.value, {}});
        });
        after.visit([&](const auto& entry) {
            if (old.count(entry.path) == 0)
                changes.push_back({entry.path, DocumentChange::Kind::Created, {}, entry.value});
            else if (!Repository::isSame(old[entry.path].value, entry.value))
                changes.push_back(
                    {entry.path, DocumentChange::Kind::Changed, old[entry.path].value, entry.value});
        });
        return changes;
    }

    static Texts told(const std::vector<DocumentChange>& changes)
    {
        Texts lines;
        for (const DocumentChange& change : changes)
            lines += QString::fromStdString(change.path + ' ' + std::to_string(int(change.kind)) + ' ' +
                                            FrameworkCore::Values::toText(change.before) + ' ' +
                                            FrameworkCore::Values::toText(change.after));
        return lines;
    }

    // Mine take every fourth text, theirs the ones between: of an element of an array, which is known by what
    // is left of it, most stays. False when there are too few.
    static bool mergeSides(EditedDocument& mine, const std::string& type)
    {
        std::vector<std::string> paths;
        mine.getDocument().visit([&paths](const auto& entry) {
            if (entry.value.type == EntryLines::Type::String || entry.value.type == EntryLines::Type::Integer)
                paths.push_back(entry.path);
        });
        if (paths.size() < 3)
            return false;
        EditedDocument theirs(type);
        theirs.load(mine.getBase());
        std::vector<std::string> edited;
        const auto value = EntryLines::integer(4711);
        for (std::size_t i = 0; i < paths.size(); ++i) {
            EditedDocument& side = i % 4 == 0 ? mine : theirs;
            const bool done =
                i % 2 == 0 && side.edit([&](Document& text) { return text.set(paths[i], value); }).ok();
            if (done && i % 4 == 0)
                edited.push_back(paths[i]);
        }
        const std::string found = theirs.getText();
        EditedDocument expected(type);
        expected.load(found);
        for (const std::string& path : edited)
            expected.edit([&](Document& text) { return text.set(path, value); });
        const QByteArray misfit = merge(mine, found);
        [&] {
            QCOMPARE(misfit, QByteArray());
            QCOMPARE(QByteArray::fromStdString(mine.getText()),
                     QByteArray::fromStdString(expected.getText()));
            QCOMPARE(conflictsOf(mine), Texts());
            QCOMPARE(QByteArray::fromStdString(mine.revert(edited)), QByteArray());
            QCOMPARE(QByteArray::fromStdString(mine.getText()), QByteArray::fromStdString(found));
        }();
        return true;
    }
};

VANTRY_TEST_MAIN(QCoreApplication, DocumentMergeTest)

#include "document_merge_test.moc"
#include "repository/documents/Formats.h"
