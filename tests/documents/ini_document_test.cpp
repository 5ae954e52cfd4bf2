#include "tests/documents/LineFileTables.h"
#include "tests/support/TestRun.h"

using namespace EntryLines;
using Repository::Documents::makeDocument;
using Repository::Documents::Outcome;

namespace {

const LineFileTables tables("ini");

} // namespace

class IniDocumentTest : public QObject
{
    Q_OBJECT

private slots:
    void reads_data()
    {
        LineFileTables::addReadingColumns();
        const auto row = &LineFileTables::addReading;
        row("nothing", "", "");
        row("comments only", "; a\n# b\n  ; c\n\n", "");
        row("root and sections", "r=1\n[a]\nx=2\n[b.c]\ny=3\n",
            "r = 1|a = {}|a.x = 2|b = {}|b.c = {}|b.c.y = 3");
        row("section inside one that comes later", "[a.b]\n[a]\nx=1\n", "a = {}|a.b = {}|a.x = 1");
        row("key and section of one path", "[a]\nb=1\n[a.b]\nc=2\n", "a = {}|a.b = 1|a.b.c = 2");
        row("types", "a=true\nb=false\nc=True\nd=-5\ne=05\nf=18446744073709551615\ng=1.5\nh=\n",
            "a = true|b = false|c = 'True'|d = -5|e = '05'|f = 18446744073709551615u|g = 1.5d|h = ''");
        row("spacing", "  a \t= \t x y \t\n", "a = 'x y'");
        row("colons", "a: 1\nb:2\nurl: http://h?q=1\nc:\\d=3\nx::y=4\nhttp://h\n",
            "a = 1|b = 2|url = 'http://h?q=1'|c:\\d = 3|x::y = 4|http://h = null");
        row("keys need encoding", "a.b=1\n*=2\n=3\n@k=4\nk[7]=5\nName[de]=6\n50%=7\n",
            "a%2Eb = 1|%2A = 2|%00 = 3|%40k = 4|k[7%5D = 5|Name[de] = 6|50%25 = 7");
        row("sections stand encoded", "[a%2Eb]\n[*]\n[50%]\n[x..y]\n[]\n[n[2]]\n",
            "a%2Eb = {}|%2A = {}|50%25 = {}|x = {}|x.%00 = {}|x.%00.y = {}|%00 = {}|n[2%5D = {}");
        row("names with brackets", "[A][B]\n[Q_[C]_E]\n[s] ; said [so]\n[t]#c\n",
            "A][B = {}|Q_[C]_E = {}|s = {}|t = {}");
        row("duplicate keys", "k=1\nk=2\nK=3\n[k]\nk=4\nk=5\n", "k = 1|k[2] = 2|K = 3|k.k = 4|k.k[2] = 5");
        row("duplicate sections", "[p]\nx=1\n[p]\nx=2\n[q.p]\n[q.p]\n",
            "p = {}|p.x = 1|p[2] = {}|p[2].x = 2|q = {}|q.p = {}|q.p[2] = {}");
        row("bare keys", "[m]\nquick\nopt=1\nquick\n", "m = {}|m.quick = null|m.opt = 1|m.quick[2] = null");
        row("comments behind values",
            "a=1 ; c\nb=x # c\nc=#fff\nd=a;b\ne=a ;b\nf= # c\ng=\"x ; y\" # c\nh=sh -c 'a ; b'\ni=don't ; c\n"
            "k ; c = 1\n",
            "a = 1|b = 'x'|c = '#fff'|d = 'a;b'|e = 'a ;b'|f = ''|g = 'x ; y'|h = 'sh -c 'a ; b''|i = "
            "'don't'|"
            "k = null");
        row("quotes", "a=\"5\"\nb=' x '\nc=\"x\" \"y\"\nd=\"\"\ne=\"\nf=\"C:\\d\\\"\ng='x\"\n",
            "a = '5'|b = ' x '|c = '\"x\" \"y\"'|d = ''|e = '\"'|f = '\"C:\\d\\\"'|g = ''x\"'");
        row("lines that go on by indentation", "k = a\n  b\n\n  # no\n\tc d\nl =\n  1\nm=2\n",
            "k = 'a\\nb\\n\\nc d'|l = '\\n1'|m = 2");
        row("indented entries", "[s]\n  a=1\n  b=2\n    more\n c=3\nbare\n  d=4\n",
            "s = {}|s.a = 1|s.b = '2\\nmore'|s.c = 3|s.bare = null|s.d = 4");
        row("indented lines with a separator", "[s]\n\ta = x\n\t\tb = y\n\t\t c\n",
            "s = {}|s.a = 'x'|s.b = 'y\\nc'");
        row("lines that go on by backslash", "a=x \\\ny\nb=x\\\n  y\nc=x\\\ny\nd=x \\\n# c\n  z\n",
            "a = 'x y'|b = 'x y'|c = 'xy'|d = 'x z'");
        row("backslashes that end a value", "a=C:\\d\\\nb=1\nc=x \\\n[s]\nd=x \\\n\ne=x\\\\\nf\ng=\\",
            "a = 'C:\\d\\'|b = 1|c = 'x \\'|s = {}|s.d = 'x \\'|s.e = 'x\\\\'|s.f = null|s.g = '\\'");
        row("line ends", "a=1\r\nb=2\rc=3\n\rd=4", "a = 1|b = 2|c = 3|d = 4");
        row("byte order mark", "\xEF\xBB\xBF[a]\nb=1", "a = {}|a.b = 1");
        row("keys that are no utf-8", "k\xFC=1\n[\xE4]\n", "k%FC = 1|%E4 = {}");
        row("nul", QByteArray("a\0=1\n", 5), "a%00 = 1");
        row("utf-16", QByteArray("\xFF\xFE[\0a\0]\0\n\0k\0=\0\xE4\0", 16), "a = {}|a.k = '\xC3\xA4'");
        row("marks",
            "; @type date\nd=2024-02-29\n# @type text\n;  @type bytes\nb=\\x41\n; @type list\n\n"
            "l=a;b\n; @type integer\nn=x\n",
            "d = '2024-02-29'|b = 'A'|l = 'a;b'|n = 'x'");
    }

