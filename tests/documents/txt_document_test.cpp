#include "repository/documents/common/Values.h"
#include "tests/documents/LineFileTables.h"
#include "tests/support/TestRun.h"

#include <ctime>
#include <limits>

using namespace EntryLines;
using Repository::Documents::isSame;
using Repository::Documents::Outcome;
using Repository::Documents::Span;

namespace {

const LineFileTables tables("txt");

QByteArray utf16(const char16_t* text)
{
    const QString units = QString::fromUtf16(text);
    return "\xFF\xFE" + QByteArray(reinterpret_cast<const char*>(units.utf16()), units.size() * 2);
}

Value bytes(std::string raw)
{
    return {Type::ByteArray, std::move(raw)};
}

} // namespace

class TxtDocumentTest : public QObject
{
    Q_OBJECT

private slots:
    void reads_data()
    {
        LineFileTables::addReadingColumns();
        const auto row = &LineFileTables::addReading;
        row("nothing", "", "");
        row("paths", "a.b.c = 1\na.d=2\ne = 3", "a = {}|a.b = {}|a.b.c = 1|a.d = 2|e = 3");
        row("entry and group of one path", "a.b=1\na=2\na.b.c=3\n", "a = 2|a.b = 1|a.b.c = 3");
        row("duplicates", "a.b=1\na.c=2\na.b=3\na=4\na=5\na.b=6\n",
            "a = 4|a.b = 1|a.c = 2|a.b[2] = 3|a[2] = 5|a.b[3] = 6");
        row("types", "a=true\nb=-5\nc=05\nd=18446744073709551615\ne=1.5\nf=\ng=\"5\"\nh=' x '\ni=\"\n",
            "a = true|b = -5|c = '05'|d = 18446744073709551615u|e = 1.5d|f = ''|g = '5'|h = ' x '|i = '\"'");
        row("encoded as it stands", "a%2Eb.c=1\nlexer.*.m3=2\n.level=3\nk[2]=4\na% = 5\n@x=6\n",
            "a%2Eb = {}|a%2Eb.c = 1|lexer = {}|lexer.%2A = {}|lexer.%2A.m3 = 2|%00 = {}|%00.level = 3|"
            "k[2%5D = 4|a%25 = 5|%40x = 6");
        row("escaped keys", "a\\=b = 1\na\\:b.c\\ d=2\nHKEY\\Soft\\\\x=3\n\\!a = 4\n",
            "a=b = 1|a:b = {}|a:b.c d = 2|HKEY\\Soft\\x = 3|!a = 4");
        row("no comment behind a value", "a = b # c\nd = e ; f\n", "a = 'b # c'|d = 'e ; f'");
        row("comments", "# a=1\n! b=2\n  #c=3\n;d=4\n", "");
        row("colons", "a: 1\nb : x = y\nc:3\nhttp://h=4\nOptions:\nmore words: 5\nd:=6\n",
            "a = 1|b = 'x = y'");
        row("environment", "export A=1\n export  B = \"x y\"\nexport = 3\nexportC=4\n",
            "A = 1|B = 'x y'|export = 3|exportC = 4");
        row("words", "Max Clients = 20\nDesktop Action Gallery.Name = x\n",
            "Max Clients = 20|Desktop Action Gallery = {}|Desktop Action Gallery.Name = 'x'");
        row("prose",
            "The value of x = 5\nCall f(x)=2 or, if a=b, stop\n--color=auto\n- a=b\n=====\na == b\nx => y\n"
            "x <= 5\nx<=5\ni+=1\nmake A=b\nsee. x = 5\ntable  column = 5\n<a href=\"x\">\n\"q\"=5\n[s]\nx? = "
            "5\n"
            "a..b = 1\n... = 2\n = 3\n#define A = 5\n",
            "");
        row("lines that go on", "a = x \\\n  y\\\n\tz\nb=x\\\n  y\nc=x\\\ny\nd = 1 \\\n# 2\n",
            "a = 'x y z'|b = 'x y'|c = 'xy'|d = '1 # 2'");
        row("backslashes that end a value", "a=C:\\d\\\nb=1\nc=C:\\\n# d\ne=x\\\\\nf\ng=\\\n\nh=\\",
            "a = 'C:\\d\\'|b = 1|c = 'C:\\'|e = 'x\\\\'|g = '\\'|h = '\\'");
        row("marks",
            "# @type date\na = 2024-01-02\n# @type text\nb=5\n#@type list\n  c = x;y\n# @type double\nd = "
            "soon\n"
            "# @type text\n\ne=5\n# @type null\nf =\n# @type date\n# @type text\ng = \" \\n\\x07\\\"\"\n# "
            "@type x\nh=1\n",
            "a = '2024-01-02'|b = '5'|c = ['x','y']|d = 'soon'|e = 5|f = null|g = ' \\n\x07\"'|h = 1");
        row("line ends", "a=1\r\nb=2\rc=3\n\rd=4", "a = 1|b = 2|c = 3|d = 4");
        row("byte order mark",
            "\xEF\xBB\xBF"
            "a=1",
            "a = 1");
        row("utf-16", utf16(u"a.\u00FC = \u20AC\r\n"), "a = {}|a.\u00FC = '\u20AC'");
        row("latin-1", "k\xFC=1\nl=\xFC\n", "k%FC = 1|l = '\xC3\xBC'");
    }

