#include "repository/documents/common/ComponentCodec.h"
#include "tests/documents/EntryLines.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

using namespace EntryLines;
using namespace Repository::Documents;

namespace {

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// A leaf of the suite's own notation, {"type": "float", "value": "1.5"}.
Value toValue(const QJsonObject& leaf)
{
    static const QMap<QString, Type> types{
        {QStringLiteral("string"), Type::String},     {QStringLiteral("integer"), Type::Integer},
        {QStringLiteral("float"), Type::Double},      {QStringLiteral("bool"), Type::Bool},
        {QStringLiteral("datetime"), Type::DateTime}, {QStringLiteral("datetime-local"), Type::DateTime},
        {QStringLiteral("date-local"), Type::Date},   {QStringLiteral("time-local"), Type::Time}};
    const QString value = leaf[QStringLiteral("value")].toString();
    const auto read = readText(value.toStdString(), types[leaf[QStringLiteral("type")].toString()]);
    return read.ok() ? read.value : text(value.toStdString());
}

bool isLeaf(const QJsonValue& value)
{
    const QJsonObject object = value.toObject();
    return object.size() == 2 && object.contains(QStringLiteral("type")) &&
           object[QStringLiteral("value")].isString();
}

void appendLines(const QJsonValue& value, const std::string& path, QStringList& lines)
{
    const auto add = [&](const Value& shown) {
        if (!path.empty())
            lines += toLine(Entry{path, shown});
    };
    if (isLeaf(value))
        return add(toValue(value.toObject()));
    std::vector<std::string> texts;
    const QJsonArray array = value.toArray();
    for (const QJsonValue& element : array) {
        if (isLeaf(element) && toValue(element.toObject()).type == Type::String &&
            element[QStringLiteral("type")].toString() == QLatin1String("string"))
            texts.push_back(element[QStringLiteral("value")].toString().toStdString());
    }
    if (value.isArray() && int(texts.size()) == array.size())
        return add(list(texts));
    add(group());
    for (int i = 0; i < array.size(); ++i)
        appendLines(array[i], joinPath(path, std::to_string(i)), lines);
    const QJsonObject object = value.toObject();
    for (auto member = object.begin(); member != object.end(); ++member) {
        const std::string key = encodeKey(member.key().toStdString());
        appendLines(member.value(), path.empty() ? key : joinPath(path, key), lines);
    }
}

} // namespace

