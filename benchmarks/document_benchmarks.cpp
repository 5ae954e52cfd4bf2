#include "benchmarks/SampleFiles.h"
#include "repository/AttributeRepository.h"

#include <QFile>
#include <QString>
#include <QVariant>

#include <benchmark/benchmark.h>
#include <unistd.h>

// A file becomes live attributes: createBackend from the name of the file to a tree that can be read, written
// and watched. And one edit of a large file reaches the disk. The floor of saving is a new file with the same
// bytes, made durable.

namespace {

using FrameworkCore::AppConfig::AccessMode;
using FrameworkCore::AppConfig::BackendConfiguration;
using FrameworkCore::AppConfig::Interfaces::RepositoryInterface;

const QString backendName = QStringLiteral("sample");

bool mount(const std::shared_ptr<RepositoryInterface>& repository, const QString& format, int keyCount)
{
    const BackendConfiguration configuration{SampleFiles::instance().file(format, keyCount), QString(),
                                             AccessMode::ReadWrite};
    const QString type = format.section(QLatin1Char('-'), 0, 0);
    return repository->getBackendInterface()->createBackend(type, backendName, configuration, 2);
}

// Keeps the run honest: a tree without the file's attributes is not the tree that is meant.
bool holdsSamples(const std::shared_ptr<RepositoryInterface>& repository, const QString& format, int keyCount)
{
    for (const int key : {0, keyCount / 2 + 1, keyCount - 1}) {
        QVariant value;
        const QString path = backendName + QLatin1Char('.') + samplePath(format, key);
        if (repository->getReaderInterface()->readAttributeValue(path, value, 0) != 0 || !value.isValid())
            return false;
    }
    return true;
}

void load(benchmark::State& state, const char* formatName)
{
    const QString format = QLatin1String(formatName);
    const int keyCount = int(state.range(0));
    SampleFiles::instance().file(format, keyCount);
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        auto repository = Repository::AttributeRepository::create();
        state.ResumeTiming();
        const bool isMounted = mount(repository, format, keyCount);
        state.PauseTiming();
        if (!isMounted || !holdsSamples(repository, format, keyCount))
            state.SkipWithError("the file did not become attributes");
        repository.reset();

        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * keyCount);
}

void saveOneEdit(benchmark::State& state, const char* formatName)
{
    const QString format = QLatin1String(formatName);
    const int keyCount = int(state.range(0));
    const std::shared_ptr<RepositoryInterface> repository = Repository::AttributeRepository::create();
    if (!mount(repository, format, keyCount)) {
        state.SkipWithError("the file did not become attributes");
        return;
    }
    const QString path = backendName + QLatin1Char('.') + samplePath(format, keyCount / 2 + 1);
    int value = 0;
    for ([[maybe_unused]] auto _ : state) {
        ++value;
        const bool isWritten = repository->getWriterInterface()->writeAttributeValue(path, value, 15) == 0;
        if (!isWritten || !repository->getBackendInterface()->saveBackend(backendName))
            state.SkipWithError("the edit was not saved");
    }
}

// A thousand entries all over a file go, each by itself, as a pattern of the command line removes them.
void removeMany(benchmark::State& state, const char* formatName)
{
    constexpr int removed = 1000;
    const QString format = QLatin1String(formatName);
    const int keyCount = int(state.range(0));
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        auto repository = Repository::AttributeRepository::create();
        bool isDone = mount(repository, format, keyCount);
        state.ResumeTiming();
        for (int i = removed; i-- > 0;) {
            const QString path =
                backendName + QLatin1Char('.') + samplePath(format, i * (keyCount / removed));
            isDone = isDone && repository->getTreeInterface()->removeTree(path);
        }
        state.PauseTiming();
        if (!isDone)
            state.SkipWithError("not all was removed");
        repository.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * removed);
}

// A group of so many entries becomes part of another one as large.
void copyWithin(benchmark::State& state, const char* formatName)
{
    const QString format = QLatin1String(formatName);
    const int keyCount = int(state.range(0));
    const QString separator = format == QLatin1String("yaml") ? QStringLiteral(": ") : QStringLiteral(" = ");
    QString text;
    for (const char* const name : {"a", "b"}) {
        const bool isYaml = format == QLatin1String("yaml");
        text += isYaml ? QLatin1String(name) + QStringLiteral(":\n")
                       : QStringLiteral("[%1]\n").arg(QLatin1String(name));
        for (int key = 0; key < keyCount; ++key)
            text += (isYaml ? QStringLiteral("  k%1") : QStringLiteral("k%1")).arg(key) + separator +
                    QStringLiteral("%1 # c\n").arg(key);
    }
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        const QString name = SampleFiles::instance().freshName() + QLatin1Char('.') + format;
        QFile file(name);
        const bool isWritten = file.open(QIODevice::WriteOnly) && file.write(text.toUtf8()) > 0;
        file.close();
        auto repository = Repository::AttributeRepository::create();
        const BackendConfiguration configuration{name, QString(), AccessMode::ReadWrite};
        const bool isMounted = isWritten && repository->getBackendInterface()->createBackend(
                                                format, backendName, configuration, 2);
        state.ResumeTiming();
        const bool isDone =
            isMounted && repository->getTransferInterface()->copyTree(backendName + QLatin1String(".a"),
                                                                      backendName + QLatin1String(".b.c")) ==
                             FrameworkCore::AppConfig::Success;
        state.PauseTiming();
        if (!isDone)
            state.SkipWithError("nothing was copied");
        repository.reset();
        QFile::remove(name);
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * keyCount);
}