    void reads() { tables.checkReading(); }

    void refusesToRead_data()
    {
        LineFileTables::addRefusalColumns();
        QTest::newRow("binary") << QByteArray("a=1\r\n\xC3\xBC\0", 8)
                                << QByteArray("2:2 there is a NUL character: it is a binary file, or UTF-16 "
                                              "without its mark");
        QTest::newRow("too deep") << "x=1\n  " + QByteArray("a.").repeated(1024) + "a=1\n"
                                  << QByteArray("2:3 the path has more than 1024 components");
        QTest::newRow("half a unit") << utf16(u"a=1\n").append('b')
                                     << QByteArray("2:1 the UTF-16 text ends in the middle of a character");
    }

    void refusesToRead() { tables.checkRefusal(); }

    void sets_data()
    {
        LineFileTables::addEditColumns();
        const auto row = &LineFileTables::addEdit;
        row("number", "a : 1\r\nb\t=\t2  \r\n", "b", integer(-7), "a : 1\r\nb\t=\t-7  \r\n");
        row("no line end", "x=1", "x", integer(2), "x=2");
        row("empty places", "x =\ny=\n", "x", text("v"), "x = v\ny=\n");
        row("made empty", "x: v\n", "x", text(""), "x: \n");
        row("quotes stay", "x = \"v\"\n", "x", text(" 5 "), "x = \" 5 \"\n");
        row("quotes that others use", "x = v\ny = 'z'\n", "x", text("5"), "x = '5'\ny = 'z'\n");
        row("value of an operator", "x=v\n", "x", text("=v"), "x= =v\n");
        row("lines that go on", "k = a \\\n  b\nl=1\n", "k", text("c"), "k = c\nl=1\n");
        row("bytes", "k=\xFC\n", "k", bytes("\xE4"),
            "a txt file would read these bytes back as a text, or cut them");
        row("utf-16", utf16(u"a = 1\n"), "a", text("\U0001F600"), utf16(u"a = \U0001F600\n"));
        row("mark stays", "# @type date\na=2024-01-02\n", "a", {Type::Date, std::string("2025-01-02")},
            "# @type date\na=2025-01-02\n");
        row("line breaks below a mark", "# @type text\na=5\n", "a", text(" a\r\n\tb\\\""),
            "# @type text\na=\" a\\r\\n\\tb\\\\\\\"\"\n");
        const Value day{Type::Date, std::string("2024-01-02")};
        row("a tag that a bool does without", "# c\n\n# @type date\na: 2024-01-01\n", "a", boolean(true),
            "# c\n\na: true\n");
        row("a tag that names another type", "# @type text\na=5\n", "a", day, "# @type date\na=2024-01-02\n");
        row("a tag that keeps lines apart", "a = C:\\\n# @type date\n  k = 2024-01-01\n", "k", text("soon"),
            "a = C:\\\n# @type text\n  k = soon\n");
        row("text like a number", "k=a\n", "k", text("5"),
            "a txt file would read \"5\" back as a whole number, not as a text");
        row("blanks", "k=a\n", "k", text(" x "), "a txt file would read \" x \" back as \"x\"");
        row("line breaks", "k=a\n", "k", text("c\nd"),
            "a value of a txt file ends with its line; the text has line breaks");
        row("nul", "k=a\n", "k", text(std::string(1, '\0')),
            "the text holds a NUL character, which no text file has");
        row("double", "k=a\n", "k", number(1.5), "k=1.5\n");
        row("half a character", "k=a\n", "k", text("\xED\xA0\x80"),
            "the text holds half a character, which UTF-8 cannot hold");
        row("no bytes in utf-16", utf16(u"a = \xD83D\n"), "a", bytes("\xFF"),
            "a txt file would read these bytes back as a text, or cut them");
        row("folder before an entry", "k=a\nl=1\n", "k", text("C:\\d\\"), "k=C:\\d\\\nl=1\n");
        row("folder before prose", "k=a\nprose\n", "k", text("C:\\d\\"),
            "the line below it would be read as part of the value");
        row("group", "a.b=1\n", "a", integer(1), "it is a group and has no value");
        row("unknown", "a.b=1\n", "a.c", integer(1), "no such entry");
    }