    void reads() { tables.checkReading(); }

    void refusesToRead_data()
    {
        LineFileTables::addRefusalColumns();
        const auto row = [](const char* name, const QByteArray& file, const char* reason) {
            QTest::newRow(name) << file << QByteArray(reason);
        };
        row("open section", "[a]\r\n\r\n  [b\r\nc=2", "3:3 the name of a section is not closed by \"]\"");
        row("text behind a section", "\xEF\xBB\xBF[\xC3\xBC] x",
            "1:4 only a comment may follow the \"]\" of a section");
        row("half a character", QByteArray("\xFF\xFE[\0a\0]", 7),
            "1:3 the UTF-16 text ends in the middle of a character");
        row("binary", QByteArray("a=1\n\0\0b\0", 8),
            "2:1 there are NUL characters: it is a binary file, or UTF-16 without its mark");
        row("too deep", "x=1\n[" + QByteArray(1000, '.') + "]\n",
            "2:2 sections lie in each other more than 1000 deep");
    }

    void refusesToRead() { tables.checkRefusal(); }

    void readsTheDeepestSection() { QVERIFY(tables.load("[" + QByteArray(999, '.') + "]\n")); }

    // The paths of deep sections take many times what they take in the file.
    void refusesToGrowWithoutBound()
    {
        QByteArray file;
        for (int section = 0; section < 1000; ++section)
            file += "[" + QByteArray::number(section) + QByteArray(".a").repeated(999) + "]\n";
        const Outcome outcome = makeDocument("ini")->parse(file.toStdString());
        QCOMPARE(QByteArray::fromStdString(outcome.error),
                 QByteArray("the sections up to here, lying deep in each other, take too much memory"));
        QVERIFY2(outcome.line < 200 && outcome.column == 2, qPrintable(QString::number(outcome.line)));
    }

    void sets_data()
    {
        LineFileTables::addEditColumns();
        const auto row = &LineFileTables::addEdit;
        row("number", "[a]\r\nx = 1 ; c\r\ny=2\r\n", "a.x", integer(-7), "[a]\r\nx = -7 ; c\r\ny=2\r\n");
        row("no line end", "x=1", "x", integer(2), "x=2");
        row("an exponent", "; @type double\nx = 1E5\n", "x", number(200000), "; @type double\nx = 2E5\n");
        row("a longer exponent", "; @type double\nx = 1.0e+05\n", "x", number(-0.025),
            "; @type double\nx = -2.5e-02\n");
        row("empty place", "x=\n", "x", text("v"), "x=v\n");
        row("empty place with blanks", "x =\ny = \nz =   \n", "x", text("v"), "x = v\ny = \nz =   \n");
        row("empty place keeps a blank", "x =   \n", "x", text("v"), "x = v  \n");
        row("empty place with a comment", "x = # c\n", "x", text("v"), "x = v # c\n");
        row("made empty", "x = v # c\n", "x", text(""), "x =  # c\n");
        row("quotes stay", "x = \"v\" ; c\n", "x", text(" 5 "), "x = \" 5 \" ; c\n");
        row("quotes inside", "x = \"v\"\n", "x", text("a \"b\" c"), "x = 'a \"b\" c'\n");
        row("quotes that others use", "x = v\ny = 'z'\n", "x", text("5"), "x = '5'\ny = 'z'\n");
        row("a bare key", "a = 1\nx\n", "x", text("v"), "a = 1\nx = v\n");
        row("colon", "x:v\n", "x", text("a=b"), "x: a=b\n");
        row("lines that go on", "k = a\n  b\nl=1\n", "k", text("c"), "k = c\nl=1\n");
        row("more lines", "k = a\n  b\nl=1\n", "k", text("c\nd\ne"), "k = c\n  d\n  e\nl=1\n");
        row("lines that stay", "k = a\n\n  b\n    c\n", "k", text("a\n\nb\nd"), "k = a\n\n  b\n  d\n");
        row("a comment between lines", "k = a\n ; c\n  b\nl=1\n", "k", text("d\ne"),
            "k = d\n ; c\n  e\nl=1\n");
        row("a comment without a line", "k = a\n ; c\n  b\nl=1\n", "k", text("a"), "; c\nk = a\nl=1\n");
        row("lines in a file that has none", "k=a\n", "k", text("c\nd"),
            "a value of this ini file ends with its line; the text has line breaks");
        row("text like a number", "k=a\n", "k", text("5"),
            "an ini file would read \"5\" back as a whole number, not as a text");
        row("text like a bool", "k=a\n", "k", text("true"),
            "an ini file would read \"true\" back as true or false, not as a text");
        row("blanks", "k=a\n", "k", text(" x "), "an ini file would read \" x \" back as \"x\"");
        row("comment", "k=a\n", "k", text("x # y"), "an ini file would read \"x # y\" back as \"x\"");
        row("double", "k=1.5\n", "k", number(3), "k=3.0\n");
        row("double with an exponent", "k = 1E5 ; c\n", "k", number(200000), "k = 2E5 ; c\n");
        row("date", "k=a\n", "k", {Type::Date, std::string("2024-01-02")},
            "no mark above the entry says that it is a date");
        row("list", "k=a\n", "k", list({"a"}), "no mark above the entry says that it is a list of texts");
        row("half a character", "k=a\n", "k", text("\xED\xA0\x80"),
            "the text holds half a character, which UTF-8 cannot hold");
        row("latin-1", "k=\xFC ; \xE4\n", "k", text("\xC3\x9F"), "k=\xDF ; \xE4\n");
        row("latin-1 in a comment", "; \xE4\nk=1\nl=a\n", "l", text("\xC3\x9F"), "; \xE4\nk=1\nl=\xDF\n");
        row("latin-1 amid utf-8", "k=\xFC\nl=\xC3\xA4\n", "l", text("\xC3\x9F"), "k=\xFC\nl=\xC3\x9F\n");
        row("what latin-1 lacks", "k=\xFC\n", "k", text("\xC3\xA4\xE2\x82\xAC"),
            "the file is ISO-8859-1, which has no \"\xE2\x82\xAC\"");
        row("latin-1 that is utf-8", "k=\xFC\n", "k", text("\xC3\x83\xC2\xA4"),
            "the file is ISO-8859-1, where these characters would be taken for others in UTF-8");
        row("bytes that are text", "k=\xFC\n", "k", {Type::ByteArray, std::string("a")},
            "no mark above the entry says that it is bytes");
        row("folder before an entry", "k=a\nl=1\n", "k", text("C:\\d\\"), "k=C:\\d\\\nl=1\n");
        row("folder before a bare key", "k=a\nl\n", "k", text("C:\\d\\"),
            "the line below it would be read as part of the value");
        row("bare key above an indented line", "k\n  l\n", "k", text("v"),
            "the line below it would be read as part of the value");
        row("marked null to nothing", "; @type null\nk=\n", "k", text(""), "; @type null\nk=\"\"\n");
        row("half a character under a mark", "; @type text\nk=5\n", "k", text("\xED\xA0\xBD"),
            "; @type text\nk=\"\\xed\\xa0\\xbd\"\n");
        row("value above an indented entry", "[s]\nk = a\n  l = 1\n", "s.k", text("b"),
            "[s]\nk = b\n  l = 1\n");
        row("indented value with the only separator", "a = b\n  c: d=e\n", "c", text("f"),
            "with this value the line would belong to the one above it");
        const Value day{Type::Date, std::string("2024-01-02")};
        row("a tag that a number does without", "a=1\n; @type date\nk = 2024-01-01 ; c\n", "k", integer(5),
            "a=1\nk = 5 ; c\n");
        row("a tag that a text does without", "# @type list\n# @type date\nk=2024-01-01\n", "k", text("soon"),
            "k=soon\n");
        row("a tag that names another type", "  ;@type\tdate \n  k=2024-01-01\n", "k", text("5"),
            "  ;@type\ttext \n  k=5\n");
        row("a tag of a date", "; @type text\nk=5\n", "k", day, "; @type date\nk=2024-01-02\n");
        row("a tag of bytes", "; @type text\nk=5\n", "k", {Type::ByteArray, std::string("\xFC")},
            "; @type bytes\nk=\\xfc\n");
        row("a tag that keeps lines apart", "a = C: \\\n; @type date\nk = 2024-01-01\n", "k", text("soon"),
            "a = C: \\\n; @type text\nk = soon\n");
        row("null", "k=a\n", "k", null(), "an ini entry has a value; this file has no keys without one");
        row("null among bare keys", "k = a # c\nl\n", "k", null(), "k # c\nl\n");
        row("null below a folder", "a=C:\\\nk=1\nl\n", "k", null(),
            "without a separator the line would belong to the one above it");
        row("section", "[s]\n", "s", integer(1), "it is a section and has no value");
        row("unknown", "[s]\n", "s.x", integer(1), "no such entry");
    }

    void sets() { tables.checkSetting(); }

    void setsBackToTheOriginalBytes()
    {
        const QByteArray file = "a = \"x\"\nb=one \\\n  two\nc\nd=\n";
        const auto document = tables.load(file);
        const std::pair<const char*, Value> edits[] = {
            {"a", text("y \"z\"")}, {"b", integer(1)}, {"c", text("v")}, {"d", text("w")}};
        for (const auto& [path, value] : edits)
            QVERIFY(document->set(path, value).ok());
        QVERIFY(document->getBytes() != file.toStdString());
        const std::pair<const char*, Value> originals[] = {
            {"a", text("x")}, {"b", text("one two")}, {"c", null()}, {"d", text("")}};
        for (const auto& [path, value] : originals)
            QVERIFY(document->set(path, value).ok());
        QCOMPARE(QByteArray::fromStdString(document->getBytes()), file);
    }

    void inserts_data()
    {
        LineFileTables::addEditColumns();
        const auto row = &LineFileTables::addEdit;
        row("into nothing", "", "k", integer(1), "k=1\n");
        row("name in a latin-1 file", "k=\xFC\n", "%FC", text("\xC3\xBC"), "k=\xFC\n\xFC=\xFC\n");
        for (const char* const path : {"\xC3\xBC", "\xC3\xBC.k"})
            row("name in utf-8 in a latin-1 file", "k=\xFC\n", path, integer(1),
                "the file is ISO-8859-1; in a path, the bytes of a name of it are percent-encoded, as in "
                "%F6");
        row("section into nothing", "", "a.b.k", integer(1), "[a.b]\nk=1\n");
        row("behind its siblings", "[a]\n  x : 1\n\n# of b\n[b]\ny=2\n", "a.k", text("v"),
            "[a]\n  x : 1\n  k : v\n\n# of b\n[b]\ny=2\n");
        row("into an empty section", "[a]\n; x=1\n\n[b]\n\ty = 2\n", "a.k", integer(1),
            "[a]\n\tk = 1\n; x=1\n\n[b]\n\ty = 2\n");
        row("lined up", "[a]\nlong_key   = 1\nx          = 2\n", "a.k", integer(3),
            "[a]\nlong_key   = 1\nx          = 2\nk          = 3\n");
        row("lined up with the longest", "[a]\nx      = 1\nlonger = 2\n", "a.k", integer(3),
            "[a]\nx      = 1\nlonger = 2\nk      = 3\n");
        row("nothing, lined up", "[a]\nx      = 1\nlonger = 2\n", "a.k", list({}),
            "[a]\nx      = 1\nlonger = 2\n; @type list\nk      =\n");
        row("longer than the line", "x  = 2\n", "longer", integer(3), "x  = 2\nlonger = 3\n");
        row("windows line ends", "[a]\r\nx=1\r\n", "a.k", integer(1), "[a]\r\nx=1\r\nk=1\r\n");
        row("behind a missing line end", "[a]\nx=1", "a.k", integer(2), "[a]\nx=1\nk=2\n");
        row("new section", "[a]\nx = 1\n", "b.k", integer(2), "[a]\nx = 1\n\n[b]\nk = 2\n");
        row("new section behind a blank line", "[a]\nx=1\n\n", "b.k", integer(2), "[a]\nx=1\n\n[b]\nk=2\n");
        row("section that others only name", "[a.b]\n", "a.k", integer(1), "[a.b]\n\n[a]\nk=1\n");
        row("first at the root", "# licence\n\n# of a\n[a]\n", "k", integer(1),
            "# licence\n\nk=1\n\n# of a\n[a]\n");
        row("first before a section", "\xEF\xBB\xBF[a]\n", "k", integer(1), "\xEF\xBB\xBFk=1\n\n[a]\n");
        row("next at the root", "j=1\n\n[a]\n", "k", integer(2), "j=1\nk=2\n\n[a]\n");
        row("empty text", "j = 1\n", "k", text(""), "j = 1\nk =\n");
        row("second of its name", "j=1\nk=2\n", "j[2]", integer(3), "j=1\nk=2\nj=3\n");
        row("third of its name", "j=1\nk=2\n", "j[3]", integer(3), "there is no \"j[2]\" before it");
        row("second section of its name", "[a]\nx=1\n", "a[2].x", integer(3), "[a]\nx=1\n\n[a]\nx=3\n");
        row("below a second section", "[a]\n[a]\n", "a[2].b.x", integer(3),
            "an ini file cannot hold a section of the path \"a[2].b\"");
        row("below an entry", "a=1\n", "a.b", integer(2), "a=1\n\n[a]\nb=2\n");
        row("empty section", "x=1\n", "a.b", group(), "x=1\n\n[a.b]\n");
        row("null into nothing", "", "k", null(), "; @type null\nk=\n");
        row("null among bare keys", "a\n", "k", null(), "a\nk\n");
        row("null", "a=1\n", "k", null(), "a=1\n; @type null\nk=\n");
        row("text like a number", "# c\r\n[s]\r\na=1\r\n", "s.k", text("5"),
            "# c\r\n[s]\r\na=1\r\n# @type text\r\nk=5\r\n");
        row("text with line breaks", " a = 1", "k", text("x\n y"),
            " a = 1\n ; @type text\n k = \"x\\n y\"\n");
        row("below a mark of nothing", "; @type text", "k", integer(5), "; @type text\n\nk=5\n");
        row("encoded key", "a=1\n", "x%2Ey", integer(1), "a=1\nx.y=1\n");
        row("key in another form", "a=1\n", "#x", integer(1),
            "\"#x\" is not how a key is written in a path; write \"%23x\"");
        row("key that is a comment", "a=1\n", "%23x", integer(1), "an ini file cannot hold the key \"#x\"");
        row("key with blanks around", "a=1\n", " x", integer(1), "an ini file cannot hold the key \" x\"");
        row("key with a separator", "a=1\n", "x=y", integer(1), "an ini file cannot hold the key \"x=y\"");
        row("key that is a section", "a=1\n", "[x]", integer(1), "an ini file cannot hold the key \"[x]\"");
        row("section with brackets", "a=1\n", "x] y.z", integer(1), "a=1\n\n[x] y]\nz=1\n");
        row("section that ends early", "a=1\n", "x] #.z", integer(1),
            "an ini file cannot hold a section of the path \"x] #\"");
        row("there already", "a=1\n", "a", integer(1), "there is such an entry already");
        row("no path", "a=1\n", "a..b", integer(1), "\"a..b\" is not a path");
        row("value of a section", "[a]\nx=1\n", "a", integer(5), "a=5\n\n[a]\nx=1\n");
        row("mark of an encoding", "[a]\n", "\xEF\xBB\xBFk", integer(1),
            "the file would begin like a file of another encoding");
        row("behind a backslash", "a = x \\", "b", integer(1),
            "the entry would be read as part of the one above it");
        row("above an indented section", "[a]\n  [b]\n", "a.k", integer(1),
            "the line below it would be read as part of the value");
    }

