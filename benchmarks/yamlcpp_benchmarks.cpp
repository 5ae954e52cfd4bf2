#include "benchmarks/SampleFiles.h"

#include <benchmark/benchmark.h>
#include <yaml-cpp/yaml.h>

// What yaml-cpp makes of the same files: nodes of its own, without the text and without comments.

namespace {

void readNodes(benchmark::State& state)
{
    const QByteArray& text = SampleFiles::instance().text(QStringLiteral("yaml"), int(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        if (!YAML::Load(text.toStdString()).IsMap())
            state.SkipWithError("the file was not read");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(readNodes)->Name("Peer/YamlCpp")->Apply(sampleSize);

} // namespace
