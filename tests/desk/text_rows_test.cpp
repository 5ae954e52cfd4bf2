#include "desk/text/TextRows.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

using Vantry::TextRows;

// A text by the rows that are shown of it.
class TextRowsTest : public QObject
{
    Q_OBJECT

private slots:
    void splitsIntoRows_data()
    {
        const auto row = TestSupport::columns<QString, QStringList>("text", "rows");
        const QString most(TextRows::longestRow, QLatin1Char('x'));
        const QString pair = QString::fromUtf8("😀");
        const auto rows = [](const char* lines) { return QString::fromUtf8(lines).split(QLatin1Char('|')); };
        row("empty", "", rows("1:"));
        row("a line", "a", rows("1:a"));
        row("ends of lines", "a\nb\r\nc\rd\n", rows("1:a|2:b|3:c|4:d"));
        row("empty lines", "\n\na", rows("1:|2:|3:a"));
        row("as long as a row", most + QLatin1String("\nb"),
            {QLatin1String("1:") + most, QStringLiteral("2:b")});
        row("longer than a row", most + QLatin1String("yz\nb"),
            {QLatin1String("1:") + most, QStringLiteral("0:yz"), QStringLiteral("2:b")});
        row("a pair at the end of a row", most.chopped(1) + pair,
            {QLatin1String("1:") + most.chopped(1), QLatin1String("0:") + pair});
    }

    void splitsIntoRows()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, rows);
        const TextRows shown({text, {}});
        QStringList found;
        for (int row = 0; row < shown.size(); ++row) {
            found.append(QStringLiteral("%1:%2").arg(shown.getLine(row)).arg(shown.getText(row)));
            QCOMPARE(shown.findRow(shown.getOffset(row)), row);
        }
        QCOMPARE(found, rows);
    }

    void findsValues_data()
    {
        const auto row = TestSupport::columns<int, int, QString>("row", "column", "path");
        row("in it", 1, 5, "a");
        row("its key", 1, 0, "a");
        row("after it", 1, 40, "a");
        row("between two", 2, 6, "c");
        row("the end of it", 2, 4, "b");
        row("a line without any", 0, 3, "a");
        row("the second line of one", 4, 1, "d");
        row("after all", 5, 0, "");
    }

    void findsValues()
    {
        QFETCH(int, row);
        QFETCH(int, column);
        QFETCH(QString, path);
        const QString text = QStringLiteral("# c\na = 12\n b=1   c=2\nd = [1,\n 2]\n# e");
        TextRows::BackendText content{text, {}};
        for (const char* const value : {"a:12", "b:1   ", "c:2\n", "d:[1,\n 2]"}) {
            const QString spelling = QString::fromUtf8(value + 2).trimmed();
            const int at = text.indexOf(QLatin1Char(value[0]), value[0] == 'c' ? 15 : 4);
            content.values.append({QString(QLatin1Char(value[0])), int(text.indexOf(spelling, at)),
                                   int(spelling.size()), false});
        }
        const TextRows rows(content);
        const auto* const found = rows.findValue(row, column);
        QCOMPARE(found ? found->path : QString(), path);
    }
};

VANTRY_TEST_MAIN(QCoreApplication, TextRowsTest)

#include "text_rows_test.moc"
