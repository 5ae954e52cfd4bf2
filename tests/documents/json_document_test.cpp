#include "tests/documents/EntryLines.h"
#include "tests/support/TestRun.h"

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QRandomGenerator>

using namespace EntryLines;
using Repository::Documents::makeDocument;
using Repository::Documents::Outcome;

namespace {

using Edit = std::function<Outcome(Document&)>;

Edit set(const char* path, const Value& value)
{
    return [path, value](Document& document) { return document.set(path, value); };
}
Edit insert(const char* path, const Value& value)
{
    return [path, value](Document& document) { return document.insert(path, value); };
}
Edit removal(const char* path)
{
    return [path](Document& document) { return document.remove(path); };
}

using Row = std::function<void(const QByteArray&, const Edit&, const QByteArray&)>;

// Only the value's bytes change, and none when it is equal.
void addSetRows(const Row& row)
{
    row("{\"a\" :\t1 , \"b\":2}", set("a", integer(-10)), "{\"a\" :\t-10 , \"b\":2}");
    row("[1.0, 1e3, -0]", set("0", number(1)), "[1.0, 1e3, -0]");
    row("[1.0, 1e3, -0]", set("1", number(1000)), "[1.0, 1e3, -0]");
    row("[1.0, 1e3, -0]", set("1", number(100000)), "[1.0, 1e+05, -0]");
    row("[0.0]", set("0", number(-0.0)), "[-0.0]");
    row("[1.5]", set("0", number(0.1)), "[0.1]");
    row("[1.5]", set("0", number(1e300)), "[1e+300]");
    row("[1]", set("0", {Type::Unsigned, std::uint64_t(18446744073709551615U)}), "[18446744073709551615]");
    row("{\"a\": \"\\u0041\"}", set("a", text("A")), "{\"a\": \"\\u0041\"}");
    row("{\"a\": \"\\u0041\"}", set("a", text("B/\"\\\n\x1F\x7F\xC3\xA9")),
        "{\"a\": \"B/\\\"\\\\\\n\\u001f\x7F\xC3\xA9\"}");
    row("{\"a\":null}", set("a", boolean(true)), "{\"a\":true}");
    row("{\"a\":true}", set("a", boolean(false)), "{\"a\":false}");
    row("{\"a\":1}", set("a", null()), "{\"a\":null}");
    row(" 1 // x", set("", text("y")), " \"y\" // x");
    row("{\"a\":1,\"a\":2}", set("a[2]", integer(3)), "{\"a\":1,\"a\":3}");
    row("{\"a\":{\"b\":1,\"#value\":2}}", set("a", integer(3)), "{\"a\":{\"b\":1,\"#value\":3}}");
    row("[[\"x\"],1]", set("0", integer(2)), "[2,1]");
    row("[\"x\",1,2]", set("1", text("y")), "[\"x\",\"y\",2]");
    row("[1e400]", set("0", text("1e500")), "[1e500]");
    row(
        "{\"a\":1e400}",
        [](Document& document) {
            document.set("a", text("x"));
            return document.set("a", text("1e500"));
        },
        "{\"a\":1e500}");
    row("{\"a\":1e400}", set("a", text("5")), "{\"a\":\"5\"}");
    row("{\"a\":\"x\"}", set("a", text("1e500")), "{\"a\":\"1e500\"}");
}

// A list keeps its layout, and the elements that stay keep their text and comments.
void addListRows(const Row& row)
{
    row("[\"a\", \"b\"]", set("", list({"a", "b", "c"})), "[\"a\", \"b\", \"c\"]");
    row("[\"a\",\"b\"]", set("", list({"c", "a", "b"})), "[\"c\",\"a\",\"b\"]");
    row("[ \"a\", \"b\" ]", set("", list({"b"})), "[ \"b\" ]");
    row("[ \"a\" ]", set("", list({})), "[]");
    row("{\"a\": []}", set("a", list({"x", "y"})), "{\"a\": [\"x\", \"y\"]}");
    row("{\"a\":[]}", set("a", list({"x", "y"})), "{\"a\":[\"x\",\"y\"]}");
    row("{\"a\":1}", set("a", list({"x", "y"})), "{\"a\":[\"x\",\"y\"]}");
    row("[\n  \"a\", // one\n  \"b\", // two\n  \"c\" // three\n]\n", set("", list({"b", "c"})),
        "[\n  \"b\", // two\n  \"c\" // three\n]\n");
    row("[\n  \"a\", // one\n  \"b\" // two\n]\n", set("", list({"a", "x", "b"})),
        "[\n  \"a\", // one\n  \"x\",\n  \"b\" // two\n]\n");
    row("[\n  // all\n  \"\\u0061\",\n  \"b\"\n]\n", set("", list({"x", "a", "b"})),
        "[\n  // all\n  \"x\",\n  \"\\u0061\",\n  \"b\"\n]\n");
    row("[\n  \"a\", // one\n]\n", set("", list({"a", "b"})), "[\n  \"a\", // one\n  \"b\",\n]\n");
    row("[\n  \"a\", // one\n]\n", set("", list({"x"})), "[\n  \"x\", // one\n]\n");
    row("[ // none\n]\n", set("", list({"x"})), "[ // none\n    \"x\"\n]\n");
}

// New members look like their siblings.
void addInsertRows(const Row& row)
{
    row("", insert("a.b", integer(1)), "{\n    \"a\": {\n        \"b\": 1\n    }\n}\n");
    row("// x", insert("a", integer(1)), "// x\n{\n    \"a\": 1\n}\n");
    row("", insert("", integer(1)), "{\n    \"#value\": 1\n}\n");
    row("", insert("", group()), "{}\n");
    row("{}", insert("a", integer(1)), "{\n    \"a\": 1\n}");
    row("{\"a\":1}", insert("b", group()), "{\"a\":1,\"b\":{}}");
    row("{\"a\":1}", insert("b.c.d", text("x")), "{\"a\":1,\"b\":{\"c\":{\"d\":\"x\"}}}");
    row("{\"a\": 1}", insert("b.c", integer(2)), "{\"a\": 1, \"b\": {\"c\": 2}}");
    row("{ \"a\": 1 }", insert("b", integer(2)), "{ \"a\": 1, \"b\": 2 }");
    row("{\n  \"a\" : 1\n}\n", insert("b.c", integer(2)),
        "{\n  \"a\" : 1,\n  \"b\" : {\n    \"c\" : 2\n  }\n}\n");
    row("{\r\n\t\"a\": {}\r\n}\r\n", insert("a.b", integer(2)),
        "{\r\n\t\"a\": {\r\n\t\t\"b\": 2\r\n\t}\r\n}\r\n");
    row("{\r\t\"a\": 1\r}\r", insert("b", integer(2)), "{\r\t\"a\": 1,\r\t\"b\": 2\r}\r");
    row("{\n  \"a\": {\"b\": 1},\n  \"c\": [\n    {\n    }\n  ]\n}", insert("a.d", integer(2)),
        "{\n  \"a\": {\"b\": 1, \"d\": 2},\n  \"c\": [\n    {\n    }\n  ]\n}");
    row("{\n  \"c\": [\n    {\n    }\n  ]\n}", insert("c.0.x", integer(2)),
        "{\n  \"c\": [\n    {\n      \"x\": 2\n    }\n  ]\n}");
    row("{\n  \"a\": 1,\n}", insert("b", integer(2)), "{\n  \"a\": 1,\n  \"b\": 2,\n}");
    row("[1, 2, ]", insert("2", integer(3)), "[1, 2, 3, ]");
    row("[1]", insert("1", text("x")), "[1, \"x\"]");
    row("[\n 1, 2,\n 3, 4\n]", insert("4", integer(5)), "[\n 1, 2,\n 3, 4, 5\n]");
    row("[{}]", insert("1.a", null()), "[{}, {\"a\": null}]");
    row("{\"a\":1}", insert("a[2]", integer(2)), "{\"a\":1,\"a\":2}");
    row("{\"a\":1}", insert("b%2Ec", list({"x"})), "{\"a\":1,\"b.c\":[\"x\"]}");
    row("{\n \"a\": 1\n}", insert("b", list({std::string(50, 'x'), std::string(50, 'y')})),
        "{\n \"a\": 1,\n \"b\": [\n  \"" + QByteArray(50, 'x') + "\",\n  \"" + QByteArray(50, 'y') +
            "\"\n ]\n}");
    row("{\"a\":1}", insert("a.b", integer(2)), "{\"a\":{\"#value\":1,\"b\":2}}");
    row("{\n  \"a\": [\n    \"x\"\n  ]\n}", insert("a.b", integer(2)),
        "{\n  \"a\": {\n    \"#value\": [\n    \"x\"\n  ],\n    \"b\": 2\n  }\n}");
    row("{\"a\":{\"b\":1}}", insert("a", integer(2)), "{\"a\":{\"b\":1,\"#value\":2}}");
    row("5", insert("a", integer(1)), "{\n    \"#value\": 5,\n    \"a\": 1\n}");
}

// Removing takes the comma and the line.
void addRemoveRows(const Row& row)
{
    row("{\"a\":1,\"b\":2,\"c\":3}", removal("a"), "{\"b\":2,\"c\":3}");
    row("{\"a\":1,\"b\":2,\"c\":3}", removal("b"), "{\"a\":1,\"c\":3}");
    row("{\"a\": 1, \"b\": 2}", removal("a"), "{\"b\": 2}");
    row("{ \"a\": 1, \"b\": 2 }", removal("b"), "{ \"a\": 1 }");
    row("{ \"a\": 1 }", removal("a"), "{}");
    row("{\n  \"a\": 1,\n}\n", removal("a"), "{}\n");
    row("{\n  \"a\": 1,\n  \"b\": {\n    \"c\": 1\n  },\n  \"d\": 2\n}\n", removal("b"),
        "{\n  \"a\": 1,\n  \"d\": 2\n}\n");
    row("{\n  \"a\": 1,\n  \"b\": 2\n}\n", removal("b"), "{\n  \"a\": 1\n}\n");
    row("{\n  \"a\": 1,\n  \"b\": 2,\n}\n", removal("b"), "{\n  \"a\": 1,\n}\n");
    row("{\n  \"a\": 1, \"b\": 2,\n  \"c\": 3\n}\n", removal("a"), "{\n  \"b\": 2,\n  \"c\": 3\n}\n");
    row("{\n  \"a\": 1, \"b\": 2,\n  \"c\": 3\n}\n", removal("b"), "{\n  \"a\": 1,\n  \"c\": 3\n}\n");
    row("{ \"a\": 1\n, \"b\": 2\n, \"c\": 3\n}", removal("b"), "{ \"a\": 1\n, \"c\": 3\n}");
    row("{ \"a\": 1\n, \"b\": 2\n, \"c\": 3\n}", removal("c"), "{ \"a\": 1\n, \"b\": 2\n}");
    row("{\"a\":1,\"a\":2,\"a\":3}", removal("a"), "{\"a\":2,\"a\":3}");
    row("[1, 2, 3]", removal("1"), "[1, 3]");
    row("[1, \"x\", \"y\"]", removal("0"), "[\"x\", \"y\"]");
    row("[1]", removal("0"), "[]");
}

// Comments stay with what they are about; those on the line of what is removed go, and no others.
void addCommentRows(const Row& row)
{
    const QByteArray lines = "{ // top\n"
                             "  // about a\n"
                             "  \"a\": 1, // one\n"
                             "  /* about\n     b */\n"
                             "  \"b\": 2, /* two */\n"
                             "  // about c\n"
                             "  \"c\": 3 // three\n"
                             "  // end\n"
                             "}\n";
    const auto without = [&lines](const char* from, const char* to) {
        return QByteArray(lines).replace(from, to);
    };
    row(lines, removal("a"), without("  \"a\": 1, // one\n", ""));
    row(lines, removal("b"), without("  \"b\": 2, /* two */\n", ""));
    row(lines, removal("c"), without("2, /* two */", "2 /* two */").replace("  \"c\": 3 // three\n", ""));
    row(lines, insert("d", integer(4)), without("3 // three\n", "3, // three\n  \"d\": 4\n"));
    row("{\n  \"a\": 1 /* one */\n}", insert("b", integer(2)), "{\n  \"a\": 1 /* one */,\n  \"b\": 2\n}");
    row("{\"a\": 1 /* one */ }", insert("b", integer(2)), "{\"a\": 1 /* one */, \"b\": 2 }");
    row("{\n  \"a\": 1, // one\n}", insert("b", integer(2)), "{\n  \"a\": 1, // one\n  \"b\": 2,\n}");
    row("{\"a\": 1 // one\n}", insert("b", integer(2)), "{\"a\": 1, // one\n\"b\": 2\n}");
    row("{ // none\n}", insert("a", integer(1)), "{ // none\n    \"a\": 1\n}");
    row("{\"x\": { /* none */ }}", insert("x.a", integer(1)), "{\"x\": { /* none */ \"a\": 1}}");
    row("{\"a\": 1, // one\n \"b\": 2}", removal("b"), "{\"a\": 1 // one\n}");
    row("{\"a\": 1, // one\n \"b\": 2}", removal("a"), "{ // one\n \"b\": 2}");
    row("{ /* x */ \"a\": 1 }", removal("a"), "{ /* x */ }");
    row("{\"a\": 1, /* b */ \"b\": 2, \"c\": 3}", removal("b"), "{\"a\": 1, \"c\": 3}");
    row("{\n \"a\": 1 // one\n , \"b\": 2\n}", removal("b"), "{\n \"a\": 1 // one\n \n}");
}

} // namespace

