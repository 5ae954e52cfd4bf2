#include "benchmarks/SampleFiles.h"

#include <augeas.h>
#include <benchmark/benchmark.h>
#include <memory>

// Augeas, the other tool that edits files of many formats in place, through its own lenses. It takes seconds
// to minutes, so each row runs once.

namespace {

struct Closing
{
    void operator()(augeas* handle) const { aug_close(handle); }
};

void readThroughLens(benchmark::State& state, const char* format, const char* lens)
{
    const QByteArray& text = SampleFiles::instance().text(QLatin1String(format), int(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        const std::unique_ptr<augeas, Closing> handle(
            aug_init(nullptr, nullptr, AUG_NO_LOAD | AUG_NO_MODL_AUTOLOAD));
        aug_set(handle.get(), "/text", text.constData());
        state.ResumeTiming();
        if (aug_text_store(handle.get(), lens, "/text", "/tree") != 0)
            state.SkipWithError("the file was not read");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK_CAPTURE(readThroughLens, json, "json", "Json.lns")
    ->Name("Peer/Augeas/Json")
    ->Apply(sampleSize)
    ->Iterations(1);
BENCHMARK_CAPTURE(readThroughLens, ini, "ini", "IniFile.lns_loose")
    ->Name("Peer/Augeas/Ini")
    ->Apply(sampleSize)
    ->Iterations(1);
BENCHMARK_CAPTURE(readThroughLens, xml, "xml", "Xml.lns")
    ->Name("Peer/Augeas/Xml")
    ->Apply(sampleSize)
    ->Iterations(1);

} // namespace
