#include "repository/backends/FileBackend.h"
#include "repository/mounting/Mounts.h"
#include "repository/operations/AttributeWriter.h"
#include "repository/operations/StepReplay.h"
#include "repository/transaction/Transaction.h"
#include "tests/support/Columns.h"
#include "tests/support/RepositoryTest.h"

#include <QDir>

#include <atomic>
#include <thread>

using namespace FrameworkCore::AppConfig;
using FrameworkCore::Notification::UpdatePoint;
using FrameworkCore::Notification::UpdateResult;
using Repository::AttributeStore;
using Repository::Backend;
using Repository::FileBackend;
using Repository::History;
using Repository::HistoryStep;
using Repository::Mounts;
using Repository::StepReplay;
using Repository::Transaction;

namespace {

// A store with one backend, and a step that touches it and has been taken out of its history.
struct TakenStep
{
    TakenStep(const QString& file, History::Direction direction)
    {
        Outcome outcome;
        backend = FileBackend::open(
            {QStringLiteral("m"), QStringLiteral("ini"), {}, file, AccessMode::ReadWrite}, outcome);
        mounts.mount(backend);
        {
            const History::Scope scope(store->getHistory(), QStringLiteral("Edit"));
            Repository::AttributeWriter(store).write(QStringLiteral("m.a"), 2, 15);
            Repository::AttributeWriter(store).create(QStringLiteral("m.s.c"), 3, 2, 3);
        }
        if (direction == History::Direction::Redo)
            StepReplay(*store->getTree(), store->getHistory(), History::Direction::Undo).run();
        step = store->getHistory().take(direction);
    }

    // From here on only the step holds the backend.
    bool close()
    {
        const bool isClosed = mounts.unmount(std::exchange(backend, nullptr), true).ok();
        return isClosed && step && !step->changes.empty();
    }

    std::shared_ptr<AttributeStore> store = std::make_shared<AttributeStore>();
    Mounts mounts{*store->getTree(), store->getHistory()};
    std::shared_ptr<Backend> backend;
    std::optional<HistoryStep> step;
};

int countOfSystemWatches()
{
    int count = 0;
    const QDir descriptors(QStringLiteral("/proc/self/fdinfo"));
    for (const QString& name : descriptors.entryList(QDir::Files))
        count += TestSupport::contentOf(descriptors.filePath(name)).count("inotify wd:");
    return count;
}

} // namespace

class BackendClosingTest : public TestSupport::RepositoryTest
{
    Q_OBJECT

    QString backendOf(const char* path) { return tree()->getNodeInformation(QLatin1String(path)).backend; }

private slots:
    void leavesNestedBackends()
    {
        QVERIFY(mount("ini", "m", "a=1\n[s]\nb=2\n"));
        QVERIFY(mount("ini", "m.s.mid", "c=3\n[in]\nd=4\n"));
        QVERIFY(mount("ini", "m.s.mid.in.deep", "e=5\n"));
        QStringList removed;
        listen("m*",
               [&removed](const QString& path, const UpdatePoint&, const UpdateResult& result, auto&&...) {
                   removed.append(result == UpdateResult::Removed ? path : QStringLiteral("other"));
               });

        QVERIFY(close("m.s.mid"));
        removed.sort();
        QCOMPARE(removed, TestSupport::words("m.s.mid.c m.s.mid.in.d"));
        QCOMPARE(read("m.s.mid.in.deep.e"), QVariant(5LL));
        QCOMPARE(backendOf("m.s.mid.in"), QStringLiteral("m"));
        QVERIFY(!tree()->getNodeInformation(QStringLiteral("m.s.mid")).isBackendRoot);
        QCOMPARE(read("internal.backends.names"), QVariant(QStringLiteral("m;m.s.mid.in.deep")));
        QCOMPARE(read("internal.backends.names.m.s.mid"), QVariant());
        QVERIFY(create("m.s.mid.c", 1)); // in the outer file now
        QVERIFY(!close("m"));
        QCOMPARE(read("m.s.mid.c"), QVariant(1LL));

        QVERIFY(close("m", true));
        QCOMPARE(paths("m*"),
                 TestSupport::words("m m.s m.s.mid m.s.mid.in m.s.mid.in.deep m.s.mid.in.deep.e"));
        QVERIFY(create("m.a", 1));
        QCOMPARE(backendOf("m.a"), QString());
        QVERIFY(close("m.s.mid.in.deep"));
        QCOMPARE(paths("m*"), TestSupport::words("m m.a"));
        QCOMPARE(paths("internal.backends*"),
                 TestSupport::words("internal.backends internal.backends.names"));
        QCOMPARE(read("internal.backends.names"), QVariant());
        QVERIFY(!close("m"));
    }

    // Undo and redo meet the closing of a backend right after they have taken their step.
    void meetsReplay_data()
    {
        const auto row = TestSupport::columns<int>("direction");
        row("undo", int(History::Direction::Undo));
        row("redo", int(History::Direction::Redo));
    }

