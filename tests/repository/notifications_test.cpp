#include "host/FrameworkCore/AppConfig/PathPattern.h"
#include "tests/support/Columns.h"
#include "tests/support/RepositoryTest.h"

#include <QRandomGenerator>

#include <atomic>
#include <future>
#include <thread>

using namespace FrameworkCore::AppConfig;
using FrameworkCore::Notification::UpdatePoint;
using FrameworkCore::Notification::UpdateResult;

class NotificationsTest : public TestSupport::RepositoryTest
{
    Q_OBJECT

    QStringList heard;

    std::shared_ptr<Interfaces::RegistrationInterface> watch(const QString& target, int points = 8)
    {
        const auto hear = [this, target](const QString& path, const UpdatePoint& point,
                                         const UpdateResult& result, const QVariant& value, const QString&) {
            static const char* const names[] = {"unchanged", "changed", "created", "removed", "reloaded"};
            heard.append(QStringLiteral("%1: %2 %3 %4 %5")
                             .arg(target, path, QString::number(int(point)),
                                  QLatin1String(names[int(result)]),
                                  value.isValid() ? value.toString() : QStringLiteral("-")));
        };
        return listen(target, hear, points);
    }

    QStringList takeHeard() { return std::exchange(heard, {}); }

private slots:
    void init()
    {
        RepositoryTest::init();
        heard.clear();
    }

    void tellsEachOutcome()
    {
        const QString path = QStringLiteral("a.b");
        watch(path);
        watch(QStringLiteral("a*"));
        QVERIFY(create(path, 1));
        QCOMPARE(takeHeard(), QStringList({QStringLiteral("a.b: a.b 8 created 1"),
                                           QStringLiteral("a*: a.b 8 created 1")}));
        QVERIFY(write(path, 1));
        QCOMPARE(takeHeard().first(), QStringLiteral("a.b: a.b 8 unchanged 1"));
        QVERIFY(write(path, 2));
        QCOMPARE(takeHeard().first(), QStringLiteral("a.b: a.b 8 changed 2"));
        QVERIFY(!write(path, QStringLiteral("no number")));
        QCOMPARE(takeHeard(), QStringList());
        QCOMPARE(remove("a"), Success);
        QCOMPARE(takeHeard().first(), QStringLiteral("a.b: a.b 8 removed -"));
        QVERIFY(create(path, QStringLiteral("back"))); // the registration has survived
        QCOMPARE(takeHeard().first(), QStringLiteral("a.b: a.b 8 created back"));
    }

    void tellsTheLeastChangeOfANumber()
    {
        create("x", 0.1 + 0.2);
        watch(QStringLiteral("x"));
        write("x", 0.3);
        QCOMPARE(takeHeard().first(), QStringLiteral("x: x 8 changed 0.3"));
    }

    void deliversPointsInOrder()
    {
        create("x", 0);
        watch(QStringLiteral("x"), 13);
        write("x", 1, 15);
        QCOMPARE(takeHeard(),
                 QStringList({QStringLiteral("x: x 1 changed 1"), QStringLiteral("x: x 4 changed 1"),
                              QStringLiteral("x: x 8 changed 1")}));
        write("x", 2, 2);
        QCOMPARE(takeHeard(), QStringList());
    }

    void hidesWriteOnlyValues()
    {
        watch(QStringLiteral("secret"));
        create("secret", QStringLiteral("1234"), 2);
        write("secret", QStringLiteral("5678"));
        QCOMPARE(takeHeard().join(QLatin1Char('|')),
                 QStringLiteral("secret: secret 8 created -|secret: secret 8 changed -"));
    }

    void endsFromInsideAndOutside()
    {
        create("x", 0);
        int calls = 0;
        std::shared_ptr<Interfaces::RegistrationInterface> handle;
        handle = listen("x*", [&](auto&&...) {
            ++calls;
            handle->end();
        });
        auto other = watch(QStringLiteral("x"));
        write("x", 1);
        other->end();
        other->end();
        write("x", 2);
        QCOMPARE(calls, 1);
        QCOMPARE(takeHeard().size(), 1);
        watch(QStringLiteral("x")); // the dropped handle leaves it in force
        repository->getWriterInterface()->writeAttributeValue(QStringLiteral("x"), 3, 8);
        QCOMPARE(takeHeard().size(), 1);
    }

    void tellsThoseOfOnePathInTheirOrder()
    {
        const QString path = QStringLiteral("x");
        create(path, 0);
        QVector<int> called;
        QVector<QPair<int, std::shared_ptr<Interfaces::RegistrationInterface>>> open;
        QRandomGenerator random(3);
        for (int round = 0; round < 500; ++round) {
            if (open.isEmpty() || random.bounded(5) > 1) {
                const auto call = [&called, round](auto&&...) { called.append(round); };
                open.append({round, listen(path, call)});
            } else {
                open.takeAt(int(random.bounded(open.size()))).second->end();
            }
            if (random.bounded(20) == 0) { // they wait for the attribute to come back
                remove(path);
                create(path, 0);
            }
            called.clear();
            write(path, round);
            QVector<int> expected;
            for (const auto& [number, handle] : open)
                expected.append(number);
            QCOMPARE(called, expected);
        }
        for (int i = 0; i < 300000; ++i) // as long as no stack is deep
            listen(path, [](auto&&...) {});
        repository.reset();
        for (const auto& [number, handle] : open)
            handle->end();
    }

