#include "host/Utilities/NotificationWrapper.h"
#include "host/Utilities/PacedInbox.h"
#include "host/Utilities/RepositoryAccess.h"
#include "tests/support/BothRepositories.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"
#include "tests/support/Texts.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>
#include <QWriteLocker>

#include <atomic>
#include <future>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

using TestSupport::words;
using Utilities::NotificationWrapper;
using Utilities::PacedInbox;

namespace {

const QString path = QStringLiteral("a.b");
const QString removed = QStringLiteral("(none)");

QString shown(const QVariant& value)
{
    return value.isValid() ? value.toString() : removed;
}

// A wrapper that notes what it delivers.
struct Watcher
{
    Watcher(bool onActivation, bool unchanged) : wrapper(path, onActivation, unchanged)
    {
        const QWriteLocker locker(&wrapper.lock);
        wrapper.valueChangedCallbacks.append([this](const QVariant& value) {
            onOwnThread = onOwnThread && QThread::currentThread() == wrapper.thread();
            delivered.append(shown(value));
        });
    }

    NotificationWrapper wrapper;
    QStringList delivered;
    bool onOwnThread = true;
};

} // namespace

class NotificationWrapperTest : public TestSupport::BothRepositories
{
    Q_OBJECT

    void write(const QVariant& value) const
    {
        repository->getWriterInterface()->createAttribute(path, value, 3, 3);
    }

    void apply(const QString& step) const
    {
        if (step == removed)
            repository->getTreeInterface()->removeTree(path);
        else
            write(step);
    }

private slots:
    void delivers_data()
    {
        QTest::addColumn<bool>("onActivation");
        QTest::addColumn<bool>("unchanged");
        QTest::addColumn<QStringList>("before"); // the activation
        QTest::addColumn<QStringList>("after");
        QTest::addColumn<QStringList>("expected");
        const auto row = [](const char* name, bool onActivation, bool unchanged, const char* before,
                            const char* after, const char* expected) {
            QTest::newRow(name) << onActivation << unchanged << words(before) << words(after)
                                << words(expected);
        };
        row("changes", false, false, "x", "y z", "y z");
        row("the current value", true, false, "x", "y", "x y");
        row("no current value", true, true, "", "", "");
        row("a value yet to come", true, false, "", "x", "x");
        row("not what is known already", false, false, "x", "x y y z", "y z");
        row("not what was delivered on activation", true, false, "x", "x y", "x y");
        row("each write when asked for", false, true, "x", "x x y y", "x x y y");
        row("removal", true, false, "x", "(none)", "x (none)");
        row("removal and return", false, false, "x", "(none) x", "(none) x");
    }

    void delivers()
    {
        QFETCH(bool, onActivation);
        QFETCH(bool, unchanged);
        QFETCH(QStringList, before);
        QFETCH(QStringList, after);
        QFETCH(QStringList, expected);
        for (const QString& step : qAsConst(before))
            apply(step);
        Watcher watcher(onActivation, unchanged);
        Watcher later(true, true); // hears everything, and after the one under test
        watcher.wrapper.setActive(true);
        later.wrapper.setActive(true);
        if (!before.isEmpty())
            QTRY_COMPARE(later.delivered.size(), 1);
        QStringList heard = before;
        for (const QString& step : qAsConst(after)) {
            apply(step);
            heard.append(step);
            QTRY_COMPARE(later.delivered, heard);
        }
        QCOMPARE(watcher.delivered, expected);
    }

