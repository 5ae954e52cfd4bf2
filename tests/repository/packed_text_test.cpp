#include "repository/merge/PackedText.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

#include <QRandomGenerator>

using Repository::PackedText;

class PackedTextTest : public QObject
{
    Q_OBJECT

private slots:
    void givesItsTextBack_data()
    {
        const auto row = TestSupport::columns<QByteArray>("bytes");
        const QByteArray line("listen_address = 10.0.5.1:8080 # \xC3\xA9\r\n");
        QRandomGenerator random(7);
        QByteArray noise;
        while (noise.size() < 5000)
            noise += char(random.bounded(256));
        row("none", QByteArray());
        row("short", line);
        row("of one letter", QByteArray(100000, 'x'));
        row("zeros", QByteArray(1000, '\0'));
        row("lines", line.repeated(3000));
        row("noise", noise);
        row("noise with lines", noise + line.repeated(100) + noise);
    }

    // However often it is packed, and with another text after it.
    void givesItsTextBack()
    {
        QFETCH(QByteArray, bytes);
        const std::string text = bytes.toStdString();
        PackedText kept;
        kept = text;
        for (int time = 0; time < 2; ++time) {
            kept.pack();
            kept.pack();
            QCOMPARE(kept.getSize(), text.size());
            QVERIFY(kept.get() == text);
        }
        kept.pack();
        std::string other("other");
        kept.swap(other);
        QVERIFY(other == text);
        QCOMPARE(kept.get(), std::string("other"));
        kept = text;
        kept.pack();
        kept = std::string("last");
        QCOMPARE(kept.get(), std::string("last"));
        QCOMPARE(kept.getSize(), std::size_t(4));
    }
};

VANTRY_TEST_MAIN(QCoreApplication, PackedTextTest)

#include "packed_text_test.moc"
