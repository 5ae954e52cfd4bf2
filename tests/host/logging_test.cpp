#include "host/Shared/Logging/LogHandler.h"
#include "host/Shared/Logging/LogRecord.h"
#include "host/Shared/Logging/LogStreamProvider.h"
#include "tests/support/TestRun.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QTemporaryFile>

#include <limits>
#include <thread>
#include <unistd.h>
#include <vector>

using namespace Shared::Logging;

namespace {

LogMessageContainer beginLine(LogMessageType type = LogMessageType::Information,
                              LogMessageContext::LogMessageFlag flag = LogMessageContext::RecordOnly)
{
    const LogMessageContext context(QString(), -1, QString(), QStringLiteral("Test"), {}, flag);
    return LogStreamProvider(context).handleMessageInternal(type, {});
}

quint64 lastNumber()
{
    const QVector<LogLine> lines = LogRecord::instance().getLines();
    return lines.isEmpty() ? 0 : lines.last().number;
}

QStringList textsAfter(quint64 number)
{
    QStringList texts;
    const QVector<LogLine> lines = LogRecord::instance().getLines(number);
    for (const LogLine& line : lines)
        texts.append(line.text);
    return texts;
}

// Sends what is written to stderr into a file for as long as it lives.
class StandardErrorCapture
{
public:
    StandardErrorCapture() : original(::dup(STDERR_FILENO))
    {
        if (file.open())
            ::dup2(file.handle(), STDERR_FILENO);
    }
    ~StandardErrorCapture() { end(); }
    Q_DISABLE_COPY(StandardErrorCapture)

    QStringList end()
    {
        if (original >= 0) {
            ::dup2(original, STDERR_FILENO);
            ::close(original);
            original = -1;
        }
        file.seek(0);
        QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
        lines.removeLast(); // what follows the last line end
        return lines;
    }

private:
    QTemporaryFile file;
    int original;
};

} // namespace

class LoggingTest : public QObject
{
    Q_OBJECT

private slots:
    void piecesJoinAsTheyAre()
    {
        const quint64 before = lastNumber();
        beginLine() << QStringLiteral("' ") << "text \xC3\xBC" << QLatin1String(": ") << true << " " << false;
        beginLine() << -7 << std::numeric_limits<qlonglong>::min() << std::numeric_limits<qulonglong>::max();
        beginLine() << 0.1 << QStringLiteral(" ") << 1e300;
        beginLine() << QStringList{QStringLiteral("a"), QStringLiteral("b \"c\"")} << QStringList();
        beginLine();
        QCOMPARE(textsAfter(before),
                 QStringList({QString::fromUtf8("' text \xC3\xBC: true false"),
                              QStringLiteral("-7-922337203685477580818446744073709551615"),
                              QStringLiteral("0.1 1e+300"), QStringLiteral("(\"a\", \"b \\\"c\\\"\")()"),
                              QString()}));
    }

    void theLastCopyCompletesTheLine()
    {
        const quint64 before = lastNumber();
        {
            LogMessageContainer first = beginLine();
            {
                LogMessageContainer second = first << QStringLiteral("one");
                second << QStringLiteral(" two");
            }
            QVERIFY(textsAfter(before).isEmpty());
            first << QStringLiteral(" three");
        }
        QCOMPARE(textsAfter(before), QStringList{QStringLiteral("one two three")});
    }

    void recordKeepsTheLastLines()
    {
        const quint64 before = lastNumber();
        constexpr int surplus = 37;
        for (int i = 0; i < LogRecord::capacity + surplus; ++i)
            beginLine() << i;
        const QVector<LogLine> lines = LogRecord::instance().getLines(before);
        QCOMPARE(lines.size(), LogRecord::capacity);
        for (int i = 0; i < lines.size(); ++i) {
            QCOMPARE(lines.at(i).text, QString::number(i + surplus));
            QCOMPARE(lines.at(i).number, before + quint64(i + surplus) + 1);
        }
        QCOMPARE(LogRecord::instance().getLines(lines.last().number - 2).size(), 2);
        QVERIFY(LogRecord::instance().getLines(lines.last().number + 5).isEmpty());
    }