    // Also when it is delivered between two points of the write.
    void deliversAWriteOfAnyPointsOnce()
    {
        write(0);
        Watcher watcher(false, true);
        watcher.wrapper.setActive(true);
        std::promise<void> held;
        std::promise<void> goOn;
        const auto registration = repository->getNotificationInterface()->registerUpdateCallback(
            path,
            [&](auto&&...) {
                held.set_value();
                goOn.get_future().wait();
            },
            2);
        std::thread writer([this] { repository->getWriterInterface()->writeAttributeValue(path, 0, 15); });
        held.get_future().wait();
        QTRY_COMPARE(watcher.delivered.size(), 1);
        QElapsedTimer sinceDelivery;
        sinceDelivery.start();
        QTRY_VERIFY(sinceDelivery.hasExpired(20)); // the next one need not wait for the screen
        goOn.set_value();
        writer.join();
        registration->end();
        QCoreApplication::processEvents();
        QCOMPARE(watcher.delivered.size(), 1);

        int expected = 1;
        for (const int points : {1, 2, 4, 8, 15, 1, 8}) {
            for (int time = 0; time < 2; ++time) { // the second leaves the value equal
                repository->getWriterInterface()->writeAttributeValue(path, points, points);
                ++expected;
                QTRY_COMPARE(watcher.delivered.size(), expected);
                QCOMPARE(watcher.delivered.last(), QString::number(points));
            }
        }
    }

    void nothingIsDeliveredInsideTheWrite()
    {
        Watcher watcher(true, true);
        watcher.wrapper.setActive(true);
        write(1);
        QVERIFY(watcher.delivered.isEmpty());
        QTRY_COMPARE(watcher.delivered, QStringList{QStringLiteral("1")});
    }

    void valuesOfAnotherTypeAreOthers()
    {
        write(1);
        Watcher watcher(false, false);
        watcher.wrapper.setActive(true);
        repository->getTreeInterface()->removeTree(path);
        write(QStringLiteral("1"));
        QTRY_COMPARE(watcher.delivered, QStringList{QStringLiteral("1")});
    }

    void withoutRepositoryNothingIsWatched()
    {
        Utilities::SetAppConfigRepositoryInterface({});
        Watcher watcher(true, false);
        watcher.wrapper.setActive(true);
        watcher.wrapper.setActive(false);

        Utilities::SetAppConfigRepositoryInterface(repository);
        write(1);
        watcher.wrapper.setActive(true);
        QTRY_COMPARE(watcher.delivered, QStringList{QStringLiteral("1")});
    }

    void stoppingEndsDelivery()
    {
        Watcher watcher(false, true);
        Watcher later(false, true);
        watcher.wrapper.setActive(true);
        later.wrapper.setActive(true);
        write(1); // announced, but not delivered before the stop
        watcher.wrapper.setActive(false);
        QTRY_COMPARE(later.delivered.size(), 1);
        QVERIFY(watcher.delivered.isEmpty());
        if (fake)
            QCOMPARE(fake->getRegistrationCount(), 1);
    }

    void fastWritesAreMergedAndTheLastArrives()
    {
        Watcher watcher(false, true);
        watcher.wrapper.setActive(true);
        constexpr int writes = 20000;
        QElapsedTimer time;
        time.start();
        std::thread writer([this] {
            for (int i = 1; i <= writes; ++i)
                write(i);
        });
        QTRY_VERIFY(!watcher.delivered.isEmpty() && watcher.delivered.last() == QString::number(writes));
        const qint64 pictures = time.elapsed() / 16 + 2;
        writer.join();
        QVERIFY(watcher.onOwnThread);
        QVERIFY2(watcher.delivered.size() <= pictures, qPrintable(QString::number(watcher.delivered.size())));
        for (int i = 1; i < watcher.delivered.size(); ++i)
            QVERIFY(watcher.delivered.at(i - 1).toInt() <= watcher.delivered.at(i).toInt());
    }

    // The callback of an older write comes after that of a newer one.
    void deliversTheNewestOfTwoWriters()
    {
        write(0);
        std::promise<void> held;
        std::promise<void> goOn;
        std::atomic<bool> isFirst{true};
        const auto registration = repository->getNotificationInterface()->registerUpdateCallback(
            path,
            [&](auto&&...) {
                if (!isFirst.exchange(false))
                    return;
                held.set_value();
                goOn.get_future().wait();
            },
            8);
        Watcher watcher(false, true);
        watcher.wrapper.setActive(true);
        std::thread older([this] { write(1); });
        held.get_future().wait();
        write(2);
        QTRY_COMPARE(watcher.delivered, QStringList(QStringLiteral("2")));
        goOn.set_value();
        older.join();
        QTRY_COMPARE(watcher.delivered, words("2 2"));
        registration->end();
    }

