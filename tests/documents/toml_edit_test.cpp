#include "repository/documents/common/ComponentCodec.h"
#include "tests/documents/DocumentEdits.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <cmath>
#include <functional>

using namespace DocumentEdits;
using namespace Repository::Documents;

namespace {

// Compares each FILE.toml of a folder with the lines of its FILE.values: the keys and indexes of a place, a
// type, and a text, separated by U+001F.
const char* const pythonReader = R"(
import datetime, glob, math, sys, tomllib
def text(v):
    if isinstance(v, bool): return 'bool', 'true' if v else 'false'
    if isinstance(v, int): return 'integer', str(v)
    if isinstance(v, float): return 'double', v
    if isinstance(v, str): return 'text', v
    if isinstance(v, list): return 'list', '\x1e'.join(v)
    if isinstance(v, datetime.datetime): kind = 'datetime'
    else: kind = 'date' if isinstance(v, datetime.date) else 'time'
    if kind == 'date': return kind, v.isoformat()
    digits = ('%06d' % v.microsecond).rstrip('0')
    iso = v.strftime('%H:%M:%S') + ('.' + digits.ljust(3, '0') if digits else '')
    if kind == 'time': return kind, iso
    zone = v.isoformat()[-6:] if v.tzinfo else ''
    return kind, v.date().isoformat() + 'T' + iso + ('Z' if zone in ('+00:00', '-00:00') else zone)
def leaves(v):
    if isinstance(v, dict): return sum(map(leaves, v.values()))
    if isinstance(v, list) and not all(isinstance(i, str) for i in v): return sum(map(leaves, v))
    return 1
for name in glob.glob(sys.argv[1] + '/*.toml'):
    try:
        root = tomllib.load(open(name, 'rb'))
        lines = open(name[:-5] + '.values', encoding='utf-8', newline='').read().split('\x1d')[:-1]
        assert leaves(root) == len(lines), 'number of values'
        for line in lines:
            *place, kind, value = line.split('\x1f')
            found = root
            for step in place: found = found[int(step) if isinstance(found, list) else step]
            seen, shown = text(found)
            if kind == 'double': ok = shown == float(value) or math.isnan(shown) and value == 'nan'
            else: ok = shown == value
            assert ok and seen == kind, (place, kind, value, shown)
    except Exception as fault:
        print(name, repr(fault))
)";

} // namespace

Q_DECLARE_METATYPE(Edit)

