#include "benchmarks/LoadLoops.h"
#include "repository/AttributeRepository.h"

#include <QFile>

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <unistd.h>

// The two loops of the load-test page. The page freezes while they run, so each run is timed whole.

namespace {

using namespace LoadLoops;

// Keeps the run honest: a loop that tells nobody is not the loop that is meant.
void expectUpdates(benchmark::State& state, int expected)
{
    if (updateCounter != expected)
        state.SkipWithError("the callbacks that had to arrive did not");
    state.SetItemsProcessed(state.iterations() * expected);
}

// Frees what a run built, lets the allocator put its free lists in order, and makes what the next run fills.
template <typename Owner, typename Make>
void renew(benchmark::State& state, Owner& owner, const Make& make)
{
    state.PauseTiming();
    owner = {};
    malloc_trim(0);
    owner = make();
    state.ResumeTiming();
}

void floorCreateAndRegister(benchmark::State& state)
{
    const int count = int(state.range(0));
    Floor floor;
    for ([[maybe_unused]] auto _ : state) {
        renew(state, floor, [] { return Floor(); });
        create(floor, count);
    }
    state.SetItemsProcessed(state.iterations() * count);
}

void repositoryCreateAndRegister(benchmark::State& state)
{
    const int count = int(state.range(0));
    std::shared_ptr<RepositoryInterface> repository;
    for ([[maybe_unused]] auto _ : state) {
        renew(state, repository, [] { return Repository::AttributeRepository::create(); });
        create(*repository, count);
    }
    state.SetItemsProcessed(state.iterations() * count);
}

void floorUpdateAndNotify(benchmark::State& state)
{
    const int count = int(state.range(0));
    Floor floor;
    create(floor, count);
    for ([[maybe_unused]] auto _ : state) {
        updateCounter = 0;
        update(floor, count);
    }
    expectUpdates(state, count);
}

void repositoryUpdateAndNotify(benchmark::State& state)
{
    const int count = int(state.range(0));
    const auto repository = Repository::AttributeRepository::create();
    create(*repository, count);
    for ([[maybe_unused]] auto _ : state) {
        updateCounter = 0;
        update(*repository, 0, count);
    }
    expectUpdates(state, count);
}

qint64 residentBytes()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().split(' ').value(1).toLongLong() * sysconf(_SC_PAGESIZE);
}

// Has one thing built, and counts what that adds to the process.
template <typename Build>
void countMemory(benchmark::State& state, const Build& build)
{
    const int count = int(state.range(0));
    malloc_trim(0); // what other rows have freed must be asked for again
    const qint64 before = residentBytes();
    for ([[maybe_unused]] auto _ : state) {
        const auto built = build(count);
        state.PauseTiming();
        state.counters["bytes"] = double(residentBytes() - before) / count;
        state.ResumeTiming();
    }
}

void floorMemory(benchmark::State& state)
{
    countMemory(state, [](int count) {
        Floor floor;
        create(floor, count);
        return floor;
    });
}

void repositoryMemory(benchmark::State& state)
{
    countMemory(state, [](int count) {
        const auto repository = Repository::AttributeRepository::create();
        create(*repository, count);
        return repository;
    });
}

void sizes(benchmark::internal::Benchmark* row)
{
    row->Arg(1000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
}

void once(benchmark::internal::Benchmark* row)
{
    row->Arg(1000000)->Iterations(1)->Unit(benchmark::kMillisecond);
}

BENCHMARK(floorCreateAndRegister)->Name("Floor/CreateAndRegister")->Apply(sizes);
BENCHMARK(repositoryCreateAndRegister)->Name("Repository/CreateAndRegister")->Apply(sizes);
BENCHMARK(floorUpdateAndNotify)->Name("Floor/UpdateAndNotify")->Apply(sizes);
BENCHMARK(repositoryUpdateAndNotify)->Name("Repository/UpdateAndNotify")->Apply(sizes);
BENCHMARK(floorMemory)->Name("Floor/Memory")->Apply(once);
BENCHMARK(repositoryMemory)->Name("Repository/Memory")->Apply(once);

} // namespace
