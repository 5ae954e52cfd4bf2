#include "benchmarks/SampleFiles.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QSettings>
#include <QXmlStreamReader>

#include <benchmark/benchmark.h>

// What Qt makes of the same files. None of these builds attributes that can be watched and written, or keeps
// the text: QJsonDocument builds its own tree, QSettings a map, QXmlStreamReader nothing at all.

namespace {

void readJson(benchmark::State& state)
{
    const QByteArray& text = SampleFiles::instance().text(QStringLiteral("json"), int(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        const QJsonDocument document = QJsonDocument::fromJson(text);
        if (document.object().isEmpty())
            state.SkipWithError("the file was not read");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void readSettings(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        const QString name = SampleFiles::instance().alias(QStringLiteral("ini"), int(state.range(0)));
        state.ResumeTiming();
        const QSettings settings(name, QSettings::IniFormat);
        const QStringList keys = settings.allKeys();
        for (const QString& key : keys)
            benchmark::DoNotOptimize(settings.value(key));
        if (keys.size() != state.range(0))
            state.SkipWithError("the file was not read");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void scanXml(benchmark::State& state)
{
    const QByteArray& text = SampleFiles::instance().text(QStringLiteral("xml"), int(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        QXmlStreamReader reader(text);
        while (!reader.atEnd())
            reader.readNext();
        if (reader.hasError())
            state.SkipWithError("the file was not read");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(readJson)->Name("Peer/QJsonDocument")->Apply(sampleSize);
BENCHMARK(readSettings)->Name("Peer/QSettings")->Apply(sampleSize);
BENCHMARK(scanXml)->Name("Peer/QXmlStreamReader")->Apply(sampleSize);

} // namespace