    void readersAreToldOnceUntilTheyRead()
    {
        LogRecord& record = LogRecord::instance();
        record.getLines();
        int told = 0;
        QObject receiver;
        connect(&record, &LogRecord::linesAdded, &receiver, [&told] {
            ++told;
            beginLine() << QStringLiteral("a handler may log");
        });
        const quint64 before = lastNumber();
        for (int i = 0; i < 5; ++i)
            beginLine() << i;
        QCOMPARE(told, 1);
        QCOMPARE(textsAfter(before).size(), 6);
        beginLine();
        QCOMPARE(told, 2);
    }

    void standardErrorGetsOneLineARecord()
    {
        LogHandler::SetLogIdentification(QStringLiteral("Source"));
        const quint64 before = lastNumber();
        StandardErrorCapture capture;
        beginLine(LogMessageType::Failure, LogMessageContext::NoFlag) << QStringLiteral("first\nsecond %1");
        beginLine(LogMessageType::Outcome, LogMessageContext::NoFlag) << QStringLiteral("done");
        beginLine() << QStringLiteral("not shown");
        const QStringList written = capture.end();
        LogHandler::SetLogIdentification(QString());

        const QString time = QStringLiteral("^\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d\\.\\d{3}Z ");
        QCOMPARE(written.size(), 3);
        QVERIFY2(QRegularExpression(time + QStringLiteral("failure Source \\[Test\\] first$"))
                     .match(written.at(0))
                     .hasMatch(),
                 qPrintable(written.at(0)));
        QCOMPARE(written.at(1), QStringLiteral("    second %1"));
        QVERIFY(QRegularExpression(time + QStringLiteral("outcome Source \\[Test\\] done$"))
                    .match(written.at(2))
                    .hasMatch());
        const QVector<LogLine> lines = LogRecord::instance().getLines(before);
        QCOMPARE(lines.size(), 3);
        QCOMPARE(lines.at(0).text, QStringLiteral("first\nsecond %1"));
        QCOMPARE(lines.at(0).identification, QStringLiteral("Source"));
        QCOMPARE(lines.at(0).category, QStringLiteral("Test"));
        QCOMPARE(lines.at(0).type, LogMessageType::Failure);
    }

    void linesOfThreadsNeverMix()
    {
        constexpr int threadCount = 8;
        constexpr int linesEach = 500;
        const QString longText(3000, QLatin1Char('x')); // beyond what a pipe or buffer takes at once, twice
        const quint64 before = lastNumber();
        StandardErrorCapture capture;
        std::vector<std::thread> threads;
        for (int thread = 0; thread < threadCount; ++thread) {
            threads.emplace_back([thread, &longText] {
                for (int i = 0; i < linesEach; ++i) {
                    beginLine(LogMessageType::Information, LogMessageContext::NoFlag)
                        << QStringLiteral("<") << thread << QStringLiteral(":") << i << longText
                        << QStringLiteral(">");
                    if (i % 100 == 0)
                        LogRecord::instance().getLines();
                }
            });
        }
        for (std::thread& thread : threads)
            thread.join();
        const QStringList written = capture.end();

        const QRegularExpression whole(QStringLiteral("\\[Test\\] <(\\d+:\\d+)x{3000}>$"));
        QSet<QString> seen;
        for (const QString& line : written) {
            const QRegularExpressionMatch match = whole.match(line);
            QVERIFY2(match.hasMatch(), qPrintable(line));
            seen.insert(match.captured(1));
        }
        QCOMPARE(seen.size(), threadCount * linesEach);
        QCOMPARE(textsAfter(before).size(), threadCount * linesEach);
    }
};

VANTRY_TEST_MAIN(QCoreApplication, LoggingTest)

#include "logging_test.moc"
