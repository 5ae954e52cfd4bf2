#include "benchmarks/SampleFiles.h"

#include <benchmark/benchmark.h>
#include <libfyaml.h>

// The events that libfyaml reads from the same files, of which nothing is kept.

namespace {

void readEvents(benchmark::State& state, const char* format)
{
    const QByteArray& text = SampleFiles::instance().text(QLatin1String(format), int(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        fy_parse_cfg configuration{};
        configuration.flags = FYPCF_QUIET;
        fy_parser* const parser = fy_parser_create(&configuration);
        fy_parser_set_string(parser, text.constData(), std::size_t(text.size()));
        int scalars = 0;
        while (fy_event* const event = fy_parser_parse(parser)) {
            scalars += event->type == FYET_SCALAR ? 1 : 0;
            fy_parser_event_free(parser, event);
        }
        if (scalars < 2 * state.range(0))
            state.SkipWithError("the file was not read");
        fy_parser_destroy(parser);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK_CAPTURE(readEvents, nested, "yaml")->Name("Peer/LibFyamlEvents")->Apply(sampleSize);
BENCHMARK_CAPTURE(readEvents, flat, "yaml-flat")->Name("Peer/LibFyamlEventsFlat")->Apply(sampleSize);

} // namespace
