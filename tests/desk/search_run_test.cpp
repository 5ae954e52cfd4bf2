#include "desk/find/SearchRun.h"
#include "tests/support/TestRun.h"

#include <QCoreApplication>
#include <QSemaphore>
#include <QSignalSpy>

#include <atomic>
#include <stdexcept>

using namespace FrameworkCore::AppConfig;
using Interfaces::SearchHit;
using Interfaces::SearchQuery;

namespace {

// Finds a node for each time that it is let go on, until it is ended.
class SlowSearch : public Interfaces::SearchInterface
{
public:
    std::optional<Interfaces::PatternFault> findFault(const SearchQuery&) const override { return {}; }

    Outcome find(const SearchQuery& query, const Sink& sink) const override
    {
        if (query.text == QLatin1String("throw"))
            throw std::runtime_error("torn");
        for (int i = 0;; ++i) {
            if (!sink({{query.text + QString::number(i), {}, {}, {}, {}}}, 1))
                break;
            if (!steps.tryAcquire(1, 60'000))
                break;
        }
        ++ended;
        return query.text == QLatin1String("bad") ? Outcome(InvalidPattern, QStringLiteral("why"))
                                                  : Outcome();
    }

    Outcome replace(const QVector<SearchHit>&, const QString&) override { return {}; }

    mutable QSemaphore steps;
    mutable std::atomic<int> ended{0};
};

SearchQuery queryFor(const char* text)
{
    SearchQuery query;
    query.text = QString::fromLatin1(text);
    return query;
}

} // namespace

class SearchRunTest : public QObject
{
    Q_OBJECT

    std::shared_ptr<SlowSearch> search;
    std::unique_ptr<Vantry::SearchRun> run;
    QStringList found;
    QVector<Outcome> finished;

private slots:
    void init()
    {
        search = std::make_shared<SlowSearch>();
        run = std::make_unique<Vantry::SearchRun>(search);
        found.clear();
        finished.clear();
        connect(run.get(), &Vantry::SearchRun::found, this, [this](const QVector<SearchHit>& hits) {
            for (const SearchHit& hit : hits)
                found.append(hit.path);
        });
        connect(run.get(), &Vantry::SearchRun::finished, this,
                [this](const Outcome& outcome) { finished.append(outcome); });
    }

    void cleanup()
    {
        search->steps.release(100);
        run.reset();
    }

    void tellsWhileItRuns()
    {
        run->start(queryFor("a"));
        QTRY_COMPARE(found, QStringList(QStringLiteral("a0")));
        QVERIFY(run->isRunning() && finished.isEmpty());
        search->steps.release(1);
        QTRY_COMPARE(found.size(), 2);
        run->stop();
        search->steps.release(1);
        QTRY_COMPARE(search->ended.load(), 1);
        QCoreApplication::processEvents();
        QVERIFY(!run->isRunning());
        QVERIFY(finished.isEmpty()); // as it was stopped
    }

    void hearsOnlyOfTheLast()
    {
        run->start(queryFor("a"));
        run->start(queryFor("b"));
        QTRY_VERIFY(found.contains(QStringLiteral("b0")));
        found.removeAll(QStringLiteral("a0")); // if it was quicker
        // The last one takes steps, too, and goes on.
        QTRY_VERIFY((search->steps.release(1), search->ended.load() == 1));
        QTRY_VERIFY((search->steps.release(1), found.size() >= 2));
        QCOMPARE(found.filter(QStringLiteral("a")), QStringList());
    }

    void endsWithTheOutcome()
    {
        run->start(queryFor("throw"));
        QTRY_COMPARE(finished.size(), 1);
        QVERIFY2(finished.last().toText().contains(QLatin1String("torn")), "what it threw");
        QVERIFY(!run->isRunning());
        connect(run.get(), &Vantry::SearchRun::found, this, [this] { run->stop(); });
        run->start(queryFor("bad"));
        QTRY_COMPARE(found, QStringList(QStringLiteral("bad0")));
        search->steps.release(1);
        QTRY_COMPARE(search->ended.load(), 1);
        QCoreApplication::processEvents();
        QCOMPARE(finished.size(), 1);
    }

    void endsWithItsOwner()
    {
        run->start(queryFor("a"));
        search->steps.release(1000000);
        run.reset(); // must not wait for ever
        QCOMPARE(search->ended.load(), 1);
    }
};

VANTRY_TEST_MAIN(QCoreApplication, SearchRunTest)

#include "search_run_test.moc"
