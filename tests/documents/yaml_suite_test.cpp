#include "repository/documents/common/ComponentCodec.h"
#include "tests/documents/EntryLines.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <algorithm>
#include <cstring>

using namespace EntryLines;
using namespace Repository::Documents;

namespace {

// Taken by the reader, which lets brackets close in any column, as files of other programs do.
const char* const takenThough[] = {"9C9N", "QB6E"};

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The texts of several documents stand in one file, one after the other.
QJsonArray documentsIn(const QByteArray& json)
{
    QByteArray joined = "[";
    int depth = 0;
    bool inText = false;
    bool isOpen = false; // a text is not at its end
    for (int i = 0; i < json.size(); ++i) {
        const char c = json[i];
        const bool isSpace = !inText && std::strchr(" \n\r\t", c);
        if (isSpace && depth == 0) {
            isOpen = false;
            continue;
        }
        if (!isSpace && depth == 0 && !isOpen && !inText) {
            joined += joined.size() > 1 ? "," : "";
            isOpen = true;
        }
        if (c == '"' && !(inText && json[i - 1] == '\\' && json[i - 2] != '\\'))
            inText = !inText;
        if (!inText)
            depth += c == '{' || c == '[' ? 1 : c == '}' || c == ']' ? -1 : 0;
        joined += c;
    }
    return QJsonDocument::fromJson(joined + ']').array();
}

// Numbers by what they are worth: json tells no more.
QString lineOf(const std::string& path, const QString& value)
{
    return QString::fromStdString(path) + QStringLiteral(" = ") + value;
}

// A list of texts as the elements that it has: with tags in it, it is shown like that.
void appendLine(const Entry& entry, QStringList& lines)
{
    const auto* const texts = std::get_if<std::vector<std::string>>(&entry.value.data);
    const auto* const integer = std::get_if<std::int64_t>(&entry.value.data);
    const auto* const number = std::get_if<double>(&entry.value.data);
    if (texts) {
        for (std::size_t i = 0; i < texts->size(); ++i)
            lines += toLine(Entry{joinPath(entry.path, std::to_string(i)), text((*texts)[i])});
    } else if (entry.value.type == Type::ByteArray) {
        const auto bytes = QByteArray::fromStdString(std::get<std::string>(entry.value.data));
        lines += toLine(Entry{entry.path, text(bytes.toBase64().toStdString())});
    } else if (integer || number) {
        lines += lineOf(entry.path, QString::number(integer ? double(*integer) : *number, 'g', 15));
    } else if (entry.value.type != Type::Group) {
        lines += toLine(entry);
    }
}

void appendLines(const QJsonValue& value, const std::string& path, QStringList& lines)
{
    const auto below = [&](const std::string& name) { return path.empty() ? name : joinPath(path, name); };
    if (value.isString())
        lines += toLine(Entry{path, text(value.toString().toStdString())});
    else if (value.isBool())
        lines += toLine(Entry{path, boolean(value.toBool())});
    else if (value.isDouble())
        lines += lineOf(path, QString::number(value.toDouble(), 'g', 15));
    else if (value.isNull())
        lines += toLine(Entry{path, null()});
    const QJsonArray array = value.toArray();
    for (int i = 0; i < array.size(); ++i)
        appendLines(array[i], below(std::to_string(i)), lines);
    const QJsonObject object = value.toObject();
    for (auto member = object.begin(); member != object.end(); ++member)
        appendLines(member.value(), below(encodeKey(member.key().toStdString())), lines);
}

// What the events of a case say of its quoted texts and blocks, which are texts to all readers: in their
// order, without keys; and how many maps and lists there are.
struct Events
{
    QStringList texts;
    int collections = 0;
};

QString unescaped(QString text)
{
    QString plain;
    for (int i = 0; i < text.size(); ++i) {
        const int letter = text[i] == QLatin1Char('\\') && i + 1 < text.size()
                               ? QStringLiteral("nt\\br").indexOf(text[i + 1])
                               : -1;
        plain += letter < 0 ? text[i] : QStringLiteral("\n\t\\\b\r")[letter];
        i += letter < 0 ? 0 : 1;
    }
    return plain;
}

Events eventsIn(const QByteArray& bytes)
{
    struct Level
    {
        bool isMap;
        int children;
    };
    Events events;
    std::vector<Level> levels;
    const auto lines = QString::fromUtf8(bytes).split(QLatin1Char('\n'));
    for (const QString& raw : lines) {
        const QString line =
            raw.mid(int(std::find_if(raw.begin(), raw.end(), [](QChar c) { return c != QLatin1Char(' '); }) -
                        raw.begin()));
        const QString kind = line.left(4);
        const bool isStart = kind == QLatin1String("+MAP") || kind == QLatin1String("+SEQ");
        const bool isLeaf = kind == QLatin1String("=VAL") || kind == QLatin1String("=ALI");
        if (kind == QLatin1String("-MAP") || kind == QLatin1String("-SEQ"))
            levels.pop_back();
        if (!isStart && !isLeaf)
            continue;
        const bool isKey = !levels.empty() && levels.back().isMap && levels.back().children++ % 2 == 0;
        if (isStart) {
            levels.push_back({kind == QLatin1String("+MAP"), 0});
            ++events.collections;
        }
        static const QRegularExpression form(QStringLiteral("^=VAL (&\\S+ )?(<\\S*> )?(.)(.*)$"),
                                             QRegularExpression::DotMatchesEverythingOption);
        const auto match = form.match(line);
        if (!isKey && match.hasMatch() && match.captured(3) != QLatin1String(":") &&
            match.captured(2).isEmpty())
            events.texts += unescaped(match.captured(4));
    }
    return events;
}

} // namespace

