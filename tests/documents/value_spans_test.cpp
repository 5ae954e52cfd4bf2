#include "repository/documents/common/ValueSpans.h"
#include "tests/documents/EntryLines.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

#include <QDirIterator>
#include <QFile>

using namespace EntryLines;
using Repository::Documents::makeDocument;
using Repository::Documents::Span;
using Repository::Documents::ValueSpans;

namespace {

// Each value at its place by visitSpans, and by locate; empty where both agree.
QString disagreement(const Document& document)
{
    QStringList visited;
    document.visitSpans([&](const std::string& path, Span span) {
        visited.append(
            QStringLiteral("%1 %2+%3").arg(QString::fromStdString(path)).arg(span.offset).arg(span.length));
    });
    QStringList located;
    document.visit([&](const Entry& entry) {
        if (const auto span = document.locate(entry.path))
            located.append(QStringLiteral("%1 %2+%3")
                               .arg(QString::fromStdString(entry.path))
                               .arg(span->offset)
                               .arg(span->length));
    });
    return visited == located ? QString()
                              : visited.join(QLatin1Char('\n')) + QStringLiteral("\nbut\n") +
                                    located.join(QLatin1Char('\n'));
}

QByteArray utf16(const char* text, bool bigEnd)
{
    QByteArray bytes = bigEnd ? QByteArray("\xFE\xFF") : QByteArray("\xFF\xFE");
    for (const QChar unit : QString::fromUtf8(text)) {
        const char high = char(unit.row());
        const char low = char(unit.cell());
        bytes += bigEnd ? high : low;
        bytes += bigEnd ? low : high;
    }
    return bytes;
}

} // namespace

// Values and comments by their places in the text.
class ValueSpansTest : public QObject
{
    Q_OBJECT

private slots:
    // What is visited in one walk is what is found one by one, in real files before and after an edit.
    void visitsAllInTheirPlaces_data()
    {
        const auto row = TestSupport::columns<QByteArray, QByteArray>("format", "bytes");
        row("ini", "ini", "a=1\n[s]\nb = 2 ; c\n[t]\nd=\n[s]\ne=\"x\"");
        row("ini with a byte-order mark", "ini", "\xEF\xBB\xBF[s]\na=\xC3\xA4\nb=2");
        row("ini in UTF-16", "ini", utf16("[s]\nä = ö\nb=😀\nc=3\n", false));
        row("txt in UTF-16", "txt", utf16("ä = ö\nb.c=😀\nd=3\n", true));
        row("json", "json",
            "\xEF\xBB\xBF{\"a\": [\"x\", \"y\"], \"b\": [1, {\"#value\": 2, \"c\": null}], \"d\": \"\"}");
        row("json of types", "json", "{\"a\": \"5\", \"$types\": {\"a\": \"bytes\"}}");
        row("xml", "xml", "<?xml version='1.0'?>\n<r a='1'>t<b/><b>2</b><c> x <d/> y </c></r>\n");
        row("xml in ISO-8859-1", "xml",
            "<?xml version='1.0' encoding='ISO-8859-1'?><r>\xE4<b>\xF6</b><c>3</c></r>");
        row("yaml", "yaml", "a: &x one # c\nb: [*x, 2, \"t\"]\n? c\n: - d\n  - {e: f}\n");
        row("toml", "toml", "a = 1\n[t]\nb = [1, 2]\nc = {d = \"x\", e = [\"f\"]}\n[[u]]\ng.h = 2\n[[u]]\n");
        for (const char* const format : {"ini", "json", "xml", "txt", "toml", "yaml"}) {
            const QString corpus = TestSupport::corporaPath(QLatin1String(format));
            QDirIterator files(corpus, QDir::Files, QDirIterator::Subdirectories);
            for (int count = 0; !corpus.isEmpty() && files.hasNext() && count < 60;) {
                QFile file(files.next());
                if (!file.open(QIODevice::ReadOnly) || file.size() > 20000)
                    continue;
                ++count;
                row(qPrintable(file.fileName()), format, file.readAll());
            }
        }
    }

