#include "tests/support/Columns.h"
#include "tests/support/RepositoryTest.h"

using namespace FrameworkCore::AppConfig;

namespace {

constexpr int createBefore = 4;

const QByteArray before = "{\n  \"hosts\": [\n    \"a\", // first\n    \"\\u0062\"\n  ],\n"
                          "  \"n\": [1, 2.50, {\"x\": [true]}],\n  \"e\": [],\n  \"k\": \"text\"\n}\n";

} // namespace

// Arrays and their elements, as operations see them: also those of lists, which are one attribute.
class ArraysTest : public TestSupport::RepositoryTest
{
    Q_OBJECT

    // Some operation by its words: "create PATH VALUE" and the like.
    Outcome run(const QString& words)
    {
        const QString what = words.section(QLatin1Char(' '), 0, 0);
        const QString path = words.section(QLatin1Char(' '), 1, 1);
        const QString text = words.section(QLatin1Char(' '), 2);
        bool isNumber = false;
        const int number = text.toInt(&isNumber);
        const QVariant value = isNumber ? QVariant(number) : QVariant(text);
        if (what == QLatin1String("create"))
            return create(path, value);
        if (what == QLatin1String("insert"))
            return create(path, value, 3, createBefore);
        if (what == QLatin1String("write"))
            return write(path, value);
        if (what == QLatin1String("retype"))
            return repository->getWriterInterface()->retype(path, value);
        if (what == QLatin1String("remove"))
            return remove(path);
        return what == QLatin1String("move") ? move(path, text) : copy(path, text);
    }

private slots:
    void changesElements_data()
    {
        const auto row = TestSupport::columns<QString, QByteArray, QByteArray>("words", "from", "into");
        const auto line = [&](const char* words, const char* from, const char* into) {
            row(words, QString::fromLatin1(words), QByteArray(from), QByteArray(into));
        };
        line("create m.hosts.2 c", "\"\\u0062\"", "\"\\u0062\",\n    \"c\"");
        line("insert m.hosts.0 c", "\"a\"", "\"c\",\n    \"a\"");
        line("insert m.hosts.1 5", "\"\\u0062\"", "5,\n    \"\\u0062\"");
        line("write m.hosts.0 c", "\"a\"", "\"c\"");
        line("retype m.hosts.0 c", "\"a\"", "\"c\"");
        line("remove m.hosts.0", "    \"a\", // first\n", "");
        line("create m.n.3 c", "[true]}]", "[true]}, \"c\"]");
        line("insert m.n.1 c", "2.50", "\"c\", 2.50");
        line("insert m.e.0 5", "[]", "[\n    5\n  ]");
        line("create m.e.0.name c", "[]", "[\n    {\n      \"name\": \"c\"\n    }\n  ]");
        line("move m.n.2 m.n.0", "[1, 2.50, {\"x\": [true]}]", "[{\"x\": [true]}, 1, 2.50]");
        line("move m.n.2.x.0 m.n.0", "[1, 2.50, {\"x\": [true]}]", "[true, 1, 2.50, {\"x\": []}]");
        line("move m.hosts.0 m.hosts.1", "\"a\", // first\n    \"\\u0062\"",
             "\"\\u0062\",\n    \"a\" // first");
        line("move m.k m.hosts.1", "\"\\u0062\"\n  ],\n", "\"text\",\n    \"\\u0062\"\n  ],\n");
        line("copy m.hosts.1 m.new", "\"text\"\n", "\"text\",\n  \"new\": \"\\u0062\"\n");
        line("copy m.n.2 m.n.0", "[1, 2.50, ", "[{\"x\": [true]}, 1, 2.50, ");
    }

    // The tree is then what a reader of the file sees, and an undo gives each byte back.
    void changesElements()
    {
        QFETCH(QString, words);
        QFETCH(QByteArray, from);
        QFETCH(QByteArray, into);
        QVERIFY(mount("json", "m", before));
        history()->recordThisThread();
        const QStringList content = this->content();
        QCOMPARE(run(words), Success);
        const QStringList changed = this->content();
        QByteArray expected = before;
        expected.replace(from, into);
        if (words == QLatin1String("move m.k m.hosts.1"))
            expected.replace(",\n  \"k\": \"text\"", "");
        QCOMPARE(saved(), expected);
        QCOMPARE(history()->undo(), Success);
        QCOMPARE(this->content(), content);
        QCOMPARE(saved(), before);
        QCOMPARE(history()->redo(), Success);
        QCOMPARE(this->content(), changed);
        QCOMPARE(saved(), expected);
        restart();
        QVERIFY(mountFile("json", "m", fileOf("m")));
        QCOMPARE(this->content(), changed);
    }

