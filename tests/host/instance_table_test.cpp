#include "host/Utilities/ApplicationPlugins/ApplicationInstanceToContextMapper.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

#include <QCoreApplication>
#include <QSet>
#include <QThread>

#include <algorithm>
#include <atomic>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {

class Context : public Shared::GuiContexts::ReaderInterface
{
public:
    explicit Context(QStringList contextPath) : path(std::move(contextPath)) {}
    QStringList getContextPath() const override { return path; }

private:
    QStringList path;
};

struct Application
{
    using Reader = std::shared_ptr<const Shared::GuiContexts::ReaderInterface>;
    explicit Application(Reader usedReader) : reader(std::move(usedReader)), thread(QThread::currentThread())
    {
    }
    ~Application()
    {
        if (onEnd)
            onEnd();
    }
    Q_DISABLE_COPY(Application)

    Reader reader;
    QThread* thread; // not owned
    std::function<void()> onEnd;
};

using Table = Utilities::ApplicationPlugins::ApplicationInstanceToContextMapper<Application>;

std::shared_ptr<const Context> context(const QStringList& path)
{
    return std::make_shared<Context>(path);
}

const QString identification = QStringLiteral("Vantry");

} // namespace

class InstanceTableTest : public QObject
{
    Q_OBJECT

private slots:
    void contextAndIdentificationAreTheKey()
    {
        Table table;
        const auto window = context({QStringLiteral("desk"), QStringLiteral("1")});
        const auto first = table.getOrCreate(window, identification);
        QCOMPARE(first->reader, std::shared_ptr<const Shared::GuiContexts::ReaderInterface>(window));
        QCOMPARE(table.getOrCreate(window, identification), first);
        // The components are joined with nothing between them.
        QCOMPARE(table.getOrCreate(context({QStringLiteral("desk1")}), identification), first);
        QCOMPARE(table.getOrCreate({}, QStringLiteral("desk1Vantry")), first);
        QVERIFY(table.getOrCreate(window, QStringLiteral("Other")) != first);
        QVERIFY(table.getOrCreate(context({QStringLiteral("desk"), QStringLiteral("2")}), identification) !=
                first);
    }

    void removingCounts()
    {
        Table table;
        QCOMPARE(table.remove({}, identification), 0);
        const auto kept = table.getOrCreate({}, identification);
        const std::weak_ptr<Application> other = table.getOrCreate({}, QStringLiteral("Other"));
        QCOMPARE(table.remove({}, identification), 1);
        QCOMPARE(table.remove({}, identification), 0);
        QCOMPARE(kept.use_count(), 1L);
        QVERIFY(!other.expired());
        QVERIFY(table.getOrCreate({}, identification) != kept);
    }

    void creatorGetsKeyAndReader()
    {
        Table table;
        const auto window = context({QStringLiteral("w")});
        QString seenKey;
        const auto made =
            table.getOrCreate(window, identification, [&](const QString& key, const auto& reader) {
                seenKey = key;
                return std::make_shared<Application>(reader);
            });
        QCOMPARE(seenKey, QStringLiteral("wVantry"));
        QCOMPARE(table.getOrCreate(window, identification), made);
    }

    void theLaterOfTwoIsKept()
    {
        Table table;
        std::shared_ptr<Application> inner;
        const auto outer = table.getOrCreate({}, identification, [&](const QString&, const auto& reader) {
            inner = table.getOrCreate(reader, identification); // the lock is not held while creating
            return std::make_shared<Application>(reader);
        });
        QVERIFY(inner != outer);
        QCOMPARE(table.getOrCreate({}, identification), outer);
        QCOMPARE(inner.use_count(), 1L);
    }

    void anApplicationMayUseTheTableAtItsEnd()
    {
        Table table;
        int removed = -1;
        table.getOrCreate({}, identification)->onEnd = [&] { removed = table.remove({}, identification); };
        QCOMPARE(table.remove({}, identification), 1);
        QCOMPARE(removed, 0);
    }

    void exceptionsReachTheCaller_data()
    {
        const auto row = TestSupport::columns<bool>("fromOtherThread");
        row("GUI thread", false);
        row("another thread", true);
    }

    void exceptionsReachTheCaller()
    {
        QFETCH(bool, fromOtherThread);
        Table table;
        QString caught;
        const auto load = [&] {
            try {
                table.getOrCreate({}, identification,
                                  [](const QString&, const auto&) -> std::shared_ptr<Application> {
                                      throw std::runtime_error("no display");
                                  });
            } catch (const std::runtime_error& error) {
                caught = QString::fromLatin1(error.what());
            }
        };
        if (fromOtherThread) {
            std::atomic<bool> ended{false};
            std::thread thread([&] {
                load();
                ended = true;
            });
            QTRY_VERIFY(ended);
            thread.join();
        } else {
            load();
        }
        QCOMPARE(caught, QStringLiteral("no display"));
        QCOMPARE(table.remove({}, identification), 0);
    }

    void oneIsMadeForManyAtOnce_data()
    {
        // failures: of the first creations
        const auto row = TestSupport::columns<int>("failures");
        row("all goes well", 0);
        row("the first two fail", 2);
    }

    // Each caller has looked for an application and waits for the GUI thread before the first is made.
    void oneIsMadeForManyAtOnce()
    {
        QFETCH(const int, failures);
        constexpr int threadCount = 8;
        Table table;
        std::atomic<int> asking{0};
        std::atomic<int> failed{0};
        std::atomic<int> running{threadCount};
        int tried = 0; // this and the next on the GUI thread
        int made = 0;
        const Table::Creator create = [&](const QString&, const auto& reader) {
            if (tried++ < failures)
                throw std::runtime_error("not yet");
            ++made;
            return std::make_shared<Application>(reader);
        };
        std::vector<std::shared_ptr<Application>> got(threadCount);
        std::vector<std::thread> threads;
        for (size_t i = 0; i < threadCount; ++i) {
            threads.emplace_back([&, i] {
                ++asking;
                try {
                    got[i] = table.getOrCreate({}, identification, create);
                } catch (const std::runtime_error&) {
                    ++failed;
                }
                --running;
            });
        }
        while (asking != threadCount)
            std::this_thread::yield();
        QTRY_COMPARE(running.load(), 0);
        for (std::thread& thread : threads)
            thread.join();
        QCOMPARE(made, 1);
        QCOMPARE(failed.load(), failures);
        const auto kept = table.getOrCreate({}, identification);
        QCOMPARE(std::count(got.begin(), got.end(), kept), threadCount - failures);
    }

    void anyThreadMayAsk()
    {
        Table table;
        std::atomic<int> running{8};
        std::atomic<int> wrong{0};
        std::vector<std::thread> threads;
        QThread* const guiThread = QThread::currentThread();
        for (int i = 0; i < 8; ++i) {
            threads.emplace_back([&, i] {
                const auto window = context({QString::number(i % 3)});
                for (int round = 0; round < 20; ++round) {
                    const auto made = table.getOrCreate(window, identification);
                    wrong += !made || made->thread != guiThread;
                    if (round % 5 == 0)
                        table.remove(window, identification);
                }
                --running;
            });
        }
        QTRY_COMPARE(running.load(), 0);
        for (std::thread& thread : threads)
            thread.join();
        QCOMPARE(wrong.load(), 0);
    }
};

VANTRY_TEST_MAIN(QCoreApplication, InstanceTableTest)

#include "instance_table_test.moc"