    void inserts() { tables.checkInserting(); }

    void removes_data()
    {
        LineFileTables::addRemovalColumns();
        const auto row = &LineFileTables::addRemoval;
        row("entry", "# c\na=1\nb=2\n", "a", false, "# c\nb=2\n");
        row("entry with its lines", "a=1\n  2\nb=2\n", "a", false, "b=2\n");
        row("last line", "a=1\nb=2", "b", false, "a=1\n");
        row("first of its name", "a=1\na=2\nb=3\na=4\n", "a", true, "a=2\nb=3\na=4\n");
        row("last of its name", "a=1\na=2\n", "a[2]", false, "a=1\n");
        row("section", "[a]\nx=1\n; of x\ny=2\n\n# of b\n[b]\nz=3\n", "a", false, "\n# of b\n[b]\nz=3\n");
        row("section with those below it", "[a]\nx=1\n[b]\n[a.c]\ny=1\n[a.d.e]\n", "a", false, "[b]\n");
        row("section that others name", "[a.b]\nx=1\n[c]\n", "a", false, "[c]\n");
        row("last below a section that it named", "[a.b]\nx=1\n[c]\n", "a.b", false, "[c]\n");
        row("entry and section of one path", "[a]\nb=1\nc=2\n[a.b]\nd=3\n", "a.b", false, "[a]\nc=2\n");
        row("first section of its name", "[p]\nx=1\n[q]\n[p]\nx=2\n", "p", true, "[q]\n[p]\nx=2\n");
        row("last section of its name", "[p]\nx=1\n[p]\nx=2\n", "p[2]", false, "[p]\nx=1\n");
        row("the root", "a=1\n", "", false, "the root of a file is not removed");
        row("unknown", "a=1\n", "b", false, "no such entry");
        row("what keeps lines apart", "a=1\nb\n  c\n", "b", false,
            "without it the line below would be read as part of the value above");
        row("what hides the mark of an encoding", "[a]\nx=1\n\xFF\xFE=2\n", "a", false, "");
        row("what keeps a mark from the front", "k=1\n\xFF\xFE=2\n", "k", false,
            "without it the file would begin like a file of another encoding");
        row("section that keeps lines apart", "a=1\n[b]\n  [c]\n", "b", false,
            "without it the line below would be read as part of the value above");
    }

