#include "benchmarks/LoadLoops.h"
#include "repository/AttributeRepository.h"

#include <benchmark/benchmark.h>

// What updates cost when patterns listen, and when two threads write.

namespace {

using namespace LoadLoops;
using FrameworkCore::Notification::UpdatePoint;
using FrameworkCore::Notification::UpdateResult;

constexpr int fewAttributes = 1000;
constexpr int manyAttributes = 100'000;

// One pattern is that of up to seven attributes of a million, so that time is compared for each callback.
void updateAndNotifyWildcards(benchmark::State& state)
{
    const int count = int(state.range(0));
    const auto repository = Repository::AttributeRepository::create();
    create(*repository, count);
    for (int i = 0; i < count; ++i)
        repository->getNotificationInterface()->registerUpdateCallback(demoPattern(i), countUpdate, 8);
    qint64 delivered = 0;
    for ([[maybe_unused]] auto _ : state) {
        updateCounter = 0;
        update(*repository, 0, count);
        delivered += updateCounter;
    }
    if (delivered < 2 * state.iterations() * count)
        state.SkipWithError("the callbacks that had to arrive did not");
    state.SetItemsProcessed(delivered);
}

// Patterns that match no attribute, of each form in turn. The attributes remember what matches them until the
// patterns change; `isChanging` has them look anew in each pass, by a pattern that comes before it.
void updateUnmatched(benchmark::State& state, const QStringList& forms, bool isChanging)
{
    const auto repository = Repository::AttributeRepository::create();
    create(*repository, fewAttributes);
    for (int i = 0; i < state.range(0); ++i)
        repository->getNotificationInterface()->registerUpdateCallback(forms.at(i % forms.size()).arg(i),
                                                                       countUpdate, 8);
    qint64 delivered = 0;
    for ([[maybe_unused]] auto _ : state) {
        updateCounter = 0;
        if (isChanging)
            repository->getNotificationInterface()
                ->registerUpdateCallback(QStringLiteral("none*"), countUpdate, 8)
                ->end();
        update(*repository, 0, fewAttributes);
        delivered += updateCounter;
    }
    if (delivered != state.iterations() * fewAttributes)
        state.SkipWithError("a pattern matched, or a callback did not arrive");
    state.SetItemsProcessed(delivered);
}

thread_local int updatesOfThread = 0;

void countUpdateOfThread(const QString&, const UpdatePoint&, const UpdateResult&, const QVariant&,
                         const QString&)
{
    ++updatesOfThread;
}

// Each thread updates the attributes of its own part. Nothing is shared but the repository: a counter that
// both add to, or a handle that both take, would be what is measured.
void concurrentUpdates(benchmark::State& state)
{
    static std::shared_ptr<RepositoryInterface> repository;
    if (state.thread_index() == 0) {
        repository = Repository::AttributeRepository::create();
        create(*repository, manyAttributes, countUpdateOfThread);
    }
    const int part = manyAttributes / state.threads();
    const int first = state.thread_index() * part;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::AttributeWriterInterface> writer;
    for ([[maybe_unused]] auto _ : state) {
        if (!writer) { // all threads have started
            updatesOfThread = 0;
            writer = repository->getWriterInterface();
        }
        for (int i = first; i < first + part; ++i)
            writer->writeAttributeValue(demoPath(i), QVariant(i), 15);
    }
    if (updatesOfThread != state.iterations() * part)
        state.SkipWithError("the callbacks that had to arrive did not");
    state.SetItemsProcessed(state.iterations() * part);
    if (state.thread_index() == 0)
        repository.reset();
}

BENCHMARK(updateAndNotifyWildcards)->Name("Repository/UpdateAndNotifyWildcards")->Apply(sizes);
const QStringList forms{QStringLiteral("x%1*"), QStringLiteral("*.x%1"), QStringLiteral("*x%1*")};

BENCHMARK_CAPTURE(updateUnmatched, all, forms, false)
    ->Name("Repository/UpdateUnmatchedPatterns")
    ->Arg(0)
    ->Apply(sizes)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(updateUnmatched, prefix, forms.mid(0, 1), false)
    ->Name("Repository/UpdateUnmatchedPatterns/Prefix")
    ->Apply(sizes)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(updateUnmatched, anew, forms, true)
    ->Name("Repository/UpdateUnmatchedPatterns/Anew")
    ->Arg(0)
    ->Apply(sizes)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(concurrentUpdates)
    ->Name("Repository/ConcurrentUpdates")
    ->Threads(1)
    ->Threads(2)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

} // namespace