void writeAndSync(benchmark::State& state, const char* formatName)
{
    const QByteArray& bytes = SampleFiles::instance().text(QLatin1String(formatName), int(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        const QString name = SampleFiles::instance().freshName();
        state.ResumeTiming();
        QFile file(name);
        const bool isWritten = file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
                               file.write(bytes) == bytes.size() && fsync(file.handle()) == 0;
        file.close();
        state.PauseTiming();
        if (!isWritten)
            state.SkipWithError("the file was not written");
        file.remove();
        state.ResumeTiming();
    }
}

BENCHMARK_CAPTURE(load, json, "json")->Name("Documents/LoadJson")->Apply(sampleSize);
BENCHMARK_CAPTURE(load, ini, "ini")->Name("Documents/LoadIni")->Apply(sampleSize);
BENCHMARK_CAPTURE(load, xml, "xml")->Name("Documents/LoadXml")->Apply(sampleSize);
BENCHMARK_CAPTURE(load, txt, "txt")->Name("Documents/LoadTxt")->Apply(sampleSize);
BENCHMARK_CAPTURE(load, toml, "toml")->Name("Documents/LoadToml")->Apply(sampleSize);
BENCHMARK_CAPTURE(load, yaml, "yaml")->Name("Documents/LoadYaml")->Apply(sampleSize);
BENCHMARK_CAPTURE(load, tomlFlat, "toml-flat")->Name("Documents/LoadTomlFlat")->Apply(sampleSize);
BENCHMARK_CAPTURE(load, yamlFlat, "yaml-flat")->Name("Documents/LoadYamlFlat")->Apply(sampleSize);
BENCHMARK_CAPTURE(writeAndSync, json, "json")->Name("Floor/WriteAndSync/Json")->Apply(sampleSize);
BENCHMARK_CAPTURE(saveOneEdit, json, "json")->Name("Documents/SaveOneEdit/Json")->Apply(sampleSize);
BENCHMARK_CAPTURE(writeAndSync, ini, "ini")->Name("Floor/WriteAndSync/Ini")->Apply(sampleSize);
BENCHMARK_CAPTURE(saveOneEdit, ini, "ini")->Name("Documents/SaveOneEdit/Ini")->Apply(sampleSize);
BENCHMARK_CAPTURE(writeAndSync, xml, "xml")->Name("Floor/WriteAndSync/Xml")->Apply(sampleSize);
BENCHMARK_CAPTURE(saveOneEdit, xml, "xml")->Name("Documents/SaveOneEdit/Xml")->Apply(sampleSize);
BENCHMARK_CAPTURE(writeAndSync, txt, "txt")->Name("Floor/WriteAndSync/Txt")->Apply(sampleSize);
BENCHMARK_CAPTURE(saveOneEdit, txt, "txt")->Name("Documents/SaveOneEdit/Txt")->Apply(sampleSize);
BENCHMARK_CAPTURE(writeAndSync, toml, "toml")->Name("Floor/WriteAndSync/Toml")->Apply(sampleSize);
BENCHMARK_CAPTURE(saveOneEdit, toml, "toml")->Name("Documents/SaveOneEdit/Toml")->Apply(sampleSize);
BENCHMARK_CAPTURE(writeAndSync, yaml, "yaml")->Name("Floor/WriteAndSync/Yaml")->Apply(sampleSize);
BENCHMARK_CAPTURE(saveOneEdit, yaml, "yaml")->Name("Documents/SaveOneEdit/Yaml")->Apply(sampleSize);
BENCHMARK_CAPTURE(removeMany, toml, "toml")
    ->Name("Documents/RemoveMany/Toml")
    ->Arg(25000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(removeMany, yaml, "yaml")
    ->Name("Documents/RemoveMany/Yaml")
    ->Arg(25000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(copyWithin, toml, "toml")
    ->Name("Documents/CopyWithin/Toml")
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(copyWithin, yaml, "yaml")
    ->Name("Documents/CopyWithin/Yaml")
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond);

} // namespace
