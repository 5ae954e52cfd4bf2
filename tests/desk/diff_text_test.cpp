#include "desk/files/DiffText.h"
#include "desk/files/DifferenceDelegate.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

using Vantry::DifferenceDelegate;
using Vantry::DiffText;

// A diff stays readable, and quick to show, whatever the size of the files.
class DiffTextTest : public QObject
{
    Q_OBJECT

private slots:
    void leavesWhatAPersonReads()
    {
        const QString diff = QStringLiteral("--- f\n+++ f\n@@ -1,2 +1,2 @@\n a\n-b\n+c\n");
        QCOMPARE(DiffText::shortened(diff), diff);
        QCOMPARE(DiffText::shortened(QString()), QString());
    }

    void endsLongDiffs()
    {
        const int more = 7;
        const QString line = QStringLiteral("+line\n");
        QCOMPARE(DiffText::shortened(line.repeated(DiffText::mostLines)), line.repeated(DiffText::mostLines));
        QCOMPARE(DiffText::shortened(line.repeated(DiffText::mostLines + more)),
                 line.repeated(DiffText::mostLines) + QStringLiteral("... and 7 more lines\n"));
    }

    // As in json without line ends: the one line is the file.
    void showsTheDifferenceOfLongLines()
    {
        const QString start(100'000, QLatin1Char('s'));
        const QString end(50'000, QLatin1Char('e'));
        const QString shown = DiffText::shortened(QStringLiteral("-%1old%2\n+%1new%2\n").arg(start, end));
        const QStringList lines = shown.split(QLatin1Char('\n'));
        QCOMPARE(lines.size(), 3);
        QVERIFY2(lines[0].startsWith(QLatin1String("-...sss")) && lines[0].contains(QLatin1String("soldee")),
                 qPrintable(lines[0]));
        QVERIFY2(lines[1].startsWith(QLatin1String("+...sss")) && lines[1].contains(QLatin1String("snewee")),
                 qPrintable(lines[1]));
        QVERIFY(lines[1].endsWith(QLatin1String("ee...")) && shown.size() < 3 * DiffText::longestLine);
    }

    void marksWhatDiffers_data()
    {
        TestSupport::columns<QString, QString, QString>("text", "other", "marked");
        const auto row = [](const char* text, const char* other, const char* marked) {
            QTest::addRow("'%s' beside '%s'", text, other)
                << QString::fromLatin1(text) << QString::fromLatin1(other) << QString::fromLatin1(marked);
        };
        row("a b c", "a x c", "b");
        row("a b c", "a c", "b ");
        row("a c", "a b c", "");
        row("aa", "aaa", "");
        row("aaa", "aa", "a");
        row("", "a", "");
        row("a", "", "a");
        row("same", "same", "");
        const QString start(100'000, QLatin1Char('s'));
        const QString old = QStringLiteral("old");
        QTest::newRow("long") << start + old + start << start + QStringLiteral("new") + start << old;
        QTest::newRow("longer") << start << start + old << QString();
    }

    // Shown is as much as a person reads.
    void marksWhatDiffers()
    {
        QFETCH(QString, text);
        QFETCH(QString, other);
        const DifferenceDelegate::Shown shown = DifferenceDelegate::compare(text, other);
        QTEST(shown.text.mid(shown.begin, shown.length), "marked");
        QVERIFY(shown.text.size() <= 700 && shown.begin <= shown.text.size());
        QVERIFY(text.size() > 700 || shown.text == text);
    }
};

VANTRY_TEST_MAIN(QCoreApplication, DiffTextTest)

#include "diff_text_test.moc"
