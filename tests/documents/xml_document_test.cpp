#include "repository/documents/xml/XmlReader.h"
#include "tests/documents/EntryLines.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

#include <QProcess>
#include <QTemporaryDir>

#include <functional>

using namespace EntryLines;
using Repository::Documents::makeDocument;
using Repository::Documents::Outcome;
using Repository::Documents::XmlReader;

namespace {

using Edit = std::function<Outcome(Document&)>;

Edit set(const char* path, Value value)
{
    return [path, value](Document& document) { return document.set(path, value); };
}

Edit insert(const char* path, Value value)
{
    return [path, value](Document& document) { return document.insert(path, value); };
}

Edit take(const char* path)
{
    return [path](Document& document) { return document.remove(path); };
}

// What Python's reader finds in the files of a folder, a line each: the names and attributes in it.
QStringList readByPython(const QString& folder)
{
    QProcess python;
    python.start(QStringLiteral("python3"),
                 {QStringLiteral("-c"),
                  QStringLiteral("import glob, sys, xml.etree.ElementTree as e\n"
                                 "for f in sorted(glob.glob(sys.argv[1] + '/*')):\n"
                                 "  print([(x.tag, *sorted(x.attrib)) for x in e.parse(f).iter()])"),
                  folder});
    python.waitForFinished(-1);
    const QByteArray output = python.readAllStandardOutput() + python.readAllStandardError();
    return QString::fromUtf8(output).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

std::string wide(const char* text, bool bigEnd)
{
    std::string bytes = bigEnd ? "\xFE\xFF" : "\xFF\xFE";
    for (const QChar c : QString::fromUtf8(text)) {
        const char high = char(c.unicode() >> 8);
        const char low = char(c.unicode() & 0xFF);
        bytes += bigEnd ? high : low;
        bytes += bigEnd ? low : high;
    }
    return bytes;
}

std::string repeated(std::size_t count, const std::string& text)
{
    std::string all;
    for (std::size_t i = 0; i < count; ++i)
        all += text;
    return all;
}

std::string nested(std::size_t depth)
{
    return repeated(depth, "<a>") + repeated(depth, "</a>");
}

} // namespace

Q_DECLARE_METATYPE(Edit)
Q_DECLARE_METATYPE(Value)

class XmlDocumentTest : public QObject
{
    Q_OBJECT

private slots:
    void reads_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("lines");
        const auto row = [](const char* name, const std::string& bytes,
                            const std::vector<const char*>& expected) {
            QStringList lines;
            for (const char* line : expected)
                lines += QString::fromUtf8(line);
            QTest::newRow(name) << QByteArray::fromStdString(bytes) << lines;
        };
        row("nothing", " \n", {});
        row("types", "<r><a>5</a><b>true</b><c>05</c><d>18446744073709551615</d></r>",
            {"r = {}", "r.a = 5", "r.b = true", "r.c = '05'", "r.d = 18446744073709551615u"});
        row("attributes", "<r a='1' b = \" x \"/>", {"r = {}", "r.@a = 1", "r.@b = ' x '"});
        row("siblings", "<r><s>1</s><t/><s><u>2</u></s></r>",
            {"r = {}", "r.s = 1", "r.t = {}", "r.s[2] = {}", "r.s[2].u = 2"});
        row("text between elements", "<r> a <b>1</b>\n<!-- c --> 2 <b/>\n</r>",
            {"r = {}", "r.#text = 'a'", "r.b = 1", "r.#text[2] = 2", "r.b[2] = {}"});
        row("blanks around", "<r>\n <a>\n  5\n </a><b>&#32;5</b><c><![CDATA[ x ]]></c></r>",
            {"r = {}", "r.a = 5", "r.b = ' 5'", "r.c = ' x '"});
        row("nothing inside", "<r><a></a><b> </b><c/><d>\n</d><e><!----></e><f><![CDATA[]]></f></r>",
            {"r = {}", "r.a = ''", "r.b = ''", "r.c = {}", "r.d = {}", "r.e = {}", "r.f = ''"});
        row("comments in a value", "<r>1<!-- a -->2<?b c?></r>", {"r = 12"});
        row("sections are texts", "<r><a><![CDATA[5]]></a><b>a<![CDATA[<&]]>b</b></r>",
            {"r = {}", "r.a = '5'", "r.b = 'a<&b'"});
        row("references", "<r a='&quot;&#x41;&#10;'>&lt;&#233;</r>", {"r = '<\xC3\xA9'", "r.@a = '\"A\\n'"});
        row("line ends and blanks", "<r a='x\r\n\ty'>1\r\n2\r3</r>", {"r = '1\\n2\\n3'", "r.@a = 'x  y'"});
        row("names", "<x:r.s xmlns:x='u'><\xC3\xA9/></x:r.s>",
            {"x:r%2Es = {}", "x:r%2Es.@xmlns:x = 'u'", "x:r%2Es.\xC3\xA9 = {}"});
        const std::string doctype = "<!DOCTYPE r SYSTEM 'no.dtd' [<!ENTITY a 'x&b;'><!ENTITY b 'y'>"
                                    "<!ENTITY c '<t>1</t>'><!ENTITY d SYSTEM 'file:///etc/passwd'>]>";
        row("words of an attribute",
            "<!DOCTYPE r [<!ATTLIST r a NMTOKENS #IMPLIED>]><r a=' x\n  y ' b=' x '/>",
            {"r = {}", "r.@a = 'x y'", "r.@b = ' x '"});
        row("blanks that count",
            "<r xml:space='preserve'><a> x </a><b xml:space='default'> y </b> <c>\n</c><d> </d></r>",
            {"r = {}", "r.@xml:space = 'preserve'", "r.a = ' x '", "r.b = 'y'", "r.b.@xml:space = 'default'",
             "r.c = {}", "r.d = ' '"});
        row("blanks of translations", "<TS>\n <m>\n  <s>Foo: </s>\n </m>\n</TS>",
            {"TS = {}", "TS.m = {}", "TS.m.s = 'Foo: '"});
        row("entities", doctype + "<r e='&a;'><f>&a;</f><g>&c;&d;&e;</g>&c;<h/>&amp;</r>",
            {"r = {}", "r.@e = 'xy'", "r.f = 'xy'", "r.g = '&c;&d;&e;'", "r.#text = '&c;'", "r.h = {}",
             "r.#text[2] = '&'"});
        row("marks",
            "<?vantry type=\"double\"?>\n<?vantry type=\"date\" attribute=\"a\"?><r a='2020-01-31'>1</r>",
            {"r = 1.0d", "r.@a = '2020-01-31'"});
        row("marks that do not fit",
            "<r><?vantry type=\"integer\"?><a>x</a><?vantry type=\"no\"?><b>1</b></r>",
            {"r = {}", "r.a = 'x'", "r.b = 1"});
        row("mark that begins in a literal",
            "<!DOCTYPE r [<!ENTITY e '<?vantry type=\"double\" escapes=\"'>]><?x \"?><r>5</r>", {"r = 5"});
        row("mark that begins in a system literal",
            "<!DOCTYPE r SYSTEM '<?vantry type=\"double\" attribute=\"'><?x \"?><r>5</r>", {"r = 5"});
        row("mark below literals that look like comments",
            "<!DOCTYPE r [<!ENTITY e \"<!--\"><!ENTITY f ']>'><!-- \" --><?x ' ?>]>\n<?vantry "
            "type=\"double\"?>"
            "<r>5</r>",
            {"r = 5.0d"});
        row("little end", wide("<r>\xE2\x82\xAC</r>", false), {"r = '\xE2\x82\xAC'"});
        row("big end", wide("<?xml version='1.0' encoding='UTF-16'?><r>1</r>", true), {"r = 1"});
        row("Latin-1", "<?xml version='1.0' encoding='ISO-8859-1'?><r>\xE9</r>", {"r = '\xC3\xA9'"});
        row("deep", nested(XmlReader::maximumDepth).substr(0, 3) + "1</a>", {"a = 1"});
    }

