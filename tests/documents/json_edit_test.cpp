#include "repository/documents/json/JsonDocument.h"
#include "tests/documents/EntryLines.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

using namespace EntryLines;
using Repository::Documents::JsonDocument;
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

// With the comments that belong to it.
Edit without(const char* path)
{
    return [path](Document& document) { return document.removeExcerpt(path); };
}

Edit element(const char* path, const std::vector<Entry>& entries)
{
    return [path, entries](Document& document) {
        return document.insertElement(path, entries).value_or(Outcome{"not in an array", 0, 0});
    };
}
Edit element(const char* path, const Value& value)
{
    return element(path, std::vector<Entry>{{{}, value}});
}
Edit moved(const char* path, const char* newPath)
{
    return [path, newPath](Document& document) {
        return document.moveElement(path, newPath).value_or(Outcome{"not in an array", 0, 0});
    };
}

using Row = std::function<void(const QByteArray&, const Edit&, const QByteArray&)>;

// Only the value's bytes change, and none when it is equal.
void addSetRows(const Row& row)
{
    row("{\"a\" :\t1 , \"b\":2}", set("a", integer(-10)), "{\"a\" :\t-10 , \"b\":2}");
    row("[1.0, 1e3, -0]", set("0", number(1)), "[1.0, 1e3, -0]");
    row("[1.0, 1e3, -0]", set("1", number(1000)), "[1.0, 1e3, -0]");
    row("[1.0, 1e3, -0]", set("1", number(100000)), "[1.0, 1e5, -0]");
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

// Types that json does not have are in a member at the end of the root, which is not an entry.
void addTypeRows(const Row& row)
{
    const auto day = [](const char* text) { return Value{Type::Date, std::string(text)}; };
    const Value date = day("2024-02-29");
    row("", insert("a", date), R"({
    "a": "2024-02-29",
    "$types": {
        "a": "date"
    }
}
)");
    row(R"({"a":1})", insert("b.c", {Type::Unsigned, std::uint64_t(5)}),
        R"({"a":1,"b":{"c":5},"$types":{"b.c":"unsigned"}})");
    row(R"({"a":{"b":1}})", insert("a", {Type::ByteArray, std::string("\xFF\\")}),
        R"({"a":{"b":1,"#value":"\\xff\\\\"},"$types":{"a":"bytes"}})");
    row(R"({"x":5})", insert("x.a%2Eb", number(std::numeric_limits<double>::infinity())),
        R"({"x":{"#value":5,"a.b":"inf"},"$types":{"x.a%2Eb":"double"}})");
    const QByteArray full =
        R"({"a":["2024-02-28",1,"2024-02-29",{"b":"2024-03-01"}],"k":0,"k":"2024-03-02",)"
        R"("$types":{"a.0":"date","a.2":"date","a.3.b":"date","k[2]":"date","x":"date"}})";
    const auto changed = [&full](std::initializer_list<std::pair<const char*, const char*>> parts) {
        QByteArray file = full;
        for (const auto& [from, to] : parts)
            file.replace(from, to);
        return file;
    };
    row(full, insert("z", integer(1)), changed({{R"(,"$types")", R"(,"z":1,"$types")"}}));
    row(full, insert("x", text("2024-02-29")),
        changed({{R"(,"x":"date")", ""}, {R"(,"$types")", R"(,"x":"2024-02-29","$types")"}}));
    row(full, set("a.2", day("2025-01-01")), changed({{"2024-02-29", "2025-01-01"}}));
    row(full, removal("a.1"),
        changed({{R"(1,"2024-02-29")", R"("2024-02-29")"},
                 {R"("a.2":"date","a.3.b":"date",)", ""},
                 {R"("x":"date")", R"("x":"date","a.1":"date","a.2.b":"date")"}}));
    row(full, removal("a.3"), changed({{R"(,{"b":"2024-03-01"})", ""}, {R"("a.3.b":"date",)", ""}}));
    row(full, removal("a"), R"({"k":0,"k":"2024-03-02","$types":{"k[2]":"date","x":"date"}})");
    row(full, removal("k"),
        changed(
            {{R"("k":0,)", ""}, {R"("k[2]":"date",)", ""}, {R"("x":"date")", R"("x":"date","k":"date")"}}));
    // The array is a list then, whose texts have no types of their own.
    row(R"({"a":[1,"2024-02-29"],"$types":{"a.1":"date"}})", removal("a.0"), R"({"a":["2024-02-29"]})");
    row(R"({"a":"soon","$types":{"a":"date"}})", set("a", text("later")),
        R"({"a":"later","$types":{"a":"date"}})");
    row(R"({"a":"2024-02-29","$types":{"a":"date"}})", set("a", text("2025-01-01")), R"({"a":"2025-01-01"})");
    row(R"({"a":"2024-02-29","$types":{"x":"date","a":"date"}})",
        set("a", {Type::Unsigned, std::uint64_t(5)}), R"({"a":5,"$types":{"x":"date","a":"unsigned"}})");
    row(R"({"$types":{"a":"date","b":5}})", set("$types.b", integer(6)), R"({"$types":{"a":"date","b":6}})");
}

// The others keep their text, comments and types, also where a list becomes a group or one a list.
void addElementRows(const Row& row)
{
    row("[\n  // of 1\n  1\n]", element("0", integer(2)), "[\n  2,\n  // of 1\n  1\n]");
    row("[\n  // of a\n  \"a\", // a\n  \"b\"\n]", without("0"), "[\n  \"b\"\n]");
    row("[\"\\u0061\", \"b\"]", element("1", text("x")), "[\"\\u0061\", \"x\", \"b\"]");
    row("{\"a\": []}", element("a.0", integer(5)), "{\"a\": [5]}");
    row("[\"a\", \"b\"]", element("0", integer(5)), "[5, \"a\", \"b\"]");
    row("[ 1, 2.50 ]", element("2", text("x")), "[ 1, 2.50, \"x\" ]");
    row("[1,[2,3]]", element("1.0", list({"x"})), "[1,[[\"x\"],2,3]]");
    row("{\"a\":[1]}", element("a.0", {{"b", integer(1)}, {"c.0", integer(2)}, {"c.1", integer(3)}}),
        "{\"a\":[{\"b\":1,\"c\":[2,3]},1]}");
    row("[1,2,3,4,5,6,7,8,9,10]", element("9", integer(0)), "[1,2,3,4,5,6,7,8,9,0,10]");
    row("[\n  1, // c\n  /* m\n   n */ 2,\n  3\n]", moved("1", "2"),
        "[\n  1, // c\n  3,\n  /* m\n   n */\n  2\n]");
    row("[1,/* m\n n */ 2, 3]", moved("1", "2"), "[1, 3,\n    /* m\n     n */\n    2]");
    row("[\n  \"a\", // one\n  \"\\u0062\", // two\n  \"c\"\n]\n", moved("0", "2"),
        "[\n  \"\\u0062\", // two\n  \"c\",\n  \"a\" // one\n]\n");
    row("[\n  1,\n  {\"x\": 2.50},\n  \"c\"\n]\n", moved("2", "0"),
        "[\n  \"c\",\n  1,\n  {\"x\": 2.50}\n]\n");
    row("[1, 2.50, 3]", moved("1", "1"), "[1, 2.50, 3]");
    const QByteArray typed = R"({"a":["2024-02-29",1,"2024-03-01"],"$types":{"a.0":"date","a.2":"date"}})";
    row(typed, element("a.1", Value{Type::Date, std::string("2025-01-01")}),
        R"({"a":["2024-02-29","2025-01-01",1,"2024-03-01"],"$types":{"a.0":"date","a.3":"date","a.1":"date"}})");
    row(typed, moved("a.2", "a.0"),
        R"({"a":["2024-03-01","2024-02-29",1],"$types":{"a.1":"date","a.0":"date"}})");
}

std::vector<Entry> subtreeEntries(bool withArrays)
{
    std::vector<Entry> entries;
    for (int i = 0; i < 300; ++i) {
        const std::string group = 'k' + std::to_string(i);
        entries.push_back({group + ".name", text("a \"quoted\" name")});
        entries.push_back({group + ".list", list({"x", "y", std::to_string(i)})});
        if (!withArrays)
            continue;
        entries.push_back({group + ".array.0", integer(i)});
        entries.push_back({group + ".array.1", text("x")});
    }
    return entries;
}

std::string largeFile()
{
    std::string bytes = "{ // with a comment\n  \"top\": {";
    for (int i = 0; i < 1000; ++i)
        bytes += "\n    \"key" + std::to_string(i) + "\": [\"a\", \"list\"],";
    return bytes + "\n  },\n}\n";
}

} // namespace

Q_DECLARE_METATYPE(Edit)

class JsonEditTest : public QObject
{
    Q_OBJECT

private slots:
    void edits_data()
    {
        TestSupport::columns<QByteArray, Edit, QByteArray>("before", "edit", "after");
        const auto row = [](const QByteArray& before, const Edit& edit, const QByteArray& after) {
            QTest::newRow((before + " > " + after).toPercentEncoding(" {}[]\":,/*'#").left(120).constData())
                << before << edit << after;
        };
        addSetRows(row);
        addListRows(row);
        addInsertRows(row);
        addRemoveRows(row);
        addCommentRows(row);
        addTypeRows(row);
        addElementRows(row);
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

    void insertsSubtrees_data()
    {
        const auto row = TestSupport::columns<bool>("withArrays");
        row("objects and lists", false);
        row("arrays", true);
    }

    // However often, and whatever was edited between, they lie in the file as if each entry had been inserted
    // by itself, but for groups of 0, 1, 2 ... as arrays.
    void insertsSubtrees()
    {
        QFETCH(bool, withArrays);
        const std::vector<Entry> entries = subtreeEntries(withArrays);
        const std::string before = largeFile();
        JsonDocument document;
        JsonDocument expected;
        QVERIFY(document.parse(before).ok() && expected.parse(before).ok());
        for (int round = 0; round < 10; ++round) {
            const std::string path = "top.new" + std::to_string(round % 3);
            if (document.contains(path))
                QVERIFY(document.remove(path).ok() && expected.remove(path).ok());
            std::size_t refused = 0;
            const Outcome outcome = document.insertAll(path, entries, refused);
            QVERIFY2(outcome.ok(), outcome.error.c_str());
            QVERIFY(expected.Document::insertAll(path, entries, refused).ok());
            for (JsonDocument* each : {&document, &expected}) {
                QVERIFY(each->set(path + ".k3.list", list({"y", "z"})).ok());
                QVERIFY(each->set(path + ".k4.name", integer(round)).ok());
                QVERIFY(each->insert(path + ".k5.name.more", boolean(true)).ok());
                QVERIFY(each->remove(path + ".k7").ok());
            }
            QVERIFY(toLines(document) == toLines(expected));
            QVERIFY(toLines("json", document.getBytes()) == toLines(expected));
            if (!withArrays)
                QVERIFY(document.getBytes() == expected.getBytes());
        }
    }

    void refusesEdits_data()
    {
        TestSupport::columns<QByteArray, Edit, QString>("bytes", "edit", "reason");
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
        row("{\"a\":[\"x\" /*c*/]}", set("a", integer(1)), "list with comments");
        row("{\"a\":1}", insert("a", integer(2)), "already an entry");
        row("{\"a\":{}}", insert("a", group()), "already an entry");
        row("{\"a\":[1]}", insert("a", integer(2)), "is an array");
        row("{\"a\":[\"x\"]}", element("a.2", integer(2)), "the greatest index can be 1");
        row("{\"a\":[1]}", moved("a.0", "a.1"), "its only index can be 0");
        row("{\"a\":[1]}", insert("a.2", integer(2)), "whose next element is 1");
        row("{\"a\":[1]}", insert("a.x.y", integer(2)), "whose next element is 1");
        row("{\"a\":1}", insert("a[2]", integer(2)), "would be in one object twice");
        row("{}", insert("a.b[2].c", integer(2)), "would be in one object twice");
        row("{}", insert("a*", integer(2)), "not how a key is written");
        row("{}", insert("a..b", integer(2)), "not a path");
        row("{}", insert("%FF", integer(2)), "UTF-8");
        row("{}", insert("a.%23value", integer(2)), "is kept for values of groups");
        row("{\"a\":{\"#value\":{}}}", insert("a", integer(2)), "a group is in the member");
        row("{\"a\":1}", removal("b"), "there is no entry");
        const Value date{Type::Date, std::string("2024-02-29")};
        row("[1]", insert("1", date), "only in a file whose root is an object");
        row("{\"a\":[\"x\"]}", element("a.1", date), "json cannot say that");
        row(
            "{}",
            [date](Document& document) {
                std::size_t refused = 0;
                return document.insertAll("a", {{"0", date, {}}, {"1", date, {}}}, refused);
            },
            "json cannot say that");
        row(
            "{\"a\":1}",
            [](Document& document) {
                std::size_t refused = 0;
                return document.insertAll("a.b", {{"x[2]", integer(1)}, {"y", integer(2)}}, refused);
            },
            "would be in one object twice");
        row("[1]", element("0", {{"k", integer(1)}, {"l", date}}), "only in a file");
        row(R"({"$types":1})", insert("a", date), "holds something else in this file");
        row(R"({"a":1,"$types":{"a":"date"}})", removal("$types"), "there is no entry");
        row(R"({"a":1})", set("a", {Type::Unsigned, std::uint64_t(5)}), "json would read 5 back as");
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
};

VANTRY_TEST_MAIN(QCoreApplication, JsonEditTest)

#include "json_edit_test.moc"
#include "repository/documents/Formats.h"
