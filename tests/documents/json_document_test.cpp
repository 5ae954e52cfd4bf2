#include "tests/documents/EntryLines.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

#include <QJsonDocument>
#include <QRandomGenerator>

#include <ctime>

using namespace EntryLines;
using Repository::Documents::makeDocument;
using Repository::Documents::Outcome;

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
            "0 = 0\n1 = 1.0d\n2 = 1000.0d\n3 = 0.01d\n4 = -0.0d\n5 = 9223372036854775807\n6 = "
            "-9223372036854775808");
        row("beyond int64", "[9223372036854775808, 18446744073709551615]",
            "0 = 9223372036854775808u\n1 = 18446744073709551615u");
        row("numbers of no type", "[18446744073709551616, -9223372036854775809, 1e400, 1e-400, 0e999]",
            "0 = '18446744073709551616'\n1 = '-9223372036854775809'\n2 = '1e400'\n3 = '1e-400'\n4 = 0.0d");
        row("escapes", "{\"a\\u0062\":\"\\\"\\\\\\/\\b\\f\\n\\r\\t\\u00e9\\ud83d\\ude00\"}",
            "ab = '\"\\/\b\f\\n\r\t\xC3\xA9\xF0\x9F\x98\x80'");
        row("half pairs", "[\"\\ud83dx\",\"\\ude00\",\"\\ud83d\\u0041\"]",
            " = ['\xED\xA0\xBDx','\xED\xB8\x80','\xED\xA0\xBD"
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
        TestSupport::columns<QByteArray, int, int, QString>("bytes", "line", "column", "reason");
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
        row("{\"a\" 1}", 1, 6, "found \"1\" where \":\" after the key was expected");
        row("{a: 1}", 1, 2, "found \"a\" where a key in double quotes");
        row("{} x", 1, 4, "found \"x\" where the end of the file was expected");
        row("{\"a\": True}", 1, 7, "found \"True\" where a value was expected: texts are in double quotes");
        row("{\"a\": 'x'}", 1, 7, "texts are in double quotes");
        row("[01]", 1, 2, "\"01\" is not a number in json");
        row("[1.]", 1, 2, "not a number");
        row("[+1]", 1, 2, "not a number");
        row("[1e]", 1, 2, "not a number");
        row("[1\"a\"]", 1, 3, "found a text where \",\" or \"]\" was expected");
        row("[\"a\nb\"]", 1, 2, "has no closing quote on its line");
        row("[\"a]", 1, 2, "has no closing quote");
        row("[\"a\tb\"]", 1, 4, "control character");
        row("[\"\\x\"]", 1, 3, "\"\\x\" begins no escape");
        row("[\"\\u12g4\"]", 1, 3, "begins no escape");
        row("[\"\\u-123\"]", 1, 3, "begins no escape");
        row("{\"a\": 1, /* x", 1, 10, "the comment that begins here has no end");
        row("[1] / 2", 1, 5, "found \"/\"");
        row("[\"a\xFF\"]", 1, 4, "not UTF-8");
        row("{\n// \xFF\n\"\xED\xA0\x80\"}", 3, 2, "not UTF-8");
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

    // The value that an entry had in the file brings back its spelling, comments inside of it included.
    void restores_data()
    {
        const auto row = TestSupport::columns<QByteArray>("bytes");
        for (const char* bytes :
             {"{\"a\": 1.50}", "{\"a\": \"\\u0041\"}", "{\"a\": 1e400}", "{\"a\": null}", "{\"a\": [ ]}",
              "{\"a\": [ \"\\u0041\", // one\n \"b\", // two\n ] // all\n}",
              "{\"a\": {\"#value\": 1.0, \"b\": 2}}", "{\"x\": 0, \"a\": [\"c\"]}"})
            row(bytes, QByteArray(bytes));
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
            const bool losesComments = bytes.contains("//") && other.type != Type::StringList;
            QCOMPARE(document->set("a", other).ok(), !losesComments);
            QCOMPARE(document->getBytes() == bytes.toStdString(), losesComments || other == old);
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
        const std::clock_t before = std::clock();
        for (int i = 0; i < 100000; ++i)
            QVERIFY(document->insert("k" + std::to_string(i), integer(i)).ok());
        for (int i = 0; i < 100000; ++i) {
            QVERIFY(document->set("k" + std::to_string(i), text("x")).ok());
            QVERIFY(document->set("list." + std::to_string(i), text("x")).ok() || i == 99999);
        }
        for (int i = 0; i < 100000; ++i)
            QVERIFY(document->remove("k" + std::to_string(i)).ok());
        QVERIFY((std::clock() - before) / CLOCKS_PER_SEC < 20);
    }

    void knowsWhichSiblingsMove_data()
    {
        TestSupport::columns<QByteArray, QByteArray, bool>("bytes", "path", "moves");
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

VANTRY_TEST_MAIN(QCoreApplication, JsonDocumentTest)

#include "json_document_test.moc"
#include "repository/documents/Formats.h"