class TomlEditTest : public QObject
{
    Q_OBJECT

private slots:
    void edits_data()
    {
        const auto row = TestSupport::columns<QByteArray, Edit, QByteArray>("before", "edit", "after");
        row("hexadecimal", "a = 0x0F # c\n", setTo("a", integer(31)), "a = 0x1F # c\n");
        row("underscores", "a = 1_000\n", setTo("a", integer(2000)), "a = 2000\n");
        row("whole double", "a = 1.5\n", setTo("a", number(2)), "a = 2.0\n");
        row("infinite", "a = 1.5\n", setTo("a", number(-INFINITY)), "a = -inf\n");
        row("literal", "a = 'x'\n", setTo("a", text("C:\\y")), "a = 'C:\\y'\n");
        row("literal no more", "a = 'x'\n", setTo("a", text("it's")), "a = \"it's\"\n");
        row("several lines", "a = 'x'\r\n", setTo("a", text("y\nz")), "a = '''\r\ny\r\nz'''\r\n");
        row("first line break", "a = \"\"\"x\"\"\"\n", setTo("a", text("\ny\"\"\"\"")),
            "a = \"\"\"\n\ny\"\"\\\"\\\"\"\"\"\n");
        row("no lines in a table", "a = { b = 'x' }\n", setTo("a.b", text("y\nz")),
            "a = { b = \"y\\nz\" }\n");
        row("date-time", "a = 1979-05-27 07:32:00.50+00:00\n",
            setTo("a", {Type::DateTime, std::string("2024-01-02T03:04:05Z")}),
            "a = 2024-01-02 03:04:05.00+00:00\n");
        row("digits of a second", "a = 07:30:00.1234560\n",
            setTo("a", {Type::Time, std::string("08:00:00.500")}), "a = 08:00:00.5000000\n");
        row("element of a list", "a = [ 'x', # one\n  \"y\" ] # c\n", setTo("a", list({"x", "z"})),
            "a = [ 'x', # one\n  \"z\" ] # c\n");
        row("element without a comma", "a = [\n  'x', # one\n  'y' # two\n]\n",
            setTo("a", list({"x", "y", "z"})), "a = [\n  'x', # one\n  'y', # two\n  \"z\"\n]\n");
        row("comment before the comma", "a = [\n  1, # one\n  2 # two\n  , 3\n]\n", drop("a.1"),
            "a = [\n  1, # one\n   # two\n  3\n]\n");
        const auto without = [](const char* path) {
            return [path](Document& document) { return document.removeExcerpt(path); };
        };
        const auto again = [](const char* from, const char* to) {
            return [from, to](Document& document) {
                const auto excerpt = document.excerpt(from);
                return excerpt && document.insertExcerpt(to, *excerpt) ? Outcome()
                                                                       : Outcome{"no place", 0, 0};
            };
        };
        row("text of a list", "a = [\n  'x',\n  # of y\n  'y', # y\n]\n", drop("a.1"),
            "a = [\n  'x',\n  # of y\n]\n");
        row("text of a list with its comments", "a = [\n  'x',\n  # of y\n  'y', # y\n]\n", without("a.1"),
            "a = [\n  'x',\n]\n");
        row("element with its comments", "a = [\n  1,\n  # of 2\n  2, # two\n]\n", without("a.1"),
            "a = [\n  1,\n]\n");
        row("text of a list, written again", "a = [\n  'x',\n  # of y\n  'y', # y\n]\n", again("a.1", "a.0"),
            "a = [\n  # of y\n  'y', # y\n  'x',\n  # of y\n  'y', # y\n]\n");
        row("element, written again", "a = [\n    # of 1\n    1 # one\n]\nb = [\n  2\n]\n",
            again("a.0", "b.1"), "a = [\n    # of 1\n    1 # one\n]\nb = [\n  2,\n  # of 1\n  1 # one\n]\n");
        row("after the last value", "a=1\n\n# of t\n[t]\nb = 1 # c\n\n[u]\n", add("t.k", integer(2)),
            "a=1\n\n# of t\n[t]\nb = 1 # c\nk = 2\n\n[u]\n");
        row("above the first table", "# the file\n\n# of t\n[t]\n", add("k", boolean(true)),
            "# the file\n\nk = true\n\n# of t\n[t]\n");
        row("into comments", "# the file\n", add("k", integer(1)), "# the file\nk = 1\n");
        row("no line end", "a = 1", add("k", integer(1)), "a = 1\nk = 1\n");
        row("indented", "[t]\n  a=1\n", add("t.k", text("x")), "[t]\n  a=1\n  k=\"x\"\n");
        row("dotted", "a.b = 1\nc = 2\n[d]\n", add("a.k", integer(1)), "a.b = 1\na.k = 1\nc = 2\n[d]\n");
        row("table of headers", "[a.b]\nx = 1\n", add("a.k", integer(1)), "[a]\nk = 1\n\n[a.b]\nx = 1\n");
        row("subtable", "[a]\nx = 1\n\n[b]\ny = 1\n", add("a.k.l", integer(1)),
            "[a]\nx = 1\n\n[a.k]\nl = 1\n\n[b]\ny = 1\n");
        row("inline", "a = {x = 1}\n", add("a.k.l", integer(1)), "a = {x = 1, k = {l = 1}}\n");
        row("as the last one of its kind", "[d]\na = {v=\"1\", k = 2}\n[d.b]\nk = 1\n[e]\n",
            add("d.c.v", text("2")), "[d]\na = {v=\"1\", k = 2}\nc = {v=\"2\"}\n[d.b]\nk = 1\n[e]\n");
        row("as a table of its kind", "[d]\na = { v = 1, k = 2 }\n[d.b]\nk = 1\n[e]\n",
            add("d.c.k", integer(2)), "[d]\na = { v = 1, k = 2 }\n[d.b]\nk = 1\n[d.c]\nk = 2\n[e]\n");
        row("as keys with dots", "[d]\na.v = true\nb = 1\n", add("d.c.v", boolean(false)),
            "[d]\na.v = true\nb = 1\nc.v = false\n");
        row("of no kind there", "[d]\na = { v = 1 }\n", add("d.c.k", integer(2)),
            "[d]\na = { v = 1 }\n\n[d.c]\nk = 2\n");
        row("too long for braces", "a = { v = '' }\n", add("b.v", text(std::string(100, 'x'))),
            "a = { v = '' }\n\n[b]\nv = \"" + QByteArray(100, 'x') + "\"\n");
        row("without a form in braces", "a = { v = 1 }\n", add("b.v", null()),
            "a = { v = 1 }\n\n[b]\n# @type null\nv = \"\"\n");
        row("element as the last one", "a = [{n=1}]\n", addElement("a.1", {{"n", integer(2)}}),
            "a = [{n=1}, {n=2}]\n");
        row("empty inline", "a = {}\n", add("a.k", integer(1)), "a = { k = 1 }\n");
        row("element of tables", "[[t]]\na = 1\n[[t.u]]\n\n[v]\n", add("t.1.k", integer(1)),
            "[[t]]\na = 1\n[[t.u]]\n[[t]]\nk = 1\n\n[v]\n");
        row("into an element", "[[t]]\na = 1\n\n[[t]]\na = 2\n", add("t.0.k.l", integer(1)),
            "[[t]]\na = 1\n\n[t.k]\nl = 1\n\n[[t]]\na = 2\n");
        row("list with number signs", "a = [\"#\", '#',]\n", setTo("a", integer(1)), "a = 1\n");
        row("two type tags", "# c\n# @type date\n# @type date\na = 1\n", setTo("a", text("")),
            "# c\na = \"\"\n");
        row("type tag of an array", "# @type date\na = [1]\nb = \"2024-01-02\"\n", drop("a"),
            "# @type date\n\nb = \"2024-01-02\"\n");
        row(
            "array below a type tag", "# @type date\na = [1, 'x']\n",
            [](Document& document) {
                const Outcome outcome = document.remove("a.0");
                return outcome.ok() ? document.set("a", text("2024-01-02")) : outcome;
            },
            "a = \"2024-01-02\"\n");
        row(
            "in place of an array", "# @type date\na = [1]\n",
            [](Document& document) {
                std::size_t refused = 0;
                return document.replaceAll("a", {{{}, text("2024-01-02"), {}}}, refused);
            },
            "a = \"2024-01-02\"\n");
        row("null", "", add("k", null()), "# @type null\nk = \"\"\n");
        row("below a value", "a = 1 # c\n", add("a.k", integer(2)), "a.\"#value\" = 1 # c\na.k = 2\n");
        row("element between lines", "a = [\n  1, # one\n  # of two\n  2,\n]\n",
            addElement("a.1", {{{}, integer(7)}}), "a = [\n  1, # one\n  7,\n  # of two\n  2,\n]\n");
        row("table between", "[[t]]\na = 1\n\n# of two\n[[t]]\na = 2\n",
            addElement("t.1", {{"a", integer(7)}}),
            "[[t]]\na = 1\n\n[[t]]\na = 7\n\n# of two\n[[t]]\na = 2\n");
        row("comments stay", "# of a\na = 1 # c\n# of b\nb = 2\n", drop("a"), "# of a\n# of b\nb = 2\n");
        row("the last key", "[a]\nb = 1\n", drop("a.b"), "[a]\n");
        row("everywhere", "[a.b]\nx = 1\n[c]\ny = 1\n[a.d]\nz = 1\n", drop("a"), "[c]\ny = 1\n");
        row("from a table", "a = { b = 1, c.d = 2, c.e = 3 }\n", drop("a.c"), "a = { b = 1 }\n");
        row("last element", "a = [ 1, 'x', 2, ]\n", drop("a.2"), "a = [ 1, 'x', ]\n");
        row("element with a table", "[[t]]\n[t.u]\n# in u\n\n# of two\n[[t]]\n", drop("t.0"),
            "# of two\n[[t]]\n");
        row("the first line", "a = 1\n\n\n[b]\n", drop("a"), "[b]\n");
        row("the first of tables", "[[t]]\na = 1\n\n[[t]]\na = 2\n\n[u]\n", move("t.0", "t.1"),
            "[[t]]\na = 2\n\n[[t]]\na = 1\n\n[u]\n");
        const QByteArray ends = "# all\n\n[[t]]\na = 1\n# b = 2\n\n# c = 3\n\n# of two\n[[t]]\n# d = 4\n"
                                "[u]\nk = 1\n# of u\n\n# of v\n[v]\n\n#[w]\n#k = 1\n\n# all, too";
        row("end of an element", ends, drop("t.1"), QByteArray(ends).replace("[[t]]\n# d = 4\n", ""));
        row("end of a table", ends, drop("u"), QByteArray(ends).replace("[u]\nk = 1\n# of u\n", ""));
        row("end of the last table", ends, drop("v"), QByteArray(ends).replace("[v]\n", ""));
        row("ends change places", ends, move("t.0", "t.1"),
            "# all\n\n# of two\n[[t]]\n# d = 4\n\n[[t]]\na = 1\n# b = 2\n\n# c = 3\n\n[u]\nk = 1\n# of u\n\n"
            "# of v\n[v]\n\n#[w]\n#k = 1\n\n# all, too");
        row("add below an end", ends, add("u.s.k", integer(2)),
            QByteArray(ends).replace("# of u\n", "# of u\n\n[u.s]\nk = 2\n"));
        row("copy with ends", ends, copyTo("u", "t.1"),
            QByteArray(ends).replace("# of two\n", "[[t]]\nk = 1\n# of u\n\n# of two\n"));
        row("every header", "a.x = 1\n[a.b]\n[c]\n[[ a . 'd' ]]\n[a.d.e]\n", renameTo("a", "k"),
            "k.x = 1\n[k.b]\n[c]\n[[ k . 'd' ]]\n[k.d.e]\n");
        row("quoted", "'a' = 1\n", renameTo("a", "x%2Ey"), "'x.y' = 1\n");
        row("member", "a = { b.c = 1, b.d = 2 }\n", renameTo("a.b", "k"), "a = { k.c = 1, k.d = 2 }\n");
        row("move table", "[[t]]\na = 1\n\n# of two\n[[t]]\na = 2\n[t.u]\n", move("t.1", "t.0"),
            "# of two\n[[t]]\na = 2\n[t.u]\n\n[[t]]\na = 1\n");
        row("move from the beginning", "# of one\n[[t]]\na = 1\n# end\n\n[[t]]\na = 2\n", move("t.0", "t.1"),
            "[[t]]\na = 2\n\n# of one\n[[t]]\na = 1\n# end\n");
        row("move without blank lines", "[[t]]\na = 1\n[[t]]\na = 2\n[[t]]\n", move("t.2", "t.1"),
            "[[t]]\na = 1\n[[t]]\n[[t]]\na = 2\n");
        row("the only one in braces", "a = { b.c = 1 } # c\nd = [ 1 ]\n", drop("a.b"),
            "a = {} # c\nd = [ 1 ]\n");
        row("move lines", "a = [\n  # of one\n  1, # one\n\n  # of two\n  2\n]\n", move("a.1", "a.0"),
            "a = [\n  # of two\n  2,\n\n  # of one\n  1 # one\n]\n");
        row("move in a line", "a = [0x01, 2, # c\n 3]\n", move("a.0", "a.2"), "a = [2, 3, # c\n 0x01]\n");
        row("last dotted", "[t]\nsize.a = 1\nx = 2\n", add("t.size.d", integer(4)),
            "[t]\nsize.a = 1\nsize.d = 4\nx = 2\n");
        row("indented tables", "[a]\n\n  [a.b]\n    x = 1\n", add("a.c.k", integer(1)),
            "[a]\n\n  [a.b]\n    x = 1\n\n  [a.c]\n    k = 1\n");
        row("below a tag", "# @type date\n", add("k", text("2024-01-02")),
            "# @type date\n\nk = \"2024-01-02\"\n");
        const QByteArray tables = "[[t]]\na = 0x0F # c\n[t.u]\nb = 1\n\n# of two\n[[t]]\na = 2\n";
        row("copy an element", tables, copyTo("t.0", "t.2"),
            tables + "\n[[t]]\na = 0x0F # c\n[t.u]\nb = 1\n");
        row("to a table", tables, copyTo("t.1", "x"), tables + "\n# of two\n[x]\na = 2\n");
        row("from a table", "[a]\nx = 0x0F\n\n[[t.u]]\n", copyTo("a", "t.u.0"),
            "[a]\nx = 0x0F\n\n[[t.u]]\nx = 0x0F\n\n[[t.u]]\n");
        row("keys with dots out of braces", "# head\n\na = { b.c = 0x1, d = 2, b.'e' = 'x' } # c\n",
            copyTo("a.b", "k"),
            "# head\n\na = { b.c = 0x1, d = 2, b.'e' = 'x' } # c\nk.c = 0x1\nk.'e' = 'x'\n");
        row("a key with dots into braces", "a = { b.c = 0x1 } # c\n", copyTo("a.b", "a.k"),
            "a = { b.c = 0x1, k.c = 0x1 } # c\n");
        const QByteArray mixed =
            "[a]\nx = 1\n\n# of l\nl.s = [\n  'p', # of p\n]\nl.t.u = 0x1 # u\n\n[a.l.m]\nk = 1\n# end\n";
        row("keys with dots and headers", mixed, copyTo("a.l", "a.n"),
            mixed + "\n# of l\n[a.n]\ns = [\n  'p', # of p\n]\nt.u = 0x1 # u\n\n[a.n.m]\nk = 1\n# end\n");
        row("headers and keys with dots apart", "[t]\na.b.c = 1\n[u]\n[t.a.d]\n[[e]]\n", copyTo("t.a", "e.0"),
            "[t]\na.b.c = 1\n[u]\n[t.a.d]\n[[e]]\nb.c = 1\n\n[e.d]\n[[e]]\n");
        row("copy a value", "a = [0x0F, 1.5]\nb = [1, 2]\n", copyTo("a.0", "b.1"),
            "a = [0x0F, 1.5]\nb = [1, 0x0F, 2]\n");
    }

