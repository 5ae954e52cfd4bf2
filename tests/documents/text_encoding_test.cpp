#include "repository/documents/common/TextEncoding.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

#include <QRandomGenerator>

using namespace Repository::Documents;

Q_DECLARE_METATYPE(Repository::Documents::TextEncoding::Kind)

namespace {

using Kind = TextEncoding::Kind;

QByteArray bytesOf(const char* hex)
{
    return QByteArray::fromHex(hex);
}

TextEncoding encodingOf(Kind kind)
{
    const char* const marks[] = {"", "\xEF\xBB\xBF", "\xFF\xFE", "\xFE\xFF", ""};
    std::string bytes = marks[int(kind)];
    TextEncoding encoding;
    encoding.decode(bytes, {true, kind == Kind::Declared ? "ISO-8859-1" : ""});
    return encoding;
}

} // namespace

class TextEncodingTest : public QObject
{
    Q_OBJECT

private slots:
    void decodes_data()
    {
        TestSupport::columns<QByteArray, QByteArray, Kind, QByteArray>("bytes", "declared", "kind", "text");
        const auto row = [](const char* name, const char* hex, const char* declared, Kind kind,
                            const QByteArray& text) {
            QTest::newRow(name) << bytesOf(hex) << QByteArray(declared) << kind << text;
        };
        row("nothing", "", "", Kind::Utf8, "");
        row("utf-8", "61c3bc", "", Kind::Utf8, "a\xC3\xBC");
        row("bytes that are no text", "61fc00", "", Kind::Utf8, QByteArray("a\xFC\0", 3));
        row("utf-8 with mark", "efbbbf61", "", Kind::Utf8WithByteOrderMark, "a");
        row("two marks", "efbbbfefbbbf", "", Kind::Utf8WithByteOrderMark, "\xEF\xBB\xBF");
        row("half a mark", "efbb", "", Kind::Utf8, "\xEF\xBB");
        row("utf-16 le", "fffe6100fc00ac20", "", Kind::Utf16Le, "a\u00FC\u20AC");
        row("utf-16 be", "feff006100fc20ac", "", Kind::Utf16Be, "a\u00FC\u20AC");
        row("a pair", "fffe3dd800de", "", Kind::Utf16Le, "\U0001F600");
        row("the last character", "feffdbffdfff", "", Kind::Utf16Be, "\U0010FFFF");
        row("halves the wrong way round", "feffde00d83d0061", "", Kind::Utf16Be,
            "\xED\xB8\x80\xED\xA0\xBD"
            "a");
        row("half at the end", "fffe61003dd8", "", Kind::Utf16Le, "a\xED\xA0\xBD");
        row("latin-1", "61fcff80", "ISO-8859-1", Kind::Declared, "a\u00FC\u00FF\u0080");
        row("cyrillic", "61d0a2", "koi8-r", Kind::Declared, "a\u043F\u2552");
        row("big5", "61a440", "Big5", Kind::Declared, "a\u4E00");
        row("a mark has the last word", "efbbbfc3bc", "ISO-8859-1", Kind::Utf8WithByteOrderMark, "\u00FC");
    }

    void decodes()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QByteArray, declared);
        std::string text = bytes.toStdString();
        TextEncoding encoding;
        QVERIFY(encoding.decode(text, {true, declared.toStdString()}).ok());
        QTEST(encoding.getKind(), "kind");
        QTEST(QByteArray::fromStdString(text), "text");
        QVERIFY(encoding.findRefusal(text).empty());
        QCOMPARE(QByteArray::fromStdString(encoding.encode(text)), bytes);
    }

    void refusesToDecode_data()
    {
        TestSupport::columns<QByteArray, bool, QByteArray>("bytes", "utf16", "reason");
        const auto row = [](const char* name, const char* hex, bool utf16, const char* reason) {
            QTest::newRow(name) << bytesOf(hex) << utf16 << QByteArray(reason);
        };
        row("odd length", "fffe61000a0062006300d8", true,
            "2:3 the UTF-16 text ends in the middle of a character");
        row("utf-16 where there is none", "feff0061", false,
            "1:1 the text is UTF-16; save it as UTF-8 to have it read");
        row("utf-32 le", "fffe000061000000", true,
            "1:1 the text is UTF-32; save it as UTF-8 to have it read");
        row("utf-32 be", "0000feff00000061", true,
            "1:1 the text is UTF-32; save it as UTF-8 to have it read");
    }

    void refusesToDecode()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, utf16);
        std::string text = bytes.toStdString();
        const Outcome outcome = TextEncoding().decode(text, {utf16, {}});
        QTEST(QByteArray::number(int(outcome.line)) + ':' + QByteArray::number(int(outcome.column)) + ' ' +
                  QByteArray::fromStdString(outcome.error),
              "reason");
        QCOMPARE(QByteArray::fromStdString(text), bytes);
    }

    void saysWhatAFileCannotHold()
    {
        QVERIFY(encodingOf(Kind::Utf8).findRefusal("\xFF\u20AC").empty());
        QCOMPARE(encodingOf(Kind::Declared).findRefusal("\u00FC\u20AC"),
                 std::string("the file is ISO-8859-1, which has no \"\u20AC\""));
        QCOMPARE(encodingOf(Kind::Utf16Be).findRefusal("a\xC3"),
                 std::string("the file is UTF-16, which has no place for bytes that are not characters"));
        QCOMPARE(encodingOf(Kind::Utf16Le).findRefusal("\xED\xA0\xBD\xED\xB8\x80"),
                 std::string("the file is UTF-16, where these two halves would become one character"));
    }

    // Any text that is not refused comes back; and any bytes that are not refused come back.
    void isExact()
    {
        QRandomGenerator random(7);
        const std::vector<std::string> pieces{std::string(1, '\0'),
                                              "a",
                                              "\n",
                                              "\u00FC",
                                              "\u00FF",
                                              "\u00FE",
                                              "\u20AC",
                                              "\uFEFF",
                                              "\xFF",
                                              "\xFE",
                                              "\U0001F600",
                                              "\xED\xA0\xBD",
                                              "\xED\xB8\x80",
                                              "\xEF\xBB",
                                              "\xBF"};
        int held = 0;
        for (int round = 0; round < 50000; ++round) {
            const auto kind = Kind(round % 5);
            const TextEncoding encoding = encodingOf(kind);
            std::string text;
            for (int left = random.bounded(6); left > 0; --left)
                text += pieces[std::size_t(random.bounded(int(pieces.size())))];
            const TextEncoding::Rules rules{true, kind == Kind::Declared ? "ISO-8859-1" : ""};
            if (encoding.mayBegin(text) && encoding.findRefusal(text).empty()) {
                ++held;
                std::string bytes = encoding.encode(text);
                QCOMPARE(bytes.size(), encoding.byteOrderMarkSize() + encoding.sizeOf(text));
                TextEncoding again;
                QVERIFY(again.decode(bytes, rules).ok());
                QCOMPARE(again.getKind(), kind);
                QVERIFY(bytes == text);
            }
            TextEncoding other;
            std::string decoded = text;
            if (other.decode(decoded, rules).ok())
                QVERIFY(other.encode(decoded) == text);
        }
        QVERIFY(held > 5000);
    }
};

VANTRY_TEST_MAIN(QCoreApplication, TextEncodingTest)

#include "text_encoding_test.moc"
