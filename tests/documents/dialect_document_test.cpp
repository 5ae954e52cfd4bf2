#include "tests/documents/LineFileTables.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

using namespace EntryLines;

// What each dialect makes of the same lines; of those whose readers are no programs that tests can ask, all
// that they promise.
class DialectDocumentTest : public QObject
{
    Q_OBJECT

private slots:
    void reads_data()
    {
        QTest::addColumn<QByteArray>("type");
        LineFileTables::addReadingColumns();
        const auto row = [](const char* type, const char* name, const QByteArray& file, const char* tree) {
            QTest::addRow("%s: %s", type, name) << QByteArray(type) << file << QString::fromUtf8(tree);
        };
        row("ini:systemd", "values",
            "# c\n[Unit]\n  A = x y \nB=/bin/a ; /bin/b # c\nC:d=e\nF=\"q\"\nG\n ; c\n",
            "Unit = {}|Unit.A = 'x y'|Unit.B = '/bin/a ; /bin/b # c'|Unit.C:d = 'e'|Unit.F = '\"q\"'|Unit.G "
            "= null");
        row("ini:systemd", "lists", "[Service]\nE=a\nE=\nE=b\n",
            "Service = {}|Service.E = 'a'|Service.E[2] = ''|Service.E[3] = 'b'");
        row("ini:systemd", "lines that go on", "[S]\nA=x \\\n# c\n  ; d\n\t y\\\nz\nB=1\\\n\nC=\\\\\nD=2",
            "S = {}|S.A = 'x  \t y z'|S.B = '1'|S.C = '\\\\'|S.D = 2");
        row("ini:editorconfig", "globs and comments",
            "root = true\n# c\n[*.{c,h}]\nA = b ; c\n  d=e # f\n; g\n[{a.b,[x]].y}]\n h : i = j\n",
            "root = true|%2A%2E{c,h} = {}|%2A%2E{c,h}.A = 'b ; c'|%2A%2E{c,h}.d = 'e # f'|{a%2Eb,[x]]%2Ey} = "
            "{}|{a%2Eb,[x]]%2Ey}.h : i = 'j'");
        row("txt:properties", "separators",
            "a=1\nb:2\nc 3\n d \t=\t4\ne\nf=\n=g\nh==i\nj : =k\n# l\n  ! m=n\n",
            "a = 1|b = 2|c = 3|d = 4|e = ''|f = ''|%00 = 'g'|h = '=i'|j = '=k'");
        row("txt:properties", "escapes",
            "a = x\\ty\\n\\u00e4\\uD83D\\uDE00\\q\\\\\\ \nb\\ c\\:d\\==1\ne = \\ f \n\\u0067.h=2\n",
            "a = 'x\ty\\n\xC3\xA4\xF0\x9F\x98\x80q\\ '|b c:d= = 1|e = ' f '|g = {}|g.h = 2");
        row("txt:properties", "lines that go on", "a = b\\\n   # c\\\n\td\ne\\\\\nf = g\\\n",
            "a = 'b# cd'|e\\ = ''|f = 'g'");
        row("txt:properties", "latin-1", "a = \xE4\nb = \xC3\xA4\n", "a = '\xC3\xA4'|b = '\xC3\xA4'");
        row("ini:git", "bare keys and one line", "[core] bare\n\tx = yes\n[a][b \"c.d\"] e = 1 ; f\n",
            "core = {}|core.bare = true|core.x = 'yes'|a = {}|b = {}|b.c%2Ed = {}|b.c%2Ed.e = 1");
        row("ini:mysql", "includes and bare keys", "!include /a=b\n[m]\nskip\n!includedir /c\nd = 1\n",
            "m = {}|m.skip = null|m.d = 1");
        row("ini:kde", "options", "[$i]\n[A][B.C][$i]\nk[$e]=$HOME\nl[de][$ie]=x\nm[$d]\nn\\x3do=1\n",
            "A = {}|A.B%2EC = {}|A.B%2EC.k = '$HOME'|A.B%2EC.l[de] = 'x'|A.B%2EC.m = null|A.B%2EC.n=o = 1");
        row("ini:kde", "escapes in names", "[$Version]\nu=1\n[a\\x5bb\\\\]\na\\\\n\\\\\\\\=2\n",
            "$Version = {}|$Version.u = 1|a[b\\ = {}|a[b\\.a%0A\\ = 2");
        row("ini:krb5", "directives",
            "include /a=b\n[plugins]\n\tmodule = m\nmodule=n\nmodule = o\n includedir c\n",
            "plugins = {}|plugins.module = 'm'|plugins.module[2] = 'n'|plugins.module[3] = "
            "'o'|plugins.includedir c = "
            "null");
        row("ini:samba", "colons", "[g]\nidmap config * : backend = tdb\n",
            "g = {}|g.idmap config %2A : backend = 'tdb'");
        row("ini:desktop", "sections", "[Desktop Action x.y]\nName[de]=z\n",
            "Desktop Action x%2Ey = {}|Desktop Action x%2Ey.Name[de] = 'z'");
    }

