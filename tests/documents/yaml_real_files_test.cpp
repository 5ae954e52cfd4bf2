#include "repository/documents/common/ComponentCodec.h"
#include "repository/documents/common/TextLine.h"
#include "tests/documents/DocumentEdits.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>

using namespace DocumentEdits;
using namespace Repository::Documents;

namespace {

// What readers take for something else, or an emitter would write in another way.
std::vector<Value> hardValues()
{
    return {text("no"),
            text("~"),
            text("- a"),
            text("a: b"),
            text("#x"),
            text(" x "),
            text("x\ny"),
            text("\"'"),
            text(""),
            text(std::string(10000, 'l')),
            text("---"),
            text("{{ x }}"),
            text("017"),
            text("1:30"),
            text("2024-01-02"),
            text("0x1F"),
            text("x\n\n"),
            text("\n"),
            text(" a\nb\n"),
            text("a #b"),
            text("\ttab"),
            text("x\r\ny"),
            text("*x"),
            text("!!str x"),
            text("\xC2\x85"),
            text("é, [a]"),
            text("null"),
            text("1e3"),
            text("<<"),
            text("a\n  b\n\n\nc\n"),
            text("? x"),
            text("key:"),
            text("a\n#b\n"),
            text("---\n..."),
            text("\x01"),
            integer(-5),
            number(1e22),
            number(2),
            number(-INFINITY),
            boolean(true),
            null(),
            list({}),
            list({"a", "no", "b, c", "d\ne", ": "}),
            integer(42),
            {Type::Unsigned, std::uint64_t(18446744073709551615U)},
            {Type::ByteArray, std::string("\0\xFF", 2)}};
}

} // namespace

// Values and shapes of small files and of real ones are changed anywhere in them.
class YamlRealFilesTest : public QObject
{
    Q_OBJECT

private slots:
    void setsValues_data()
    {
        const auto row = TestSupport::columns<QByteArray>("yaml");
        row("small", "a: x # c\nb:\n  - 1\n  - 'y'\n\n  - |+\n    z\n\n# d\nc: {d: ~, e: \"f\", g}\nh: >-\n  "
                     "i\n  j\nk:\n");
        int number = 0;
        for (const QByteArray& linked : linkedFiles())
            QTest::addRow("linked %d", number++) << linked;
        for (const char* folder : {"yaml", "variants"}) {
            QDirIterator files(TestSupport::corporaPath(QString::fromLatin1(folder)), QDir::Files);
            while (files.hasNext()) {
                QFile file(files.next());
                const bool isYaml = folder[0] == 'y' || files.fileName().startsWith(QLatin1String("yaml-"));
                if (isYaml && file.open(QIODevice::ReadOnly) && file.size() < 100000)
                    QTest::newRow(
                        qPrintable(QString::fromLatin1(folder) + QLatin1Char('/') + files.fileName()))
                        << file.readAll();
            }
        }
    }