Q_DECLARE_METATYPE(Edit)

class JsonDocumentTest : public QObject
{
    Q_OBJECT

private slots:
    void reads_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("lines");
        const auto row = [](const char* name, const QByteArray& bytes, const char* lines) {
            QTest::newRow(name) << bytes
                                << QString::fromUtf8(lines).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        };
        row("nothing", "", "");
        row("blanks and a comment", "\n // empty\n", "");
        row("empty object", "{}\n", "");
        row("types", "{\"a\":1,\"b\":-1,\"c\":1.5,\"d\":true,\"e\":false,\"f\":null,\"g\":\"x\"}",
            "a = 1\nb = -1\nc = 1.5d\nd = true\ne = false\nf = null\ng = 'x'");
        row("groups", "{\"a\":{\"b\":{},\"c\":1},\"d\":2}", "a = {}\na.b = {}\na.c = 1\nd = 2");
        row("arrays", "{\"a\":[],\"b\":[\"x\",\"y\"],\"c\":[1,\"x\",[true]],\"d\":[{}]}",
            "a = []\nb = ['x','y']\nc = {}\nc.0 = 1\nc.1 = 'x'\nc.2 = {}\nc.2.0 = true\nd = {}\nd.0 = {}");
        row("numbers", "[-0, 1.0, 1e3, 1E-2, -0.0, 9223372036854775807, -9223372036854775808]",
            "0 = 0\n1 = 1d\n2 = 1000d\n3 = 0.01d\n4 = -0d\n5 = 9223372036854775807\n6 = "
            "-9223372036854775808");
        row("beyond int64", "[9223372036854775808, 18446744073709551615]",
            "0 = 9223372036854775808u\n1 = 18446744073709551615u");
        row("numbers of no type", "[18446744073709551616, -9223372036854775809, 1e400, 1e-400, 0e999]",
            "0 = '18446744073709551616'\n1 = '-9223372036854775809'\n2 = '1e400'\n3 = '1e-400'\n4 = 0d");
        row("escapes", "{\"a\\u0062\":\"\\\"\\\\\\/\\b\\f\\n\\r\\t\\u00e9\\ud83d\\ude00\"}",
            "ab = '\"\\/\b\f\\n\r\t\xC3\xA9\xF0\x9F\x98\x80'");
        row("half pairs", "[\"\\ud83dx\",\"\\ude00\",\"\\ud83d\\u0041\"]",
            " = ['\xEF\xBF\xBDx','\xEF\xBF\xBD','\xEF\xBF\xBD"
            "A']");
        row("keys", "{\"\":1,\"a.b\":2,\"#c\":3,\"d[2]\":4,\"\\u0000\":5}",
            "%00 = 1\na%2Eb = 2\n%23c = 3\nd[2%5D = 4\n%00%00 = 5");
        row("repeated keys", "{\"a\":1,\"b\":2,\"\\u0061\":3,\"a\":{\"c\":1,\"c\":2}}",
            "a = 1\nb = 2\na[2] = 3\na[3] = {}\na[3].c = 1\na[3].c[2] = 2");
        row("own values", "{\"#value\":1,\"a\":{\"b\":2,\"#value\":\"x\"},\"c\":{\"#value\":[\"y\"]}}",
            " = 1\na = 'x'\na.b = 2\nc = ['y']");
        row("own values that are none",
            "{\"a\":{\"#value\":{}},\"b\":{\"#value\":1,\"#value\":2},\"c\":{\"#value\":[1]}}",
            "a = {}\na.%23value = {}\nb = 1\nb.%23value[2] = 2\nc = {}\nc.%23value = {}\nc.%23value.0 = 1");
        row("roots", "[1,{\"a\":2}]", "0 = 1\n1 = {}\n1.a = 2");
        row("scalar root", " 5 ", " = 5");
        row("list root", "[\"a\"]", " = ['a']");
        row("mark and CRLF", "\xEF\xBB\xBF{\r\n\t\"a\": 1\r\n}\r\n", "a = 1");
        row("comments",
            "// x\n{ /* \"y\": */ \"a\" /**/ : // :\n 1 /*,*/, \"b\": [ // [\n \"//\", /*]*/ \"/*\" ] } // z",
            "a = 1\nb = ['//','/*']");
        row("trailing commas", "{\"a\":[1,],\"b\":[\"x\", ],\"c\":{\"d\":2,},}",
            "a = {}\na.0 = 1\nb = ['x']\nc = {}\nc.d = 2");
        row("bad text in a comment", "{\"a\": 1 // Gr\xFC\xDF\n}", "a = 1");
    }

    void reads()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QStringList, lines);
        const auto document = makeDocument("json");
        const Outcome outcome = document->parse(bytes.toStdString());
        QVERIFY2(outcome.ok(), outcome.error.c_str());
        QCOMPARE(toLines(*document), lines);
        QCOMPARE(QByteArray::fromStdString(document->getBytes()), bytes);
    }

    void refuses_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("line");
        QTest::addColumn<int>("column");
        QTest::addColumn<QString>("reason");
        const auto row = [](const QByteArray& bytes, int line, int column, const char* reason) {
            QTest::newRow(bytes.left(40).toPercentEncoding(" {}[]\":,/*'").constData())
                << bytes << line << column << QString::fromLatin1(reason);
        };
        row("{\"a\": 1\n", 2, 1, "the file ends where \",\" or \"}\" was expected");
        row("{\"a\": 1\r\n \"b\": 2}", 2, 2, "found a text where \",\" or \"}\" was expected");
        row("{\"\xC3\xA4\": ]}", 1, 7, "found \"]\" where a value was expected");
        row("\xEF\xBB\xBF{,}", 1, 2, "found \",\" where a key in double quotes or \"}\" was expected");
        row("[1,,2]", 1, 4, "found \",\" where a value or \"]\" was expected");
        row("[1}", 1, 3, "found \"}\" where \",\" or \"]\" was expected");
        row("{\"a\" 1}", 1, 6, "found \"1\" where \":\" behind the key was expected");
        row("{a: 1}", 1, 2, "found \"a\" where a key in double quotes");
        row("{} x", 1, 4, "found \"x\" where the end of the file was expected");
        row("{\"a\": True}", 1, 7, "found \"True\" where a value was expected: texts stand in double quotes");
        row("{\"a\": 'x'}", 1, 7, "texts stand in double quotes");
        row("[01]", 1, 2, "\"01\" is no number that json allows");
        row("[1.]", 1, 2, "no number");
        row("[+1]", 1, 2, "no number");
        row("[1e]", 1, 2, "no number");
        row("[1\"a\"]", 1, 3, "found a text where \",\" or \"]\" was expected");
        row("[\"a\nb\"]", 1, 2, "has no closing quote on its line");
        row("[\"a]", 1, 2, "has no closing quote");
        row("[\"a\tb\"]", 1, 4, "control character");
        row("[\"\\x\"]", 1, 3, "\"\\x\" begins no escape");
        row("[\"\\u12g4\"]", 1, 3, "begins no escape");
        row("[\"\\u-123\"]", 1, 3, "begins no escape");
        row("{\"a\": 1, /* x", 1, 10, "the comment that begins here has no end");
        row("[1] / 2", 1, 5, "found \"/\"");
        row("[\"a\xFF\"]", 1, 4, "no UTF-8");
        row("{\n// \xFF\n\"\xED\xA0\x80\"}", 3, 2, "no UTF-8");
        row(QByteArray("\xFF\xFE{\0}\0", 6), 1, 1, "UTF-16");
        row(QByteArray("[\0\"\0a\0", 6), 1, 1, "UTF-16");
        row(QByteArray("[\0]", 3), 1, 2, "control character");
        row(QByteArray("[\"\0\"]", 5), 1, 3, "control character");
        row(QByteArray(1001, '['), 1, 1001, "too deep");
        row(QByteArray("{\"a\":").repeated(100000), 1, 5001, "too deep");
        row(QByteArray("["), 1, 2, "the file ends where a value or \"]\" was expected");
    }

    // A refused text leaves the document as it was.
    void refuses()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(int, line);
        QFETCH(int, column);
        QFETCH(QString, reason);
        const auto document = makeDocument("json");
        QVERIFY(document->parse("{\"kept\": 1}").ok());
        const Outcome outcome = document->parse(bytes.toStdString());
        QVERIFY2(QString::fromStdString(outcome.error).contains(reason), outcome.error.c_str());
        QCOMPARE(int(outcome.line), line);
        QCOMPARE(int(outcome.column), column);
        QCOMPARE(document->getBytes(), std::string("{\"kept\": 1}"));
    }

    void edits_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<Edit>("edit");
        QTest::addColumn<QByteArray>("after");
        const auto row = [](const QByteArray& before, const Edit& edit, const QByteArray& after) {
            QTest::newRow((before + " > " + after).toPercentEncoding(" {}[]\":,/*'#").left(120).constData())
                << before << edit << after;
        };
        addSetRows(row);
        addListRows(row);
        addInsertRows(row);
        addRemoveRows(row);
        addCommentRows(row);
    }

    void edits()
    {
        QFETCH(QByteArray, before);
        QFETCH(Edit, edit);
        QFETCH(QByteArray, after);
        const auto document = makeDocument("json");
        QVERIFY(document->parse(before.toStdString()).ok());
        const Outcome outcome = edit(*document);
        QVERIFY2(outcome.ok(), outcome.error.c_str());
        QCOMPARE(QByteArray::fromStdString(document->getBytes()), after);
        QCOMPARE(toLines("json", after.toStdString()), toLines(*document));
    }

    void refusesEdits_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<Edit>("edit");
        QTest::addColumn<QString>("reason");
        const auto row = [](const QByteArray& bytes, const Edit& edit, const char* reason) {
            QTest::addRow("%s: %s", bytes.left(40).constData(), reason)
                << bytes << edit << QString::fromLatin1(reason);
        };
        row("{}", set("a", integer(1)), "there is no entry \"a\"");
        row("{\"a\":{}}", set("a", integer(1)), "is a group");
        row("{\"a\":1}", set("a", group()), "cannot become a group");
        row("{\"a\":1}", set("a", {Type::Date, std::string("2024-01-01")}), "json has no form for a date");
        row("{\"a\":1}", set("a", {Type::ByteArray, std::string("x")}), "json has no form for");
        row("{\"a\":1}", set("a", number(std::numeric_limits<double>::infinity())), "infinity");
        row("{\"a\":1}", set("a", text("\xFF")), "UTF-8");
        row("{\"a\":1}", set("a", list({"x", "\xFF"})), "UTF-8");
        row("{\"a\":[\"x\",null]}", set("a.1", text("y")), "all elements of its array would be texts");
        row("{\"a\":1}", insert("a", integer(2)), "already an entry");
        row("{\"a\":{}}", insert("a", group()), "already an entry");
        row("{\"a\":[1]}", insert("a", integer(2)), "is an array");
        row("{\"a\":[1]}", insert("a.2", integer(2)), "whose next element is 1");
        row("{\"a\":[1]}", insert("a.x.y", integer(2)), "whose next element is 1");
        row("{\"a\":1}", insert("a[3]", integer(2)), "can only be added behind \"a[2]\"");
        row("{}", insert("a[2].b", integer(2)), "can only be added behind \"a\"");
        row("{}", insert("a.b[2]", integer(2)), "can only be added behind \"b\"");
        row("{}", insert("a*", integer(2)), "not how a key is written");
        row("{}", insert("a..b", integer(2)), "no path");
        row("{}", insert("%FF", integer(2)), "UTF-8");
        row("{}", insert("a.%23value", integer(2)), "is kept for values of groups");
        row("{\"a\":{\"#value\":{}}}", insert("a", integer(2)), "a group stands in the member");
        row("{\"a\":1}", removal("b"), "there is no entry");
        row("{\"a\":[\"x\"]}", removal("a.0"), "there is no entry");
        const char* const asTypes = "would be read as the types";
        row("{\"$types\":{\"a\":5}}", set("$types.a", text("date")), asTypes);
        row("{\"$types\":{\"a\":\"date\",\"b\":[]}}", set("$types.b", text("text")), asTypes);
        row("{\"$types\":{\"a\":\"date\",\"b\":5}}", removal("$types.b"), asTypes);
        row("{\"$types\":{}}", insert("$types.a", text("date")), asTypes);
        row("{\"$types\":{\"a\":\"date\"},\"$types\":5}", removal("$types[2]"), asTypes);
        row("{\"$types\":5,\"$types\":{\"a\":\"date\"}}", removal("$types"), asTypes);
        row("{\"a\":1}", removal(""), "cannot be removed");
    }

    void refusesEdits()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(Edit, edit);
        QFETCH(QString, reason);
        const auto document = makeDocument("json");
        QVERIFY(document->parse(bytes.toStdString()).ok());
        const Outcome outcome = edit(*document);
        QVERIFY2(QString::fromStdString(outcome.error).contains(reason), outcome.error.c_str());
        QCOMPARE(QByteArray::fromStdString(document->getBytes()), bytes);
    }

    // The value that an entry had in the file brings back its spelling, comments inside of it included.
    void restores_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        for (const char* bytes :
             {"{\"a\": 1.50}", "{\"a\": \"\\u0041\"}", "{\"a\": 1e400}", "{\"a\": null}", "{\"a\": [ ]}",
              "{\"a\": [ \"\\u0041\", // one\n \"b\", // two\n ] // all\n}",
              "{\"a\": {\"#value\": 1.0, \"b\": 2}}", "{\"x\": 0, \"a\": [\"c\"]}"})
            QTest::newRow(bytes) << QByteArray(bytes);
    }

    void restores()
    {
        QFETCH(QByteArray, bytes);
        for (const Value& other :
             {integer(7), text("x"), null(), list({}), list({"b", "x"}), list({"x", "A", "b"})}) {
            const auto document = makeDocument("json");
            QVERIFY(document->parse(bytes.toStdString()).ok());
            Value old;
            document->visit([&old](const Entry& entry) { old = entry.path == "a" ? entry.value : old; });
            QVERIFY(document->set("a", other).ok());
            QCOMPARE(document->getBytes() == bytes.toStdString(), other == old);
            QVERIFY(document->set("a", list({"p", "q"})).ok());
            QVERIFY(document->set("a", old).ok());
            QCOMPARE(QByteArray::fromStdString(document->getBytes()), bytes);
            QVERIFY(document->set("a", list({"last"})).ok());
            QCOMPARE(toLines("json", document->getBytes()), toLines(*document));
        }
    }

    // The deepest nesting works in every operation; one more is refused.
    void keepsToDepth()
    {
        const std::string opening = "{\"a\":";
        std::string bytes = "1";
        std::string path = "a";
        for (int i = 0; i < 1000; ++i)
            bytes = opening + bytes + "}";
        for (int i = 1; i < 1000; ++i)
            path += ".a";
        const auto document = makeDocument("json");
        QVERIFY(document->parse(bytes).ok());
        QCOMPARE(toLines(*document).size(), 1000);
        QVERIFY(document->set(path, integer(2)).ok());
        QVERIFY(!document->set(path, list({"x"})).ok());
        QVERIFY(!document->insert(path + ".b", integer(1)).ok());
        const std::string group = path.substr(0, path.size() - 2);
        QVERIFY(!document->insert(group + ".b", EntryLines::group()).ok());
        QVERIFY(!document->insert(group + ".b.c", integer(1)).ok());
        QVERIFY(document->insert(group + ".b", integer(1)).ok());
        QCOMPARE(toLines("json", document->getBytes()), toLines(*document));
    }

    // Damaged texts are refused or read, never more. Qt's reader is lax about numbers and texts, but what it
    // takes has the structure of json.
    void survivesDamage()
    {
        const QByteArray sample = "{\n  \"a\": [1, -2.5e3, true, null, {\"b\\u0041\": \"\xC3\xA4\\n\"}],\n  "
                                  "\"c\": [\"x\", \"y\"], \"d\": {}}";
        QRandomGenerator random(11);
        const auto document = makeDocument("json");
        for (int round = 0; round < 30000; ++round) {
            QByteArray bytes = sample;
            for (int i = random.bounded(1, 3); i > 0; --i) {
                const char inserted = "{}[]\",:/*\\0-1eu\n\xC3 \0"[random.bounded(20)];
                bytes.replace(random.bounded(bytes.size()), random.bounded(2),
                              QByteArray(random.bounded(2), inserted));
            }
            if (random.bounded(4) == 0)
                bytes.truncate(random.bounded(bytes.size()));
            const Outcome outcome = document->parse(bytes.toStdString());
            if (outcome.ok())
                QCOMPARE(QByteArray::fromStdString(document->getBytes()), bytes);
            else
                QVERIFY(outcome.line > 0 && outcome.column > 0);
            QJsonParseError error;
            QJsonDocument::fromJson(bytes, &error);
            const QString reason = QString::fromStdString(outcome.error);
            const bool structural =
                reason.startsWith(QLatin1String("found")) || reason.contains(QLatin1String("ends"));
            if (error.error == QJsonParseError::NoError)
                QVERIFY2(!structural, qPrintable(reason + QString::fromUtf8(bytes)));
        }
    }

    // No operation's cost depends on how large the document is; a hundred thousand of each take no time to
    // speak of.
    void scales()
    {
        std::string bytes = "{\"list\": [1";
        for (int i = 1; i < 100000; ++i)
            bytes += "," + std::to_string(i);
        bytes += "]}";
        const auto document = makeDocument("json");
        QVERIFY(document->parse(bytes).ok());
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < 100000; ++i)
            QVERIFY(document->insert("k" + std::to_string(i), integer(i)).ok());
        for (int i = 0; i < 100000; ++i) {
            QVERIFY(document->set("k" + std::to_string(i), text("x")).ok());
            QVERIFY(document->set("list." + std::to_string(i), text("x")).ok() || i == 99999);
        }
        for (int i = 0; i < 100000; ++i)
            QVERIFY(document->remove("k" + std::to_string(i)).ok());
        QVERIFY2(timer.elapsed() < 20000, qPrintable(QString::number(timer.elapsed())));
    }

    void knowsWhichSiblingsMove_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("path");
        QTest::addColumn<bool>("moves");
        const auto row = [](const char* bytes, const char* path, bool moves) {
            QTest::addRow("%s in %s", path, bytes) << QByteArray(bytes) << QByteArray(path) << moves;
        };
        row("[1,2]", "0", true);
        row("[1,2]", "1", false);
        row("[1]", "0", true);       // an empty list is left
        row("[\"x\",2]", "1", true); // a list is left
        row("{\"a\":1,\"b\":2,\"a\":3}", "a", true);
        row("{\"a\":1,\"b\":2,\"a\":3}", "a[2]", false);
        row("{\"a\":1,\"b\":2,\"a\":3}", "b", false);
        row("{\"a\":1}", "", false);
        row("{\"a\":1}", "x", false);
    }

    void knowsWhichSiblingsMove()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QByteArray, path);
        QFETCH(bool, moves);
        const auto document = makeDocument("json");
        QVERIFY(document->parse(bytes.toStdString()).ok());
        QCOMPARE(document->removalMovesSiblings(path.toStdString()), moves);
    }
};

int main(int argc, char** argv)
{
    return TestSupport::runTest<QCoreApplication, JsonDocumentTest>(argc, argv);
}

#include "json_document_test.moc"