    void reads()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QStringList, lines);
        const auto document = makeDocument("xml");
        const Outcome outcome = document->parse(bytes.toStdString());
        QVERIFY2(outcome.ok(), outcome.error.c_str());
        QCOMPARE(toLines(*document), lines);
        QCOMPARE(QByteArray::fromStdString(document->getBytes()), bytes);
    }

    void refuses_data()
    {
        TestSupport::columns<QByteArray, int, int, QString>("bytes", "line", "column", "word");
        const auto row = [](const char* name, const std::string& bytes, int line, int column,
                            const char* word) {
            QTest::newRow(name) << QByteArray::fromStdString(bytes) << line << column
                                << QString::fromLatin1(word);
        };
        row("comment in a comment", "<r>\n<!-- a\n<!-- b -->\n</r>", 3, 5,
            "that begins in line 2 has not ended");
        row("hyphens in a comment", "<!-- a -->\n<!-- b -- c --><r/>", 2, 10, "begins in line 2");
        row("end tag", "<r>\n<\xC3\xA9 a='1'>\n </r>", 3, 4, "of line 2");
        row("cut short", "<r>\n<a>", 2, 4, "inside of <a>");
        row("no root", "<!-- c -->", 1, 11, "root");
        row("second root", "<r/>\r\n<r/>", 2, 1, "follow the root");
        row("no UTF-8", "<r>\xC3\xA9\xFF</r>", 1, 5, "not valid text");
        row("NUL", std::string("<r>\0</r>", 8), 1, 4, "U+0000");
        row("half a pair", wide("<r>", false) + std::string("\x00\xD8<\0/\0r\0>\0", 10), 1, 4,
            "not valid text");
        row("encoding", "<?xml version='1.0' encoding='UTF-7'?><r/>", 1, 31, "UTF-7");
        row("entity", "<r>&nope;</r>", 1, 4, "&nope;");
        row("twice", "<r a='1' a='2'/>", 1, 10, "twice");
        row("too deep", nested(XmlReader::maximumDepth + 1), 1, 3001, "1000");
        row("far too deep", repeated(1000000, "<a>"), 1, 3001, "1000");
        std::string bomb = "<!DOCTYPE r [<!ENTITY a0 'boooooooooooooooooooooooom'>";
        for (int i = 1; i < 20; ++i) {
            const std::string before = "&a" + std::to_string(i - 1) + ';';
            bomb += "<!ENTITY a" + std::to_string(i) + " '" + repeated(10, before) + "'>";
        }
        row("bomb", bomb + "]>\n<r>&a19;</r>", 2, 4, "attack");
        row("bomb in an attribute", bomb + "]>\n<r a='&a19;'/>", 2, 1, "attack");
        row("entity in itself", "<!DOCTYPE r [<!ENTITY a '&b;'><!ENTITY b '&a;'>]><r>&a;</r>", 1, 53,
            "itself");
        std::string chain = "<!DOCTYPE r [<!ENTITY a0 'x'>";
        for (int i = 1; i < 100000; ++i)
            chain += "<!ENTITY a" + std::to_string(i) + " '&a" + std::to_string(i - 1) + ";'>";
        row("chain of entities", chain + "]><r>&a99999;</r>", 1, 0, "refer to others");
    }

    void refuses()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(int, line);
        QFETCH(int, column);
        QFETCH(QString, word);
        const auto document = makeDocument("xml");
        const Outcome outcome = document->parse(bytes.toStdString());
        QVERIFY2(QString::fromStdString(outcome.error).contains(word), outcome.error.c_str());
        QCOMPARE(int(outcome.line), line);
        if (column > 0)
            QCOMPARE(int(outcome.column), column);
        QVERIFY(toLines(*document).isEmpty());
    }

    void edits_data()
    {
        TestSupport::columns<QByteArray, Edit, QByteArray>("before", "edit", "after");
        const auto row = [](const char* name, const std::string& before, const Edit& edit,
                            const std::string& after) {
            QTest::newRow(name) << QByteArray::fromStdString(before) << edit
                                << QByteArray::fromStdString(after);
        };
        row("value", "<r><a> 1 <!-- c --></a></r>", set("r.a", integer(2)), "<r><a> 2 <!-- c --></a></r>");
        row("escapes", "<r>x</r>", set("r", text("<&>]]> \r\"'")), "<r>&lt;&amp;>]]&gt; &#13;\"'</r>");
        row("edges", "<r> x </r>", set("r", text(" y\t")), "<r> &#32;y&#9; </r>");
        row("section", "<r><![CDATA[a]]></r>", set("r", text("]]>&")), "<r><![CDATA[]]]]><![CDATA[>&]]></r>");
        row("text like a number", "<r>x</r>", set("r", text("5")), "<r><![CDATA[5]]></r>");
        row("in an attribute", "<r a='x'/>", set("r.@a", text("5")), "<r a='&#53;'/>");
        row("quotes", "<r a='x'/>", set("r.@a", text("'\"<\n")), "<r a='&apos;\"&lt;&#10;'/>");
        row("empty", "<r><a>x</a><b>\n x</b></r>", set("r.a", text("")), "<r><a></a><b>\n x</b></r>");
        row("empty in lines", "<r>\n x</r>", set("r", text("")), "<r>\n <![CDATA[]]></r>");
        row("comment in a value", "<r>1<!-- c -->2</r>", set("r", integer(3)), "<r>3<!-- c --></r>");
        row("line ends", "<r>\r\n<a>x</a></r>", set("r.a", text("y\nz")), "<r>\r\n<a>y\r\nz</a></r>");
        row("beyond Latin-1", "<?xml version='1.0' encoding='latin1'?><r>x</r>",
            set("r", text("\xC3\xA9\xE2\x82\xAC")),
            "<?xml version='1.0' encoding='latin1'?><r>\xE9&#8364;</r>");
        row("what would come back as another character",
            "<?xml version='1.0' encoding='Shift_JIS'?><r><a>x</a><!-- \x5C --></r>",
            set("r.a", text("a\\\xC2\xA5")),
            "<?xml version='1.0' encoding='Shift_JIS'?><r><a>a&#92;\x5C</a><!-- \x5C --></r>");
        row("beyond ASCII", "<?xml version='1.0' encoding='US-ASCII'?><r>x</r>", set("r", text("\xC3\xA9")),
            "<?xml version='1.0' encoding='US-ASCII'?><r>&#233;</r>");
        row("text beside an element", "<r>a<b/></r>", insert("r.#text[2]", text("c")), "<r>a<b/> c</r>");
        row("punctuation beside an element", "<r>a<b/></r>", insert("r.#text[2]", text(", c")),
            "<r>a<b/>, c</r>");
        const auto removal = [](Document& document) { return document.remove("r.b"); };
        row("nothing between words", "<r>a<b/>c</r>", removal, "<r>a c</r>");
        row("nothing between brackets", "<r>url(<b/>) c<b/></r>", removal, "<r>url() c<b/></r>");
        row("opened in lines", "<r>\n <a\n  k='1'\n />\n</r>", insert("r.a.b", integer(1)),
            "<r>\n <a\n  k='1'\n >\n  <b>1</b>\n </a>\n</r>");
        row("text", "<r>a <b/> c </r>", set("r.#text[2]", text("d")), "<r>a <b/> d </r>");

        row("blanks that count", "<r xml:space='preserve'><a> x </a></r>", set("r.a", text("y ")),
            "<r xml:space='preserve'><a>y </a></r>");
        row("blanks that count between elements", "<r xml:space='preserve'>a <b/> c </r>",
            set("r.#text[2]", text(" d ")), "<r xml:space='preserve'>a <b/> d </r>");
        row("blanks of translations", "<xliff>\n <s>Foo: </s>\n</xliff>", set("xliff.s", text("Bar: ")),
            "<xliff>\n <s>Bar: </s>\n</xliff>");
        row("nothing laid out", "<r xml:space='preserve'>\n <a/>\n</r>", insert("r.b", group()),
            "<r xml:space='preserve'>\n <a/><b/>\n</r>");
        row("around entities", "<!DOCTYPE r [<!ENTITY e 'x'>]><r a='&e;1'>1 &e; 2&#160;</r>",
            set("r", text("0 x 3\xC2\xA0")), "<!DOCTYPE r [<!ENTITY e 'x'>]><r a='&e;1'>0 &e; 3&#160;</r>");
        row("around an entity from elsewhere", "<!DOCTYPE r SYSTEM 'd'><r a='&f; &#65;b'/>",
            set("r.@a", text("&f; &f; Ac")), "<!DOCTYPE r SYSTEM 'd'><r a='&f; &amp;f; Ac'/>");
        row("number with an exponent", "<?vantry type=\"double\"?><r>1E5</r>", set("r", number(200000)),
            "<?vantry type=\"double\"?><r>2E5</r>");
        const Value day{Type::Date, std::string("2024-01-02")};
        row("a tag that a text does without", "<r>\n <?vantry type=\"date\"?>\n <a>2024-01-01</a>\n</r>",
            set("r.a", text("soon")), "<r>\n <a>soon</a>\n</r>");
        row("a tag that an attribute does without",
            "<?vantry type=\"date\"?><?vantry type=\"list\" attribute=\"a\"?><r a='x;y'>2024-01-01</r>",
            set("r.@a", integer(5)), "<?vantry type=\"date\"?><r a='5'>2024-01-01</r>");
        row("a tag that names another type", "<r><?vantry type=\"text\"?><a>5</a></r>", set("r.a", day),
            "<r><?vantry type=\"date\"?><a>2024-01-02</a></r>");
        row("a tag that gets escapes", "<r><?vantry type=\"date\"?><a>2024-01-01</a></r>",
            set("r.a", text("\x01")), "<r><?vantry type=\"text\" escapes=\"yes\"?><a>\\x01</a></r>");
        row("a tag of nothing", "<r><?vantry type=\"date\"?><a>2024-01-01</a></r>", set("r.a", null()),
            "<r><?vantry type=\"null\"?><a></a></r>");
        row("words stay apart", "<r>one<b/>two</r>", take("r.b"), "<r>one two</r>");
        row("new file", "", insert("r.a.@b", integer(1)),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<r>\n  <a b=\"1\"/>\n</r>\n");
        row("behind its siblings", "<r>\n\t<a/> <!-- of a -->\n\t<b/>\n</r>", insert("r.a[2]", integer(1)),
            "<r>\n\t<a/> <!-- of a -->\n\t<a>1</a>\n\t<b/>\n</r>");
        row("first child", "<r>\r\n   <a x='1'/>\r\n</r>", insert("r.a.b", integer(1)),
            "<r>\r\n   <a x='1'>\r\n      <b>1</b>\r\n   </a>\r\n</r>");
        row("below a comment", "<r>\n  <!-- c -->\n</r>", insert("r.a", group()),
            "<r>\n  <!-- c -->\n  <a/>\n</r>");
        row("in one line", "<r><a>1</a></r>", insert("r.b", integer(2)), "<r><a>1</a><b>2</b></r>");
        row("mixed", "<r>\n <b/>x\n</r>", insert("r.b[2]", group()), "<r>\n <b/><b/>x\n</r>");
        row("attribute", "<r a='1'\n   b='2' />", insert("r.@c", text("'")),
            "<r a='1'\n   b='2'\n   c='&apos;' />");
        row("value of a group", "<r>\n</r>", insert("r", integer(1)), "<r>1</r>");
        row("mark", "<r>\n  <a/>\n</r>", insert("r.b", {Type::Date, std::string("2024-02-29")}),
            "<r>\n  <a/>\n  <?vantry type=\"date\"?>\n  <b>2024-02-29</b>\n</r>");
        row("number", "<r a='x'>1E5</r>", set("r", number(200000)), "<r a='x'>2E5</r>");
        row("whole number of a double", "<r a='1.5'/>", set("r.@a", number(-3)), "<r a='-3.0'/>");
        row("mark of an attribute", "<r/>", insert("r.@a", null()),
            "<?vantry type=\"null\" attribute=\"a\"?>\n<r a=\"\"/>");
        row("control characters", "<r><a/></r>", insert("r.b", text(std::string("\0\\", 2))),
            "<r><a/><?vantry type=\"text\" escapes=\"yes\"?><b>\\x00\\\\</b></r>");

        row("remove", "<r>\n <!-- d -->\n <a/> <!-- of a -->\n <b/>\n</r>", take("r.a"),
            "<r>\n <!-- d -->\n <b/>\n</r>");
        row("remove with its mark", "<r>\n <?vantry type=\"double\"?>\n <a>1</a>\n <b/>\n</r>", take("r.a"),
            "<r>\n <b/>\n</r>");
        row("remove the last child", "<r><a b='1'><c/></a></r>", take("r.a.c"), "<r><a b='1'/></r>");
        row("remove the last child of what is tagged twice",
            "<?vantry type=\"date\"?><?vantry type=\"date\"?><k n=''>\n<k>2024-01-02</k></k>", take("k.k"),
            "<k n=''>\n</k>");
        row("remove between texts", "<r>a <b/> c</r>", take("r.b"), "<r>a  c</r>");
        row("remove an attribute", "<?vantry type=\"double\" attribute=\"a\"?>\n<r a='1' b='2'/>",
            take("r.@a"), "\n<r b='2'/>");
        row("remove the root", "<?xml version='1.0'?>\n<r><a/></r>\n", take("r"), "");
    }

    // The bytes after an edit, and that they give the tree that the edited document shows.
    void edits()
    {
        QFETCH(QByteArray, before);
        QFETCH(Edit, edit);
        QFETCH(QByteArray, after);
        const auto document = makeDocument("xml");
        QVERIFY(document->parse(before.toStdString()).ok());
        const Outcome outcome = edit(*document);
        QVERIFY2(outcome.ok(), outcome.error.c_str());
        QCOMPARE(QByteArray::fromStdString(document->getBytes()), after);
        QCOMPARE(toLines("xml", after.toStdString()), toLines(*document));
    }

    void refusesEdits_data()
    {
        const auto row = TestSupport::columns<QByteArray, Edit, QString>("bytes", "edit", "word");
        row("second root", "<r/>", insert("s", integer(1)), "one root");
        row("no name", "<r/>", insert("r.1a", integer(1)), "cannot be a name");
        row("prefix", "<r/>", insert("r.x:a", integer(1)), "@xmlns:x");
        row("below a value", "<r>1</r>", insert("r.a", integer(1)), "has a value");
        row("below an attribute", "<r a='1'/>", insert("r.@a.b", integer(1)), "no other entries");
        row("value beside elements", "<r><a/></r>", insert("r", integer(1)), "#text");
        row("not the next", "<r><a/></r>", insert("r.a[3]", integer(1)), "a[2]");
        row("text without elements", "<r/>", insert("r.#text", integer(1)), "#text");
        row("there already", "<r a='1'/>", insert("r.@a", integer(1)), "already");
        row("type", "<r>x</r>", set("r", {Type::Date, std::string("2024-02-29")}), "would be read as a text");
        row("control character", "<r>x</r>", set("r", text("\x01")), "U+0001");
        row("commented root", "<!-- c --><r/>", take("r"), "root element");
        row("group", "<r/>", set("r", integer(1)), "group");
        row("blanks of others", "<r xml:space='preserve'><a> x </a></r>",
            set("r.@xml:space", text("default")), "other blanks");
        row("words", "<!DOCTYPE r [<!ATTLIST r a NMTOKENS #IMPLIED>]><r a='x'/>", set("r.@a", text("x ")),
            "type tag");
        row("declaration", "<r xmlns:p='u'><p:k/></r>", take("r.@xmlns:p"), "prefix that is used");
        row("empty declaration", "<r xmlns:p='u' p:k='1'/>", set("r.@xmlns:p", text("")),
            "prefix that is used");
        row(
            "spelling", "<r>x</r>", [](Document& document) { return document.respell("r", "a</r><r>"); },
            "does not spell");
    }

    void refusesEdits()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(Edit, edit);
        QFETCH(QString, word);
        const auto document = makeDocument("xml");
        QVERIFY(document->parse(bytes.toStdString()).ok());
        const Outcome outcome = edit(*document);
        QVERIFY2(QString::fromStdString(outcome.error).contains(word), outcome.error.c_str());
        QCOMPARE(QByteArray::fromStdString(document->getBytes()), bytes);
    }

    void keepsTypes_data()
    {
        const auto row = TestSupport::columns<Value>("value");
        row("null", null());
        row("bool", boolean(false));
        row("smallest integer", integer(INT64_MIN));
        row("small unsigned", {Type::Unsigned, std::uint64_t(0)});
        row("largest unsigned", {Type::Unsigned, UINT64_MAX});
        row("whole double", number(3));
        row("negative zero", number(-0.0));
        row("smallest double", number(5e-324));
        row("nothing", text(""));
        row("number as text", text("5"));
        row("bool as text", text("true"));
        row("blanks", text(" \t\n"));
        row("return", text("a\rb\r\n"));
        row("markup", text("<a b=\"c\" d='e'>&amp;]]></a><!-- -->"));
        row("all planes", text("\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80\xC2\x85"));
        row("no character", text("\xEF\xBF\xBF"));
        row("NUL", text(std::string("a\0\x1F\\x00", 7)));
        row("no texts", list({}));
        row("empty texts", list({"", ""}));
        row("texts", list({"a;b\\", " c ", std::string("\0", 1)}));
        row("no bytes", {Type::ByteArray, std::string()});
        row("bytes", {Type::ByteArray, std::string("\0\xFF<\\ ", 5)});
        row("date", {Type::Date, std::string("2024-02-29")});
        row("time", {Type::Time, std::string("23:59:59.999")});
        row("moment", {Type::DateTime, std::string("2024-02-29T23:59:59.999+05:30")});
    }

    // An element, a deeper one and an attribute of each type, in an own file and beside others, load as they
    // were made, also after a change there and back.
    void keepsTypes()
    {
        QFETCH(Value, value);
        for (const char* bytes :
             {"", "<r/>", "<r>\n <z/>\n</r>", "<?xml version='1.0' encoding='latin1'?><r/>"}) {
            const auto document = makeDocument("xml");
            QVERIFY(document->parse(bytes).ok());
            for (const char* path : {"r.a", "r.b.c", "r.b.@d", "r.@e"}) {
                const Outcome outcome = document->insert(path, value);
                QVERIFY2(outcome.ok(), outcome.error.c_str());
            }
            const std::string after = document->getBytes();
            QCOMPARE(toLines(*document), toLines("xml", after));
            const auto reloaded = makeDocument("xml");
            QVERIFY(reloaded->parse(after).ok());
            int same = 0;
            reloaded->visit([&](const Entry& entry) {
                using FrameworkCore::Values::toText;
                same += entry.value.type == value.type && toText(entry.value) == toText(value) ? 1 : 0;
            });
            QCOMPARE(same, 4);
            for (const char* path : {"r.a", "r.b.@d"}) {
                const auto spelling = document->spell(path);
                const auto span = document->locate(path);
                QVERIFY(spelling && span && span->offset + span->length <= after.size());
                QVERIFY(document->respell(path, "other").ok());
                QVERIFY(document->respell(path, *spelling).ok());
            }
            QCOMPARE(QByteArray::fromStdString(document->getBytes()), QByteArray::fromStdString(after));
            QFile file(folder.filePath(QString::number(++files)));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(after.data(), qint64(after.size()));
        }
    }

    // Files of entries of all types are xml for others, and the tags do not disturb them.
    void isReadByOthers()
    {
        const QString small = QStringLiteral("[('r', 'e'), ('a',), ('b', 'd'), ('c',)]");
        const QString large = QStringLiteral("[('r', 'e'), ('z',), ('a',), ('b', 'd'), ('c',)]");
        const QStringList seen = readByPython(folder.path());
        QVERIFY2(files > 0, "keepsTypes makes the files");
        QCOMPARE(seen.size(), files);
        for (const QString& line : seen)
            QVERIFY2(line == small || line == large, qPrintable(line));
    }

private:
    QTemporaryDir folder;
    int files = 0;
};

VANTRY_TEST_MAIN(QCoreApplication, XmlDocumentTest)

#include "repository/documents/Formats.h"
#include "xml_document_test.moc"