    void movesTheSpelling_data()
    {
        const auto row = TestSupport::columns<QString, QByteArray, QByteArray>("words", "text", "expected");
        const auto line = [&](const char* words, const char* text, const char* expected) {
            row(words, QString::fromLatin1(words), QByteArray(text), QByteArray(expected));
        };
        line("remove m.l.1", R"({"l": ["a", "\u0061", "a"]})", R"({"l": ["a", "a"]})");
        line("move m.l.1 m.k", R"({"l": ["a", "\u0061", "a"]})", R"({"l": ["a", "a"], "k": "\u0061"})");
        line("move m.l.1 m.o.0", R"({"l": ["a", "\u0062"], "o": ["c", "d"]})",
             R"({"l": ["a"], "o": ["\u0062", "c", "d"]})");
        line("copy m.l.1 m.o.1", R"({"l": ["a", "\u0062"], "o": ["c", "d"]})",
             R"({"l": ["a", "\u0062"], "o": ["c", "\u0062", "d"]})");
        line("move m.l.1 m.o.0", R"({"l": ["a", "\u0062"], "o": [1.50, 2]})",
             R"({"l": ["a"], "o": ["\u0062", 1.50, 2]})");
        line("move m.p.1 m.q.0", R"({"p": [1, 2.50, 3], "q": [5]})", R"({"p": [1, 3], "q": [2.50, 5]})");
        line("move m.p.0.1 m.p.0", R"({"p": [[1, 2.50], 3]})", R"({"p": [2.50, [1], 3]})");
        line("move m.p.0 m.o.k", R"({"p": [1e2, 3], "o": {"a": 1}})",
             R"({"p": [3], "o": {"a": 1, "k": 1e2}})");
        line("move m.o.k m.p.0", R"({"o": {"k": 1e2, "l": 1}, "p": [3]})",
             R"({"o": {"l": 1}, "p": [1e2, 3]})");
        line("move m.p.0 m.q.0",
             "{\n  \"p\": [\n    // why\n    {\"a\":1.50},\n    1\n  ],\n  \"q\": [\n    2\n  ]\n}\n",
             "{\n  \"p\": [\n    1\n  ],\n  \"q\": [\n    // why\n    {\"a\":1.50},\n    2\n  ]\n}\n");
    }

    void movesTheSpelling()
    {
        QFETCH(QString, words);
        QFETCH(QByteArray, text);
        QVERIFY(mount("json", "m", text));
        history()->recordThisThread();
        QCOMPARE(run(words), Success);
        const QStringList changed = content();
        QTEST(saved(), "expected");
        QCOMPARE(history()->undo(), Success);
        QCOMPARE(saved(), text);
        QCOMPARE(history()->redo(), Success);
        QTEST(saved(), "expected");
        restart();
        QVERIFY(mountFile("json", "m", fileOf("m")));
        QCOMPARE(content(), changed);
    }

    void refusesElements_data()
    {
        const auto row = TestSupport::columns<QString, int, QString>("words", "status", "reason");
        const auto line = [&](const char* words, int status, const char* reason) {
            row(words, QString::fromLatin1(words), status, QString::fromLatin1(reason));
        };
        line("create m.hosts.3 c", BackendFailure, "the list has 2 elements; the next one is 2");
        line("create m.hosts.0 c", AlreadyExists, "it exists already");
        line("create m.n.0 c", AlreadyExists, "it exists already");
        line("insert m.n.4 c", BackendFailure, "whose next element is 3");
        line("write m.hosts.2 c", NotFound, "no such attribute");
        line("remove m.hosts.2", NotFound, "no such attribute");
        line("move m.n.0 m.n.3", BackendFailure, "the greatest index can be 2");
        line("move m.hosts.2 m.new", NotFound, "no such attribute");
        line("move m.n m.n.2.x.0", InvalidPath, "into itself");
    }

    void refusesElements()
    {
        QFETCH(QString, words);
        QFETCH(int, status);
        QFETCH(QString, reason);
        QVERIFY(mount("json", "m", before));
        const QStringList content = this->content();
        const Outcome outcome = run(words);
        QCOMPARE(int(outcome.getStatus()), status);
        QVERIFY2(outcome.toText().contains(reason), qPrintable(outcome.toText()));
        QCOMPARE(this->content(), content);
    }

