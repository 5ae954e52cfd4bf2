#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

// From the start of a program to its first painted window.

namespace {

constexpr int mostMilliseconds = 30'000;

// What a program sees that nobody has used before; a plug-in ends it when its window is painted.
QProcessEnvironment environment(const QString& home)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* const name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME"})
        environment.remove(QLatin1String(name));
    environment.insert(QStringLiteral("HOME"), home);
    environment.insert(QStringLiteral("QT_PLUGIN_PATH"), QStringLiteral(BENCHMARK_PLUGINS));
    environment.insert(QStringLiteral("QT_QPA_GENERIC_PLUGINS"), QStringLiteral("vantryfirstpaint"));
    if (qEnvironmentVariableIsSet("DISPLAY")) // as people start them; other rows are drawn offscreen
        environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    return environment;
}

// Seconds, or nothing when the program has not ended by itself.
double startSeconds(const QString& program, const QStringList& arguments, const QString& home)
{
    QProcess process;
    process.setProcessEnvironment(environment(home));
    process.setStandardErrorFile(QProcess::nullDevice());
    QElapsedTimer timer;
    timer.start();
    process.start(program, arguments, QIODevice::ReadOnly);
    if (!process.waitForFinished(mostMilliseconds) || process.exitStatus() != QProcess::NormalExit ||
        process.exitCode() != 0)
        return 0;
    return double(timer.nsecsElapsed()) / 1e9;
}

QStringList exampleFiles()
{
    QStringList files;
    for (const QFileInfo& file : QDir(QStringLiteral(EXAMPLE_FILES)).entryInfoList(QDir::Files))
        files.append(file.absoluteFilePath());
    return files;
}

void timeStart(benchmark::State& state, const QString& program, const QStringList& arguments)
{
    const QTemporaryDir home;
    startSeconds(program, arguments, home.path()); // the desk tries plug-ins that it does not know
    for ([[maybe_unused]] auto _ : state) {
        const double seconds = startSeconds(program, arguments, home.path());
        if (seconds <= 0)
            state.SkipWithError("the program has not shown a window");
        state.SetIterationTime(seconds);
    }
}

void tenStarts(benchmark::internal::Benchmark* row)
{
    row->UseManualTime()->Iterations(10)->Unit(benchmark::kMillisecond);
}

BENCHMARK_CAPTURE(timeStart, empty, QStringLiteral(EMPTY_WINDOW), QStringList())
    ->Name("Floor/EmptyWindow")
    ->Apply(tenStarts);
BENCHMARK_CAPTURE(timeStart, desk, QStringLiteral(VANTRY_DESK), exampleFiles())
    ->Name("Desk/Start")
    ->Apply(tenStarts);

} // namespace