    void visitsAllInTheirPlaces()
    {
        QFETCH(QByteArray, format);
        QFETCH(QByteArray, bytes);
        const auto document = makeDocument(format.toStdString());
        if (!document->parse(bytes.toStdString()).ok())
            return;
        QCOMPARE(disagreement(*document), QString());
        std::string first;
        document->visit([&](const Entry& entry) {
            if (first.empty() && entry.value.type == Type::String)
                first = entry.path;
        });
        document->set(first, text("longer than before"));
        document->remove(first);
        QCOMPARE(disagreement(*document), QString());
    }

    // The text is as people read it, whatever the encoding.
    void givesTheTextWithItsValues_data()
    {
        const auto row = TestSupport::columns<QByteArray, QByteArray>("format", "bytes");
        row("UTF-8", "ini", "k=\xC3\xA4\n[s]\nb = two\nc=\xF0\x9F\x98\x80");
        row("with a mark", "ini", "\xEF\xBB\xBFk=\xC3\xA4\n[s]\nb = two\nc=\xF0\x9F\x98\x80");
        row("UTF-16, little end first", "ini", utf16("k=ä\n[s]\nb = two\nc=😀", false));
        row("UTF-16, big end first", "ini", utf16("k=ä\n[s]\nb = two\nc=😀", true));
    }

    void givesTheTextWithItsValues()
    {
        QFETCH(QByteArray, format);
        QFETCH(QByteArray, bytes);
        const auto document = makeDocument(format.toStdString());
        QVERIFY(document->parse(bytes.toStdString()).ok());
        const ValueSpans spans(*document);
        QCOMPARE(QString::fromStdString(spans.getText()), QString::fromUtf8("k=ä\n[s]\nb = two\nc=😀"));
        QStringList values;
        for (const ValueSpans::Value& value : spans.getValues())
            values.append(QString::fromStdString(
                value.path + '=' + spans.getText().substr(value.span.offset, value.span.length)));
        QCOMPARE(values, QStringList({QString::fromUtf8("k=ä"), QStringLiteral("s.b=two"),
                                      QString::fromUtf8("s.c=😀")}));
        const auto place =
            Repository::Documents::placeInFile(document->getBytes(), document->locate("s.b")->offset);
        QCOMPARE(QStringLiteral("%1:%2").arg(place.line).arg(place.column), QStringLiteral("3:5"));
    }

    void findsWhatIsMeant_data()
    {
        const auto row = TestSupport::columns<QByteArray, QByteArray, int, int, QString>(
            "format", "bytes", "line", "column", "path");
        const char* const ini = "; first\n\nä = \"öü\" ; b\n[s]\nb=\nc = 1\n  2\n; end\n";
        row("the key", "ini", ini, 3, 1, "ä");
        row("inside of the value", "ini", ini, 3, 7, "ä");
        row("the comment after it", "ini", ini, 3, 11, "ä");
        row("beyond the line", "ini", ini, 3, 500, "ä");
        row("the comment above", "ini", ini, 1, 1, "ä");
        row("a blank line", "ini", ini, 2, 1, "ä");
        row("the header", "ini", ini, 4, 2, "s.b");
        row("an empty value", "ini", ini, 5, 3, "s.b");
        row("the second line of a value", "ini", ini, 7, 1, "s.c");
        row("after all values", "ini", ini, 8, 1, "");
        row("after all lines", "ini", ini, 9, 1, "");
        const char* const json = "{\"a\": 1, \"b\": [\n2, 3], \"c\": {\"d\": 4}}";
        row("the first of a line", "json", json, 1, 1, "a");
        row("after the last of a line", "json", json, 1, 9, "a");
        row("before the next of a line", "json", json, 2, 3, "b.1");
        row("one of many", "json", json, 2, 4, "b.1");
        row("bytes of two", "yaml", "a: &x\n  k: one\nb: *x\n", 2, 6, "a.k");
        row("beyond the last of a line", "json", json, 2, 30, "c.d");
        row("the end of a value", "json", json, 2, 2, "b.0");
    }