    void importsArrays_data()
    {
        const auto row = TestSupport::columns<QString, QByteArray, QString, QByteArray, QByteArray>(
            "to", "there", "type", "text", "expected");
        const auto json = [&](const char* name, const QByteArray& there, const QByteArray& text,
                              const QByteArray& expected) {
            row(name, "json", there, "json", text, expected);
        };
        json("into an empty file", "{}", "{\"a\":[1,{\"b\":[[\"x\"],2]}],\"c\":{\"d\":[true]}}",
             "{\n    \"a\": [1,{\"b\":[[\"x\"],2]}],\n    \"c\": {\"d\":[true]}\n}");
        json("a whole array", "{}\n", "[1,[]]", "[\n    1,\n    []\n]\n");
        json("over a longer one", "{\"a\": [5, 6, 7], \"z\": 1}", "{\"a\":[1,2]}",
             "{\"a\": [1, 2], \"z\": 1}");
        json("over a list", "{\"a\": [\"x\"], \"z\": 1}", "{\"a\":[1,\"x\"]}",
             "{\"a\": [1, \"x\"], \"z\": 1}");
        json("a list over an array", "{\"a\": [5, 6], \"z\": 1}", "{\"a\":[\"x\"]}",
             "{\"a\": [\"x\"], \"z\": 1}");
        json("over a group", "{\"a\": {\"b\": 1}, \"z\": 1}", "{\"a\":[1]}", "{\"a\": [1], \"z\": 1}");
        json("groups are merged", "{\"a\": {\"b\": 1, \"c\": [1, 2]}}", "{\"a\":{\"c\":[3],\"d\":4}}",
             "{\"a\": {\"b\": 1, \"c\": [3], \"d\": 4}}");
        json("beside types", "{\"d\": \"2024-01-01\", \"$types\": {\"d\": \"date\"}}",
             "{\"a\":[1,\"2025-01-01\"],\"$types\":{\"a.1\":\"date\"}}",
             "{\"d\": \"2024-01-01\", \"a\": [1,\"2025-01-01\"], "
             "\"$types\": {\"d\": \"date\", \"a.1\": \"date\"}}");
        json("another value in it", "{\"a\": [1e2, /* c */ 6]}", "{\"a\":[100.0,7]}",
             "{\"a\": [1e2, /* c */ 7]}");
        json("another type in it", "{\"a\": [\"x\", /* c */ 6]}", "{\"a\":[5,6]}", "{\"a\": [5, 6]}");
        json("over a group of numbers", "{\"a\": {\"0\": 5}}", "{\"a\":[5]}", "{\"a\": [5]}");
        row("of yaml", "toml", "# of a\n[[a]] # 1\nk = 0x5\n# of 2\n[[a]]\nl = ['q'] # l\n", "yaml",
            "a:\n- k: 6\n- l: [q]\n", "# of a\n[[a]] # 1\nk = 0x6\n# of 2\n[[a]]\nl = ['q'] # l\n");
        row("of ini", "json", "{\"a\": [5, 6, 7]}", "ini", "[a]\n1=y\n0=1\n", "{\"a\": [1, \"y\"]}");
        row("into ini", "ini", "[a]\n0=5\n1=6\n2=7\n", "json", "{\"a\":[1,2]}", "[a]\n0=1\n1=2\n");
    }

    void importsArrays()
    {
        QFETCH(QString, to);
        QFETCH(QByteArray, there);
        QFETCH(QString, type);
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, expected);
        QVERIFY(mount(to, "m", there));
        history()->recordThisThread();
        const QStringList content = this->content();
        QCOMPARE(import("m", type, text), Success);
        const QStringList changed = this->content();
        QCOMPARE(saved(), expected);
        QCOMPARE(history()->undo(), Success);
        QCOMPARE(this->content(), content);
        QCOMPARE(history()->redo(), Success);
        restart();
        QVERIFY(mountFile(to, "m", fileOf("m")));
        QCOMPARE(this->content(), changed);
    }

    // In memory there are no arrays but lists.
    void changesListsInMemory()
    {
        QVERIFY(create("l", TestSupport::words("a b")));
        QCOMPARE(run(QStringLiteral("insert l.0 5")), Success);
        QCOMPARE(run(QStringLiteral("move l.2 l.0")), Success);
        QCOMPARE(run(QStringLiteral("move l.1 k")), Success);
        QCOMPARE(read("l").toStringList(), TestSupport::words("b a"));
        QCOMPARE(read("k").toString(), QStringLiteral("5"));
        QCOMPARE(read("l.1").toString(), QStringLiteral("a"));
    }
};

VANTRY_TEST_MAIN(QCoreApplication, ArraysTest)

#include "arrays_test.moc"
