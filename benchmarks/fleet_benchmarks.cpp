#include "repository/AttributeRepository.h"
#include "tests/support/EtcdClient.h"
#include "tests/support/EtcdServer.h"

#include <QCoreApplication>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

// A store on a real etcd of this machine, through the tree and through a bare client that does the same calls
// and keeps what it reads as bytes.

namespace {

using FrameworkCore::AppConfig::AccessMode;
using FrameworkCore::Notification::UpdatePoint;
using FrameworkCore::Notification::UpdateResult;
using TestSupport::EtcdClient;
using TestSupport::EtcdServer;
using Clock = std::chrono::steady_clock;

constexpr int keysInGroup = 100;
constexpr int writes = 1000;
constexpr int batch = 10'000;
constexpr int events = 20'000;
constexpr int keysInTransaction = 128; // the server's own bound
constexpr int writers = 4;

QString pathOf(int number)
{
    return QStringLiteral("g%1.k%2").arg(number / keysInGroup).arg(number % keysInGroup);
}

// The text of a file with so many attributes, which is imported.
QByteArray textOf(int count)
{
    QByteArray text;
    for (int i = 0; i < count; ++i)
        text += pathOf(i).toLatin1() + " = " + QByteArray::number(i) + '\n';
    return text;
}

// The thread of the windows, which this one is, is not kept waiting by a store; others are.
template <typename Operation>
void onOtherThread(const Operation& operation)
{
    std::thread(operation).join();
}

// The server, started by the first row that needs it, and how it is reached.
class Fleet
{
public:
    static Fleet& instance()
    {
        static std::unique_ptr<Fleet> fleet;
        if (!fleet) {
            fleet.reset(new Fleet);
            qAddPostRoutine([] { fleet.reset(); }); // while there is an application for its processes
        }
        return *fleet;
    }

    const EtcdClient& getClient() const { return *client; }

    // A repository that has mounted the store at "m"; null when it could not.
    std::shared_ptr<Repository::AttributeRepository> mount(const QString& store) const
    {
        auto repository = Repository::AttributeRepository::create();
        FrameworkCore::AppConfig::Outcome outcome;
        onOtherThread([&] {
            outcome = repository->getBackendInterface()->mount(
                QStringLiteral("etcd"), QStringLiteral("m"),
                {server.getLocation(store), QString(), AccessMode::ReadWrite}, 2);
        });
        if (!outcome.ok())
            qWarning("%s", qPrintable(outcome.toText()));
        return outcome.ok() ? repository : nullptr;
    }

    // The store with that many attributes, written by Vantry.
    QString filled(int count)
    {
        const QString store = QStringLiteral("filled%1").arg(count);
        if (filledStores.contains(store))
            return store;
        if (const auto repository = mount(store)) {
            repository->getTransferInterface()->importTree(QStringLiteral("m"), QStringLiteral("txt"),
                                                           textOf(count));
            onOtherThread([&] { repository->getBackendInterface()->saveBackend(QStringLiteral("m")); });
        }
        filledStores.append(store);
        // Servers of version 3.4 read more slowly after a burst until they are started again.
        server.kill();
        server.restart();
        return store;
    }

    // What a store of that name begins its keys with.
    static std::string prefixOf(const QString& store) { return "vantry/1/" + store.toStdString() + "/a/"; }

private:
    Fleet()
    {
        if (!server.start())
            qWarning("%s", qPrintable(server.getFailure()));
        client = std::make_unique<EtcdClient>(server.getEndpoints().first().toStdString());
    }

    EtcdServer server;
    std::unique_ptr<EtcdClient> client;
    QStringList filledStores;
};

// Counts notifications of other threads; this one can wait for a number of them.
class Arrivals
{
public:
    void count()
    {
        const std::lock_guard lock(mutex);
        ++arrived;
        last = Clock::now();
        changed.notify_all();
    }

    // When the last one came; the row fails when they do not come.
    Clock::time_point waitFor(int count)
    {
        std::unique_lock lock(mutex);
        changed.wait_for(lock, std::chrono::seconds(60), [&] { return arrived >= count; });
        isComplete = isComplete && arrived >= count;
        return last;
    }