    void meetsReplay()
    {
        QFETCH(int, direction);
        const QString file = put("m", "a=1\n[s]\nb=2\n");
        TakenStep taken(file, History::Direction(direction));
        const std::weak_ptr<Backend> watched = taken.backend;
        QVERIFY(taken.close());
        QVERIFY(!watched.expired());
        QCOMPARE(StepReplay(*taken.store->getTree(), taken.store->getHistory(), History::Direction(direction))
                     .run(*std::move(taken.step)),
                 NotWritable);
        taken.step.reset();
        QVERIFY(watched.expired());
        QCOMPARE(TestSupport::contentOf(file), QByteArray("a=1\n[s]\nb=2\n"));
    }

    void keepsTheBackendWhileItIsEdited()
    {
        TakenStep taken(put("m", "a=1\n"), History::Direction::Undo);
        const std::weak_ptr<Backend> watched = taken.backend;
        QVERIFY(taken.close());
        bool livesMeanwhile = false;
        {
            Transaction transaction(*taken.store->getTree());
            transaction.edit(*watched.lock());
            taken.step.reset();
            livesMeanwhile = !watched.expired();
        }
        QVERIFY(livesMeanwhile);
        QVERIFY(watched.expired());
    }

    // Whoever has found the backend before it was closed comes too late to write what was discarded.
    void endsSaving()
    {
        const QString file = put("m", "a=1\n");
        const auto store = std::make_shared<AttributeStore>();
        Mounts mounts(*store->getTree(), store->getHistory());
        Outcome outcome;
        const auto backend = FileBackend::open(
            {QStringLiteral("m"), QStringLiteral("ini"), {}, file, AccessMode::ReadWrite}, outcome);
        QVERIFY(mounts.mount(backend).ok());
        QCOMPARE(Repository::AttributeWriter(store).write(QStringLiteral("m.a"), 2, 15), Success);
        QVERIFY(mounts.unmount(backend, true).ok());
        bool isApplied = false;
        const Backend::ApplyChange apply = [&isApplied](const std::function<Backend::Changes()>& change) {
            isApplied = !change().entries.empty() || isApplied;
        };
        const QString refusal = QStringLiteral("its backend is being closed");
        QCOMPARE(backend->save(apply).toText(), refusal);
        QCOMPARE(TestSupport::contentOf(file), QByteArray("a=1\n"));
        TestSupport::writeFile(file, "a=5\n");
        QCOMPARE(backend->reload(Backend::Trigger::Request, apply).toText(), refusal);
        QVERIFY(backend->reload(Backend::Trigger::Watcher, apply).ok());
        QCOMPARE(backend->revert(QStringLiteral("m"), apply).toText(), refusal);
        QCOMPARE(backend->resolveConflicts(QStringLiteral("m"), Backend::ConflictSide::Theirs, apply),
                 NotFound);
        QVERIFY(!isApplied);
    }

    // Who hears of the mount closes it at once, and mounts another file there.
    void leavesNoWatchBehind()
    {
        bool isFirst = true;
        listen("internal.backends.names", [&](auto&&...) {
            if (!std::exchange(isFirst, false))
                return;
            QVERIFY(close("m"));
            QVERIFY(mountFile("ini", "m", put("other", "b=2\n")));
        });
        QVERIFY(mount("ini", "m", "a=1\n"));
        QCOMPARE(read("m.b"), QVariant(2LL));
        put("other", "b=3\n");
        QTRY_COMPARE(read("m.b"), QVariant(3LL));
        QVERIFY(countOfSystemWatches() > 0);
        QVERIFY(close("m"));
        QTRY_COMPARE(countOfSystemWatches(), 0);
    }

    // Readers, writers and searches meet a backend that comes and goes.
    void closesUnderOthersHands()
    {
        std::atomic<bool> done{false};
        const auto work = [&](int seed) {
            for (int i = seed; !done; ++i) {
                const QString path = QStringLiteral("t.s.k%1").arg(i % 20);
                QVariant value;
                repository->getReaderInterface()->readAttributeValue(path, value, 0);
                if (value.isValid())
                    repository->getWriterInterface()->writeAttributeValue(path, i, 15);
                tree()->getNodeInformation(path);
                tree()->getChildren(QStringLiteral("t.s"));
                if (i % 50 == 0 && backends()->getBackendInformation(QStringLiteral("t")))
                    backends()->saveBackend(QStringLiteral("t"));
            }
        };
        QByteArray ini = "[s]\n";
        for (int i = 0; i < 20; ++i)
            ini += "k" + QByteArray::number(i) + "=0\n";
        std::thread first(work, 0);
        std::thread second(work, 7);
        for (int round = 0; round < 30; ++round) {
            QVERIFY(mount("ini", "t", ini));
            std::this_thread::yield();
            QVERIFY(close("t", true));
            QCOMPARE(paths("t*"), QStringList());
        }
        done = true;
        first.join();
        second.join();
    }
};

VANTRY_TEST_MAIN(QCoreApplication, BackendClosingTest)

#include "backend_closing_test.moc"