    void setsValues()
    {
        QFETCH(QByteArray, yaml);
        const std::string bytes = yaml.toStdString();
        const auto document = makeDocument("yaml");
        if (!document->parse(bytes).ok())
            return;
        const std::vector<Entry> entries = entriesOf(*document);
        const auto values = hardValues();
        const int most = std::max(30, qEnvironmentVariableIntValue("VANTRY_WALK_FILES"));
        const std::size_t step = std::max<std::size_t>(1, entries.size() / std::size_t(most));
        for (std::size_t i = 0; i < entries.size(); i += step) {
            const auto place = document->locate(entries[i].path);
            const Value& value = values[(i * 7 + bytes.size()) % values.size()];
            if (!place || entries[i].value.type == Type::Group)
                continue;
            const auto spelling = document->spell(entries[i].path);
            const bool isCopy = document->originOf(entries[i].path) == Document::Origin::Copy;
            const Outcome outcome = document->set(entries[i].path, value);
            const std::string after = document->getBytes();
            if (!outcome.ok()) {
                QCOMPARE(after, bytes);
                continue;
            }
            const auto what =
                "line " +
                std::to_string(std::count(bytes.begin(), bytes.begin() + long(place->offset), '\n') + 1) +
                ", " + entries[i].path + " = " + toLine(value).toStdString().substr(0, 80);
            std::string_view head = std::string_view(bytes).substr(0, place->offset);
            const std::string_view tail = std::string_view(bytes).substr(place->offset + place->length);
            head = head.substr(0, head.find_last_not_of(' ') + 1);
            QVERIFY2(isCopy || (after.compare(0, head.size(), head) == 0 && after.size() >= tail.size() &&
                                after.compare(after.size() - tail.size(), tail.size(), tail) == 0),
                     what.c_str());
            QStringList expected;
            for (std::size_t j = 0; j < entries.size(); ++j) {
                const bool showsIt = i == j || document->sourceOf(entries[j].path) == entries[i].path;
                expected += toLine(Entry{entries[j].path, showsIt ? value : entries[j].value});
            }
            QStringList found = toLines("yaml", after);
            if (isCopy) { // which has come to the entries of its map
                found.sort();
                expected.sort();
            }
            QVERIFY2(found == expected, what.c_str());
            QVERIFY2(
                (isCopy ? document->remove(entries[i].path) : document->respell(entries[i].path, *spelling))
                    .ok(),
                what.c_str());
            QVERIFY2(document->getBytes() == bytes || (isCopy && !endsLine(bytes)), what.c_str());
        }
    }

    // Entries are taken out, renamed and added anywhere in real files: what the file is read to be is what
    // the document shows, and no comment outside of what was taken out is lost or moved before another.
    void changesShapes_data() { setsValues_data(); }

    void changesShapes()
    {
        QFETCH(QByteArray, yaml);
        const std::string bytes = yaml.toStdString();
        auto document = makeDocument("yaml");
        if (!document->parse(bytes).ok())
            return;
        const std::vector<Entry> entries = entriesOf(*document);
        const std::size_t step = std::max<std::size_t>(1, entries.size() / 12);
        for (std::size_t i = 0; i < entries.size(); i += step) {
            const std::string& path = entries[i].path;
            const std::vector<std::pair<const char*, Edit>> edits{
                {"remove", drop(path)},
                {"rename", renameTo(path, "re-named")},
                {"add", add(joinPath(path, "added"), text("it's\nnew"))},
                {"add beside", add(joinPath(splitLast(path).parent, "a b.c"), list({"x", "no"}))},
                {"copy", [&](Document& other) {
                     const auto excerpt = other.excerpt(path);
                     const bool isDone =
                         excerpt && other.insertExcerpt(joinPath(splitLast(path).parent, "copied"), *excerpt);
                     return isDone ? Outcome() : refused("by its values only");
                 }}};
            for (const auto& [what, edit] : edits) {
                const Outcome outcome = edit(*document);
                const std::string after = document->getBytes();
                if (!outcome.ok()) {
                    QCOMPARE(after, bytes);
                    continue;
                }
                const std::string where = std::string(what) + ' ' + path;
                QVERIFY2(toLines("yaml", after) == toLines(*document), where.c_str());
                QVERIFY2(keepsLines(bytes, after, what[0] == 'r' && what[2] == 'm'), where.c_str());
                QVERIFY(document->parse(bytes).ok());
            }
        }
    }

private:
    // Whether the lines that are nothing but a comment are the same, or some of them are gone.
    static bool keepsLines(const std::string& before, const std::string& after, bool mayGo)
    {
        const auto commentsIn = [](const std::string& bytes) {
            QStringList found;
            const auto lines =
                QString::fromStdString(bytes).split(QRegularExpression(QStringLiteral("[\r\n]+")));
            for (const QString& line : lines) {
                if (line.trimmed().startsWith(QLatin1Char('#')))
                    found += line.trimmed();
            }
            return found;
        };
        const QStringList old = commentsIn(before);
        const QStringList now = commentsIn(after);
        auto next = old.begin();
        for (const QString& comment : now) {
            next = std::find(next, old.end(), comment);
            if (next == old.end())
                return !mayGo && now.size() > old.size();
            ++next;
        }
        return mayGo || now.size() >= old.size();
    }
};

VANTRY_TEST_MAIN(QCoreApplication, YamlRealFilesTest)

#include "yaml_real_files_test.moc"