    void callbacksMayStopOrDestroyTheWrapper_data()
    {
        const auto row = TestSupport::columns<bool>("destroys");
        row("destroy", true);
        row("stop", false);
    }

    void callbacksMayStopOrDestroyTheWrapper()
    {
        QFETCH(bool, destroys);
        auto wrapper = std::make_unique<NotificationWrapper>(path, true, false);
        int first = 0;
        int second = 0;
        {
            const QWriteLocker locker(&wrapper->lock);
            wrapper->valueChangedCallbacks.append([&](const QVariant&) {
                ++first;
                if (destroys)
                    wrapper.reset();
                else
                    wrapper->setActive(false);
            });
            wrapper->valueChangedCallbacks.append([&second](const QVariant&) { ++second; });
        }
        write(1);
        wrapper->setActive(true);
        QTRY_COMPARE(first, 1);
        QCOMPARE(second, 0);
        if (fake)
            QCOMPARE(fake->getRegistrationCount(), 0);
    }

    void pacesItsInbox_data()
    {
        const auto row = TestSupport::columns<qint64, QString, QStringList>("pause", "steps", "expected");
        constexpr qint64 hour = 3'600'000;
        row("one delivery of a turn", 0, "a b turn c turn", words("ab c"));
        row("nothing without contents", 0, "turn a turn turn", words("a"));
        row("not before the pause is over", hour, "a turn b c turn", words("a"));
        row("all of the pause when asked", hour, "a turn b turn c now turn", words("a bc"));
        row("no delivery within another", hour, "in-a turn", words("in-a"));
        row("nothing once closed", 0, "a close b turn", {});
    }

    // A step puts itself in, unless it is a command; "in-" has the delivery put in more and run an event
    // loop.
    void pacesItsInbox()
    {
        QFETCH(qint64, pause);
        QFETCH(QString, steps);
        QString contents;
        QStringList delivered;
        const auto shared = std::make_shared<PacedInbox::Shared>();
        const auto put = [&](const QString& text) { shared->put([&] { contents += text; }); };
        PacedInbox inbox(
            [&] {
                delivered.append(shared->take([&] { return std::exchange(contents, QString()); }));
                if (delivered.last().startsWith(QLatin1String("in-"))) {
                    put(QStringLiteral("more"));
                    QCoreApplication::processEvents();
                }
            },
            [pause] { return pause; });
        inbox.open(shared);
        const QStringList each = words(steps);
        for (const QString& step : each) {
            if (step == QLatin1String("turn"))
                QCoreApplication::processEvents();
            else if (step == QLatin1String("now"))
                inbox.deliverNow();
            else if (step == QLatin1String("close"))
                inbox.close();
            else
                put(step);
        }
        QTEST(delivered, "expected");
    }

    void destroyingIsSafeWhileOthersWrite()
    {
        std::atomic<bool> ended{false};
        std::atomic<int> writes{0};
        std::vector<std::thread> writers;
        for (int thread = 0; thread < 2; ++thread) {
            writers.emplace_back([this, &ended, &writes] {
                while (!ended)
                    write(++writes);
            });
        }
        QTRY_VERIFY(writes > 0);
        int delivered = 0;
        for (int round = 0; round < 300; ++round) {
            NotificationWrapper wrapper(path, true, true);
            wrapper.valueChangedCallbacks.append([&delivered](const QVariant&) { ++delivered; });
            wrapper.setActive(true);
            if (round % 2 == 0)
                QCoreApplication::processEvents();
        }
        ended = true;
        for (std::thread& writer : writers)
            writer.join();
        QVERIFY(delivered > 0);
        if (fake)
            QCOMPARE(fake->getRegistrationCount(), 0);
    }
};

VANTRY_TEST_MAIN(QCoreApplication, NotificationWrapperTest)

#include "notification_wrapper_test.moc"