    void edits()
    {
        QFETCH(QByteArray, before);
        QFETCH(Edit, edit);
        const auto document = makeDocument("toml");
        QVERIFY(document->parse(before.toStdString()).ok());
        const Outcome outcome = edit(*document);
        QVERIFY2(outcome.ok(), outcome.error.c_str());
        QTEST(QByteArray::fromStdString(document->getBytes()), "after");
        QCOMPARE(toLines("toml", document->getBytes()), toLines(*document));
    }

    void refuses_data()
    {
        const auto row = TestSupport::columns<QByteArray, Edit, QByteArray>("before", "edit", "error");
        row("no type", "a = 1\n", setTo("a", null()), "TOML has no form for");
        row("in an array", "a = [1, 2]\n", add("a.2", null()), "no comment can tag its type");
        row("comments in a list", "a = [ 'x', # c\n]\n", setTo("a", integer(1)), "list with comments");
        row("all texts", "a = [1, 'x']\n", setTo("a.0", text("y")), "one list");
        row("twice", "a = 1\n", add("a[2]", integer(1)), "which TOML forbids");
        row("there", "a = 1\nb = 2\n", renameTo("a", "b"), "already an entry");
        row("no element", "l = [1]\na = { b.c = 1 }\n", copyTo("a.b", "l.0"), "not as it is written");
        row("no table", "[[t]]\n", add("t.1", integer(1)), "has to be a table");
        row("no table, but tables", "[[t]]\n", addElement("t.0", {{"0.k", integer(1)}}), "has to be a table");
        row("no table, but an array", "[[t]]\n", addAll("t.1", {{"0", integer(1)}, {"1", integer(2)}}),
            "has to be a table");
        row("not UTF-8", "a = 1\n", setTo("a", text("\xFF")), "TOML has no form for");
    }