// The public suite of YAML, where it is there, and a case of each kind that always is.
class YamlSuiteTest : public QObject
{
    Q_OBJECT

private slots:
    void reads_data()
    {
        const auto row = TestSupport::columns<QByteArray, QByteArray>("yaml", "json");
        row("one", "a:\n- b\n- {c: 0x1F}\n", R"({"a": ["b", {"c": 31}]})");
        row("empty elements", "a:\n-\n- b: 1\n- # c\nd:\n  -\n  -\n",
            R"({"a": [null, {"b": 1}, null], "d": [null, null]})");
        row("block with a tag, off its text", "a:\n  !b |\n  x\n\n  # y\n-:\n-\n",
            "{\"a\": \"x\\n\\n# y\\n\", \"-\": [null]}");
        row("block off its text",
            "- - a:\n\n      # b\n      &c\n      !d  >- # e\n\n     f\n  -\n      |\n   ---\n    |\n   g\n",
            "[[{\"a\": \"\\nf\"}, \"---\\n |\\ng\\n\"]]");
        row("text like a block off its text",
            "- !a |\n x\n-\n  !a |\n  x\n- [\n  '\n  !b |\n ']\n- |\n  x\n   >\n",
            "[\"x\\n\", \"x\\n\", [\" !b | \"], \"x\\n >\\n\"]");
        row("whole block off its text", "!a |\n x\n", "\"x\\n\"");
        row("two", "--- a\n...\n---\n- ~\n- true\n", "\"a\"\n[null, true]");
        forEachCase(false, [](const QString& name, const QString& folder) {
            QByteArray json = contentOf(folder + QStringLiteral("/in.json"));
            if (name == QLatin1String("565N")) // bytes, the lines of which json has as a text
                json.replace("\\n", "");
            if (!json.isEmpty())
                QTest::newRow(qPrintable(name)) << contentOf(folder + QStringLiteral("/in.yaml")) << json;
        });
    }

