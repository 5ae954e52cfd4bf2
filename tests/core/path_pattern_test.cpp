#include "host/FrameworkCore/AppConfig/PathPattern.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

#include <QRandomGenerator>

using FrameworkCore::AppConfig::PathPattern;

class PathPatternTest : public QObject
{
    Q_OBJECT

private slots:
    void matches_data()
    {
        TestSupport::columns<QString, QString, bool>("pattern", "path", "expected");
        const auto row = [](const char* pattern, const char* path, bool expected) {
            QTest::addRow("%s on %s", pattern, path)
                << QString::fromLatin1(pattern) << QString::fromLatin1(path) << expected;
        };
        row("a.b", "a.b", true);
        row("a.b", "a.b.c", false);
        row("a*", "a.b.c", true);
        row("**", "anything", true);
        row("*", "", true);
        row("a*b", "ab", true);
        row("a*a", "a", false); // the two ends may not share a character
        row("*b*b*", "abc", false);
        row("*.x1", "demo.x1", true);
        row("*.x1", "demo.x12", false);
        row("a*b*c", "a.b.b.c", true);
        row("a*bc*c", "abc", false);
        row("A*", "a.b", false);
    }

    void matches()
    {
        QFETCH(QString, pattern);
        QFETCH(QString, path);
        QFETCH(bool, expected);
        QCOMPARE(PathPattern(pattern).matches(path), expected);
    }

    void agreesWithRegularExpressions()
    {
        QRandomGenerator random(7);
        const auto text = [&random](const char* alphabet, int length) {
            QString made;
            const int size = int(qstrlen(alphabet));
            for (int i = 0; i < length; ++i)
                made += QLatin1Char(alphabet[random.bounded(size)]);
            return made;
        };
        for (int round = 0; round < 20000; ++round) {
            const QString pattern = text("ab.**B", random.bounded(7));
            const QString path = text("ab.A", random.bounded(9));
            QString expression = QRegularExpression::escape(pattern);
            expression.replace(QStringLiteral("\\*"), QStringLiteral(".*"));
            for (const auto sensitivity : {Qt::CaseSensitive, Qt::CaseInsensitive}) {
                QRegularExpression reference(QRegularExpression::anchoredPattern(expression));
                if (sensitivity == Qt::CaseInsensitive)
                    reference.setPatternOptions(QRegularExpression::CaseInsensitiveOption);
                const bool expected = reference.match(path).hasMatch();
                QVERIFY2(PathPattern(pattern, sensitivity).matches(path) == expected,
                         qPrintable(pattern + QLatin1String(" on ") + path));
            }
        }
    }
};

VANTRY_TEST_MAIN(QCoreApplication, PathPatternTest)

#include "path_pattern_test.moc"