    void sets() { tables.checkSetting(); }

    void inserts_data()
    {
        LineFileTables::addEditColumns();
        const auto row = &LineFileTables::addEdit;
        row("into nothing", "", "a.b", integer(1), "a.b = 1\n");
        row("behind prose without line end", "Prose.", "k", integer(1), "Prose.\nk = 1\n");
        row("behind its siblings", "  a.x : 1\n# of b\n\tb = 2\n", "a.k", text("v"),
            "  a.x : 1\n  a.k : v\n# of b\n\tb = 2\n");
        row("behind what is below its siblings", "a.b.c=1\nd=1\n", "a.e", integer(2),
            "a.b.c=1\na.e=2\nd=1\n");
        row("behind its own group", "a=1\nb=2\n", "a.c.d", integer(3), "a=1\na.c.d=3\nb=2\n");
        row("new group", "a.b=1\n\n# end\n", "c.d", integer(2), "a.b=1\nc.d=2\n\n# end\n");
        row("lined up", "long.key   = 1\nlong.x     = 2\n", "long.yz", integer(3),
            "long.key   = 1\nlong.x     = 2\nlong.yz    = 3\n");
        row("windows line ends", "a=1\r\nb=2", "c", integer(3), "a=1\r\nb=2\r\nc=3\r\n");
        row("second of its name", "k=1\nj=2\n", "k[2]", integer(3), "k=1\nk=3\nj=2\n");
        row("third of its name", "k=1\n", "k[3]", integer(3), "there is no \"k[2]\" before it");
        row("as its siblings spell the group", "lexer.*.a=x\n", "lexer.%2A.b", text("y"),
            "lexer.*.a=x\nlexer.*.b=y\n");
        row("words", "k = 1\n", "Desktop Entry.Name", text("v"), "k = 1\nDesktop Entry.Name = v\n");
        row("words that need escapes", "", "a b c d.e  f", integer(1), "a\\ b\\ c\\ d.e\\ \\ f = 1\n");
        row("marks that need escapes", "", "!x=\\y:?.export z", integer(1),
            "\\!x\\=\\\\y\\:\\?.export\\ z = 1\n");
        row("word that is no part of a path", "", "export z", integer(1), "export\\ z = 1\n");
        row("path in another form", "", "a.#x", integer(1), "a txt file cannot hold the path \"a.#x\"");
        row("below a second entry", "a=1\na=2\n", "a[2].b", integer(1),
            "a txt file cannot hold the path \"a[2].b\"");
        row("empty text", "a = 1\n", "k", text(""), "a = 1\nk =\n");
        row("text like a number", "  a = 1\n", "k", text("5"), "  a = 1\n  # @type text\n  k = 5\n");
        row("text like a number among quotes", "a='x'\n", "k", text("5"), "a='x'\nk='5'\n");
        row("null", "a = 1\n", "k", null(), "a = 1\n# @type null\nk =\n");
        row("bytes", "", "k", bytes(std::string("\0\xFF", 2)), "# @type bytes\nk = \\x00\\xff\n");
        row("below a mark without entry", "# @type date", "k", integer(1),
            "# @type date\n# @type integer\nk = 1\n");
        row("group", "a=1\n", "b", group(), "a txt file has no place for a group without entries");
        row("there already", "a=1\n", "a", integer(1), "there is such an entry already");
        row("no path", "a=1\n", "a..b", integer(1), "\"a..b\" is not a path");
        row("mark of an encoding", "", "\xEF\xBB\xBFk", integer(1),
            "the file would begin like a file of another encoding");
        row("folder", "", "k", text("C:\\"), "k = C:\\\n");
        row("what would go on below", "", "k", text("x \\"), "# @type text\nk = \"x \\\\\"\n");
        row("what would go on below, indented", " a=1\n", "k", text("C:\\"),
            " a=1\n # @type text\n k=\"C:\\\\\"\n");
        row("behind a backslash", "a = x \\", "b", integer(1),
            "the entry would be read as part of the one above it");
    }