    void findsWhatIsMeant()
    {
        QFETCH(QByteArray, format);
        QFETCH(QByteArray, bytes);
        QFETCH(int, line);
        QFETCH(int, column);
        QFETCH(QString, path);
        const auto document = makeDocument(format.toStdString());
        QVERIFY(document->parse(bytes.toStdString()).ok());
        const ValueSpans spans(*document);
        const auto* const found = spans.find(std::size_t(line), std::size_t(column));
        QCOMPARE(found ? QString::fromStdString(found->path) : QString(), path);
    }

    void tellsTheComment_data()
    {
        const auto row = TestSupport::columns<QByteArray, QByteArray, QByteArray, QString>("format", "bytes",
                                                                                           "path", "comment");
        row("ini: above and after", "ini", "; far\n\n; one\n  # two\na = 1 ; three\n", "a",
            "; one\n# two\n; three");
        row("ini: none", "ini", "; far\n\na = 1\nb = 2\n", "a", "");
        row("ini: of another", "ini", "a = 1 ; one\nb = 2\n", "b", "");
        row("ini: in quotes", "ini", "a = \"1 ; one\"\n", "a", "");
        row("ini: a section", "ini", "a=1\n\n; one\n[s] ; two\n; three\nb=1\n", "s", "; one\n; two");
        row("ini: after the tag", "ini", "; one\n; @type text\na = 5\n", "a", "; one");
        row("txt", "txt", "# one\r\n# two\r\na.b = 1\r\n", "a.b", "# one\n# two");
        row("json", "json", "{\n  // one\n  /* two */\n  \"a\": 1, // three\n  \"b\": 2\n}", "a",
            "// one\n/* two */\n// three");
        row("json: of another", "json", "{\n  // one\n  \"a\": 1, // three\n  \"b\": 2\n}", "b", "");
        row("xml", "xml", "<r>\n  <!-- one -->\n  <a>1</a> <!-- two -->\n</r>", "r.a",
            "<!-- one -->\n<!-- two -->");
        row("toml", "toml", "# one\na = 1 # two\nb = 2\n", "a", "# one\n# two");
        row("toml: a table", "toml", "a = 1\n\n# one\n[t] # two\nb = 2\n", "t", "# one");
    }

    void tellsTheComment()
    {
        QFETCH(QByteArray, format);
        QFETCH(QByteArray, bytes);
        QFETCH(QByteArray, path);
        QFETCH(QString, comment);
        const auto document = makeDocument(format.toStdString());
        QVERIFY(document->parse(bytes.toStdString()).ok());
        QCOMPARE(QString::fromStdString(document->comment(path.toStdString())), comment);
    }

    // Undo and redo included.
    void keepsCommentsBetweenLines()
    {
        const std::string bytes = "; one\n; @type text\nk = a\n ; two\n  b\nl = 1\n";
        const auto document = makeDocument("ini");
        QVERIFY(document->parse(bytes).ok());
        const std::string before = *document->spell("k");
        QVERIFY(document->set("k", Value{Type::String, std::string("c")}).ok());
        const std::string edited = document->getBytes();
        QCOMPARE(edited, std::string("; one\n; two\n; @type text\nk = c\nl = 1\n"));
        QCOMPARE(document->comment("k"), std::string("; one\n; two"));
        const std::string after = *document->spell("k");
        QVERIFY(document->respell("k", before).ok());
        QCOMPARE(document->getBytes(), bytes);
        QVERIFY(document->respell("k", after).ok());
        QCOMPARE(document->getBytes(), edited);
    }
};

VANTRY_TEST_MAIN(QCoreApplication, ValueSpansTest)

#include "value_spans_test.moc"
