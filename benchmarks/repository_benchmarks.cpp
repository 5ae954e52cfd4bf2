#include "repository/AttributeRepository.h"

#include <QHash>
#include <QString>
#include <QVariant>

#include <atomic>
#include <benchmark/benchmark.h>
#include <functional>
#include <malloc.h>

// The two loops of the load-test page, on the repository and on the floor: a bare hash of values and
// functions that does the same work without what a repository is for. The page freezes while they run, so
// each run is timed whole.

namespace {

using FrameworkCore::AppConfig::Interfaces::RepositoryInterface;
using FrameworkCore::AppConfig::Interfaces::UpdateCallback;
using FrameworkCore::Notification::UpdatePoint;
using FrameworkCore::Notification::UpdateResult;

std::atomic<int> updateCounter{0};

void countUpdate(const QString&, const UpdatePoint&, const UpdateResult&, const QVariant&, const QString&)
{
    ++updateCounter;
}

QString demoPath(int i)
{
    return QStringLiteral("demo.%1").arg(i);
}

// Keeps the run honest: a loop that tells nobody is not the loop that is meant.
void expectUpdates(benchmark::State& state, int expected)
{
    if (updateCounter != expected)
        state.SkipWithError("the callbacks that had to arrive did not");
    state.SetItemsProcessed(state.iterations() * expected);
}

using Floor = QHash<QString, std::pair<QVariant, UpdateCallback>>;

void createFloor(Floor& floor, int count)
{
    for (int i = 0; i < count; ++i) {
        const QString path = demoPath(i);
        const QString pattern = QStringLiteral("demo.%1*").arg(i);
        benchmark::DoNotOptimize(pattern);
        floor.insert(path, {QVariant(QStringLiteral("%1").arg(i)), countUpdate});
    }
}

void createInRepository(const std::shared_ptr<RepositoryInterface>& repository, int count)
{
    for (int i = 0; i < count; ++i) {
        const QString path = demoPath(i);
        const QString pattern = QStringLiteral("demo.%1*").arg(i);
        benchmark::DoNotOptimize(pattern);
        repository->getWriterInterface()->createAttribute(path, QVariant(QStringLiteral("%1").arg(i)), 3, 3);
        repository->getNotificationInterface()->registerUpdateCallback(path, countUpdate, 8);
    }
}

// Frees what a run built, and lets the allocator put its free lists in order before the next one is timed.
template <typename Owner>
void release(benchmark::State& state, Owner& owner)
{
    state.PauseTiming();
    owner = {};
    malloc_trim(0);
    state.ResumeTiming();
}

void floorCreateAndRegister(benchmark::State& state)
{
    const int count = int(state.range(0));
    Floor floor;
    for ([[maybe_unused]] auto _ : state) {
        createFloor(floor, count);
        release(state, floor);
    }
    state.SetItemsProcessed(state.iterations() * count);
}

void repositoryCreateAndRegister(benchmark::State& state)
{
    const int count = int(state.range(0));
    std::shared_ptr<RepositoryInterface> repository;
    for ([[maybe_unused]] auto _ : state) {
        repository = Repository::AttributeRepository::create();
        createInRepository(repository, count);
        release(state, repository);
    }
    state.SetItemsProcessed(state.iterations() * count);
}

void floorUpdateAndNotify(benchmark::State& state)
{
    const int count = int(state.range(0));
    Floor floor;
    createFloor(floor, count);
    for ([[maybe_unused]] auto _ : state) {
        updateCounter = 0;
        for (int i = 0; i < count; ++i) {
            const QString path = demoPath(i);
            auto& [value, callback] = floor[path];
            value = QVariant(QString::number(QVariant(i).toInt()));
            callback(path, UpdatePoint::AfterStore, UpdateResult::Changed, value, QString());
        }
    }
    expectUpdates(state, count);
}

void repositoryUpdateAndNotify(benchmark::State& state)
{
    const int count = int(state.range(0));
    const std::shared_ptr<RepositoryInterface> repository = Repository::AttributeRepository::create();
    createInRepository(repository, count);
    for ([[maybe_unused]] auto _ : state) {
        updateCounter = 0;
        for (int i = 0; i < count; ++i)
            repository->getWriterInterface()->writeAttributeValue(demoPath(i), QVariant(i), 15);
    }
    expectUpdates(state, count);
}

void sizes(benchmark::internal::Benchmark* row)
{
    row->Arg(1000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(floorCreateAndRegister)->Name("Floor/CreateAndRegister")->Apply(sizes);
BENCHMARK(repositoryCreateAndRegister)->Name("Repository/CreateAndRegister")->Apply(sizes);
BENCHMARK(floorUpdateAndNotify)->Name("Floor/UpdateAndNotify")->Apply(sizes);
BENCHMARK(repositoryUpdateAndNotify)->Name("Repository/UpdateAndNotify")->Apply(sizes);

} // namespace
