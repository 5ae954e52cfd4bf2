#include "benchmarks/SampleFiles.h"

#include <benchmark/benchmark.h>
#include <toml++/toml.h>

// What toml++ makes of the same files: tables of its own, without the text and without comments.

namespace {

void readTables(benchmark::State& state, const char* format)
{
    const QByteArray& text = SampleFiles::instance().text(QLatin1String(format), int(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        const toml::table table = toml::parse(std::string_view(text.constData(), std::size_t(text.size())));
        if (table.empty())
            state.SkipWithError("the file was not read");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK_CAPTURE(readTables, nested, "toml")->Name("Peer/TomlPlusPlus")->Apply(sampleSize);
BENCHMARK_CAPTURE(readTables, flat, "toml-flat")->Name("Peer/TomlPlusPlusFlat")->Apply(sampleSize);

} // namespace