    void reads()
    {
        QFETCH(QByteArray, yaml);
        QFETCH(QByteArray, json);
        const auto document = makeDocument("yaml");
        const Outcome outcome = document->parse(yaml.toStdString());
        QVERIFY2(outcome.ok(), outcome.error.c_str());
        QCOMPARE(QByteArray::fromStdString(document->getBytes()), yaml);
        const QJsonArray documents = documentsIn(json);
        QStringList expected;
        if (documents.size() > 1)
            appendLines(documents, {}, expected);
        else if (!documents.isEmpty() && !documents[0].isNull())
            appendLines(documents[0], {}, expected);
        QStringList found;
        document->visit([&](const Entry& entry) { appendLine(entry, found); });
        if (documents.size() == 1 && documents[0].isNull())
            found.removeAll(QStringLiteral(" = null"));
        found.sort();
        expected.sort();
        QCOMPARE(found, expected);
    }

    void seesTheEvents_data()
    {
        const auto row = TestSupport::columns<QByteArray, QByteArray>("yaml", "events");
        row("one", "a: 'b\n\n  c'\n? [x]\n: |\n  d\n",
            "+MAP\n=VAL :a\n=VAL 'b\\nc\n+SEQ []\n=VAL :x\n-SEQ\n"
            "=VAL |d\\n\n-MAP\n");
        forEachCase(false, [](const QString& name, const QString& folder) {
            QTest::newRow(qPrintable(name)) << contentOf(folder + QStringLiteral("/in.yaml"))
                                            << contentOf(folder + QStringLiteral("/test.event"));
        });
    }

    void seesTheEvents()
    {
        QFETCH(QByteArray, yaml);
        QFETCH(QByteArray, events);
        const auto document = makeDocument("yaml");
        const Outcome outcome = document->parse(yaml.toStdString());
        QVERIFY2(outcome.ok(), outcome.error.c_str());
        QCOMPARE(QByteArray::fromStdString(document->getBytes()), yaml);
        QStringList found;
        document->visit([&](const Entry& entry) {
            if (const auto* const single = std::get_if<std::string>(&entry.value.data))
                found += QString::fromStdString(*single);
            if (const auto* const texts = std::get_if<std::vector<std::string>>(&entry.value.data)) {
                for (const std::string& each : *texts)
                    found += QString::fromStdString(each);
            }
        });
        int at = -1; // plain texts and what aliases show may come between
        const QStringList expected = eventsIn(events).texts;
        for (const QString& each : expected) {
            at = found.indexOf(each, at + 1);
            QVERIFY2(at >= 0,
                     qPrintable(each + QStringLiteral(" is not in ") + found.join(QLatin1Char('|'))));
        }
    }

    void refuses_data()
    {
        const auto row = TestSupport::columns<QByteArray>("yaml");
        row("one", "a: b: c\n");
        row("block off its text, left of its key", "- a:\n    |\n  b\n");
        row("template", "{{ if .Values.a }}\na: 1\n{{ end }}\n");
        row("NUL", QByteArray("a: 1\n\0b: 2\n", 11));
        row("control character", "a: 1\n\x01: 2\n");
        row("not UTF-8", "a: \xFF\n");
        row("tag of nothing", "? x:\t- y");
        row("alias of nothing", "a: *x\nb: &x 1\n");
        row("alias of another document", "- &b {x: 1}\n---\nm: {<<: *b}\n");
        row("tab in brackets", "- [\n\ta]\n");
        row("colon left of the block", "a:\n  b: {c\n :\n d}\n");
        row("deep", QByteArray(1100, '[') + QByteArray(1100, ']'));
        forEachCase(true, [](const QString& name, const QString& folder) {
            const bool isTaken = std::any_of(std::begin(takenThough), std::end(takenThough),
                                             [&](const char* each) { return name == QLatin1String(each); });
            if (!isTaken)
                QTest::newRow(qPrintable(name)) << contentOf(folder + QStringLiteral("/in.yaml"));
        });
    }

    void refuses()
    {
        QFETCH(QByteArray, yaml);
        const Outcome outcome = makeDocument("yaml")->parse(yaml.toStdString());
        QVERIFY(!outcome.ok());
        QVERIFY(outcome.line > 0 && outcome.column > 0);
    }

