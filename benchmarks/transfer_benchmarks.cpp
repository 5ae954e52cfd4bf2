#include "repository/AttributeRepository.h"

#include <QJsonDocument>
#include <QTemporaryDir>
#include <QVariantMap>

#include <benchmark/benchmark.h>

// Whole subtrees within one json backend, beside the floors: the same attributes put into nested maps, json
// text made of such maps by Qt, and maps made of that text.

namespace {

using namespace FrameworkCore::AppConfig;

constexpr int groupSize = 100;

QString pathOf(int i)
{
    return QStringLiteral("group%1.key%2").arg(i / groupSize).arg(i % groupSize);
}

QVariantMap nestedMap(int count)
{
    QVariantMap map;
    for (int group = 0; group * groupSize < count; ++group) {
        QVariantMap members;
        for (int i = 0; i < groupSize; ++i)
            members.insert(QStringLiteral("key%1").arg(i), QVariant(qlonglong(i)));
        map.insert(QStringLiteral("group%1").arg(group), members);
    }
    return map;
}

// A repository with a json backend "bench" that holds so many attributes below "bench.from".
struct Filled
{
    explicit Filled(int count)
    {
        repository->getBackendInterface()->createBackend(
            QStringLiteral("json"), QStringLiteral("bench"),
            {folder.filePath(QStringLiteral("bench.json")), QString(), AccessMode::ReadWrite}, 2);
        for (int i = 0; i < count; ++i)
            repository->getWriterInterface()->createAttribute(QStringLiteral("bench.from.") + pathOf(i),
                                                              qlonglong(i), 2, 3);
    }

    QTemporaryDir folder;
    std::shared_ptr<Repository::AttributeRepository> repository = Repository::AttributeRepository::create();
};

void buildMap(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(nestedMap(int(state.range(0))));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void writeMap(benchmark::State& state)
{
    const QVariantMap map = nestedMap(int(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(QJsonDocument::fromVariant(map).toJson());
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void readMap(benchmark::State& state)
{
    const QByteArray text = QJsonDocument::fromVariant(nestedMap(int(state.range(0)))).toJson();
    for (auto _ : state)
        benchmark::DoNotOptimize(QJsonDocument::fromJson(text).toVariant());
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void copyTree(benchmark::State& state)
{
    const Filled filled(int(state.range(0)));
    const auto transfer = filled.repository->getTransferInterface();
    if (state.range(1) != 0)
        filled.repository->getHistoryInterface()->recordThisThread();
    for (auto _ : state) {
        if (transfer->copyTree(QStringLiteral("bench.from"), QStringLiteral("bench.to")) != Success)
            state.SkipWithError("not copied");
        state.PauseTiming();
        filled.repository->getTreeInterface()->removeTree(QStringLiteral("bench.to"));
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void exportTree(benchmark::State& state)
{
    const Filled filled(int(state.range(0)));
    for (auto _ : state) {
        QByteArray text;
        filled.repository->getTransferInterface()->exportTree(QStringLiteral("bench.from"),
                                                              QStringLiteral("json"), text);
        benchmark::DoNotOptimize(text);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void importTree(benchmark::State& state)
{
    const Filled filled(int(state.range(0)));
    const auto transfer = filled.repository->getTransferInterface();
    QByteArray text;
    transfer->exportTree(QStringLiteral("bench.from"), QStringLiteral("json"), text);
    for (auto _ : state) {
        if (transfer->importTree(QStringLiteral("bench.to"), QStringLiteral("json"), text) != Success)
            state.SkipWithError("not imported");
        state.PauseTiming();
        filled.repository->getTreeInterface()->removeTree(QStringLiteral("bench.to"));
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(buildMap)->Name("Floor/NestedMap")->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(writeMap)->Name("Floor/JsonFromNestedMap")->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(readMap)->Name("Floor/NestedMapFromJson")->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(copyTree)
    ->Name("Tree/CopySubtree")
    ->ArgNames({"", "recorded"})
    ->Args({100000, 0})
    ->Args({100000, 1})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(exportTree)->Name("Tree/ExportJson")->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(importTree)->Name("Tree/ImportJson")->Arg(100000)->Unit(benchmark::kMillisecond);

} // namespace