    void callbackMayUseTheRepository()
    {
        create("x", 0);
        const auto react = [this](auto&&...) {
            create("made.by.callback", 1);
            write("made.by.callback", 2);
            watch(QStringLiteral("y"));
            remove("x");
        };
        listen("x", react)->end();
        const auto handle = listen("x", [react, once = false](auto&&... rest) mutable {
            if (!std::exchange(once, true))
                react(rest...);
        });
        write("x", 1);
        QVariant value;
        repository->getReaderInterface()->readAttributeValue(QStringLiteral("made.by.callback"), value, 0);
        QCOMPARE(value, QVariant(2LL));
        QVERIFY(!exists("x"));
    }

    void throwingCallbackHarmsNobody()
    {
        create("x", 0);
        listen("x", [](auto&&...) { throw std::runtime_error("broken callback"); });
        watch(QStringLiteral("x"));
        QVERIFY(write("x", 1));
        QCOMPARE(takeHeard().size(), 1);
    }

    void patternsAgreeWithAWalk_data()
    {
        const auto row = TestSupport::columns<QByteArray, int>("alphabet", "longest");
        row("few short texts", "ab*", 5);
        row("many texts", "abcdefgh*", 12);
    }

    // The index over patterns finds just those that a walk over all of them would find, while they become
    // many and few again.
    void patternsAgreeWithAWalk()
    {
        QFETCH(QByteArray, alphabet);
        QFETCH(int, longest);
        QRandomGenerator random(5);
        const auto text = [&](int letters) {
            QString made;
            for (int length = int(random.bounded(1, longest + 1)); length > 0; --length)
                made += QLatin1Char(alphabet.at(int(random.bounded(letters))));
            return made;
        };
        QMap<QString, std::shared_ptr<Interfaces::RegistrationInterface>> patterns;
        for (int step = 0; step < 3000; ++step) {
            const QString pattern = text(alphabet.size());
            if (pattern.contains(QLatin1Char('*')) && !patterns.contains(pattern))
                patterns.insert(pattern, watch(pattern));
            const bool isGrowing = step / 750 % 2 == 0;
            for (int ends = isGrowing ? 0 : 2; ends > 0 && !patterns.isEmpty(); --ends) {
                const auto ended = patterns.begin() + random.bounded(patterns.size());
                ended.value()->end();
                patterns.erase(ended);
            }
            // A path made from a pattern has one that matches at least.
            QString path =
                patterns.isEmpty() ? text(2) : (patterns.begin() + random.bounded(patterns.size())).key();
            while (path.contains(QLatin1Char('*')))
                path.replace(path.indexOf(QLatin1Char('*')), 1, text(2));
            QVERIFY(create(path, step, 3, 3));
            QStringList told;
            for (const QString& line : takeHeard())
                told.append(line.section(QLatin1Char(':'), 0, 0));
            told.sort();
            QStringList expected;
            for (auto it = patterns.cbegin(); it != patterns.cend(); ++it) {
                if (PathPattern(it.key()).matches(path))
                    expected.append(it.key());
            }
            expected.sort();
            QCOMPARE(told, expected);
        }
    }

    // What an ended callback leaves behind may use the repository, too: it goes when no lock is held.
    void letsGoOfCallbacksWithoutALock()
    {
        const QString path = QStringLiteral("a");
        QVERIFY(create(path, 1));
        for (const QString& target : {path, QStringLiteral("*a"), QStringLiteral("a*")}) {
            int lastWrite = -1;
            std::shared_ptr<int> captured(
                &lastWrite, [this, path](int* result) { *result = write(path, 9).getStatus(); });
            const auto handle = listen(target, [captured](auto&&...) {});
            captured.reset();
            QVERIFY(write(path, 2));
            handle->end();
            QVERIFY(write(path, 3));
            QCOMPARE(lastWrite, int(Success));
        }
    }

    void keepsACallbackWhileItRuns_data()
    {
        const auto row = TestSupport::columns<bool>("isNested");
        row("called by a write", false);
        row("called by a write of another callback", true);
    }

    // What a callback captured lives until it returns, though it is ended meanwhile, and no longer.
    void keepsACallbackWhileItRuns()
    {
        QFETCH(bool, isNested);
        create("x", 0);
        create("y", 0);
        if (isNested)
            listen("y", [this](auto&&...) { write("x", 1); });
        std::promise<void> running;
        std::promise<void> ended;
        auto captured = std::make_shared<int>(0);
        const std::weak_ptr<int> watched = captured;
        auto handle = listen("x", [&running, &ended, captured](auto&&...) {
            running.set_value();
            ended.get_future().wait();
            ++*captured;
        });
        captured.reset();
        std::thread writer([&] { write(isNested ? QStringLiteral("y") : QStringLiteral("x"), 1); });
        running.get_future().wait();
        handle->end();
        handle.reset();
        const bool livesWhileItRuns = !watched.expired();
        ended.set_value();
        writer.join();
        QVERIFY(livesWhileItRuns);
        QVERIFY(watched.expired());
    }

