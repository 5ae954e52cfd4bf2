#include "benchmarks/ShownPage.h"
#include "host/Utilities/ModelViews/AdvancedAttributeModel.h"
#include "host/Utilities/RepositoryAccess.h"
#include "repository/AttributeRepository.h"

#include <QApplication>
#include <QEventLoop>
#include <QHeaderView>
#include <QTableView>

#include <algorithm>
#include <atomic>
#include <ctime>
#include <limits>
#include <thread>
#include <vector>

// Two threads write as fast as they can to the attributes that a table shows, which must leave the GUI thread
// free and the writers fast.

namespace {

using FrameworkCore::AppConfig::Interfaces::RepositoryInterface;
using Utilities::ModelViews::AdvancedAttributeModel;

constexpr int writerCount = 2;
constexpr int writesOfEach = 3'000'000;

QStringList pathsOf(int count)
{
    QStringList paths;
    for (int i = 0; i < count; ++i)
        paths.append(QStringLiteral("plant.line%1.sensor%2").arg(i / 10).arg(i % 10));
    return paths;
}

std::shared_ptr<RepositoryInterface> makeRepository(const QStringList& paths)
{
    auto repository = Repository::AttributeRepository::create();
    for (const QString& path : paths)
        repository->getWriterInterface()->createAttribute(path, qlonglong(0), 2, 3);
    return repository;
}

// The table as the attribute monitor sets it up.
class Table : public QTableView
{
public:
    explicit Table(const QStringList& paths)
    {
        model.loadCustomAttributeList(paths);
        setModel(&model);
        setAlternatingRowColors(true);
        setStyleSheet(QStringLiteral("alternate-background-color: white; background-color: grey;"));
        horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
        horizontalHeader()->setResizeContentsPrecision(50);
        resize(800, 600);
        show();
        while (repaints.count == 0)
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

    Paints repaints{viewport()};

private:
    AdvancedAttributeModel model;
};

double processorSecondsOfThread()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) + double(time.tv_nsec) / 1e9;
}

// Seconds that the writers take, while this thread's event loop runs. Like programs of their own, they share
// no texts.
double storm(RepositoryInterface& repository, int count)
{
    const auto writer = repository.getWriterInterface();
    QEventLoop loop;
    std::atomic<int> running{writerCount};
    QElapsedTimer timer;
    timer.start();
    std::vector<std::thread> threads;
    for (int number = 0; number < writerCount; ++number) {
        threads.emplace_back([&, number, ownPaths = pathsOf(count)] {
            for (int i = 0; i < writesOfEach; ++i)
                writer->writeAttributeValue(ownPaths[i % count], qlonglong(i) * writerCount + number, 8);
            if (--running == 0)
                QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
        });
    }
    loop.exec();
    const double seconds = double(timer.nsecsElapsed()) / 1e9;
    for (std::thread& thread : threads)
        thread.join();
    return seconds;
}

void updateStormWithoutMonitor(benchmark::State& state)
{
    const QStringList paths = pathsOf(int(state.range(0)));
    const auto repository = makeRepository(paths);
    for ([[maybe_unused]] auto _ : state)
        state.SetIterationTime(storm(*repository, paths.size()));
    state.SetItemsProcessed(state.iterations() * writerCount * writesOfEach);
}

void updateStorm(benchmark::State& state)
{
    const QStringList paths = pathsOf(int(state.range(0)));
    const auto repository = makeRepository(paths);
    Utilities::SetAppConfigRepositoryInterface(repository);
    double total = 0;
    double fastestWatched = std::numeric_limits<double>::max();
    double fastestUnwatched = fastestWatched;
    double busy = 0;
    int repaints = 0;
    for ([[maybe_unused]] auto _ : state) {
        fastestUnwatched = std::min(fastestUnwatched, storm(*repository, paths.size()));
        Table table(paths);
        const int before = table.repaints.count;
        const double usedBefore = processorSecondsOfThread();
        const double seconds = storm(*repository, paths.size());
        busy += processorSecondsOfThread() - usedBefore;
        repaints += table.repaints.count - before;
        total += seconds;
        fastestWatched = std::min(fastestWatched, seconds);
        state.SetIterationTime(seconds);
    }
    Utilities::SetAppConfigRepositoryInterface({});
    if (repaints == 0)
        state.SkipWithError("the table has not shown the changes");
    state.SetItemsProcessed(state.iterations() * writerCount * writesOfEach);
    state.counters["repaints/s"] = repaints / total;
    state.counters["gui_busy"] = busy / total;
    state.counters["slow_down"] = fastestWatched / fastestUnwatched;
}

void storms(benchmark::internal::Benchmark* row)
{
    row->Arg(1000)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);
}

BENCHMARK(updateStormWithoutMonitor)->Name("Monitor/UpdateStormWithoutMonitor")->Apply(storms);
BENCHMARK(updateStorm)->Name("Monitor/UpdateStorm")->Apply(storms);

} // namespace