    void refuses()
    {
        QFETCH(QByteArray, before);
        QFETCH(Edit, edit);
        QFETCH(QByteArray, error);
        const auto document = makeDocument("toml");
        QVERIFY(document->parse(before.toStdString()).ok());
        const Outcome outcome = edit(*document);
        QVERIFY2(outcome.error.find(error.toStdString()) != std::string::npos, outcome.error.c_str());
        QCOMPARE(QByteArray::fromStdString(document->getBytes()), before);
    }

    // tomllib sees the values that the tree shows after edits of every kind, of real files and of one that
    // always is there.
    void othersSeeTheSame()
    {
        std::vector<QByteArray> texts{"a.b = 1\n[a.c]\nd = [1, {e = 07:32:00}]\n[[t]]\nx = 'y'\n[t.u]\n"};
        QDirIterator files(TestSupport::corporaPath(QStringLiteral("toml")), QDir::Files);
        const int most = std::max(40, qEnvironmentVariableIntValue("VANTRY_WALK_FILES"));
        while (files.hasNext() && int(texts.size()) < most) {
            QFile file(files.next());
            QVERIFY(file.open(QIODevice::ReadOnly));
            const QByteArray bytes = file.readAll();
            if (!bytes.startsWith("\xEF\xBB\xBF") && makeDocument("toml")->parse(bytes.toStdString()).ok())
                texts.push_back(bytes);
        }
        const QTemporaryDir folder;
        int written = 0;
        for (const QByteArray& bytes : texts) {
            for (int kind = 0; kind < 12; ++kind) {
                const auto document = makeDocument("toml");
                QVERIFY(document->parse(bytes.toStdString()).ok());
                QRandomGenerator random(quint32(bytes.size() * 31 + kind));
                for (int i = 0; i < 3; ++i)
                    editAnywhere(*document, kind, random);
                write(*document, folder.filePath(QString::number(++written)));
            }
        }
        QProcess python;
        python.start(QStringLiteral("python3"),
                     {QStringLiteral("-c"), QString::fromLatin1(pythonReader), folder.path()});
        QVERIFY(python.waitForFinished(-1));
        QCOMPARE(QString::fromUtf8(python.readAllStandardError()), QString());
        QCOMPARE(QString::fromUtf8(python.readAllStandardOutput()), QString());
    }

private:
    static void editAnywhere(Document& document, int kind, QRandomGenerator& random)
    {
        const std::vector<Entry> entries = entriesOf(document);
        if (entries.empty())
            return;
        const Entry& entry = entries[random.bounded(quint32(entries.size()))];
        const std::string above(splitLast(entry.path).parent);
        const auto excerpt = document.excerpt(entry.path);
        switch (kind) {
        case 0:
            return void(document.set(entry.path, text("it's\n\"new\"\\")));
        case 1:
            return void(document.set(entry.path, list({"a", "b\nc"})));
        case 2:
            return void(document.set(entry.path, number(1e22)));
        case 3:
            return void(document.insert(joinPath(entry.path, "added"), text("x")));
        case 4:
            return void(document.insert(joinPath(above, "a b.c"), integer(5)));
        case 5:
            return void(document.insert(joinPath(above, "table"), group()));
        case 6:
            return void(document.remove(entry.path));
        case 7:
            return void(document.rename(entry.path, "re%2Enamed"));
        case 8:
            return void(excerpt && document.insertExcerpt(joinPath(above, "copied"), *excerpt));
        case 9:
            return void(excerpt && document.insertExcerpt("copied", *excerpt));
        case 10:
            return void(
                document.insertElement(joinPath(entry.path, "0"), {{"k", integer(1)}, {"l.m", text("")}}));
        default:
            return void(document.moveElement(joinPath(entry.path, "0"), joinPath(entry.path, "1")));
        }
    }