    void reads()
    {
        QFETCH(QByteArray, type);
        LineFileTables(type).checkReading();
    }

    void sets_data()
    {
        QTest::addColumn<QByteArray>("type");
        LineFileTables::addEditColumns();
        const auto row = [](const char* type, const char* name, const QByteArray& file, const char* path,
                            const Value& value, const QByteArray& after) {
            QTest::addRow("%s: %s", type, name)
                << QByteArray(type) << file << QByteArray(path) << value << after;
        };
        row("ini:git", "above an indented line", "[user]\n\tname = J ; c\n\temail = e\n", "user.name",
            text("K"), "[user]\n\tname = K ; c\n\temail = e\n");
        row("ini:git", "own quotes", "[a]\n\tb = \"c\"\n", "a.b", text("d"), "[a]\n\tb = \"d\"\n");
        row("ini:git", "needed quotes", "[a]\n\tb = c\n", "a.b", text("d # e\\"),
            "[a]\n\tb = \"d # e\\\\\"\n");
        row("ini:git", "escapes alone", "[a]\n\tb = c\n", "a.b", text("d\\e\n"), "[a]\n\tb = d\\\\e\\n\n");
        row("ini:git", "bare", "[a]\n\tb\n\tc = 1\n", "a.b", boolean(false), "[a]\n\tb = false\n\tc = 1\n");
        row("ini:git", "in the line of the section", "[a] b = 1\n[c]\n", "a.b", integer(2),
            "[a] b = 2\n[c]\n");
        row("ini:systemd", "comment marks", "[U]\nk = a ; b\n", "U.k", text("c # d"), "[U]\nk = c # d\n");
        row("ini:systemd", "backslash at the end", "[U]\nk=a\n", "U.k", text("C:\\"),
            "a systemd file would read \"C:\\\" back as \"C:\"");
        row("ini:systemd", "blanks", "[U]\nk=a\n", "U.k", text(" b"),
            "a systemd file would read \" b\" back as \"b\"");
        row("ini:systemd", "line break", "[U]\nk=a\n", "U.k", text("b\nc"),
            "a value of a systemd file ends with its line; the text has line breaks");
        row("ini:editorconfig", "blanks", "[*]\nk=a\n", "%2A.k", text("b "),
            "an editorconfig file would read \"b \" back as \"b\"");
        row("ini:editorconfig", "comment marks", "[*]\nk=a\n", "%2A.k", text("b ; c"), "[*]\nk=b ; c\n");
        row("txt:properties", "escapes", "k = a\r\n", "k", text(" \\b\nc\t#!=:\xC3\xA4\xF0\x9F\x98\x80 "),
            "k = \\ \\\\b\\nc\\t#!=:\\u00e4\\ud83d\\ude00 \r\n");
        row("txt:properties", "first character", "k=a\nl b\n", "l", text("=c"), "k=a\nl \\=c\n");
        row("txt:properties", "characters that the value has", "k=\xC3\xA4\n", "k", text("\xC3\xB6"),
            "k=\xC3\xB6\n");
        row("txt:properties", "empty", "k = a\n", "k", text(""), "k = \n");
        row("txt:properties", "lines that go on", "k = a\\\n  b\nl=1\n", "k", text("c"), "k = c\nl=1\n");
        row("ini:desktop", "list with escaped items", "[a]\nk=b\\;c;d;\n", "a.k", text("b\\;c;e;"),
            "[a]\nk=b\\;c;e;\n");
        row("ini:kde", "option stays", "[a]\nk[$e]=$HOME/x\n", "a.k", text(" y"), "[a]\nk[$e]=\\sy\n");
        row("ini:python", "reference", "[a]\nk = 1\n", "a.k", text("%(b)s"),
            "for some programs a \"%\" refers to another value in a file of configparser, and for others it "
            "is a "
            "mere character");
        row("ini:git", "number in place of a quoted text", "[a]\n\tk = \"x \"\n", "a.k", integer(5),
            "[a]\n\tk = 5\n");
        row("ini:php", "number in place of a quoted text", "k = 'x;'\n", "k", integer(5), "k = 5\n");
        row("ini:python", "reference among others", "[a]\nk = %(b)s\n", "a.k", text("%(c)s"),
            "[a]\nk = %(c)s\n");
        row("ini:fail2ban", "comment", "[a]\nk = 1 ; c\n", "a.k", integer(2), "[a]\nk = 2 ; c\n");
        row("ini:fail2ban", "lines with =", "[a]\nk = 1\n  b=2\n", "a.k", text("x\ny=z"),
            "[a]\nk = x\n  y=z\n");
        row("ini:fail2ban", "comments after lines", "[a]\nk = 1 ; c\n  b=2\n", "a.k", text("x"),
            "comments follow its lines, which would be lost");
        row("ini:python", "lines", "[a]\r\nk = 1\r\n", "a.k", text("\nx\ny"),
            "[a]\r\nk = \r\n    x\r\n    y\r\n");
        row("ini:python", "comments between lines", "[a]\nk =\n  # x\n  x\n  # y\n  y\n  # z\n  z\n", "a.k",
            text("\nw\nz\nv"), "[a]\nk =\n  # x\n  w\n  # y\n  # z\n  z\n  v\n");
        row("ini:systemd", "comments between lines", "[S]\nk=a \\\n# c\n b\n", "S.k", text("a"),
            "[S]\n# c\nk=a\n");
        row("ini:php", "what looks like a comment", "k = \"a\n; b\nc\"\n", "k", text("a"), "k = \"a\"\n");
        row("ini:php", "expression", "[P]\ne = E_ALL\n", "P.e", text("E_ALL & ~E_NOTICE"),
            "[P]\ne = E_ALL & ~E_NOTICE\n");
        row("ini:php", "quote that others leave open", "a = it's\nb = 1\n", "b", text("'c;d"),
            "it would close the quote that another value of the file leaves open");
        row("ini:desktop", "semicolon in an item", "[Desktop Entry]\nKeywords=a;\n", "Desktop Entry.Keywords",
            text("a;b\\;c\\d;"), "[Desktop Entry]\nKeywords=a;b\\;c\\\\d;\n");
        row("ini:mysql", "above a comment", "[m]\nk = a # c\n", "m.k", text("it's"),
            "[m]\nk = \"it's\" # c\n");
    }