    bool areComplete() const { return isComplete; }

private:
    std::mutex mutex;
    std::condition_variable changed;
    int arrived = 0;
    bool isComplete = true;
    Clock::time_point last;
};

void load(benchmark::State& state)
{
    Fleet& fleet = Fleet::instance();
    const QString store = fleet.filled(int(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        auto repository = fleet.mount(store);
        state.PauseTiming();
        const int groups = int(state.range(0)) / keysInGroup;
        if (!repository || repository->getTreeInterface()->getChildCount(QStringLiteral("m")) != groups)
            state.SkipWithError("not all of the store became attributes");
        repository.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void readBare(benchmark::State& state)
{
    Fleet& fleet = Fleet::instance();
    const std::string prefix = Fleet::prefixOf(fleet.filled(int(state.range(0))));
    for ([[maybe_unused]] auto _ : state) {
        const auto entries = fleet.getClient().readAll(prefix);
        if (int(entries.size()) != state.range(0))
            state.SkipWithError("the store was not read");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// Each write is stored before the next.
void writeSequentially(benchmark::State& state)
{
    const auto repository = Fleet::instance().mount(QStringLiteral("sequential"));
    const QString path = QStringLiteral("m.a.b");
    if (!repository || !repository->getWriterInterface()->create(path, 0, 3, 3).ok())
        state.SkipWithError("the store was not written");
    qlonglong value = 0;
    const auto writeAll = [&] {
        for (int i = 0; i < writes; ++i) {
            if (repository->getWriterInterface()->writeAttributeValue(path, ++value, 8) != 0 ||
                !repository->getBackendInterface()->saveBackend(QStringLiteral("m")))
                state.SkipWithError("a write was refused");
        }
    };
    for ([[maybe_unused]] auto _ : state)
        onOtherThread(writeAll);
    state.SetItemsProcessed(state.iterations() * writes);
}

// Vantry watches what it writes, to keep the tree live, and a watched store is slower to write.
void writeSequentiallyBare(benchmark::State& state, bool isWatched)
{
    const EtcdClient& client = Fleet::instance().getClient();
    const std::string key = "bare/sequential";
    const auto watch = isWatched ? client.watch(key, [](const EtcdClient::Change&) {}) : nullptr;
    std::int64_t revision = client.put(key, "0");
    std::string value = R"({"t":"i64","v":"0","w":"0123456789abcdef.0"})";
    for ([[maybe_unused]] auto _ : state) {
        for (int i = 0; i < writes && revision > 0; ++i)
            revision = client.putIf(key, value, revision);
        if (revision == 0)
            state.SkipWithError("a write was refused");
    }
    state.SetItemsProcessed(state.iterations() * writes);
}

// An import of that many attributes, until all of them are stored.
void writeBatch(benchmark::State& state)
{
    const auto repository = Fleet::instance().mount(QStringLiteral("batch"));
    const QByteArray text = textOf(batch);
    static int round = 0; // of all runs, since what is there already would not be written
    const auto importAll = [&] {
        const auto imported = repository->getTransferInterface()->importTree(
            QStringLiteral("m.r%1").arg(++round), QStringLiteral("txt"), text);
        if (!imported.ok() || !repository->getBackendInterface()->saveBackend(QStringLiteral("m")))
            state.SkipWithError("the import was refused");
    };
    for ([[maybe_unused]] auto _ : state)
        onOtherThread(importAll);
    state.SetItemsProcessed(state.iterations() * batch);
}

void writeBatchBare(benchmark::State& state)
{
    const EtcdClient& client = Fleet::instance().getClient();
    static int round = 0; // of all runs, since what is there already would not be written
    for ([[maybe_unused]] auto _ : state) {
        const std::string prefix = "bare/batch/r" + std::to_string(++round) + '.';
        for (int first = 0; first < batch; first += keysInTransaction) {
            EtcdClient::Pairs pairs;
            for (int i = first; i < std::min(first + keysInTransaction, batch); ++i)
                pairs.emplace_back(prefix + pathOf(i).toStdString(),
                                   R"({"t":"i64","v":"0","w":"0123456789abcdef.0"})");
            if (client.commit(pairs) == 0)
                state.SkipWithError("a transaction was refused");
        }
    }
    state.SetItemsProcessed(state.iterations() * batch);
}

// What another program writes.
EtcdClient::Pairs pairsFrom(const std::string& prefix, int first, int count, int value)
{
    EtcdClient::Pairs pairs;
    for (int i = first; i < first + count; ++i)
        pairs.emplace_back(prefix + pathOf(i).toStdString(),
                           R"({"t":"i64","v":")" + std::to_string(value) + R"("})");
    return pairs;
}

// From before a bare client writes until the callback.
void measureLatency(benchmark::State& state, const std::string& prefix, Arrivals& arrivals)
{
    const EtcdClient& client = Fleet::instance().getClient();
    std::vector<double> seconds;
    for ([[maybe_unused]] auto _ : state) {
        const auto pairs = pairsFrom(prefix, 0, 1, int(seconds.size()) + 1);
        const auto before = Clock::now();
        client.put(pairs.front().first, pairs.front().second);
        const auto after = arrivals.waitFor(int(seconds.size()) + 1);
        seconds.push_back(std::chrono::duration<double>(after - before).count());
        state.SetIterationTime(seconds.back());
    }
    std::nth_element(seconds.begin(), seconds.begin() + long(seconds.size() / 2), seconds.end());
    state.counters["p50_us"] = seconds[seconds.size() / 2] * 1e6;
    if (!arrivals.areComplete())
        state.SkipWithError("a change was not told");
}

// From the first write of several writers until the last callback.
void measureThroughput(benchmark::State& state, const std::string& prefix, Arrivals& arrivals)
{
    const EtcdClient& client = Fleet::instance().getClient();
    int round = 0;
    for ([[maybe_unused]] auto _ : state) {
        ++round;
        const auto before = Clock::now();
        std::vector<std::thread> threads;
        for (int writer = 0; writer < writers; ++writer) {
            threads.emplace_back([&, writer] {
                constexpr int share = events / writers;
                for (int i = 0; i < share; i += keysInGroup)
                    client.commit(pairsFrom(prefix, writer * share + i, keysInGroup, round));
            });
        }
        for (std::thread& thread : threads)
            thread.join();
        state.SetIterationTime(
            std::chrono::duration<double>(arrivals.waitFor(round * events) - before).count());
    }
    state.SetItemsProcessed(state.iterations() * events);
    if (!arrivals.areComplete())
        state.SkipWithError("a change was not told");
}

using Measure = void (*)(benchmark::State&, const std::string&, Arrivals&);

// Callbacks of the tree, or of a bare watch.
void watchTree(benchmark::State& state, const char* name, Measure measure)
{
    Arrivals arrivals;
    const QString store = QLatin1String(name);
    const auto repository = Fleet::instance().mount(store);
    if (!repository) {
        state.SkipWithError("the store was not mounted");
        return;
    }
    const auto registration = repository->getNotificationInterface()->registerUpdateCallback(
        QStringLiteral("m.*"),
        [&arrivals](const QString&, const UpdatePoint&, const UpdateResult&, const QVariant&,
                    const QString&) { arrivals.count(); },
        int(UpdatePoint::AfterStore));
    measure(state, Fleet::prefixOf(store), arrivals);
    registration->end();
}

void watchBare(benchmark::State& state, const char* name, Measure measure)
{
    Arrivals arrivals;
    const std::string prefix = std::string("bare/") + name + '/';
    const auto watch = Fleet::instance().getClient().watch(
        prefix, [&arrivals](const EtcdClient::Change&) { arrivals.count(); });
    measure(state, prefix, arrivals);
}

void loadSizes(benchmark::internal::Benchmark* row)
{
    row->Arg(100'000)->Unit(benchmark::kMillisecond)->UseRealTime();
}

void writeTimes(benchmark::internal::Benchmark* row)
{
    row->Iterations(5)->Unit(benchmark::kMillisecond)->UseRealTime();
}

BENCHMARK(readBare)->Name("Peer/EtcdLoad")->Apply(loadSizes);
BENCHMARK(load)->Name("Fleet/Load")->Apply(loadSizes);
BENCHMARK_CAPTURE(writeSequentiallyBare, unwatched, false)
    ->Name("Peer/EtcdWriteUnwatched")
    ->Apply(writeTimes);
BENCHMARK_CAPTURE(writeSequentiallyBare, watched, true)->Name("Peer/EtcdWriteSequential")->Apply(writeTimes);
BENCHMARK(writeSequentially)->Name("Fleet/WriteSequential")->Apply(writeTimes);
BENCHMARK(writeBatchBare)->Name("Peer/EtcdWriteBatch")->Apply(writeTimes);
BENCHMARK(writeBatch)->Name("Fleet/WriteBatch")->Apply(writeTimes);
BENCHMARK_CAPTURE(watchBare, latency, "latency", measureLatency)
    ->Name("Peer/EtcdWatchLatency")
    ->Iterations(2000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(watchTree, latency, "latency", measureLatency)
    ->Name("Fleet/WatchLatency")
    ->Iterations(2000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(watchBare, throughput, "throughput", measureThroughput)
    ->Name("Peer/EtcdWatchThroughput")
    ->Iterations(5)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(watchTree, throughput, "throughput", measureThroughput)
    ->Name("Fleet/WatchThroughput")
    ->Iterations(5)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace
