#include "benchmarks/LoadLoops.h"
#include "repository/AttributeRepository.h"

#include <QElapsedTimer>
#include <QVector>

#include <benchmark/benchmark.h>

// Searching the values of many attributes for a text that few of them have, beside a bare scan of the same
// texts in one row.

namespace {

using namespace FrameworkCore::AppConfig::Interfaces;

constexpr int rarity = 1000; // one of so many has the text

// Texts and numbers, such as files hold.
QVariant valueOf(int i)
{
    if (i % rarity == 0)
        return QStringLiteral("needle-%1.example.com").arg(i);
    if (i % 3 == 0)
        return qlonglong(i);
    return QStringLiteral("host-%1.example.com/some/place").arg(i);
}

void scanTexts(benchmark::State& state)
{
    QVector<QString> texts;
    for (int i = 0; i < state.range(0); ++i)
        texts.append(valueOf(i).toString());
    const QString wanted = QStringLiteral("NEEDLE");
    for (auto _ : state) {
        qint64 found = 0;
        for (const QString& text : qAsConst(texts))
            found += text.contains(wanted, Qt::CaseInsensitive) ? 1 : 0;
        benchmark::DoNotOptimize(found);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void findInValues(benchmark::State& state, SearchQuery query)
{
    const auto repository = Repository::AttributeRepository::create();
    for (int i = 0; i < state.range(0); ++i)
        repository->getWriterInterface()->createAttribute(LoadLoops::demoPath(i), valueOf(i), 2, 3);
    query.fields = SearchQuery::Value;
    qint64 first = 0; // hit, in nanoseconds
    for (auto _ : state) {
        qint64 found = 0;
        QElapsedTimer timer;
        timer.start();
        repository->getSearchInterface()->find(query, [&](const QVector<SearchHit>& hits, int) {
            if (found == 0 && !hits.isEmpty())
                first = std::max(first, timer.nsecsElapsed());
            found += hits.size();
            return true;
        });
        if (found != state.range(0) / rarity)
            state.SkipWithError("not all was found that had to be");
    }
    state.counters["first_ms"] = double(first) / 1e6;
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void size(benchmark::internal::Benchmark* row)
{
    row->Arg(1000000)->Unit(benchmark::kMillisecond)->UseRealTime();
}

SearchQuery queryOf(const char* text, SearchQuery::Syntax syntax)
{
    SearchQuery query;
    query.text = QString::fromLatin1(text);
    query.syntax = syntax;
    return query;
}

BENCHMARK(scanTexts)->Name("Floor/ScanTexts")->Apply(size);
BENCHMARK_CAPTURE(findInValues, plain, queryOf("NEEDLE", SearchQuery::Syntax::Plain))
    ->Name("Find/Values")
    ->Apply(size);
BENCHMARK_CAPTURE(findInValues, wildcard, queryOf("NEEDLE*com", SearchQuery::Syntax::Wildcard))
    ->Name("Find/Wildcards")
    ->Apply(size);
BENCHMARK_CAPTURE(findInValues, expression, queryOf("NEEDLE-\\d", SearchQuery::Syntax::RegularExpression))
    ->Name("Find/Expressions")
    ->Apply(size);

} // namespace