    void sets()
    {
        QFETCH(QByteArray, type);
        LineFileTables(type).checkSetting();
    }

    void inserts_data()
    {
        QTest::addColumn<QByteArray>("type");
        LineFileTables::addEditColumns();
        const auto row = [](const char* type, const char* name, const QByteArray& file, const char* path,
                            const Value& value, const QByteArray& after) {
            QTest::addRow("%s: %s", type, name)
                << QByteArray(type) << file << QByteArray(path) << value << after;
        };
        row("ini:git", "subsection", "", "remote.a%2E\"b.url", text("c"),
            "[remote \"a.\\\"b\"]\n\turl = c\n");
        row("ini:git", "deeper", "", "a.b.c.d", text("e"),
            "a git configuration cannot hold a section of the path \"a.b.c\"");
        row("ini:git", "other case", "[a]\n\tFileMode = 1\n", "a.filemode", integer(0),
            "a git configuration has \"FileMode\" there, which its program takes for the same key");
        row("ini:git", "key with a blank", "[a]\n", "a.b c", integer(1),
            "a git configuration cannot hold the key \"b c\": a key of git is a letter, then letters, digits "
            "and hyphens");
        row("ini:git", "section with a blank", "", "a b.c", integer(1),
            "a section of git has letters, digits and hyphens only");
        row("ini:git", "section that ends with a blank", "", "a .c", integer(1),
            "a section of git has letters, digits and hyphens only");
        row("ini:git", "behind a section of one line", "[a] b = 1", "a.c", integer(2), "[a] b = 1\nc = 2\n");
        row("ini:git", "second value", "[a]\n\tb = 1\n", "a.b[2]", integer(2), "[a]\n\tb = 1\n\tb = 2\n");
        row("ini:mysql", "other dash", "[m]\nmax_size=1\n", "m.max-size", integer(2),
            "a MySQL option file has \"max_size\" there, which its program takes for the same key");
        row("ini:mysql", "quote in a key", "[m]\n", "m.a\"b", text("c#d"),
            "a MySQL option file cannot hold the key \"a\"b\": MySQL does not take that for a name");
        row("ini:samba", "other blanks", "[g]\n  work group = a\n", "g.WorkGroup", text("b"),
            "a Samba configuration has \"work group\" there, which its program takes for the same key");
        row("ini:kde", "groups", "[a]\nx=1\n", "b.c.k=l", text("v"), "[a]\nx=1\n\n[b][c]\nk\\x3dl=v\n");
        row("ini:kde", "brackets and backslashes", "[a]\n", "b[x].a[b\\[de]", integer(1),
            "[a]\n\n[b\\x5bx\\x5d]\na\\x5bb\\\\\\\\[de]=1\n");
        row("ini:kde", "byte-order mark", "[a]\n", "a.k", text("\xEF\xBB\xBFx"),
            "a KConfig file would read \"\xEF\xBB\xBFx\" back as \"x\"");
        row("ini:kde", "option as a group", "[a]\n", "b.$i.k", integer(1), "[a]\n\n[b][\\x24i]\nk=1\n");
        row("ini:kde", "behind an option", "[a]\nx[$e]=1\n", "a.k", integer(2), "[a]\nx[$e]=1\nk=2\n");
        row("ini:desktop", "mark", "[Desktop Entry]\nName=x\n", "Desktop Entry.d",
            {Type::Date, std::string("2024-02-29")}, "[Desktop Entry]\nName=x\n# @type date\nd=2024-02-29\n");
        row("ini:systemd", "section in a section", "", "a.b.k", text("v"),
            "a systemd file cannot hold a section of the path \"a.b\"");
        row("ini:systemd", "behind a backslash", "[U]\na=x \\", "U.b", integer(1),
            "the entry would be read as part of the one above it");
        row("ini:systemd", "comment marks in a new file", "", "Unit.k", text("x ; y"), "[Unit]\nk=x ; y\n");
        row("ini:python", "before the first section", "[a]\n", "k", integer(1),
            "a configparser file has no keys outside of a section");
        row("ini:krb5", "in a group", "[r]\n\tA = {\n\t  k = 1\n\t  # c\n\t}\n\tz = 1\n", "r.A.k[2]",
            integer(2), "[r]\n\tA = {\n\t  k = 1\n\t  # c\n\t  k = 2\n\t}\n\tz = 1\n");
        row("ini:krb5", "in a new group", "[r]\n\tA = {\n\t}", "r.B.C.k", text(" v"),
            "[r]\n\tA = {\n\t}\n\tB = {\n\t    C = {\n\t        k = \" v\"\n\t    }\n\t}\n");
        row("ini:krb5", "behind a group", "[r]\n\tA = {\n\t\tk = 1\n\t}\n[s]\n", "r.k", integer(2),
            "[r]\n\tA = {\n\t\tk = 1\n\t}\n\tk = 2\n[s]\n");
        row("ini:krb5", "group without a section", "", "r.A.k", integer(1),
            "a Kerberos profile has groups in braces only within a section, and there is no \"r\"");
        row("ini:python", "below lines that go on", "[a]\nk =\n  x\n  y\n", "a.l", text("1\n2"),
            "[a]\nk =\n  x\n  y\nl = 1\n  2\n");
        row("ini:python", "star", "[mypy]\n", "mypy-a.%2A.k", integer(1), "[mypy]\n\n[mypy-a.*]\nk = 1\n");
        row("ini:python", "codes", "", "50%25%2Ed.k", integer(1), "[50%25%2Ed]\nk = 1\n");
        row("ini:python", "control character", "", "a%00b.k", integer(1), "[a%00b]\nk = 1\n");
        row("ini:mysql", "last byte that is a blank", "[m]\n", "m.k", text("a\xC3\xA0"),
            "[m]\nk = \"a\xC3\xA0\"\n");
        row("ini:krb5", "long line", "[r]\n", "r.k", text(std::string(2046, 'x')),
            "a Kerberos profile is read in lines of 2046 bytes at most");
        row("txt:properties", "star and percent", "a.b: 1\n", "a.%2A.50%25", integer(2),
            "a.b: 1\na.*.50%: 2\n");
        row("txt:properties", "key", "a.b: 1\n", "a.c=d e", text("f"), "a.b: 1\na.c\\=d\\ e: f\n");
        row("ini:editorconfig", "glob", "root = true\n", "[%2A%2Ec].k", integer(1),
            "root = true\n\n[[*.c]]\nk = 1\n");
    }

