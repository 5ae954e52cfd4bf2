#include "benchmarks/SampleFiles.h"

#include <benchmark/benchmark.h>
#include <sstream>
#include <toml.hpp>

// What toml11 makes of the same files: tables of its own, with comments.

namespace {

void readTables(benchmark::State& state)
{
    const QByteArray& text = SampleFiles::instance().text(QStringLiteral("toml"), int(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        std::istringstream stream(text.toStdString());
        const auto table = toml::parse(stream, "sample");
        if (!table.is_table())
            state.SkipWithError("the file was not read");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(readTables)->Name("Peer/Toml11")->Apply(sampleSize);

} // namespace
