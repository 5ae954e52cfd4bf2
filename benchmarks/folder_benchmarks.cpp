#include "benchmarks/ResidentMemory.h"
#include "benchmarks/SampleFiles.h"
#include "repository/AttributeRepository.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <map>

// A folder of so many small files, of all formats in turn, becomes live attributes that are watched. The
// floor reads the same bytes.

namespace {

using FrameworkCore::AppConfig::AccessMode;

constexpr int keysInFile = 40;
constexpr int filesInFolder = 100;

// Made once for each number of files.
QString folderOf(int files)
{
    static std::map<int, QTemporaryDir> folders;
    const auto [folder, isNew] = folders.try_emplace(files);
    const QStringList formats{QStringLiteral("ini"), QStringLiteral("json"), QStringLiteral("xml"),
                              QStringLiteral("txt")};
    for (int file = 0; isNew && file < files; ++file) {
        const QString& format = formats[file % formats.size()];
        const QString below = QStringLiteral("d%1").arg(file / filesInFolder);
        QDir(folder->second.path()).mkpath(below);
        QFile::copy(SampleFiles::instance().file(format, keysInFile),
                    folder->second.filePath(QStringLiteral("%1/f%2.%3").arg(below).arg(file).arg(format)));
    }
    return folder->second.path();
}

void open(FrameworkCore::AppConfig::Interfaces::RepositoryInterface& repository, const QString& folder)
{
    repository.getBackendInterface()->createBackend(QStringLiteral("folder"), QStringLiteral("m"),
                                                    {folder, QString(), AccessMode::ReadWrite}, 2);
}

void openFolder(benchmark::State& state)
{
    const QString folder = folderOf(int(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        auto repository = Repository::AttributeRepository::create();
        state.ResumeTiming();
        open(*repository, folder);
        state.PauseTiming();
        if (repository->getBackendInterface()->getBackendNames().size() != int(state.range(0)) + 1)
            state.SkipWithError("not all files became attributes");
        repository.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// What the attributes of all take, counted in bytes of memory for each byte of their files.
void countMemory(benchmark::State& state)
{
    const QString folder = folderOf(int(state.range(0)));
    qint64 bytes = 0;
    for (QDirIterator each(folder, QDir::Files, QDirIterator::Subdirectories); each.hasNext();) {
        each.next();
        bytes += each.fileInfo().size();
    }
    open(*Repository::AttributeRepository::create(), folderOf(4)); // its code is in memory from here on
    auto repository = Repository::AttributeRepository::create();
    const qint64 before = trimmedResidentBytes();
    for ([[maybe_unused]] auto _ : state)
        open(*repository, folder);
    state.counters["times"] = double(residentBytes() - before) / double(bytes);
}

void readFiles(benchmark::State& state)
{
    const QString folder = folderOf(int(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        qint64 bytes = 0;
        const QStringList below = QDir(folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        for (const QString& each : below) {
            const QDir files(folder + QLatin1Char('/') + each);
            const QStringList names = files.entryList(QDir::Files);
            for (const QString& name : names) {
                QFile file(files.filePath(name));
                bytes += file.open(QIODevice::ReadOnly) ? file.readAll().size() : 0;
            }
        }
        benchmark::DoNotOptimize(bytes);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void folderSizes(benchmark::internal::Benchmark* row)
{
    row->Arg(1000)->Arg(5000)->Unit(benchmark::kMillisecond)->UseRealTime();
}

} // namespace

BENCHMARK(readFiles)->Name("Floor/ReadFiles")->Apply(folderSizes);
BENCHMARK(openFolder)->Name("Folder/Open")->Apply(folderSizes);
BENCHMARK(countMemory)->Name("Folder/Memory")->Arg(5000)->Iterations(1)->Unit(benchmark::kMillisecond);