    void inserts()
    {
        QFETCH(QByteArray, type);
        LineFileTables(type).checkInserting();
    }

    void refusesNames_data()
    {
        const auto row = TestSupport::columns<QByteArray, QByteArray, QByteArray>("type", "name", "reason");
        row("option of the key", "ini:krb5", "c%2A", "it would be read otherwise");
        row("no component", "ini:kde", "k[0]", "\"k[0]\" is not how a key is written in a path");
    }

    void refusesNames()
    {
        QFETCH(QByteArray, type);
        QFETCH(QByteArray, name);
        QFETCH(QByteArray, reason);
        const std::string text = "[s]\nk=1\n";
        const auto document = Repository::Documents::makeDocument(type.toStdString());
        QVERIFY(document->parse(text).ok());
        const auto outcome = document->rename("s.k", name.toStdString());
        QVERIFY(outcome && outcome->error.find(reason.toStdString()) != std::string::npos);
        QCOMPARE(document->getBytes(), text);
    }

    void removes_data()
    {
        QTest::addColumn<QByteArray>("type");
        LineFileTables::addRemovalColumns();
        const auto row = [](const char* type, const char* name, const QByteArray& file, const char* path,
                            const QByteArray& after, bool moves = false) {
            QTest::addRow("%s: %s", type, name)
                << QByteArray(type) << file << QByteArray(path) << moves << after;
        };
        row("ini:git", "in the line of the section", "[a] b = 1\n\tc = 2\n", "a.b", "[a] \n\tc = 2\n");
        row("ini:git", "section of one line", "[a] b = 1\n[c] d = 2\n", "a", "[c] d = 2\n");
        row("ini:systemd", "with comments between its lines", "[U]\na=1 \\\n# c\n 2\nb=3\n", "U.a",
            "[U]\nb=3\n");
        row("ini:krb5", "group", "[r]\n# A\nA = {\n k = {\n }\n}\nB = {\n}\nA = {\n k = 1\n}\n", "r.A",
            "[r]\n# A\nB = {\n}\n");
        row("ini:krb5", "first of its name in a group", "[r]\nA = {\n k = 1\n k = 2\n}\n", "r.A.k",
            "[r]\nA = {\n k = 2\n}\n", true);
        row("ini:krb5", "last of a group", "[r]\nA = {\n k = 1\n}\n", "r.A.k", "[r]\nA = {\n}\n");
        row("txt:properties", "with its lines", "a=1\\\n#2\nb=3\n", "a", "b=3\n");
    }

    void removes()
    {
        QFETCH(QByteArray, type);
        LineFileTables(type).checkRemoving();
    }
};

VANTRY_TEST_MAIN(QCoreApplication, DialectDocumentTest)

#include "dialect_document_test.moc"
