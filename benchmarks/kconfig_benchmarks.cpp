#include "benchmarks/SampleFiles.h"

#include <KConfig>
#include <KConfigGroup>
#include <benchmark/benchmark.h>

namespace {

void readConfig(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state) {
        const KConfig config(SampleFiles::instance().file(QStringLiteral("ini"), int(state.range(0))),
                             KConfig::SimpleConfig);
        int count = 0;
        const QStringList groups = config.groupList();
        for (const QString& group : groups)
            count += config.entryMap(group).size();
        if (count != state.range(0))
            state.SkipWithError("the file was not read");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(readConfig)->Name("Peer/KConfig")->Apply(sampleSize);

} // namespace