    // A value of a table that has entries as well is its member.
    static void write(const Document& document, const QString& name)
    {
        QFile toml(name + QStringLiteral(".toml"));
        QFile values(name + QStringLiteral(".values"));
        QVERIFY(toml.open(QIODevice::WriteOnly) && values.open(QIODevice::WriteOnly));
        toml.write(QByteArray::fromStdString(document.getBytes()));
        const std::vector<Entry> entries = entriesOf(document);
        for (std::size_t i = 0; i < entries.size(); ++i) {
            const Value& value = entries[i].value;
            if (value.type == Type::Group)
                continue;
            std::string line;
            const auto components = splitPath(entries[i].path).value_or(std::vector<std::string_view>());
            for (const std::string_view component : components)
                line += *decodeKey(component) + '\x1f';
            if (i + 1 < entries.size() && startsWith(entries[i + 1].path, entries[i].path + '.'))
                line += "#value\x1f";
            std::string shown = toText(value);
            if (value.type == Type::StringList) {
                shown.clear();
                for (const std::string& item : std::get<std::vector<std::string>>(value.data))
                    shown +=
                        (&item == std::get<std::vector<std::string>>(value.data).data() ? "" : "\x1e") + item;
            }
            line += std::string(rowOf(value.type).name) + '\x1f' + shown + '\x1d';
            values.write(QByteArray::fromStdString(line));
        }
    }
};

VANTRY_TEST_MAIN(QCoreApplication, TomlEditTest)

#include "toml_edit_test.moc"