    void removes() { tables.checkRemoving(); }

    // What was added goes without a trace.
    void takesBackWhatItAdded()
    {
        const QByteArray file = "# c\n[a]\nx = 1\n# end";
        const auto document = tables.load(file);
        QVERIFY(document->insert("b.y", integer(1)).ok());
        QVERIFY(document->insert("b.z", text("v")).ok());
        QVERIFY(document->insert("a.z", integer(2)).ok());
        QCOMPARE(QByteArray::fromStdString(document->getBytes()),
                 QByteArray("# c\n[a]\nx = 1\nz = 2\n# end\n\n[b]\ny = 1\nz = v\n"));
        QVERIFY(document->remove("a.z").ok());
        QVERIFY(document->remove("b").ok());
        QVERIFY(!document->contains("b.y") && !document->contains("b"));
        QCOMPARE(QByteArray::fromStdString(document->getBytes()), file);
    }

    void editsAsFastInALargeFile()
    {
        tables.checkCostOfEdits([](int i) {
            return QByteArray((i % 100 == 0 ? "[s" + QByteArray::number(i) + "]\n" : QByteArray()) + "k" +
                              QByteArray::number(i) + " = v\n");
        });
    }
};

VANTRY_TEST_MAIN(QCoreApplication, IniDocumentTest)

#include "ini_document_test.moc"
#include "repository/documents/Formats.h"
