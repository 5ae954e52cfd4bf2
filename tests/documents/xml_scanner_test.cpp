#include "fuzz/Exercises.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

#include <QDirIterator>
#include <QFile>

namespace {

std::string contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
}

} // namespace

// What the scanner takes for plain xml, the parser must read with the same tags.
class XmlScannerTest : public QObject
{
    Q_OBJECT

private slots:
    void agreesWithParserAfterSmallChanges_data()
    {
        const auto row = TestSupport::columns<QByteArray>("text");
        const QString seed = TestSupport::projectPath(QStringLiteral("fuzz/seeds/xml/plain.xml"));
        row("all that is plain", QByteArray::fromStdString(contentOf(seed)));
        row("references", "<a b='&#9;&#x20;&#55295;&quot;'>&#10;&amp;&apos;</a>");
        row("attributes", "<a b='' c=''><d e=''/></a>");
        row("other declaration", "<?xml version='1.0' encoding='utf-8' ?>\r\n<a/>\n");
        row("comments", "<!----><a><!-- - --><b><!--a-b--></b></a><!--->-->");
    }

    void agreesWithParserAfterSmallChanges()
    {
        QFETCH(QByteArray, text);
        const std::string original = text.toStdString();
        QVERIFY(Fuzz::checkXmlScanner(original).isPlain);
        std::vector<std::string> pieces{"", "]]>", "--", "<a>", "<b/>", "&b;", "<?xml ?>", "<![CDATA[]]>"};
        pieces.insert(pieces.end(), {"\xC3\xA9", "\xEF\xBF\xBE", "\xEF\xBF\xBF", "\xED\xA0\x80", "\xFF\xFE",
                                     "\xF4\x90\x80\x80"});
        for (int byte = 0; byte < 256; ++byte)
            pieces.emplace_back(1, char(byte));
        std::size_t plain = 0;
        for (std::size_t at = 0; at <= original.size(); ++at) {
            for (const std::string& piece : pieces) {
                for (const std::size_t replaced : {0U, 1U, 2U, 4U}) {
                    std::string changed = original;
                    changed.replace(at, replaced, piece);
                    const Fuzz::XmlScannerCheck check = Fuzz::checkXmlScanner(changed);
                    plain += check.isPlain ? 1 : 0;
                    if (!check.fault.empty())
                        QFAIL((check.fault + ", but the scanner takes\n" + changed).c_str());
                }
            }
        }
        QVERIFY(plain > original.size());
    }

    void agreesWithParserAboutFiles()
    {
        int plain = 0;
        for (const QString& folder : {TestSupport::projectPath(QStringLiteral("fuzz")),
                                      TestSupport::corporaPath(QStringLiteral("xml")),
                                      TestSupport::corporaPath(QStringLiteral("variants"))}) {
            QDirIterator files(folder, QDir::Files, QDirIterator::Subdirectories);
            while (!folder.isEmpty() && files.hasNext()) {
                const QString path = files.next();
                const Fuzz::XmlScannerCheck check = Fuzz::checkXmlScanner(contentOf(path));
                plain += check.isPlain ? 1 : 0;
                QVERIFY2(check.fault.empty(), (path.toStdString() + ": " + check.fault).c_str());
            }
        }
        QVERIFY(plain > 0);
    }
};

VANTRY_TEST_MAIN(QCoreApplication, XmlScannerTest)

#include "xml_scanner_test.moc"
