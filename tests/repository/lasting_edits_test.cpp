#include "repository/backends/FileFormat.h"
#include "repository/documents/common/ComponentCodec.h"
#include "repository/documents/common/Values.h"
#include "tests/documents/EntryLines.h"
#include "tests/support/TestRun.h"

#include <QCoreApplication>

using namespace EntryLines;
using Repository::FileFormat;
using Repository::Documents::encodeKey;
using Repository::Documents::makeDocument;

namespace {

std::string utf16(const QString& text, bool isLittle)
{
    std::string bytes = isLittle ? "\xFF\xFE" : "\xFE\xFF";
    for (const QChar c : text) {
        const char low = char(c.unicode() & 0xFF);
        const char high = char(c.unicode() >> 8);
        bytes += isLittle ? low : high;
        bytes += isLittle ? high : low;
    }
    return bytes;
}

// What may make a file begin like another one, or no longer be text.
std::vector<std::string> nastyTexts()
{
    std::vector<std::string> texts{"",
                                   "{",
                                   "{x",
                                   "<a>",
                                   "<a b=",
                                   "<!x",
                                   "<?xml version=\"1.0\"?>",
                                   "[",
                                   "[\n",
                                   "[s]",
                                   "[[",
                                   "//",
                                   "/* {",
                                   ";x",
                                   "#x",
                                   "# @type date",
                                   "; @type bytes",
                                   "<?vantry type=\"date\"?>",
                                   "<!--",
                                   "]]>",
                                   "\\",
                                   "\"",
                                   "'",
                                   "=",
                                   ":",
                                   "\r",
                                   "\n",
                                   "\r\n",
                                   "\t",
                                   " ",
                                   "a b",
                                   "1",
                                   "true",
                                   "null",
                                   "\xEF\xBB\xBF",
                                   "\xEF\xBB\xBFx",
                                   "\xEF\xBF\xBE",
                                   "\xEF\xBF\xBF",
                                   "\xC3\xBF\xC3\xBE",
                                   "\xC3\xBE\xC3\xBF",
                                   "\xC3\xAF\xC2\xBB\xC2\xBF",
                                   "\xC2\x85",
                                   "\xC2\x9B",
                                   "\xE2\x80\xA8",
                                   "\xE2\x80\xA9",
                                   "\xE2\x80\xAE",
                                   "\xE2\x81\xA6",
                                   "\xE2\x80\x8F",
                                   "\xED\xA0\x80",
                                   "\xED\xB0\x80",
                                   "\xED\xB0\x80\xED\xA0\x80",
                                   "\xED\xA0\x80\xED\xB0\x80",
                                   "\xF0\x9F\xBF\xBE",
                                   "\xF4\x8F\xBF\xBF",
                                   "\xE4\xBB\x96",
                                   "\xE3\x80\x80",
                                   std::string(2, '\0'),
                                   std::string("a\0b\0c", 5),
                                   std::string(200, '\0'),
                                   std::string(5000, 'x') + "{"};
    for (char c = 0; c < 0x20; ++c)
        texts.push_back(std::string("a") + c);
    texts.emplace_back("\x7F");
    return texts;
}

std::vector<Value> nastyValues()
{
    std::vector<Value> values;
    for (const std::string& each : nastyTexts()) {
        values.push_back(text(each));
        values.push_back(list({each}));
        values.push_back(list({each, each}));
        values.push_back({Type::ByteArray, each});
    }
    for (const char* bytes : {"\xFF\xFE", "\xFE\xFF", "\xFF\xFE{", "\xE4", "\xC0\x80"})
        values.push_back({Type::ByteArray, std::string(bytes)});
    values.push_back({Type::ByteArray, std::string("\0\0\xFE\xFF", 4)});
    return values;
}

} // namespace

