#include "benchmarks/SampleFiles.h"
#include "repository/AttributeRepository.h"

#include <QVariant>

#include <benchmark/benchmark.h>

// What is unsaved of a large file is listed, and the diff that saving it would write is made.

namespace {

using FrameworkCore::AppConfig::AccessMode;
using FrameworkCore::AppConfig::BackendConfiguration;

// Every so many attributes are edited, which gives so many hunks, or one.
void diff(benchmark::State& state, int every)
{
    const int keyCount = int(state.range(0));
    const QString format = QStringLiteral("ini");
    const QString backend = QStringLiteral("sample");
    const auto repository = Repository::AttributeRepository::create();
    const BackendConfiguration configuration{SampleFiles::instance().file(format, keyCount), QString(),
                                             AccessMode::ReadWrite};
    bool isEdited = repository->getBackendInterface()->createBackend(format, backend, configuration, 2);
    for (int key = 0; key < keyCount && isEdited; key += every) {
        const QString path = backend + QLatin1Char('.') + samplePath(format, key);
        isEdited = repository->getWriterInterface()->retype(path, QStringLiteral("edited %1").arg(key)).ok();
    }
    if (!isEdited)
        state.SkipWithError("the file was not edited");
    for ([[maybe_unused]] auto _ : state) {
        QString text;
        const auto changes = repository->getChangesInterface()->getUnsavedChanges(backend);
        repository->getChangesInterface()->getUnsavedDiff(backend, text);
        if (changes.size() < keyCount / every || text.count(QLatin1String("\n+")) < keyCount / every)
            state.SkipWithError("the changes are not all there");
    }
}

BENCHMARK_CAPTURE(diff, all, 1)->Name("Changes/Diff")->Apply(sampleSize);
BENCHMARK_CAPTURE(diff, some, 100)->Name("Changes/DiffScattered")->Apply(sampleSize);

} // namespace