    // At its place, also where another one before it had to be shown to the library differently, and with
    // what is to be done.
    void explainsFaults_data()
    {
        const auto row = TestSupport::columns<QByteArray, QString>("yaml", "message");
        row("behind gaps", "a:\n- # b\nc:\n  !d |\n e\nf: 'é' g: h\n",
            "6:8: something follows the quote that ends the text; one within it is written twice");
        row("sign", "a: @b\n", "1:4: a text that begins with \"@\" must be in quotes");
        row("colons", "a: b: c\n",
            "1:5: a second \":\" on this line; a text that has a \":\" and a space in it must be in quotes");
        row("template", "a: 1\n{{ if b }}\nc: 2\n",
            "2:1: this is not an entry, for which it needs a key and \":\"; a template is YAML only once it "
            "is "
            "filled in");
        row("version", "# a\n%YAML 3.0\n---\nb\n", "2:1: only YAML of version 1 is read, as 1.2 is");
        row("digit", "a: b\nc:\n  - |0\n   d\n", "3:5: the digit of a block of text is one from 1 to 9");
        row("column of the key", "k:\n  a:\n  \"b\"\n",
            "3:3: this line is not indented more than the entry above, to which it would belong");
        row("column of the key at the end", "a:\nb",
            "2:1: this line is not indented more than the entry above, to which it would belong");
        row("column of the element", "- -\n  [a]\n",
            "2:3: this line is not indented more than the entry above, to which it would belong");
        row("words of the library", "a: \"b\\d\"\n", "1:6: invalid escape 'd' in double-quoted string");
    }

    void explainsFaults()
    {
        QFETCH(QByteArray, yaml);
        QFETCH(QString, message);
        const auto outcome = makeDocument("yaml")->parse(yaml.toStdString());
        QCOMPARE(QStringLiteral("%1:%2: %3")
                     .arg(outcome.line)
                     .arg(outcome.column)
                     .arg(QString::fromStdString(outcome.error)),
                 message);
    }

    // Nine lines can make 10^8 entries, and an alias can lead into itself.
    void boundsAliases_data()
    {
        const auto row = TestSupport::columns<QByteArray, QByteArray>("yaml", "line");
        QByteArray bomb = "a0: &a0 [1, 2, 3, 4, 5, 6, 7, 8, 9]\n";
        for (int i = 1; i < 9; ++i) {
            const QByteArray name = "*a" + QByteArray::number(i - 1);
            const QByteArray own = "a" + QByteArray::number(i);
            bomb += own + ": &" + own + " [" + (name + ", ").repeated(8) + name + "]\n";
        }
        row("bomb", bomb, "a8.8.8.8 = ['*a4'");
        row("cycle", "a: &x\n  b: *x\n", "a.b = '*x'");
    }

    void boundsAliases()
    {
        QFETCH(QByteArray, yaml);
        QFETCH(QByteArray, line);
        const QStringList lines = toLines("yaml", yaml.toStdString());
        QVERIFY(lines.indexOf(QRegularExpression(QRegularExpression::escape(QString::fromLatin1(line)) +
                                                 QStringLiteral(".*"))) >= 0);
        QVERIFY(lines.size() < 200000);
    }

private:
    template <typename Callback>
    static void forEachCase(bool isRefused, const Callback& callback)
    {
        const QString suite = TestSupport::corporaPath(QStringLiteral("suites"));
        if (suite.isEmpty())
            return;
        const QString top = suite + QStringLiteral("/yaml-test-suite");
        QDirIterator files(top, {QStringLiteral("in.yaml")}, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            files.next();
            const QString folder = files.fileInfo().path();
            if (QFile::exists(folder + QStringLiteral("/error")) == isRefused)
                callback(QDir(top).relativeFilePath(folder), folder);
        }
    }
};

VANTRY_TEST_MAIN(QCoreApplication, YamlSuiteTest)

#include "yaml_suite_test.moc"
