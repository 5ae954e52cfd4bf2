#include "host/FrameworkCore/Values/Utf8.h"
#include "repository/documents/common/ComponentCodec.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

#include <QRandomGenerator>

using namespace Repository::Documents;

class ComponentCodecTest : public QObject
{
    Q_OBJECT

private slots:
    void encodes_data()
    {
        const auto row = TestSupport::columns<QByteArray, QByteArray>("key", "component");
        row("plain", "Desktop Entry", "Desktop Entry");
        row("separator, wildcard, list", "a.b*c%d;e", "a%2Eb%2Ac%25d%3Be");
        row("tab and delete", "\t\x7F", "%09%7F");
        row("second control range", "\xC2\x85\xC2\xA0", "%C2%85\xC2\xA0");
        row("override of direction", "a\xE2\x80\xAE", "a%E2%80%AE");
        row("isolate of direction", "\xE2\x81\xA6\xE2\x81\xA9", "%E2%81%A6%E2%81%A9");
        row("mark of direction", "\xE2\x80\x8E\xD8\x9C", "%E2%80%8E%D8%9C");
        row("line and paragraph separator", "\xE2\x80\xA8\xE2\x80\xA9", "%E2%80%A8%E2%80%A9");
        row("joiner of letters", "\xE2\x80\x8D", "\xE2\x80\x8D");
        row("leading at", "@a@", "%40a@");
        row("leading hash", "#a#", "%23a#");
        row("number", "key[2]", "key[2%5D");
        row("nothing but a number", "[10]", "[10%5D");
        row("locale", "Name[de]", "Name[de]");
        row("empty brackets", "key[]", "key[]");
        row("number inside", "key[2]x", "key[2]x");
        row("empty", "", "%00");
        row("nul", QByteArray("\0", 1), "%00%00");
        row("nul inside", QByteArray("a\0", 2), "a%00");
        row("no utf-8", "Gr\xFC\xDF", "Gr%FC%DF");
        row("utf-8", "\xC3\xBC", "\xC3\xBC");
    }

    void encodes()
    {
        QFETCH(QByteArray, key);
        QFETCH(QByteArray, component);
        QCOMPARE(QByteArray::fromStdString(encodeKey(key.toStdString())), component);
        const auto back = decodeKey(component.toStdString());
        QVERIFY(back);
        QCOMPARE(QByteArray::fromStdString(*back), key);
    }

    void refusesOtherForms_data()
    {
        const auto row = TestSupport::columns<QByteArray>("component");
        for (const char* text :
             {"", "a.b", "a*", "50%", "%2e", "%2", "%41", "@a", "a;b", "key[2]", "\xFC", "a\t"})
            row(text, QByteArray(text));
    }

    void refusesOtherForms()
    {
        QFETCH(QByteArray, component);
        QVERIFY(!decodeKey(component.toStdString()));
    }

    void isExactForAnyBytes()
    {
        QRandomGenerator random(11);
        const std::string alphabet("\0\0.%@#[]12a\xC3\xBC\xFF;*0", 18);
        for (int round = 0; round < 50000; ++round) {
            std::string key;
            for (int left = random.bounded(6); left > 0; --left)
                key += alphabet[std::size_t(random.bounded(int(alphabet.size())))];
            const std::string component = encodeKey(key);
            QVERIFY(FrameworkCore::Values::isUtf8(component));
            QVERIFY(splitPath(component).has_value());
            QCOMPARE(splitNumber(component).number, std::size_t(1));
            QVERIFY(decodeKey(component) == key);
        }
    }

    void tellsSiblingsApart()
    {
        const NumberedComponent second = splitNumber("a[3][2]");
        QCOMPARE(std::string(second.name), std::string("a[3]"));
        QCOMPARE(second.number, std::size_t(2));
        QCOMPARE(joinNumber("a", 12), std::string("a[12]"));
        for (const char* first : {"a", "a[1]", "a[0]", "a[02]", "a[-2]", "a[2", "a[99999999999999999999]"}) {
            QCOMPARE(splitNumber(first).number, std::size_t(1));
            QCOMPARE(std::string(splitNumber(first).name), std::string(first));
        }
    }

    void splitsPaths()
    {
        QCOMPARE(splitPath("a.b c.%2E")->size(), std::size_t(3));
        for (const char* wrong : {"", ".", "a.", ".a", "a..b"})
            QVERIFY(!splitPath(wrong));
    }
};

VANTRY_TEST_MAIN(QCoreApplication, ComponentCodecTest)

#include "component_codec_test.moc"
