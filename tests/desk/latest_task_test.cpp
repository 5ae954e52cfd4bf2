#include "desk/common/LatestTask.h"
#include "tests/support/TestRun.h"

#include <QSemaphore>
#include <QSignalSpy>

#include <stdexcept>

using Vantry::LatestTask;

// Work of which only the newest counts.
class LatestTaskTest : public QObject
{
    Q_OBJECT

private slots:
    void runsTheNewest()
    {
        LatestTask tasks;
        QSemaphore mayEnd;
        QStringList run;
        QStringList results;
        const auto task = [&](const char* name) {
            return [&, name]() -> LatestTask::Result {
                mayEnd.acquire();
                run.append(QLatin1String(name));
                return [&, name] { results.append(QLatin1String(name)); };
            };
        };
        for (const char* const name : {"a", "b", "c"})
            tasks.start(task(name));
        mayEnd.release(3);
        QTRY_VERIFY(!tasks.isBusy());
        QCOMPARE(run, QStringList({QStringLiteral("a"), QStringLiteral("c")}));
        QCOMPARE(results, QStringList(QStringLiteral("c")));
        tasks.start(task("d"));
        QTRY_COMPARE(results.last(), QStringLiteral("d"));
    }

    void tellsFailures()
    {
        LatestTask tasks;
        const QSignalSpy failed(&tasks, &LatestTask::failed);
        tasks.start([]() -> LatestTask::Result { throw std::runtime_error("no luck"); });
        QTRY_COMPARE(failed.size(), 1);
        QVERIFY(failed.first().first().toString().contains(QStringLiteral("no luck")));
        QVERIFY(!tasks.isBusy());
    }

    // Going, it waits, and the result is dropped.
    void endsBeforeItsOwner()
    {
        bool isRun = false;
        bool isTold = false;
        {
            LatestTask tasks;
            tasks.start([&]() -> LatestTask::Result {
                isRun = true;
                return [&] { isTold = true; };
            });
        }
        QVERIFY(isRun);
        QCoreApplication::processEvents();
        QVERIFY(!isTold);
    }
};

VANTRY_TEST_MAIN(QCoreApplication, LatestTaskTest)

#include "latest_task_test.moc"