    // What is inserted behind a whole line goes without a trace.
    void inserts()
    {
        tables.checkInserting();
        QFETCH(QByteArray, file);
        QFETCH(QByteArray, path);
        QFETCH(Value, value);
        const auto document = tables.load(file);
        if (file.endsWith('\n') && document->insert(path.toStdString(), value).ok()) {
            QVERIFY(document->remove(path.toStdString()).ok());
            QCOMPARE(QByteArray::fromStdString(document->getBytes()), file);
        }
    }

    void removes_data()
    {
        LineFileTables::addRemovalColumns();
        const auto row = &LineFileTables::addRemoval;
        row("entry with its lines", "# c\na=1 \\\n  2\nb=2\n", "a", false, "# c\nb=2\n");
        row("entry with its mark", "# c\n# @type text\na=1\nb=2\n", "a", false, "# c\nb=2\n");
        row("group", "a.b=1\nc=2\na.d.e=3\na=4\nprose\n", "a", false, "c=2\nprose\n");
        row("last of a group", "a.b.c=1\nd=2\n", "a.b.c", false, "d=2\n");
        row("first of its name", "a=1\nb=2\na=3\na=4\n", "a", true, "b=2\na=3\na=4\n");
        row("first of its name with a group below", "a=1\na.b=2\na=3\n", "a", true, "a=3\n");
        row("last of its name", "a=1\na=2", "a[2]", false, "a=1\n");
        row("the root", "a=1\n", "", false, "the root of a file is not removed");
        row("unknown", "a=1\n", "b", false, "no such entry");
        row("what keeps lines apart", "a=C:\\\nb=1\nprose\n", "b", false,
            "without it the line below would be read as part of the value above");
        row("what keeps line ends apart", "a=1\rb=2\n\nc=3\n", "b", false, "a=1\r\r\nc=3\n");
        row("what keeps a mark from the front", "k=1\nl=2\n\xFF\xFE=2\n", "k", false, "l=2\n\xFF\xFE=2\n");
        row("what alone keeps a mark from the front", "k=1\n\xFF\xFE=2\n", "k", false,
            "without it the file would begin like a file of another encoding");
    }

    void removes() { tables.checkRemoving(); }

