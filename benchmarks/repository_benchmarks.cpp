#include "benchmarks/LoadLoops.h"
#include "benchmarks/ResidentMemory.h"
#include "repository/AttributeRepository.h"

#include <benchmark/benchmark.h>
#include <optional>

// The two loops of the load-test page. The page freezes while they run, so each run is timed whole.

namespace {

using namespace LoadLoops;
using LoadLoops::create;
using LoadLoops::update;

// The repository with the interface of the floor.
struct Live
{
    std::shared_ptr<RepositoryInterface> repository = Repository::AttributeRepository::create();
};

void create(Live& live, int count)
{
    LoadLoops::create(*live.repository, count);
}

void update(Live& live, int first, int end)
{
    update(*live.repository, first, end);
}

// Before each run, frees what the last one built and lets the allocator put its free lists in order.
template <typename Owner>
void createAndRegister(benchmark::State& state)
{
    const int count = int(state.range(0));
    std::optional<Owner> owner;
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        owner.reset();
        malloc_trim(0);
        owner.emplace();
        state.ResumeTiming();
        create(*owner, count);
    }
    state.SetItemsProcessed(state.iterations() * count);
}

template <typename Owner>
void updateAndNotify(benchmark::State& state)
{
    const int count = int(state.range(0));
    Owner owner;
    create(owner, count);
    for ([[maybe_unused]] auto _ : state) {
        updateCounter = 0;
        update(owner, 0, count);
    }
    if (updateCounter != count) // a loop that notifies nobody is not the loop that is meant
        state.SkipWithError("the callbacks that had to arrive did not");
    state.SetItemsProcessed(state.iterations() * count);
}

// Counts what one of them adds to the process.
template <typename Owner>
void countMemory(benchmark::State& state)
{
    const int count = int(state.range(0));
    const qint64 before = trimmedResidentBytes();
    for ([[maybe_unused]] auto _ : state) {
        Owner owner;
        create(owner, count);
        state.PauseTiming();
        state.counters["bytes"] = double(residentBytes() - before) / count;
        state.ResumeTiming();
    }
}

void once(benchmark::internal::Benchmark* row)
{
    row->Arg(1000000)->Iterations(1)->Unit(benchmark::kMillisecond);
}

BENCHMARK_TEMPLATE(createAndRegister, Floor)->Name("Floor/CreateAndRegister")->Apply(sizes);
BENCHMARK_TEMPLATE(createAndRegister, Live)->Name("Repository/CreateAndRegister")->Apply(sizes);
BENCHMARK_TEMPLATE(updateAndNotify, Floor)->Name("Floor/UpdateAndNotify")->Apply(sizes);
BENCHMARK_TEMPLATE(updateAndNotify, Live)->Name("Repository/UpdateAndNotify")->Apply(sizes);
BENCHMARK_TEMPLATE(countMemory, Floor)->Name("Floor/Memory")->Apply(once);
BENCHMARK_TEMPLATE(countMemory, Live)->Name("Repository/Memory")->Apply(once);

} // namespace