// The public suite toml-test, where it is there, and a case of each kind that always is.
class TomlSuiteTest : public QObject
{
    Q_OBJECT

private slots:
    void reads_data()
    {
        const auto row = TestSupport::columns<QByteArray, QByteArray>("toml", "json");
        row("one", "a.b = [1]\n[c]\nd = 1.0", R"({"a": {"b": [{"type": "integer", "value": "1"}]},
                                                  "c": {"d": {"type": "float", "value": "1"}}})");
        const QByteArray dots(2000, '.');
        row("dots between no keys", "# " + dots + "\na = '" + dots + "' # " + dots,
            "{\"a\": {\"type\": \"string\", \"value\": \"" + dots + "\"}}");
        forEachCase(QStringLiteral("valid/"), [](const QString& name, const QString& path) {
            QTest::newRow(qPrintable(name))
                << contentOf(path) << contentOf(path.left(path.size() - 5) + QStringLiteral(".json"));
        });
    }

    void reads()
    {
        QFETCH(QByteArray, toml);
        QFETCH(QByteArray, json);
        const auto document = makeDocument("toml");
        const Outcome outcome = document->parse(toml.toStdString());
        QVERIFY2(outcome.ok(), outcome.error.c_str());
        QCOMPARE(QByteArray::fromStdString(document->getBytes()), toml);
        QStringList expected;
        appendLines(QJsonDocument::fromJson(json).object(), {}, expected);
        QStringList found = toLines(*document);
        found.sort();
        expected.sort();
        QCOMPARE(found, expected);
    }

    void refuses_data()
    {
        const auto row = TestSupport::columns<QByteArray>("toml");
        row("one", "a = 1\na = 2");
        const QByteArray deep = QByteArray("a.").repeated(100'000);
        row("deep key", deep + "a = 1");
        row("deep header", "[" + deep + "a]");
        row("deep key in a list", "k = [ { x = '.', " + deep + "a = 1 } ]");
        forEachCase(QStringLiteral("invalid/"), [](const QString& name, const QString& path) {
            if (name != QLatin1String("invalid/encoding/utf16-bom.toml")) // all formats here read UTF-16
                QTest::newRow(qPrintable(name)) << contentOf(path);
        });
    }

    void refuses()
    {
        QFETCH(QByteArray, toml);
        const Outcome outcome = makeDocument("toml")->parse(toml.toStdString());
        QVERIFY(!outcome.ok());
        QVERIFY(outcome.line > 0 && outcome.column > 0);
    }

    void namesTheNewerVersion_data()
    {
        const auto row = TestSupport::columns<QByteArray, int, int>("toml", "line", "column");
        row("line break in a table", "a = {\n b = 1 }", 1, 6);
        row("comment in a table", "a = { # c\n b = 1 }", 1, 7);
        row("CRLF in a table", "a = {b = 1,\r\n}", 1, 12);
        row("last comma", "a = {b = 1,}", 1, 12);
        row("escape", "# \xC3\xBC\na = \"\xC3\xBC\\e\"", 2, 8);
        row("hex escape", "a = \"\\x41\"", 1, 7);
        row("time without seconds", "a = 10:20", 1, 10);
    }

    void namesTheNewerVersion()
    {
        QFETCH(QByteArray, toml);
        const Outcome outcome = makeDocument("toml")->parse(toml.toStdString());
        QVERIFY2(outcome.error.find("TOML 1.1") != std::string::npos, outcome.error.c_str());
        QTEST(int(outcome.line), "line");
        QTEST(int(outcome.column), "column");
    }

    void tellsWhatToDo_data()
    {
        const auto row = TestSupport::columns<QByteArray, QByteArray>("toml", "advice");
        row("bare text", "a = yes\n", "a text needs quotes");
        row("other true", "a = True\n", "a text needs quotes");
        row("null", "a = null\n", "a text needs quotes");
        row("open quotes", "# \xC3\xBC\na = \"x\xC3\xBC\nb = 1\n", "its line ends before the quotes close");
        row("backslash", "a = \"C:\\dir\"\n", "a backslash is written twice");
        row("open array", "a = [\n1,\n", ", which is not closed");
        row("conflict", "a = 1\n<<<<<<< HEAD\n", "a merge has left");
        row("ini comment", "a = 1\n; b\n", "a comment begins with #");
    }

    void tellsWhatToDo()
    {
        QFETCH(QByteArray, toml);
        QFETCH(QByteArray, advice);
        const Outcome outcome = makeDocument("toml")->parse(toml.toStdString());
        QVERIFY2(outcome.error.find(advice.toStdString()) != std::string::npos, outcome.error.c_str());
    }

private:
    template <typename Callback>
    static void forEachCase(const QString& kind, const Callback& callback)
    {
        const QString folder = TestSupport::corporaPath(QStringLiteral("suites"));
        const QString tests = folder + QStringLiteral("/toml-test/tests/");
        if (folder.isEmpty())
            return;
        const auto names = contentOf(tests + QStringLiteral("files-toml-1.0.0")).split('\n');
        for (const QByteArray& line : names) {
            const QString name = QString::fromUtf8(line);
            if (name.startsWith(kind) && name.endsWith(QLatin1String(".toml")))
                callback(name, tests + name);
        }
    }
};

VANTRY_TEST_MAIN(QCoreApplication, TomlSuiteTest)

#include "toml_suite_test.moc"