    // Of every type, into files of every encoding.
    void holdsEveryValue()
    {
        constexpr auto most = std::numeric_limits<std::int64_t>::max();
        const std::vector<Value> values{null(),
                                        boolean(false),
                                        integer(most),
                                        integer(std::numeric_limits<std::int64_t>::min()),
                                        {Type::Unsigned, std::uint64_t(0)},
                                        {Type::Unsigned, std::numeric_limits<std::uint64_t>::max()},
                                        number(0.1),
                                        number(-0.0),
                                        number(5e-324),
                                        number(std::numeric_limits<double>::infinity()),
                                        number(std::numeric_limits<double>::quiet_NaN()),
                                        text("\"q\""),
                                        text("'"),
                                        text("true"),
                                        text("a\nb\r\n"),
                                        text(" \t\\"),
                                        text(std::string("\0\x1F\x7F", 3)),
                                        text("\xED\xA0\x80"),
                                        text("# @type date"),
                                        text("\u00FC\U0001F600\uFEFF"),
                                        list({}),
                                        list({""}),
                                        list({"a;b\\", "\n", ""}),
                                        bytes(""),
                                        bytes("plain"),
                                        bytes(std::string("\0\xFF\"\n", 4)),
                                        {Type::Date, std::string("2024-12-31")},
                                        {Type::Date, std::string()},
                                        {Type::Time, std::string("23:59:59.999")},
                                        {Type::DateTime, std::string("2024-12-31T23:59:59.999+01:00")}};
        for (const QByteArray& file : {QByteArray(), QByteArray("\xEF\xBB\xBF"), utf16(u"a='x'\r\n")}) {
            const auto document = tables.load(file);
            for (std::size_t i = 0; i < values.size(); ++i) {
                const Outcome outcome = document->insert("v.k" + std::to_string(i), values[i]);
                QVERIFY2(outcome.ok(), outcome.error.c_str());
            }
            const auto again = tables.load(QByteArray::fromStdString(document->getBytes()));
            QVERIFY(again);
            std::size_t seen = 0;
            again->visit([&](const Entry& entry) {
                const std::string path = "v.k" + std::to_string(seen);
                if (entry.path == path && isSame(entry.value, values[seen]))
                    ++seen;
            });
            QCOMPARE(seen, values.size());
        }
    }

    void locatesInItsEncoding()
    {
        const QByteArray file = utf16(u"\U0001F600\nk.x = \u20AC\n");
        const std::optional<Span> span = tables.load(file)->locate("k.x");
        QVERIFY(span);
        QCOMPARE(file.mid(int(span->offset), int(span->length)), utf16(u"\u20AC").mid(2));
    }

    void setsBackToTheOriginalBytes()
    {
        const QByteArray file = "a  = \"x\"\nb=one \\\n  two\nd=\n";
        const auto document = tables.load(file);
        for (const char* path : {"a", "b", "d"})
            QVERIFY(document->set(path, text("other")).ok());
        QVERIFY(document->set("a", text("x")).ok() && document->set("b", text("one two")).ok() &&
                document->set("d", text("")).ok());
        QCOMPARE(QByteArray::fromStdString(document->getBytes()), file);
    }

    void editsAsFastInALargeFile()
    {
        tables.checkCostOfEdits([](int i) {
            return QByteArray("s" + QByteArray::number(i / 100) + ".k" + QByteArray::number(i) + " = v\n");
        });
    }

    // A line of ten million bytes, in each place where one may be, and the deepest path.
    void readsLongLines()
    {
        const int length = 10000000;
        for (const QByteArray& file :
             {"k = " + QByteArray(length, 'x') + "\n", QByteArray(length, 'x') + " = 1\n",
              QByteArray("\\\\").repeated(length / 2) + "=1", QByteArray("k = 1 \\\n").repeated(length / 8),
              QByteArray(length, '%') + "=1", QByteArray("# @type text\n").repeated(length / 13),
              QByteArray("a.").repeated(1023) + "a=1\n"}) {
            const std::clock_t before = std::clock();
            const auto document = tables.load(file);
            QVERIFY(document);
            QCOMPARE(QByteArray::fromStdString(document->getBytes()).size(), file.size());
            QVERIFY((std::clock() - before) / CLOCKS_PER_SEC < 20);
        }
    }
};

VANTRY_TEST_MAIN(QCoreApplication, TxtDocumentTest)

#include "txt_document_test.moc"
