#include "tests/documents/EntryLines.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

using namespace EntryLines;
using Repository::Documents::makeDocument;

namespace {

std::string bytesAt(const Document& document, const std::string& path)
{
    const auto span = document.locate(path);
    return span ? document.getBytes().substr(span->offset, span->length) : "nowhere";
}

} // namespace

// Values by their place and their spelling, in all formats.
class SpellingTest : public QObject
{
    Q_OBJECT

private slots:
    void restoresTheBytes_data()
    {
        TestSupport::columns<QByteArray, QByteArray, QByteArray, QByteArray>("format", "file", "path",
                                                                             "place");
        const auto row = [](const char* format, const char* file, const char* path, const char* place) {
            QTest::addRow("%s of %s", path, file)
                << QByteArray(format) << QByteArray(file) << QByteArray(path) << QByteArray(place);
        };
        row("json", "{\"a\" : 1.50 , \"b\":2} // c", "a", "1.50");
        row("json", " [1e400, {}]\n", "0", "1e400");
        row("json", "\xEF\xBB\xBF[\"\\u0041\", 1]", "0", "\"\\u0041\"");
        row("json", "{\"a\":[ \"x\" ,  \"z\", ], \"b\":1}", "a", "[ \"x\" ,  \"z\", ]");
        row("json", "{\"a\":{\"#value\": 7.0,\"b\":1}}", "a", "7.0");
        row("json", "{\"a\":1,\"a\":\t2}", "a[2]", "2");
        row("json", " 1 // x", "", "1");
        row("ini", "[s]\na = 5\nb : x ; c\r\n", "s.b", "x");
        row("ini",
            "\xEF\xBB\xBF"
            "a=\"q\"\nb",
            "a", "\"q\"");
        row("ini", "[s]\na = 1\n    2\n  3\nb", "s.a", "1\n    2\n  3");
        row("ini", "a=1\na=2", "a[2]", "2");
        row("ini", "[s]\nk", "s.k", "");
        row("ini", "; @type text\nk = \"5\" ; c\nb", "k", "\"5\"");
        row("txt", "# c\na = 1\nk.x  =\t 'v'  \r\nb=2", "k.x", "'v'");
        row("txt", "\xEF\xBB\xBFk =\nk=", "k[2]", "");
        row("txt", "k.x = a \\\n  b\nc=1\n", "k.x", "a \\\n  b");
        row("txt", "# @type text\nk = \"5\"", "k", "\"5\"");
        row("xml", "<r> &#x35;&amp; <!-- c --></r>", "r", "&#x35;&amp;");
        row("xml", "<r>1<!-- c -->2 </r>", "r", "1<!-- c -->2");
        row("xml", "<r>a <![CDATA[b]]><s/> c<?d e?>f </r>", "r.#text[2]", "c<?d e?>f");
        row("xml", "<r a='&quot;\n' b=''/>", "r.@a", "&quot;\n");
        row("xml", "<?vantry type=\"null\"?><r a=''  />", "r", "");
    }

    void restoresTheBytes()
    {
        QFETCH(QByteArray, format);
        QFETCH(QByteArray, file);
        QFETCH(QByteArray, path);
        QFETCH(QByteArray, place);
        const auto document = makeDocument(format.toStdString());
        QVERIFY(document->parse(file.toStdString()).ok());
        const std::string entry = path.toStdString();
        QCOMPARE(QByteArray::fromStdString(bytesAt(*document, entry)), place);
        const auto spelling = document->spell(entry);
        QVERIFY(spelling);

        const auto outcome = document->set(entry, text("another value"));
        QVERIFY2(outcome.ok(), outcome.error.c_str());
        QVERIFY(bytesAt(*document, entry).find("another value") != std::string::npos);
        const std::string edited = document->getBytes();
        const auto other = document->spell(entry);
        QVERIFY(document->respell(entry, *spelling).ok());
        QCOMPARE(QByteArray::fromStdString(document->getBytes()), file);
        QVERIFY(document->respell(entry, *other).ok());
        QCOMPARE(QByteArray::fromStdString(document->getBytes()), QByteArray::fromStdString(edited));

        const auto reloaded = makeDocument(format.toStdString());
        QVERIFY(reloaded->parse(edited).ok());
        QVERIFY(reloaded->respell(entry, *spelling).ok());
        QCOMPARE(QByteArray::fromStdString(reloaded->getBytes()), file);
    }

    // The "\r" and "\n" of two lines, between which there was another one, are no line end together.
    void restoresALineAboveABlankOne()
    {
        const auto document = makeDocument("ini:kde");
        QVERIFY(document->parse("m = a\\nb\rx=1\r\n\n[m]\n").ok());
        QVERIFY(document->remove("x").ok());
        const std::string before = document->getBytes();
        const auto spelling = document->spell("m");
        QVERIFY(document->set("m", text("c")).ok());
        const auto outcome = document->respell("m", *spelling);
        QVERIFY2(outcome.ok(), outcome.error.c_str());
        QCOMPARE(document->getBytes(), before);
    }

    void refusesWhatIsNoSpelling_data()
    {
        TestSupport::columns<QByteArray, QByteArray, QByteArray, QByteArray>("format", "file", "path",
                                                                             "spelling");
        const auto row = [](const char* format, const char* file, const char* path, const char* spelling) {
            QTest::addRow("%s of %s as %s", path, file, spelling)
                << QByteArray(format) << QByteArray(file) << QByteArray(path) << QByteArray(spelling);
        };
        row("json", "{\"a\":1}", "a", "2, \"b\":3");
        row("json", "{\"a\":1}", "a", "{\"b\":3}");
        row("json", "{\"a\":1}", "a", " 2");
        row("json", "{\"a\":1}", "b", "2");
        row("json", "{\"a\":{}}", "a", "2");
        row("json", "[\"x\", 1]", "1", "\"y\""); // a list would be left
        row("ini", "[s]\na=1\n", "s.a", "b=1\n");
        row("ini", "[s]\na=1\n", "s.a", "a=1\nb=2\n");
        row("ini", "[s]\na=1\n", "s.a", "[t]\n");
        row("ini", "[s]\na=1\n", "s", "a=1\n");
        row("ini", "[s]\na=1\n", "s.a", "; @type text\na=1\n");
        row("txt", "a.b=1", "a.b", "");
        row("txt", "a.b=1", "a.b", " 5");
        row("txt", "a.b=1", "a.b", "=5\n");
        row("txt", "a.b=1", "a.b", "= 5\nc=6");
        row("txt", "a.b=1", "a.b", "x = 5");
        row("txt", "a.b=1", "a", "=5");
        row("xml", "<r>1</r>", "r", "2</r><r>");
        row("xml", "<r>1</r>", "r", " 2");
        row("xml", "<r>1</r>", "r", "<!-- 2 -->");
        row("xml", "<r>1</r>", "r", "&nope;");
        row("xml", "<r>1</r>", "r", "</>");
        row("xml", "<r a='1'/>", "r.@a", "2' b='3");
    }

    void refusesWhatIsNoSpelling()
    {
        QFETCH(QByteArray, format);
        QFETCH(QByteArray, file);
        QFETCH(QByteArray, path);
        QFETCH(QByteArray, spelling);
        const auto document = makeDocument(format.toStdString());
        QVERIFY(document->parse(file.toStdString()).ok());
        QVERIFY(!document->respell(path.toStdString(), spelling.toStdString()).ok());
        QCOMPARE(QByteArray::fromStdString(document->getBytes()), file);
    }
};

VANTRY_TEST_MAIN(QCoreApplication, SpellingTest)

#include "repository/documents/Formats.h"
#include "spelling_test.moc"