    void waitsForTheEndOfACallback_data()
    {
        const auto row = TestSupport::columns<QString, bool>("target", "isCalled");
        row("a path", "x.a", false);
        row("a pattern that attributes know", "x.*", false);
        row("a path, during a call", "x.a", true);
        row("a pattern, during a call", "*", true);
    }

    // Whoever unloads the code of a callback must know that nothing of it is left: no call, and nothing that
    // would be destroyed by that code.
    void waitsForTheEndOfACallback()
    {
        QFETCH(QString, target);
        QFETCH(bool, isCalled);
        const QStringList attributes{QStringLiteral("x.a"), QStringLiteral("x.b"), QStringLiteral("y")};
        for (const QString& path : attributes)
            QVERIFY(create(path, 0));
        std::promise<void> running;
        std::promise<void> ending;
        std::atomic<bool> holdsUp{false};
        std::atomic<bool> hasReturned{true};
        auto captured = std::make_shared<int>(0);
        const std::weak_ptr<int> watched = captured;
        const auto handle = listen(target, [&, captured](auto&&...) {
            if (!holdsUp.exchange(false))
                return;
            hasReturned = false;
            running.set_value();
            ending.get_future().wait();
            for (int i = 0; i < 1000; ++i) // so that the other thread waits already
                std::this_thread::yield();
            hasReturned = true;
        });
        captured.reset();
        for (const QString& path : attributes)
            QVERIFY(write(path, 1));
        std::thread writer;
        if (isCalled) {
            holdsUp = true;
            writer = std::thread([this] { write(QStringLiteral("x.a"), 2); });
            running.get_future().wait();
        }
        ending.set_value();
        handle->endAndWait();
        const bool isNothingLeft = hasReturned && watched.expired();
        if (isCalled)
            writer.join();
        QVERIFY(isNothingLeft);
        handle->end(); // once more does nothing
    }

    // The callback of one write is held up while another thread writes: whoever reads the value in the
    // callback has the last one in the end, whatever the callbacks bring.
    void lastReadIsTheNewest()
    {
        create("x", 0);
        std::promise<void> held;
        std::promise<void> goOn;
        std::atomic<bool> isFirst{true};
        listen("x", [&](auto&&...) {
            if (!isFirst.exchange(false))
                return;
            held.set_value();
            goOn.get_future().wait();
        });
        QList<int> brought;
        QList<int> found;
        listen("x", [&](const QString& path, const UpdatePoint&, const UpdateResult&, const QVariant& value,
                        const QString&) {
            QVariant current;
            repository->getReaderInterface()->readAttributeValue(path, current, 0);
            brought.append(value.toInt());
            found.append(current.toInt());
        });
        std::thread first([this] { write("x", 1); });
        held.get_future().wait();
        write("x", 2);
        goOn.set_value();
        first.join();
        QCOMPARE(found, QList<int>({2, 2}));
        std::sort(brought.begin(), brought.end());
        QCOMPARE(brought, QList<int>({1, 2})); // each write is reported
    }

    // Registering, ending and writing at once lose no update of a registration that lasts, and keep none that
    // has ended.
    void threadsLoseNoUpdate()
    {
        constexpr int writesPerThread = 3000;
        std::atomic<int> exactCalls{0};
        std::atomic<int> patternCalls{0};
        const auto captured = std::make_shared<std::atomic<int>>(0);
        for (int number = 0; number < 2; ++number) {
            const QString path = QStringLiteral("w%1").arg(number);
            create(path, 0);
            listen(path, [&](auto&&...) { ++exactCalls; });
        }
        listen("w*", [&](auto&&...) { ++patternCalls; });
        std::vector<std::thread> threads;
        for (int number = 0; number < 2; ++number) {
            threads.emplace_back([this, number] {
                for (int step = 0; step < writesPerThread; ++step)
                    write(QStringLiteral("w%1").arg((number + step) % 2), step);
            });
            threads.emplace_back([this, number, captured] {
                for (int step = 0; step < writesPerThread / 4; ++step) {
                    listen(QStringLiteral("w%1").arg(number), [captured](auto&&...) { ++*captured; })->end();
                    listen(QStringLiteral("*%1").arg(number), [](auto&&...) {})->end();
                }
            });
        }
        for (std::thread& thread : threads)
            thread.join();
        threads.clear();
        QCOMPARE(captured.use_count(), 1L);
        QCOMPARE(exactCalls.load(), 2 * writesPerThread);
        QCOMPARE(patternCalls.load(), 2 * writesPerThread);
    }
};

VANTRY_TEST_MAIN(QCoreApplication, NotificationsTest)

#include "notifications_test.moc"