// What an edit makes of a file is refused, or is read again as what it was, by the same program and under the
// same name.
class LastingEditsTest : public QObject
{
    Q_OBJECT

private slots:
    void readsAgainWhatWasEdited_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("entry"); // one with a value
        const auto row = [](const char* name, const char* file, const std::string& before,
                            const char* entry) {
            QTest::newRow(name) << QString::fromLatin1(file) << QByteArray::fromStdString(before)
                                << QByteArray(entry);
        };
        const QString lines = QStringLiteral("k = v\n\n[s]\nk = v ; c\n");
        const std::string plain = lines.toStdString();
        row("ini", "a.ini", plain, "s.k");
        row("ini with its mark", "a.ini", "\xEF\xBB\xBF" + plain, "k");
        row("ini of UTF-16, little end", "a.ini", utf16(lines, true), "k");
        row("ini of UTF-16, big end", "a.ini", utf16(lines, false), "s.k");
        row("ini of Latin-1", "a.ini", "\xE4 = \xE4\n" + plain, "k");
        row("ini with a stray NUL", "a.ini", plain + std::string("x\0 = \0\n", 7), "k");
        row("ini by its beginning", "a.conf", plain, "k");
        row("ini by its beginning, with sections only", "a.conf", "[s]\nk=v\n", "s.k");
        row("ini without an ending", "plain", "; c\n" + plain, "k");
        row("ini of UTF-16 without an ending", "plain", utf16(lines, true), "k");
        row("empty ini", "a.conf", "", "");
        row("unit", "a.service", "[Unit]\nk=v\n", "Unit.k");
        row("txt", "a.txt", "k = v\nl = w\n", "k");
        row("txt with its mark", "a.txt", "\xEF\xBB\xBFk = v\n", "k");
        row("txt of UTF-16", "a.txt", utf16(QStringLiteral("k = v\n"), true), "k");
        row("txt of Latin-1", "a.properties", "k = v\nx = \xE4\n", "k");
        row("json", "a.json", "{\n  \"k\": \"v\",\n  \"l\": [\"x\"]\n}\n", "k");
        row("json with its mark", "a.json", "\xEF\xBB\xBF{\"k\": \"v\"}", "k");
        row("json by its beginning", "a.conf", "{\"k\": \"v\"}", "k");
        row("json after a comment", "plain", "// {\n[{\"k\": \"v\"}]", "0.k");
        row("xml", "a.xml", "<r><k>v</k><l a='b'/></r>", "r.k");
        row("xml of Latin-1", "a.xml", "<?xml version='1.0' encoding='ISO-8859-1'?><r><k>\xE4</k></r>",
            "r.k");
        row("xml of UTF-16", "a.xml", utf16(QStringLiteral("<r><k>v</k></r>"), false), "r.k");
        row("xml by its beginning", "a.conf", "<!-- c -->\n<r k='v'/>", "r.@k");
    }

    void readsAgainWhatWasEdited()
    {
        int accepted = 0;
        const auto keys = nastyTexts();
        for (const Value& value : nastyValues()) {
            accepted += check([&](Document& document) { return document.set(entry(), value); });
            accepted += check([&](Document& document) { return document.insert(placeOf("n"), value); });
            accepted += check([&](Document& document) {
                document.remove(entry());
                return document.insert(placeOf("n"), value);
            });
        }
        for (const std::string& key : keys) {
            const std::string path = placeOf(encodeKey(key));
            accepted += check([&](Document& document) { return document.insert(path, text("x")); });
            accepted += check([&](Document& document) { return document.insert(path + ".a", integer(1)); });
            accepted += check([&](Document& document) {
                document.remove(entry());
                return document.insert(path, null());
            });
        }
        QVERIFY2(accepted > 100, qPrintable(QString::number(accepted)));
    }

    // One after another, in every order of three.
    void readsAgainWhatIsLeft_data() { readsAgainWhatWasEdited_data(); }

    void readsAgainWhatIsLeft()
    {
        const auto paths = pathsOf(*loaded());
        for (const std::string& first : paths) {
            for (const std::string& second : paths) {
                check([&](Document& document) {
                    document.remove(first);
                    document.remove(second);
                    return Repository::Documents::Outcome();
                });
            }
        }
    }

private:
    static std::string entry()
    {
        QFETCH(QByteArray, entry);
        return entry.toStdString();
    }

    static std::string bytes()
    {
        QFETCH(QByteArray, before);
        return before.toStdString();
    }

    static QString type()
    {
        QFETCH(QString, file);
        return FileFormat::ofContent(file, bytes());
    }

    // Beside the entry.
    static std::string placeOf(const std::string& component)
    {
        const std::string parent = entry().substr(0, entry().rfind('.') + 1);
        return entry().find('.') == std::string::npos ? component : parent + component;
    }

    static std::unique_ptr<Document> loaded()
    {
        auto document = makeDocument(type().toStdString());
        const auto outcome = document->parse(bytes());
        if (!outcome.ok())
            qFatal("%s", outcome.error.c_str());
        return document;
    }

    static std::vector<std::string> pathsOf(const Document& document)
    {
        std::vector<std::string> paths;
        document.visit([&](const Entry& each) {
            if (!each.path.empty())
                paths.push_back(each.path);
        });
        return paths;
    }

    static QStringList linesOf(const Document& document)
    {
        QStringList lines;
        document.visit([&](const Entry& each) {
            lines.append(QString::fromStdString(each.path) + QStringLiteral(" = ") + toLine(each.value));
        });
        return lines;
    }

    // 1 when the edit was accepted.
    template <typename Edit>
    static int check(const Edit& edit)
    {
        QFETCH(QString, file);
        const auto document = loaded();
        if (!edit(*document).ok())
            return 0;
        const std::string after = document->getBytes();
        if (FileFormat::tells(file, type(), bytes()) &&
            !FileFormat::explainMistaking(file, type(), after).isEmpty())
            return 0;
        const QByteArray written = QByteArray::fromStdString(after);
        const auto again = makeDocument(type().toStdString());
        const auto outcome = again->parse(after);
        if (FileFormat::ofContent(file, after) != type() || !outcome.ok() ||
            linesOf(*again) != linesOf(*document))
            QTest::qFail(("read again as " + FileFormat::ofContent(file, after).toUtf8() + ": " +
                          QByteArray::fromStdString(outcome.error) + "\n" +
                          linesOf(*document).join(QLatin1Char('\n')).toUtf8().left(300) + "\nfrom\n" +
                          written.left(300).toPercentEncoding(" =[]{}\n"))
                             .constData(),
                         __FILE__, __LINE__);
        return 1;
    }
};

VANTRY_TEST_MAIN(QCoreApplication, LastingEditsTest)

#include "lasting_edits_test.moc"
#include "repository/documents/Formats.h"
